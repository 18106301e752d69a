/// @file
/// Paths as services know them that have a copy of the repository: from its root, wherever the program ran.
///
///     const auto paths = RepositoryPaths::current(); // in the folder "Tools" of a repository
///     paths.sShared("../Sets/a.xml");                // "Sets/a.xml"
///
/// Without a repository they are from the folder one is in. What lies elsewhere has an absolute path.
///
/// Threads: any number of threads.
/// Errors:  a folder that cannot be looked at is in no repository.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace kiv::kivifc {

class RepositoryPaths {
public:
    /// Without a repository.
    RepositoryPaths() = default;

    /// The repository that the current folder is in: the nearest folder with .git.
    static RepositoryPaths current();

    bool isInRepository() const { return folder_.has_value(); }

    /// Without ".", ".." and links; the name of standard input stays what it is.
    std::string sShared(const std::string& path) const;

private:
    // The current folder, from the root of the repository.
    std::optional<std::filesystem::path> folder_;
};

} // namespace kiv::kivifc
