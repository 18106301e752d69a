#include "Format/Ifc/Def/Pset/IfcPropertyTypeMemory.h"

#include "Base/Metered.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::pset {

namespace {

/// What each value owns, and the room for all of them.
template <class Value, class Owned>
std::size_t heldByAll(const std::vector<Value>& values, const Owned& ownedBy) {
    std::size_t bytes = values.capacity() * sizeof(Value);
    for (const Value& value : values)
        bytes += ownedBy(value);
    return bytes;
}

std::size_t heldByTexts(const std::vector<std::string>& texts) {
    return heldByAll(texts, [](const std::string& text) { return memoryOf(text); });
}

/// A language is taken as the text that it was made of, which is as long or longer.
std::size_t heldByAliases(const xml::Aliases& aliases) {
    return heldByAll(aliases.getEntries(), [](const xml::Aliases::Entry& entry) {
        const auto size = std::string_view(entry.locale.getLanguage()).size();
        return memoryOf(entry.text) + (size > std::string().capacity() ? size + 1 : 0);
    });
}

std::size_t ownedBy(const TypePropertyReferenceValue& type) {
    return memoryOf(type.getDataTypeName());
}

std::size_t ownedBy(const TypePropertySingleValue& type) {
    return memoryOf(type.getDataTypeName()) + memoryOf(type.getUnitType());
}

std::size_t ownedBy(const TypePropertyBoundedValue& type) {
    return ownedBy(static_cast<const TypePropertySingleValue&>(type)) + memoryOf(type.getLowerBoundValue()) +
           memoryOf(type.getUpperBoundValue());
}

std::size_t heldByValues(const std::vector<TypePropertyValue>& values) {
    return heldByAll(values, [](const TypePropertyValue& value) {
        return ownedBy(static_cast<const TypePropertySingleValue&>(value)) + memoryOf(value.getValues());
    });
}

std::size_t ownedBy(const TypePropertyEnumeratedValue& type) {
    const auto constants = heldByAll(type.getConstants(), [](const ConstantDef& constant) {
        return memoryOf(constant.getName()) + memoryOf(constant.getDefinition()) +
               heldByAliases(constant.getNameAliases()) + heldByAliases(constant.getDefinitionAliases());
    });
    // The list is one of pointers. NOLINTNEXTLINE(bugprone-sizeof-expression)
    const auto byName = type.getConstantsByName().capacity() * sizeof(const ConstantDef*);
    return memoryOf(type.getEnumerationName()) + heldByTexts(type.getItems()) + constants + byName;
}

std::size_t ownedBy(const TypePropertyTableValue& type) {
    return memoryOf(type.getExpression()) + memoryOf(type.getDefiningTypeName()) +
           memoryOf(type.getDefinedTypeName()) + heldByValues(type.getDefiningValues()) +
           heldByValues(type.getDefinedValues());
}

std::size_t ownedBy(const TypePropertyListValue& type) {
    return memoryOf(type.getListItemTypeName()) + heldByValues(type.getListValues());
}

std::size_t ownedBy(const TypeComplexProperty& type) {
    return memoryOf(type.getName()) + heldByAll(type.getProperties(), [](const PropertyDef& property) {
               return memoryOf(property.getName()) + memoryOf(property.getDefinition()) +
                      heldByAliases(property.getNameAliases()) +
                      heldByAliases(property.getDefinitionAliases()) +
                      (property.pType() ? heldBy(*property.pType()) : 0);
           });
}

/// By the first of these classes that the type is; derived classes come before their bases.
template <class Kind, class... Others>
std::size_t heldByOneOf(const PropertyType& type) {
    if (const auto* kind = dynamic_cast<const Kind*>(&type))
        return sizeof(Kind) + ownedBy(*kind);
    if constexpr (sizeof...(Others) > 0)
        return heldByOneOf<Others...>(type);
    return 0;
}

} // namespace

std::size_t heldBy(const PropertyType& type) {
    return heldByOneOf<TypePropertyBoundedValue, TypePropertySingleValue, TypePropertyReferenceValue,
                       TypePropertyEnumeratedValue, TypePropertyTableValue, TypePropertyListValue,
                       TypeComplexProperty>(type);
}

} // namespace kiv::ifc::def::pset
