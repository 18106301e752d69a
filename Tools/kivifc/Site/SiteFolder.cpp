#include "kivifc/Site/SiteFolder.h"

#include "kivifc/Program/UnfinishedFile.h"
#include "kivifc/Site/SiteMark.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kiv::kivifc::site {

namespace {

namespace fs = std::filesystem;

constexpr int FolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

bool isFolderThere(const fs::path& path) {
    std::error_code error;
    return fs::is_directory(fs::symlink_status(path, error));
}

constexpr const char* InUse = "another kivifc is writing it";

bool isAnythingThere(const fs::path& path) {
    std::error_code error;
    return fs::exists(fs::symlink_status(path, error));
}

/// A folder of this name, held open and locked, so that nobody else takes it for a leftover.
Descriptor folderBegin(const fs::path& path, std::string& failure) {
    if (mkdir(path.c_str(), 0777) != 0) {
        failure = errno == EEXIST ? InUse : sSystemReason();
        return {};
    }
    auto folder = folderLock(path);
    failure = folder.isOpen() ? sUnfinishedMark(folder) : InUse;
    return folder;
}

/// Removes what a site left that was killed; a reason when somebody is writing it, or made it.
std::string sLeftoverRemove(const fs::path& path) {
    if (!isAnythingThere(path))
        return {};
    if (!isFolderThere(path))
        return fmt::format("\"{}\" is in the way", path.native());
    const auto folder = folderLock(path);
    if (!folder.isOpen())
        return InUse;
    if (!isRemovable(path))
        return fmt::format("\"{}\", which kivifc did not make, is in the way", path.native());
    return sMarkedRemove(path);
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

} // namespace

bool boFoldersExchange([[maybe_unused]] const fs::path& left, [[maybe_unused]] const fs::path& right) {
#ifdef RENAME_EXCHANGE
    return renameat2(AT_FDCWD, left.c_str(), AT_FDCWD, right.c_str(), RENAME_EXCHANGE) == 0;
#else
    return false;
#endif
}

SiteFolder::SiteFolder(bool isForced, FoldersExchange boExchange) :
    isForced_(isForced), boExchange_(boExchange) {}

// By way of the other one, so that the destructor removes what was begun when this one throws.
SiteFolder::SiteFolder(const fs::path& folder, bool isForced, FoldersExchange boExchange) :
    SiteFolder(isForced, boExchange) {
    try {
        vPrepare(folder);
    } catch (const fs::filesystem_error& error) {
        failure_ = error.code().message();
    }
}

SiteFolder::~SiteFolder() {
    if (!isBegun_)
        return;
    sMarkedRemove(unfinished_);
    vEnd();
}

void SiteFolder::vPrepare(const fs::path& folder) {
    // A link to a folder is followed once, here, and the folder that it leads to is exchanged.
    target_ = fs::weakly_canonical(fs::absolute(folder));
    // As one has it that was given with a slash at its end.
    if (!target_.has_filename())
        target_ = target_.parent_path();
    if (!target_.has_filename()) {
        failure_ = "is the root of the file system";
        return;
    }
    if (isAnythingThere(target_) && !isFolderThere(target_)) {
        failure_ = "is no folder";
        return;
    }
    fs::create_directories(target_.parent_path());
    unfinished_ = target_.parent_path() / fmt::format(".{}.kivifc-site", target_.filename().native());
    former_ = unfinished_.native() + "-former";
    failure_ = sLeftoversRemove();
    if (failure_.empty() && !isForced_ && isFolderThere(target_))
        failure_ = sKeepReason(target_);
    if (failure_.empty())
        vBegin();
}

/// A site that was killed between two renames left the former one under its other name.
std::string SiteFolder::sLeftoversRemove() {
    auto failure = sLeftoverRemove(unfinished_);
    if (!failure.empty() || isAnythingThere(target_) || !isFolderThere(former_))
        return failure.empty() ? sLeftoverRemove(former_) : failure;
    const auto former = folderLock(former_);
    if (!former.isOpen())
        return InUse;
    std::error_code error;
    fs::rename(former_, target_, error);
    return error ? error.message() : std::string();
}

void SiteFolder::vBegin() {
    // Nothing ends the program while there is a folder that nobody knows of.
    const HeldEndSignals held;
    top_ = folderBegin(unfinished_, failure_);
    isBegun_ = top_.isOpen();
    if (isBegun_)
        vUnfinishedFolderNote(vWrittenRemove, this);
    if (failure_.empty())
        sets_ = folderWithin(top_, "sets", failure_);
    if (failure_.empty())
        assets_ = folderWithin(top_, "assets", failure_);
}

void SiteFolder::vEnd() {
    isBegun_ = false;
    vUnfinishedFolderForget();
}

/// In a handler of a signal; the folders that are held open lead to the files, and the mark goes last.
void SiteFolder::vWrittenRemove(const void* folder) {
    const auto& site = *static_cast<const SiteFolder*>(folder);
    const int top = site.top_.getNumber();
    for (const auto& path : site.written_)
        unlinkat(top, path.c_str(), 0);
    for (const auto* inner : {"sets", "assets"})
        unlinkat(top, inner, AT_REMOVEDIR);
    vUnfinishedUnmark(site.top_);
    rmdir(site.unfinished_.c_str());
}

/// Before it is made, so that it is removed however early a signal comes.
void SiteFolder::vNote(const std::string& path) {
    const HeldEndSignals held;
    written_.push_back(path);
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
    const std::string file(name);
    const auto path = std::string(folderName) + file;
    vNote(path);
    errno = 0;
    Descriptor made(
        openat(folder.getNumber(), file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!made.isOpen() || !boWriteAll(made.getNumber(), text) || !made.boClose())
        failure_ = fmt::format("{}: {}", path, sSystemReason());
    bytes_ += text.size();
}

std::string SiteFolder::sFinish() {
    // Nothing ends the program while the list is out of order, or there is no site, or two.
    const HeldEndSignals held;
    std::ranges::sort(written_);
    vFileWrite(top_, "", MarkName, sMark(written_));
    if (!failure_.empty())
        return failure_;
    vUnfinishedUnmark(top_);
    failure_ = isFolderThere(target_) ? sReplace() : sMove();
    return failure_;
}

std::string SiteFolder::sMove() {
    std::error_code error;
    fs::rename(unfinished_, target_, error);
    if (error)
        return error.message();
    vEnd();
    return {};
}

/// The former site is locked before it goes to another name, where else it would be taken for a leftover.
std::string SiteFolder::sReplace() {
    const auto former = folderLock(target_);
    if (!former.isOpen())
        return InUse;
    // In one step where the system has such a step, so that there is a site at any moment.
    if (boExchange_(unfinished_, target_)) {
        auto reason = isForced_ ? std::string() : sKeepReason(unfinished_);
        if (!reason.empty()) {
            if (!boExchange_(unfinished_, target_))
                vEnd();
            return reason;
        }
        vEnd();
        return sFormerRemove(former, unfinished_);
    }
    std::error_code error;
    fs::rename(target_, former_, error);
    if (error)
        return error.message();
    auto reason = isForced_ ? std::string() : sKeepReason(former_);
    if (reason.empty())
        reason = sMove();
    if (reason.empty())
        return sFormerRemove(former, former_);
    fs::rename(former_, target_, error);
    return reason;
}

/// What cannot be removed of it, the next site removes.
std::string SiteFolder::sFormerRemove(const Descriptor& folder, const fs::path& path) {
    auto failure = sUnfinishedMark(folder);
    if (failure.empty())
        failure = sMarkedRemove(path);
    if (failure.empty())
        return {};
    return fmt::format("the site is written, but \"{}\" cannot be removed: {}", path.native(), failure);
}

} // namespace kiv::kivifc::site
