/// @file
/// Everything that `kivifc check` read, as it was read: the library's report, its records and assertions, or
/// all of it as JSON. What is chosen of the findings does not matter here.
///
///     vCheckListing(schema, setPathsCollect(options.paths, console.diagnostics), options, console);
///
/// Threads: one thread at a time.
/// Errors:  reported.
#pragma once

#include "kivifc/Commands/CheckOptions.h"
#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Program/Program.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

void vCheckListing(const SchemaFile& schema, const std::vector<std::string>& paths,
                   const CheckOptions& options, Console& console);

} // namespace kiv::kivifc
