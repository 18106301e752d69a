/// @file
/// The set documents that are meant by the paths of files and folders.
///
///     const auto sets = setPathsCollect({"Sets", "Office/Pset_Desk.xml"});
///     for (const auto& path : sets.documents)
///         vUse(setDocumentRead(path));
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    what cannot be searched is among the problems; std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

namespace kiv::kit {

/// What leads to no document.
enum class PathProblemKind : std::uint8_t {
    /// A folder that cannot be searched, or in which nothing is found.
    Folder,
    /// A pipe, a socket or a device in a folder, named like a document.
    SpecialFile,
};

/// A path that leads to no document.
struct PathProblem {
    std::string path;
    /// Without a full stop; in the system's words where the system refuses something.
    std::string reason;
    PathProblemKind kind = PathProblemKind::Folder;

    auto operator<=>(const PathProblem&) const = default;
};

struct SetPaths {
    /// By path, byte by byte. A file that several paths lead to is there once, by the path that was given
    /// first; of those that a folder holds, by the first in this order.
    std::vector<std::string> documents;
    /// In the same order.
    std::vector<PathProblem> problems;
};

/// Files as they are, and of folders all files below them whose names end with ".xml" in any letter case.
/// Links to folders are followed only when they are given themselves. Folders that cannot be read or in which
/// nothing is found are problems, and so are pipes, sockets and devices in a folder that are named like
/// documents: to open one may wait for ever or have effects. Whether a file can be read is not checked.
KIV_EXPORT SetPaths setPathsCollect(const std::vector<std::string>& paths);

/// The same text for all paths that lead to one file: "a.xml", "./a.xml" and a link to it. Hard links are
/// files of their own: whether two equal files share their bytes on the disk is a matter of how they were
/// copied, and a folder is to be judged as its copy is.
KIV_EXPORT std::string sPathKey(const std::string& path);

} // namespace kiv::kit
