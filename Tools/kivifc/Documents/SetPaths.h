/// @file
/// The documents that are meant by the paths of a command line.
///
///     for (const auto& path : setPathsCollect({"Sets", "-"}, diagnostics))
///         use(setDocumentRead(path));
#pragma once

#include "kivifc/Program/Diagnostics.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// The path that means standard input.
inline constexpr std::string_view StandardInputPath = "-";

/// Files as they are, and of folders all files below them whose names end with ".xml" in any letter case;
/// ordered by path, byte by byte, each path once. Links to folders are followed only when they are given
/// themselves. Folders that cannot be read, or in which nothing is found, are failures; whether a file can be
/// read is not checked yet.
std::vector<std::string> setPathsCollect(const std::vector<std::string>& paths, Diagnostics& diagnostics);

} // namespace kiv::kivifc
