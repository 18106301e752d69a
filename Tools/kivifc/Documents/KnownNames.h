/// @file
/// The names that can be asked for.
///
///     for (const auto name : entityNames(schema))
///         use(name);
///
/// Ownership: the names are views into the schema and the sets.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// The names of all entities.
std::vector<std::string_view> entityNames(const ifc::def::schema::Schema& schema);

/// The names of all sets that a search finds.
std::vector<std::string_view> setNames(const ifc::def::SchemaPset& schema);

} // namespace kiv::kivifc
