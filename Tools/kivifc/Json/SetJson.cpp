#include "kivifc/Json/SetJson.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kivifc/Json/BytesJson.h"

#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc {

namespace {

namespace defs = ifc::def::xml;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;

Json aliasesJson(const defs::Aliases& aliases) {
    Json list = Json::array();
    for (const auto& entry : aliases.getEntries())
        list.push_back({{"lang", entry.locale.getCombined()}, {"text", entry.text}});
    return list;
}

/// Name, text, GUID and line of a set or a member.
Json headJson(const defs::DefBase& def) {
    const auto& guid = def.getIfdGuid();
    return {{"name", def.getName()},
            {"definition", def.getDefinition()},
            {"ifdGuid", guid.isNull() ? Json(nullptr) : Json(guid.toString(false))},
            {"line", def.getLine()},
            {"definitionAliases", aliasesJson(def.getDefinitionAliases())}};
}

Json memberJson(const defs::Def& def) {
    auto json = headJson(def);
    json["nameAliases"] = aliasesJson(def.getNameAliases());
    json["entityName"] = def.getEntityName();
    return json;
}

Json propertiesJson(const std::vector<pset::PropertyDef>& properties);

Json typeJson(const pset::TypePropertyReferenceValue& type) {
    return {{"kind", pset::TypePropertyReferenceValue::ElementName},
            {"dataTypeName", type.getDataTypeName()}};
}

Json typeJson(const pset::TypePropertySingleValue& type) {
    return {{"kind", pset::TypePropertySingleValue::ElementName},
            {"dataTypeName", type.getDataTypeName()},
            {"unitType", type.getUnitType()}};
}

Json typeJson(const pset::TypePropertyBoundedValue& type) {
    return {{"kind", pset::TypePropertyBoundedValue::ElementName},
            {"dataTypeName", type.getDataTypeName()},
            {"unitType", type.getUnitType()},
            {"lowerBoundValue", type.getLowerBoundValue()},
            {"upperBoundValue", type.getUpperBoundValue()}};
}

/// What the values of a table column or of a list are.
Json valuesJson(const std::vector<pset::TypePropertyValue>& values) {
    Json list = Json::array();
    for (const auto& value : values) {
        list.push_back({{"dataTypeName", value.getDataTypeName()},
                        {"unitType", value.getUnitType()},
                        {"values", value.getValues()}});
    }
    return list;
}

Json constantsJson(const std::vector<pset::ConstantDef>& constants) {
    Json list = Json::array();
    for (const auto& constant : constants) {
        list.push_back({{"name", constant.getName()},
                        {"definition", constant.getDefinition()},
                        {"nameAliases", aliasesJson(constant.getNameAliases())},
                        {"definitionAliases", aliasesJson(constant.getDefinitionAliases())}});
    }
    return list;
}

Json typeJson(const pset::TypePropertyEnumeratedValue& type) {
    return {{"kind", pset::TypePropertyEnumeratedValue::ElementName},
            {"enumerationName", type.getEnumerationName()},
            {"items", type.getItems()},
            {"constants", constantsJson(type.getConstants())}};
}

Json typeJson(const pset::TypePropertyTableValue& type) {
    return {{"kind", pset::TypePropertyTableValue::ElementName},
            {"expression", type.getExpression()},
            {"definingTypeName", type.getDefiningTypeName()},
            {"definedTypeName", type.getDefinedTypeName()},
            {"definingValues", valuesJson(type.getDefiningValues())},
            {"definedValues", valuesJson(type.getDefinedValues())}};
}

Json typeJson(const pset::TypePropertyListValue& type) {
    return {{"kind", pset::TypePropertyListValue::ElementName},
            {"listItemTypeName", type.getListItemTypeName()},
            {"listValues", valuesJson(type.getListValues())}};
}

Json typeJson(const pset::TypeComplexProperty& type) {
    return {{"kind", pset::TypeComplexProperty::ElementName},
            {"name", type.getName()},
            {"properties", propertiesJson(type.getProperties())}};
}

/// The type as the first of these classes that it is; derived classes come before their bases.
template <typename Class, typename... Others>
Json typeAsJson(const pset::PropertyType& type) {
    if (const auto* derived = dynamic_cast<const Class*>(&type))
        return typeJson(*derived);
    if constexpr (sizeof...(Others) > 0)
        return typeAsJson<Others...>(type);
    return nullptr;
}

Json propertyTypeJson(const pset::PropertyType* type) {
    if (!type)
        return nullptr;
    return typeAsJson<pset::TypePropertyBoundedValue, pset::TypePropertySingleValue,
                      pset::TypePropertyReferenceValue, pset::TypePropertyEnumeratedValue,
                      pset::TypePropertyTableValue, pset::TypePropertyListValue, pset::TypeComplexProperty>(
        *type);
}

Json propertiesJson(const std::vector<pset::PropertyDef>& properties) {
    Json list = Json::array();
    for (const auto& property : properties)
        list.push_back(defJson(property));
    return list;
}

Json quantityTypeJson(const qto::QuantityType* type) {
    if (!type)
        return nullptr;
    return {{"code", type->pTypeCode()},
            {"valueAttributeName", type->sValueAttributeName()},
            {"measureTypeName", type->sMeasureTypeName()}};
}

Json quantitiesJson(const std::vector<qto::QuantityDef>& quantities) {
    Json list = Json::array();
    for (const auto& quantity : quantities)
        list.push_back(defJson(quantity));
    return list;
}

Json classesJson(const std::vector<defs::ApplicableClasses>& classes) {
    Json list = Json::array();
    for (const auto& each : classes) {
        list.push_back({{"className", each.getClassName()},
                        {"classNameHash", each.getClassNameHash()},
                        {"predefinedType", each.getPredefinedType()},
                        {"line", each.getLine()}});
    }
    return list;
}

Json recordsJson(const defs::XmlSetErrors& errors) {
    Json list = Json::array();
    for (const auto& record : errors.getRecords()) {
        list.push_back({{"kind", record.kind == defs::ErrorKind::FatalError ? "FatalError" : "Error"},
                        {"set", errors.getSetName()},
                        {"item", record.item},
                        {"message", record.message},
                        {"line", record.line}});
    }
    return list;
}

} // namespace

Json setJson(const defs::SetDef& set) {
    auto json = headJson(set);
    json["ifcVersion"] = set.getIfcVersion();
    json["templateType"] = defs::sTemplateTypeText(set.getTemplateType());
    json["applicableClasses"] = classesJson(set.getApplicableClasses());
    json["applicableTypeValue"] = set.getApplicableTypeValue();
    if (const auto* properties = dynamic_cast<const pset::PropertySetDef*>(&set))
        json["properties"] = propertiesJson(properties->getProperties());
    if (const auto* quantities = dynamic_cast<const qto::QuantitySetDef*>(&set))
        json["quantities"] = quantitiesJson(quantities->getQuantities());
    return json;
}

Json defJson(const defs::Def& def) {
    auto json = memberJson(def);
    if (const auto* property = dynamic_cast<const pset::PropertyDef*>(&def))
        json["type"] = propertyTypeJson(property->pType());
    if (const auto* quantity = dynamic_cast<const qto::QuantityDef*>(&def))
        json["type"] = quantityTypeJson(quantity->pType());
    return json;
}

Json setDocumentJson(const SetDocument& document) {
    std::vector<kit::Assertion> assertions;
    for (const auto& assertion : document.assertions)
        assertions.push_back(assertion.record);
    return withBytes({{"path", document.path},
                      {"kind", document.pSet()->pXmlElementName()},
                      {"refused", document.isRefused},
                      {"set", setJson(*document.pSet())},
                      {"records", recordsJson(document.errors)},
                      {"assertions", assertionsJson(assertions)}},
                     "path");
}

Json contextJson(const ifc::def::SchemaPset::Context& context) {
    return {{"name", context.name}, {"standard", context.isStandard}};
}

} // namespace kiv::kivifc
