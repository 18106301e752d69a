/// @file
/// The names that can be asked for.
///
///     for (const auto name : entityNames(schema))
///         vUse(name);
///
/// Ownership: the names are views into the schema and the sets.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <string_view>
#include <vector>

namespace kiv::kit {

/// The names of all entities, in alphabetical order.
KIV_EXPORT std::vector<std::string_view> entityNames(const ifc::def::schema::Schema& schema);

/// The names of all sets that a search finds.
KIV_EXPORT std::vector<std::string_view> setNames(const ifc::def::SchemaPset& schema);

} // namespace kiv::kit
