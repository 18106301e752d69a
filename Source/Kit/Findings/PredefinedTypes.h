/// @file
/// The attribute PredefinedType of entities, each looked for once, however many classes of a document and
/// however many entities above it ask for it.
///
///     PredefinedTypes types;
///     if (const auto* legal = types.pItems(entity))
///         vUse(legal->getItems());
///
/// Private to the kit.
///
/// Ownership: refers to the schema of the entities.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"

#include <unordered_map>

namespace kiv::kit {

class PredefinedTypes {
public:
    /// That of the entity or the nearest supertype with one; null when there is none.
    const ifc::def::schema::Attribute* pAttribute(const ifc::def::schema::Entity& entity);
    /// The enumeration that is its type; null when there is none.
    const ifc::def::schema::DataTypeEnum* pItems(const ifc::def::schema::Entity& entity);

private:
    std::unordered_map<const ifc::def::schema::Entity*, const ifc::def::schema::Attribute*> known_;
};

} // namespace kiv::kit
