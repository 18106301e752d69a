/// @file
/// kivifc.toml: what a project checks, so that a bare `kivifc check` does the job.
///
///     schema = "IFC4.exp"
///     sets = ["Sets", "More/Pset_Extra.xml"]
///     ignore = ["D"]
///
///     [contexts]
///     office = "Office"
///
/// That file is found and read by
///
///     ProjectFailure failure;
///     if (const auto path = sProjectFileFind(); !path.empty())
///         const auto project = projectFileRead(path, failure);
///
/// Ownership: values.
/// Threads:   one thread at a time.
/// Errors:    the reason in words.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kiv::kivifc {

/// "key = values", or "key = [values]".
struct ProjectEntry {
    /// Empty for what comes before the first section.
    std::string section;
    std::string key;
    std::vector<std::string> values;
    /// From 1; 0 when it is not known.
    std::size_t line = 0;
};

struct ProjectFile {
    std::string path;
    std::vector<ProjectEntry> entries;

    /// A path of the file as the program finds it from where it runs.
    std::string sPath(const std::string& value) const;
};

/// The nearest kivifc.toml from the current folder upwards; the root of a repository, a folder with .git, is
/// the last one that is looked at. Empty when there is none.
std::string sProjectFileFind();

struct ProjectFailure {
    std::string reason;
    /// From 1; 0 when it is about the whole file.
    std::size_t line = 0;
};

/// Absent when the file cannot be read or a line of it says nothing; `failure` says why.
std::optional<ProjectFile> projectFileRead(const std::string& path, ProjectFailure& failure);

} // namespace kiv::kivifc
