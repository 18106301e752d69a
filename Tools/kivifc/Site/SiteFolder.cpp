#include "kivifc/Site/SiteFolder.h"

#include "kivifc/Documents/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kiv::kivifc::site {

namespace {

namespace fs = std::filesystem;

constexpr const char* MarkName = ".kivifc-site";
constexpr std::string_view MarkHead = "kivifc site 1";
constexpr int FolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

/// The files that a site says it has; empty when the folder is none. Links are not followed.
std::set<std::string> listedFiles(const fs::path& folder) {
    std::set<std::string> files;
    std::error_code error;
    const auto path = folder / MarkName;
    if (!fs::is_regular_file(fs::symlink_status(path, error)))
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
        const auto name = entry->path().lexically_relative(folder).generic_string();
        const bool isFolder = entry->is_directory(error) && !entry->is_symlink(error);
        if (!isFolder && !listed.contains(name))
            return name;
    }
    return error ? error.message() : std::string();
}

/// Why a folder that is there must not be replaced; empty when it may be.
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

bool isFolderThere(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(fs::symlink_status(path, error));
}

/// A folder of this name, held open and locked, so that nobody else takes it for a leftover.
Descriptor lockedFolder(const fs::path& path, std::string& failure) {
    if (mkdir(path.c_str(), 0777) != 0) {
        failure = sSystemReason();
        return {};
    }
    Descriptor folder(open(path.c_str(), FolderFlags | O_NOFOLLOW));
    if (!folder.isOpen() || flock(folder.getNumber(), LOCK_EX | LOCK_NB) != 0)
        failure = sSystemReason();
    return folder;
}

/// Removes what a site left that was killed; a reason when somebody is writing it.
std::string sLeftoverRemove(const fs::path& path) {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(path, error)))
        return {};
    const Descriptor folder(open(path.c_str(), FolderFlags | O_NOFOLLOW));
    if (!folder.isOpen())
        return fmt::format("\"{}\" is in the way", path.native());
    if (flock(folder.getNumber(), LOCK_EX | LOCK_NB) != 0)
        return "another kivifc is writing it";
    fs::remove_all(path, error);
    return error ? error.message() : std::string();
}

Descriptor folderWithin(const Descriptor& folder, const char* name, std::string& failure) {
    if (mkdirat(folder.getNumber(), name, 0777) != 0) {
        failure = sSystemReason();
        return {};
    }
    return Descriptor(openat(folder.getNumber(), name, FolderFlags | O_NOFOLLOW));
}

bool boWriteAll(int file, std::string_view text) {
    while (!text.empty()) {
        const auto size = write(file, text.data(), text.size());
        if (size < 0 && errno != EINTR)
            return false;
        text.remove_prefix(size < 0 ? 0 : static_cast<std::size_t>(size));
    }
    return true;
}

bool boExchange([[maybe_unused]] const fs::path& left, [[maybe_unused]] const fs::path& right) {
#ifdef RENAME_EXCHANGE
    return renameat2(AT_FDCWD, left.c_str(), AT_FDCWD, right.c_str(), RENAME_EXCHANGE) == 0;
#else
    return false;
#endif
}

} // namespace

SiteFolder::SiteFolder(const fs::path& folder, bool isForced) {
    try {
        vPrepare(folder, isForced);
    } catch (const fs::filesystem_error& error) {
        failure_ = error.code().message();
    }
}

SiteFolder::~SiteFolder() {
    std::error_code error;
    if (isBegun_)
        fs::remove_all(unfinished_, error);
}

void SiteFolder::vPrepare(const fs::path& folder, bool isForced) {
    // A link to a folder is followed once, here, and the folder that it leads to is exchanged.
    target_ = fs::weakly_canonical(fs::absolute(folder));
    // As one has it that was given with a slash at its end.
    if (!target_.has_filename())
        target_ = target_.parent_path();
    if (!target_.has_filename()) {
        failure_ = "is the root of the file system";
        return;
    }
    if (fs::exists(fs::symlink_status(target_)) && !isFolderThere(target_))
        failure_ = "is no folder";
    else if (isFolderThere(target_) && !isForced)
        failure_ = sKeepReason(target_);
    if (!failure_.empty())
        return;
    fs::create_directories(target_.parent_path());
    unfinished_ = target_.parent_path() / fmt::format(".{}.kivifc-site", target_.filename().native());
    failure_ = sLeftoverRemove(unfinished_);
    if (!failure_.empty())
        return;
    top_ = lockedFolder(unfinished_, failure_);
    isBegun_ = top_.isOpen();
    if (failure_.empty())
        sets_ = folderWithin(top_, "sets", failure_);
    if (failure_.empty())
        assets_ = folderWithin(top_, "assets", failure_);
}

void SiteFolder::vWrite(const Address& address, std::string_view text) {
    constexpr std::string_view Sets = "sets/";
    constexpr std::string_view Assets = "assets/";
    const auto path = address.getPath();
    if (path.starts_with(Sets))
        vFileWrite(sets_, Sets, path.substr(Sets.size()), text);
    else if (path.starts_with(Assets))
        vFileWrite(assets_, Assets, path.substr(Assets.size()), text);
    else
        vFileWrite(top_, "", path, text);
}

void SiteFolder::vWrite(const Asset& asset) {
    vFileWrite(assets_, "assets/", asset.name, asset.bytes);
}

void SiteFolder::vFileWrite(const Descriptor& folder, std::string_view folderName, std::string_view name,
                            std::string_view text) {
    if (!failure_.empty())
        return;
    errno = 0;
    const std::string file(name);
    const Descriptor made(
        openat(folder.getNumber(), file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    const auto path = std::string(folderName) + file;
    if (!made.isOpen() || !boWriteAll(made.getNumber(), text))
        failure_ = fmt::format("{}: {}", path, sSystemReason());
    written_.push_back(path);
    bytes_ += text.size();
}

std::string SiteFolder::sFinish() {
    std::ranges::sort(written_);
    std::string mark(MarkHead);
    mark += '\n';
    for (const auto& path : written_)
        mark.append(path).append("\n");
    vFileWrite(top_, "", MarkName, mark);
    if (failure_.empty())
        failure_ = sExchange();
    return failure_;
}

/// The two change places in one step where the system has such a step. Else the former site goes to a name
/// beside it, so that there is none for a moment, and comes back when the new one cannot take its place.
std::string SiteFolder::sExchange() {
    std::error_code error;
    const bool isReplaced = isFolderThere(target_);
    // What is removed in the end is then the former site.
    if (isReplaced && boExchange(unfinished_, target_))
        return {};
    const auto former = fs::path(unfinished_.native() + "-former");
    if (isReplaced)
        fs::rename(target_, former, error);
    if (error)
        return error.message();
    fs::rename(unfinished_, target_, error);
    if (error && isReplaced) {
        std::error_code ignored;
        fs::rename(former, target_, ignored);
    }
    if (error)
        return error.message();
    isBegun_ = false;
    if (isReplaced)
        fs::remove_all(former, error);
    return {};
}

} // namespace kiv::kivifc::site
