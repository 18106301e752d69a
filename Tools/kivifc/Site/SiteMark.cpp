#include "kivifc/Site/SiteMark.h"

#include "kivifc/Documents/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <set>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kiv::kivifc::site {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view MarkHead = "kivifc site 1";

/// Links are not followed: one could lead to a mark of any other folder.
bool isFileThere(const fs::path& path) {
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(path, error));
}

/// The files that a site says it has; empty when the folder is none.
std::set<std::string> listedFiles(const fs::path& folder) {
    std::set<std::string> files;
    const auto path = folder / MarkName;
    if (!isFileThere(path))
        return files;
    const auto text = textFileRead(path.native()).text;
    if (!text.starts_with(MarkHead))
        return files;
    files.insert(MarkName);
    std::string_view rest = text;
    while (!rest.empty()) {
        const auto end = std::min(rest.find('\n'), rest.size());
        files.emplace(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return files;
}

/// The first file in a folder that is not listed; empty when there is none.
std::string sForeignFile(const fs::path& folder, const std::set<std::string>& listed) {
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        auto name = entry->path().lexically_relative(folder).generic_string();
        const bool isFolder = entry->is_directory(error) && !entry->is_symlink(error);
        if (!isFolder && !listed.contains(name))
            return name;
    }
    return error ? error.message() : std::string();
}

} // namespace

std::string sMark(const std::vector<std::string>& files) {
    std::string mark(MarkHead);
    mark += '\n';
    for (const auto& path : files)
        mark.append(path).append("\n");
    return mark;
}

std::string sKeepReason(const fs::path& folder) {
    std::error_code error;
    if (fs::is_empty(folder, error))
        return {};
    const auto listed = listedFiles(folder);
    if (listed.empty())
        return "kivifc did not make this folder; --force replaces it and all that is in it";
    const auto foreign = sForeignFile(folder, listed);
    if (foreign.empty())
        return {};
    return fmt::format("kivifc did not write \"{}\" in it; --force replaces the folder and all that is in it",
                       foreign);
}

std::string sUnfinishedMark(const Descriptor& folder) {
    errno = 0;
    const Descriptor mark(
        openat(folder.getNumber(), UnfinishedMarkName, O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666));
    return mark.isOpen() ? std::string() : sSystemReason();
}

void vUnfinishedUnmark(const Descriptor& folder) {
    unlinkat(folder.getNumber(), UnfinishedMarkName, 0);
}

bool isRemovable(const fs::path& folder) {
    return isFileThere(folder / UnfinishedMarkName) || sKeepReason(folder).empty();
}

std::string sMarkedRemove(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> paths;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error)) {
        if (entry->path().filename() != UnfinishedMarkName)
            paths.push_back(entry->path());
    }
    for (const auto& path : paths) {
        if (!error)
            fs::remove_all(path, error);
    }
    if (!error)
        fs::remove_all(folder, error);
    return error ? error.message() : std::string();
}

// Who waited at the lock of a folder that was removed meanwhile has a lock of nothing.
Descriptor folderLock(const fs::path& folder) {
    Descriptor locked(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!locked.isOpen() || flock(locked.getNumber(), LOCK_EX | LOCK_NB) != 0)
        return {};
    struct stat held {};
    struct stat there {};
    const bool isSame = fstat(locked.getNumber(), &held) == 0 && lstat(folder.c_str(), &there) == 0 &&
                        held.st_dev == there.st_dev && held.st_ino == there.st_ino;
    return isSame ? std::move(locked) : Descriptor();
}

} // namespace kiv::kivifc::site
