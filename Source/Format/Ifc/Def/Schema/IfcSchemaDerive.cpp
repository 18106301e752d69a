#include "Format/Ifc/Def/Schema/IfcSchemaDerive.h"

#include "Format/Ifc/Def/Schema/IfcSchemaAssert.h"
#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"

#include <algorithm>

namespace kiv::ifc::def::schema {

DeriveValue::DeriveValue(std::string_view name, std::string_view rest) : name_(name), rest_(rest) {}

void DeriveValue::update(const Entity& entity) {
    AttributeSearch<Attribute> search;
    update(entity, search);
}

void DeriveValue::update(const Entity& entity, AttributeSearch<Attribute>& search) {
    const auto dot = name_.find('.');
    if (dot == std::string_view::npos)
        return;
    redeclared_ = search.pFind(entity, AttributeName(name_.substr(dot + 1)));
    if (!redeclared_)
        vAssertReport("Attribute not found", "kiv::ifc::def::schema::DeriveValue::update",
                      "Source/Format/Ifc/Def/Schema/IfcSchemaDerive", 30);
}

bool Derive::boRedeclares() const {
    return std::any_of(values_.begin(), values_.end(), [](const DeriveValue& value) {
        return value.getName().find('.') != std::string_view::npos;
    });
}

void Derive::vDeriveAdd(std::string_view name, std::string_view rest) {
    values_.emplace_back(name, rest);
}

void Derive::vUpdate(const Entity& entity, AttributeSearch<Attribute>& search) {
    for (auto& value : values_)
        value.update(entity, search);
}

} // namespace kiv::ifc::def::schema
