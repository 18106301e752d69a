/// @file
/// The sets that apply to an entity, by context, in the order in which contexts are searched.
///
///     for (const auto& group : applicableSets(schema, wall, {}))
///         for (const auto* set : group.sets)
///             ...
///
/// Ownership: sets belong to the registry of contexts and live until it is changed.
/// Threads:   as `SchemaPset`: no thread may change the registry meanwhile.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Json/Json.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

struct ApplicableOptions {
    /// Those of the entity alone, without its supertypes.
    bool isOwn = false;
    /// Those that name no class as well.
    bool isUnrestricted = false;
};

/// The sets of one context.
struct ApplicableGroup {
    ifc::def::SchemaPset::Context context;
    /// From the topmost supertype down; a set that names several of the entities is here once.
    std::vector<const ifc::def::xml::SetDef*> sets;
};

/// Contexts without such a set are left out.
std::vector<ApplicableGroup> applicableSets(const ifc::def::SchemaPset& schema,
                                            const ifc::def::schema::Entity& entity,
                                            const ApplicableOptions& options);

/// One line a context and below it one a set; each line begins with `indent`.
std::string sApplicableSets(const ifc::def::SchemaPset& schema, const std::vector<ApplicableGroup>& groups,
                            const std::string& indent);

/// The same as a JSON array.
void vApplicableSetsWrite(const SchemaWithSets& loaded, const std::vector<ApplicableGroup>& groups,
                          JsonWriter& writer);

} // namespace kiv::kivifc
