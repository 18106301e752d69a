#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDerive.h"

#include "Base/Metered.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <algorithm>

namespace kiv::ifc::def::schema {

DeriveValue::DeriveValue(std::string_view name, std::string_view rest) : name_(name), rest_(rest) {}

void DeriveValue::update(const Entity& entity) {
    const auto key = redeclaredName();
    if (key && !boRedeclaredSet(entity.pAttributeFromName(*key, true)))
        vReport(Report::DerivedNotFound);
}

void DeriveValue::update(const Entity& entity, Schema& schema) {
    const auto key = redeclaredName();
    if (key && !boRedeclaredSet(SchemaBuilder::pAttribute(schema, entity, *key)))
        SchemaBuilder::vReport(schema, Report::DerivedNotFound);
}

/// What follows the dot; a plain derived attribute has none.
std::optional<AttributeName> DeriveValue::redeclaredName() const {
    const auto dot = name_.find('.');
    if (dot == std::string_view::npos)
        return std::nullopt;
    return AttributeName(name_.substr(dot + 1));
}

bool DeriveValue::boRedeclaredSet(const Attribute* attribute) {
    redeclared_ = attribute;
    return attribute != nullptr;
}

bool Derive::boRedeclares() const {
    return std::any_of(values_.begin(), values_.end(), [](const DeriveValue& value) {
        return value.getName().find('.') != std::string_view::npos;
    });
}

void Derive::vDeriveAdd(std::string_view name, std::string_view rest, WorkMeter* meter) {
    vObjectTake(meter);
    vRoomForOne(values_, meter);
    values_.emplace_back(name, rest);
}

void Derive::vUpdate(const Entity& entity, Schema& schema) {
    for (auto& value : values_) {
        vLook(SchemaBuilder::pMeter(schema));
        value.update(entity, schema);
    }
}

} // namespace kiv::ifc::def::schema
