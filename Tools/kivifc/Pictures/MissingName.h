/// @file
/// Says that a name does not exist, with the name that was probably meant.
///
///     sNoEntity(schema, "BldWal") // no entity "BldWal"; did you mean "BldWall"?
///
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// no KIND "NAME", and the candidate that comes closest to it.
std::string sNoName(std::string_view kind, std::string_view name,
                    const std::vector<std::string_view>& candidates);

/// Why the schema has no entity of this name.
std::string sNoEntity(const ifc::def::schema::Schema& schema, const std::string& name);

} // namespace kiv::kivifc
