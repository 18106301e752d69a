#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc {

namespace {

using TypeName = std::optional<std::string>;

TypeName notKnown(def::Report report) {
    def::vReport(report);
    return std::nullopt;
}

template <class Type>
const Type* pAs(const def::xml::TypeBase* type) {
    return dynamic_cast<const Type*>(type);
}

TypeName typeNameOfProperty(const def::pset::PropertyType* type) {
    using namespace def::pset;
    // A bounded value is a single value too and is answered by the same name.
    if (const auto* const single = pAs<TypePropertySingleValue>(type);
        single && !pAs<TypePropertyValue>(type))
        return single->getDataTypeName();
    if (pAs<TypePropertyEnumeratedValue>(type))
        return "IfcLabel";
    if (pAs<TypePropertyTableValue>(type) || pAs<TypePropertyListValue>(type) ||
        pAs<TypeComplexProperty>(type))
        return std::nullopt;
    return notKnown(def::Report::PropertyTypeNameNotKnown);
}

TypeName typeNameOfQuantity(const def::qto::QuantityType* type) {
    if (const auto* const simple = pAs<def::qto::QuantityTypeSimple>(type))
        return simple->sMeasureTypeName();
    return notKnown(def::Report::QuantityTypeNameNotKnown);
}

/// The first member of that name; null when there is none.
template <class Def>
const Def* pMember(const std::vector<Def>& members, std::string_view name) {
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&](const Def& member) { return member.getName() == name; });
    return found == members.end() ? nullptr : &*found;
}

TypeName typeNameInSet(const def::xml::SetDef& set, std::string_view memberName) {
    if (const auto* const properties = dynamic_cast<const def::pset::PropertySetDef*>(&set)) {
        const auto* const property = pMember(properties->getProperties(), memberName);
        return property ? typeNameOfProperty(property->pType()) : std::nullopt;
    }
    if (const auto* const quantities = dynamic_cast<const def::qto::QuantitySetDef*>(&set)) {
        const auto* const quantity = pMember(quantities->getQuantities(), memberName);
        return quantity ? typeNameOfQuantity(quantity->pType()) : std::nullopt;
    }
    return std::nullopt;
}

TypeName typeNameInEntity(const def::schema::ObjectBase* object, std::string_view attributeName) {
    const auto* const entity = def::schema::Entity::pFrom(object);
    if (!entity)
        return std::nullopt;
    const auto* const attribute = entity->pAttributeFromName(def::schema::AttributeName(attributeName), true);
    if (!attribute || !attribute->pFirstType())
        return std::nullopt;
    return std::string(attribute->pFirstType()->getName());
}

} // namespace

std::optional<std::string> findPropertyTypeName(const std::string& name, const def::SchemaPset& schema) {
    const auto dot = name.find('.');
    if (dot == std::string::npos)
        return std::nullopt;
    const auto setName = std::string_view(name).substr(0, dot);
    const auto memberName = std::string_view(name).substr(dot + 1);
    if (const auto* const set = schema.pXmlSetFromName(setName, {}))
        return typeNameInSet(*set, memberName);
    return typeNameInEntity(schema.pObjectFromName(setName), memberName);
}

} // namespace kiv::ifc
