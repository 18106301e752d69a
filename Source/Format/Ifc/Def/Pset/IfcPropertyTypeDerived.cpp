#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include "Base/Ascii.h"
#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>

namespace kiv::ifc::def::pset {

namespace {

constexpr std::string_view WhiteSpace = " \t\n\v\f\r";

constexpr std::string_view DataTypeTag = "DataType";
constexpr std::string_view TypeAttribute = "type";
constexpr std::string_view RangeTag = "ValueRangeDef";
constexpr std::string_view LowerBoundTag = "LowerBoundValue";
constexpr std::string_view UpperBoundTag = "UpperBoundValue";
constexpr std::string_view BoundAttribute = "value";
constexpr std::string_view EnumListTag = "EnumList";
constexpr std::string_view NameAttribute = "name";
constexpr std::string_view EnumerationPrefix = "PEnum_";
constexpr std::string_view DefiningValueTag = "DefiningValue";
constexpr std::string_view DefinedValueTag = "DefinedValue";
constexpr std::string_view ListValueTag = "ListValue";

/// Reports a name that is not in the schema; an empty one names nothing.
void vNameExpect(const schema::Schema& schema, const std::string& name, Report report) {
    if (!name.empty() && kiv::assert::Assert::isEnabled() && !schema.pObjectFromName(name))
        vReport(report);
}

kiv::xml::Element dataTypeExport(kiv::xml::Element& parent, std::string_view name) {
    auto element = parent.ElementNodeAppend(DataTypeTag);
    element.vAttributeSet(TypeAttribute, name);
    return element;
}

/// Appends an element that holds a data type; nothing for an empty name.
void vTypedValueExport(kiv::xml::Element& parent, std::string_view tag, std::string_view typeName) {
    if (typeName.empty())
        return;
    auto element = parent.ElementNodeAppend(tag);
    dataTypeExport(element, typeName);
}

/// Appends the value that `element` describes. The type named by its first element child becomes `typeName`.
void vValueRead(const kiv::xml::const_Element& element, std::string& typeName,
                std::vector<TypePropertyValue>& values, xml::XmlSetErrors& errors) {
    if (const auto first = element.FirstElementChildGet())
        xml::boAttributeTake(*first, TypeAttribute, typeName, errors.pMeter());
    vObjectTake(errors.pMeter());
    vRoomForOne(values, errors.pMeter());
    values.emplace_back(element, errors);
}

/// Checks all values, also those after one that fails.
bool boAllPass(const std::vector<TypePropertyValue>& values, const schema::Schema& schema,
               xml::XmlSetErrors& errors) {
    bool passes = true;
    for (const TypePropertyValue& value : values)
        passes = value.checkForErrors(schema, errors) && passes;
    return passes;
}

void vBoundExport(kiv::xml::Element& range, std::string_view tag, std::string_view bound) {
    if (!bound.empty())
        range.ElementNodeAppend(tag).vAttributeSet(BoundAttribute, bound);
}

} // namespace

TypePropertyReferenceValue::TypePropertyReferenceValue(const kiv::xml::const_Element& element,
                                                       xml::XmlSetErrors& errors) {
    xml::boAttributeTake(element, "reftype", dataTypeName_, errors.pMeter());
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        return boCheck(tag, child, errors.pMeter());
    });
}

std::string TypePropertyReferenceValue::sEntityName() const {
    return "IfcPropertyReferenceValue";
}

bool TypePropertyReferenceValue::boCheck(std::string_view tag, const kiv::xml::const_Element& child,
                                         WorkMeter* meter) {
    if (tag != DataTypeTag)
        return false;
    xml::boAttributeTake(child, TypeAttribute, dataTypeName_, meter);
    return true;
}

bool TypePropertyReferenceValue::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors&) const {
    vNameExpect(schema, dataTypeName_, Report::DataTypeNotFound);
    return true;
}

void TypePropertyReferenceValue::vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const {
    element.ElementNodeAppend(ElementName);
    // Beside the kind's element and not in it: readers of exported sets look for it there.
    vExportCommon(element, info);
}

void TypePropertyReferenceValue::vExportCommon(kiv::xml::Element& element,
                                               const xml::ExtraExportInfo* info) const {
    auto dataType = dataTypeExport(element, dataTypeName_);
    if (!info || !info->schemaForBaseTypes)
        return;
    const auto* type = schema::Type::pFrom(info->schemaForBaseTypes->pObjectFromName(dataTypeName_));
    if (type && type->pDataType())
        dataType.vAttributeSet("basetype", type->pDataType()->getName());
}

TypePropertySingleValue::TypePropertySingleValue(const kiv::xml::const_Element& element,
                                                 xml::XmlSetErrors& errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        return boCheck(tag, child, errors.pMeter());
    });
}

std::string TypePropertySingleValue::sEntityName() const {
    return "IfcPropertySingleValue";
}

bool TypePropertySingleValue::boCheck(std::string_view tag, const kiv::xml::const_Element& child,
                                      WorkMeter* meter) {
    if (TypePropertyReferenceValue::boCheck(tag, child, meter))
        return true;
    return tag == "UnitType" && boUnitTypeRead(child, meter);
}

bool TypePropertySingleValue::boUnitTypeRead(const kiv::xml::const_Element& child, WorkMeter* meter) {
    if (!xml::boAttributeTake(child, TypeAttribute, unitType_, meter)) {
        xml::vReportTake(meter, Report::UnitTypeNotGiven);
        return false;
    }
    if (unitType_.ends_with(' '))
        xml::vReportTake(meter, Report::UnitTypeEndsWithBlank);
    return true;
}

void TypePropertySingleValue::vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const {
    auto kindElement = element.ElementNodeAppend(ElementName);
    vExportCommon(kindElement, info);
}

TypePropertyBoundedValue::TypePropertyBoundedValue(const kiv::xml::const_Element& element,
                                                   xml::XmlSetErrors& errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        if (tag != RangeTag)
            return boCheck(tag, child, errors.pMeter());
        vRangeRead(child, errors);
        return true;
    });
}

void TypePropertyBoundedValue::vRangeRead(const kiv::xml::const_Element& range, xml::XmlSetErrors& errors) {
    const auto boTake = [&](const kiv::xml::const_Element& child) {
        const bool isLower = child.boNodeNameIs(LowerBoundTag);
        if (!isLower && !child.boNodeNameIs(UpperBoundTag))
            return false;
        xml::boAttributeTake(child, BoundAttribute, isLower ? lowerBoundValue_ : upperBoundValue_,
                             errors.pMeter());
        return true;
    };
    xml::vChildrenOffer(
        range, boTake,
        [&](const kiv::xml::const_Element& child) {
            xml::vRecordAdd(errors, RecordMessage::UnknownNodeInRange, child.tagName(), xml::lineOf(child));
        },
        errors.pMeter());
}

std::string TypePropertyBoundedValue::sEntityName() const {
    return "IfcPropertyBoundedValue";
}

bool TypePropertyBoundedValue::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const {
    TypePropertySingleValue::checkForErrors(schema, errors);
    vNameExpect(schema, lowerBoundValue_, Report::LowerBoundNotFound);
    vNameExpect(schema, upperBoundValue_, Report::UpperBoundNotFound);
    return true;
}

void TypePropertyBoundedValue::vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const {
    auto kindElement = element.ElementNodeAppend(ElementName);
    vExportCommon(kindElement, info);
    const auto& lower = lowerBoundValue_.empty() ? getDataTypeName() : lowerBoundValue_;
    const auto& upper = upperBoundValue_.empty() ? getDataTypeName() : upperBoundValue_;
    if (lower.empty() && upper.empty())
        return;
    auto range = kindElement.ElementNodeAppend(RangeTag);
    vBoundExport(range, LowerBoundTag, lower);
    vBoundExport(range, UpperBoundTag, upper);
}

TypePropertyValue::TypePropertyValue(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        if (tag != "Values")
            return boCheck(tag, child, errors.pMeter());
        xml::vTextTake(child, values_, errors.pMeter());
        return true;
    });
}

void TypePropertyValue::vExport(kiv::xml::Element&, xml::ExtraExportInfo*) const {}

ConstantDef::ConstantDef(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        return boChildRead(tag, child, errors.pMeter());
    });
}

bool ConstantDef::boChildRead(std::string_view tag, const kiv::xml::const_Element& child, WorkMeter* meter) {
    if (tag == xml::NameTag)
        xml::vTextTake(child, name_, meter);
    else if (tag == xml::DefinitionTag)
        xml::vTextTake(child, definition_, meter);
    else if (tag == xml::NameAliasesTag)
        nameAliases_.vAliasAdd(child, xml::NameAliasTag, meter);
    else if (tag == xml::DefinitionAliasesTag)
        definitionAliases_.vAliasAdd(child, xml::DefinitionAliasTag, meter);
    else
        return false;
    return true;
}

TypePropertyEnumeratedValue::TypePropertyEnumeratedValue(const PropertyDef* property,
                                                         const kiv::xml::const_Element& element,
                                                         xml::XmlSetErrors& errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        if (tag == EnumListTag)
            vEnumListRead(property, child, errors.pMeter());
        else if (tag == "ConstantList")
            vConstantListRead(child, errors);
        else
            return false;
        return true;
    });
    vConstantsOrder(errors.pMeter());
}

void TypePropertyEnumeratedValue::vEnumListRead(const PropertyDef* property,
                                                const kiv::xml::const_Element& list, WorkMeter* meter) {
    if (!xml::boAttributeTake(list, NameAttribute, enumerationName_, meter))
        vTextSet(enumerationName_, property ? std::string_view(property->getName()) : std::string_view(),
                 meter);
    else if (enumerationName_.starts_with(EnumerationPrefix))
        enumerationName_.erase(0, EnumerationPrefix.size());
    for (const auto& child : xml::ElementChildren(list)) {
        vLook(meter);
        const auto text = xml::firstChildText(child).value_or(xml::NodeText());
        const auto item = ascii::trimmed(text, WhiteSpace);
        if (item.empty())
            continue;
        vObjectTake(meter);
        vTextMemoryTake(item.size(), meter);
        vRoomForOne(items_, meter);
        items_.emplace_back(item);
    }
}

void TypePropertyEnumeratedValue::vConstantListRead(const kiv::xml::const_Element& list,
                                                    xml::XmlSetErrors& errors) {
    for (const auto& child : xml::ElementChildren(list)) {
        vObjectTake(errors.pMeter());
        vRoomForOne(constants_, errors.pMeter());
        constants_.emplace_back(child, errors);
    }
}

void TypePropertyEnumeratedValue::vConstantsOrder(WorkMeter* meter) {
    vRoomFor(constantsByName_, constants_.size(), meter);
    for (const ConstantDef& constant : constants_)
        constantsByName_.push_back(&constant);
    // Stable, so that of several constants of one name the first of the document comes first and is kept.
    std::stable_sort(constantsByName_.begin(), constantsByName_.end(),
                     [meter](const ConstantDef* left, const ConstantDef* right) {
                         vLook(meter);
                         return left->getName() < right->getName();
                     });
    const auto repeated = std::unique(constantsByName_.begin(), constantsByName_.end(),
                                      [](const ConstantDef* left, const ConstantDef* right) {
                                          return left->getName() == right->getName();
                                      });
    constantsByName_.erase(repeated, constantsByName_.end());
}

std::string TypePropertyEnumeratedValue::sEntityName() const {
    return "IfcPropertyEnumeratedValue";
}

void TypePropertyEnumeratedValue::vExport(kiv::xml::Element& element, xml::ExtraExportInfo*) const {
    auto list = element.ElementNodeAppend(ElementName).ElementNodeAppend(EnumListTag);
    list.vAttributeSet(NameAttribute, std::string(EnumerationPrefix) + enumerationName_);
    for (const std::string& item : items_)
        xml::vTextElementAppend(list, "EnumItem", item);
}

TypePropertyTableValue::TypePropertyTableValue(const kiv::xml::const_Element& element,
                                               xml::XmlSetErrors& errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        if (tag == "Expression")
            xml::vTextTake(child, expression_, errors.pMeter());
        else if (tag == DefiningValueTag)
            vValueRead(child, definingTypeName_, definingValues_, errors);
        else if (tag == DefinedValueTag)
            vValueRead(child, definedTypeName_, definedValues_, errors);
        else
            return false;
        return true;
    });
}

std::string TypePropertyTableValue::sEntityName() const {
    return "IfcPropertyTableValue";
}

bool TypePropertyTableValue::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const {
    const bool definingPass = boAllPass(definingValues_, schema, errors);
    return boAllPass(definedValues_, schema, errors) && definingPass;
}

void TypePropertyTableValue::vExport(kiv::xml::Element& element, xml::ExtraExportInfo*) const {
    auto kindElement = element.ElementNodeAppend(ElementName);
    vTypedValueExport(kindElement, DefiningValueTag, definingTypeName_);
    vTypedValueExport(kindElement, DefinedValueTag, definedTypeName_);
}

TypePropertyListValue::TypePropertyListValue(const kiv::xml::const_Element& element,
                                             xml::XmlSetErrors& errors) {
    xml::vChildrenRead(element, errors, [&](std::string_view tag, const kiv::xml::const_Element& child) {
        if (tag != ListValueTag)
            return false;
        vValueRead(child, listItemTypeName_, listValues_, errors);
        return true;
    });
}

std::string TypePropertyListValue::sEntityName() const {
    return "IfcPropertyListValue";
}

bool TypePropertyListValue::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const {
    return boAllPass(listValues_, schema, errors);
}

void TypePropertyListValue::vExport(kiv::xml::Element& element, xml::ExtraExportInfo* info) const {
    auto kindElement = element.ElementNodeAppend(ElementName);
    for (const TypePropertyValue& value : listValues_) {
        auto valueElement = kindElement.ElementNodeAppend(ListValueTag);
        value.vExportCommon(valueElement, info);
    }
    vTypedValueExport(kindElement, ListValueTag, listItemTypeName_);
}

TypeComplexProperty::TypeComplexProperty(const kiv::xml::const_Element& element, xml::XmlSetErrors& errors) {
    xml::boAttributeTake(element, NameAttribute, name_, errors.pMeter());
    const auto boTake = [&](const kiv::xml::const_Element& child) {
        if (!child.boNodeNameIs(PropertyDef::ElementName))
            return false;
        vObjectTake(errors.pMeter());
        vRoomForOne(properties_, errors.pMeter());
        properties_.emplace_back(nullptr, child, errors);
        return true;
    };
    xml::vChildrenOffer(
        element, boTake,
        [&](const kiv::xml::const_Element&) {
            xml::vReportTake(errors.pMeter(), Report::ComplexPropertyChildUnknown);
        },
        errors.pMeter());
}

std::string TypeComplexProperty::sEntityName() const {
    return "IfcComplexProperty";
}

bool TypeComplexProperty::checkForErrors(const schema::Schema& schema, xml::XmlSetErrors& errors) const {
    for (const PropertyDef& property : properties_)
        property.checkForErrors(schema, errors);
    return true;
}

void TypeComplexProperty::vExport(kiv::xml::Element&, xml::ExtraExportInfo*) const {}

} // namespace kiv::ifc::def::pset
