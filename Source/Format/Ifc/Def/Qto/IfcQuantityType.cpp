#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Host/Assert/KivAssert.h"

namespace kiv::ifc::def::qto {

namespace {

/// Makes the first of the kinds that has that code; null when none has.
template <typename... Kinds>
std::unique_ptr<QuantityType> pCreateAnyOf(std::string_view code) {
    std::unique_ptr<QuantityType> type;
    static_cast<void>(((code == Kinds::TypeCode && (type = std::make_unique<Kinds>())) || ...));
    return type;
}

} // namespace

std::unique_ptr<QuantityType> QuantityType::pCreate(const kiv::xml::const_Element& element) {
    const auto code = xml::firstChildText(element);
    if (!code) {
        vReport(Report::QuantityTypeNotGiven);
        return nullptr;
    }
    auto type = pCreateAnyOf<QuantityTypeCount, QuantityTypeWeight, QuantityTypeLength, QuantityTypeArea,
                             QuantityTypeVolume, QuantityTypeTime>(*code);
    if (!type)
        vReport(Report::QuantityTypeUnknown);
    return type;
}

bool QuantityTypeSimple::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors&) const {
    if (kiv::assert::Assert::isEnabled() && !schema.pObjectFromName(sMeasureTypeName()))
        vReport(Report::MeasureTypeNotFound);
    return true;
}

std::string QuantityTypeCount::sEntityName() const {
    return "IfcQuantityCount";
}
const char* QuantityTypeCount::pTypeCode() const {
    return TypeCode;
}
std::string QuantityTypeCount::sValueAttributeName() const {
    return "CountValue";
}
std::string QuantityTypeCount::sMeasureTypeName() const {
    return "IfcCountMeasure";
}

std::string QuantityTypeWeight::sEntityName() const {
    return "IfcQuantityWeight";
}
const char* QuantityTypeWeight::pTypeCode() const {
    return TypeCode;
}
std::string QuantityTypeWeight::sValueAttributeName() const {
    return "WeightValue";
}
std::string QuantityTypeWeight::sMeasureTypeName() const {
    return "IfcMassMeasure";
}

std::string QuantityTypeLength::sEntityName() const {
    return "IfcQuantityLength";
}
const char* QuantityTypeLength::pTypeCode() const {
    return TypeCode;
}
std::string QuantityTypeLength::sValueAttributeName() const {
    return "LengthValue";
}
std::string QuantityTypeLength::sMeasureTypeName() const {
    return "IfcLengthMeasure";
}

std::string QuantityTypeArea::sEntityName() const {
    return "IfcQuantityArea";
}
const char* QuantityTypeArea::pTypeCode() const {
    return TypeCode;
}
std::string QuantityTypeArea::sValueAttributeName() const {
    return "AreaValue";
}
std::string QuantityTypeArea::sMeasureTypeName() const {
    return "IfcAreaMeasure";
}

std::string QuantityTypeVolume::sEntityName() const {
    return "IfcQuantityVolume";
}
const char* QuantityTypeVolume::pTypeCode() const {
    return TypeCode;
}
std::string QuantityTypeVolume::sValueAttributeName() const {
    return "VolumeValue";
}
std::string QuantityTypeVolume::sMeasureTypeName() const {
    return "IfcVolumeMeasure";
}

std::string QuantityTypeTime::sEntityName() const {
    return "IfcQuantityTime";
}
const char* QuantityTypeTime::pTypeCode() const {
    return TypeCode;
}
std::string QuantityTypeTime::sValueAttributeName() const {
    return "TimeValue";
}
std::string QuantityTypeTime::sMeasureTypeName() const {
    return "IfcTimeMeasure";
}

} // namespace kiv::ifc::def::qto
