#include "kivifc/Documents/RepositoryPaths.h"

#include "kivifc/Documents/SetDocument.h"

#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

bool isAbove(const fs::path& path) {
    return path.empty() || *path.begin() == "..";
}

} // namespace

RepositoryPaths RepositoryPaths::current() {
    RepositoryPaths paths;
    std::error_code error;
    const auto folder = fs::current_path(error);
    for (auto root = folder; !error; root = root.parent_path()) {
        if (fs::exists(root / ".git", error)) {
            paths.folder_ = folder.lexically_relative(root);
            break;
        }
        if (root == root.root_path())
            break;
    }
    return paths;
}

std::string RepositoryPaths::sShared(const std::string& path) const {
    if (path == StandardInputName)
        return path;
    std::error_code error;
    const auto here = fs::current_path(error);
    // ".." after a link is above the folder that the link leads to.
    const auto absolute = error ? fs::path() : fs::weakly_canonical(here / path, error);
    if (error)
        return fs::path(path).lexically_normal().generic_string();
    auto shown = absolute.lexically_relative(here);
    if (folder_)
        shown = (*folder_ / shown).lexically_normal();
    return (isAbove(shown) ? absolute : shown).generic_string();
}

} // namespace kiv::kivifc
