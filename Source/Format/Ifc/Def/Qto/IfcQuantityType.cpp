#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <memory>
#include <string_view>

namespace kiv::ifc::def::qto {

namespace {

struct Factory {
    std::string_view typeCode;
    std::unique_ptr<QuantityType> (*pMake)();
};

template <class Type>
constexpr Factory factoryOf() {
    return {Type::TypeCode, []() -> std::unique_ptr<QuantityType> { return std::make_unique<Type>(); }};
}

constexpr Factory Factories[] = {factoryOf<QuantityTypeCount>(),  factoryOf<QuantityTypeWeight>(),
                                 factoryOf<QuantityTypeLength>(), factoryOf<QuantityTypeArea>(),
                                 factoryOf<QuantityTypeVolume>(), factoryOf<QuantityTypeTime>()};

} // namespace

std::unique_ptr<QuantityType> QuantityType::pCreate(const kiv::xml::const_Element& element,
                                                    WorkMeter* meter) {
    const auto code = xml::firstChildText(element);
    if (!code) {
        xml::vReportTake(meter, Report::QuantityTypeNotGiven);
        return nullptr;
    }
    for (const Factory& factory : Factories) {
        if (factory.typeCode != *code)
            continue;
        // All kinds are without data.
        vMemoryTake(meter, sizeof(QuantityTypeSimple));
        return factory.pMake();
    }
    xml::vReportTake(meter, Report::QuantityTypeUnknown);
    return nullptr;
}

bool QuantityTypeSimple::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors&) const {
    if (kiv::assert::Assert::isEnabled() && !schema.pObjectFromName(sMeasureTypeName()))
        vReport(Report::MeasureTypeNotFound);
    return true;
}

} // namespace kiv::ifc::def::qto
