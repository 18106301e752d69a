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

#include "kiv/Kit/Documents/SetPaths.h"
#include "kivifc/Program/Diagnostics.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

/// As the kit collects them, with "-" for standard input; problems are failures.
std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics);

/// The same, but `specialFiles` gets the pipes, sockets and devices in folders, for the caller to show.
std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics,
                                         std::vector<kit::PathProblem>& specialFiles);

} // namespace kiv::kivifc
