/// @file
/// The documents that are meant by the paths of a command line.
///
///     for (const auto& path : setPathsCollect({"Sets", "-"}, diagnostics))
///         use(setDocumentRead(path));
#pragma once

#include "kivifc/Program/Diagnostics.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

/// As the kit collects them, with "-" for standard input; problems are failures.
std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics);

} // namespace kiv::kivifc
