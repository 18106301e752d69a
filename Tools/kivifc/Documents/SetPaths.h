/// @file
/// The documents that are meant by the paths of a command line.
///
///     for (const auto& path : setPathsCollect({"Sets", "-"}, diagnostics))
///         use(setDocumentRead(path));
///
/// Threads:   free function without state.
/// Errors:    a path that is not there or not read is a failure in `diagnostics`; the rest is still
///            collected.
#pragma once

#include "kivifc/Program/Diagnostics.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

/// As the kit collects them, with "-" for standard input; problems are failures.
std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics);

} // namespace kiv::kivifc
