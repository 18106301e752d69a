#include "kivifc/Documents/Folder.h"

#include "kivifc/Documents/Checksum.h"
#include "kivifc/Program/Output.h"
#include "kivifc/Program/UnfinishedFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

// A folder that one may write to but not list can be opened so too.
#ifdef O_PATH
constexpr int FolderFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;
#else
constexpr int FolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
#endif

constexpr std::string_view UnfinishedPrefix = ".kivifc-export-";
constexpr int UnfinishedNamesMax = 100;
constexpr std::size_t NumberSize = 16;
constexpr mode_t Permissions = 07777;

/// The name of an unfinished file. It ends with a checksum, so that nobody has a file of this name by chance.
std::string sUnfinishedName(std::string_view number) {
    const auto name = fmt::format("{}{}-", UnfinishedPrefix, number);
    return fmt::format("{}{:016x}", name, checksum(name));
}

bool isUnfinishedName(std::string_view name) {
    return name.starts_with(UnfinishedPrefix) &&
           name == sUnfinishedName(name.substr(UnfinishedPrefix.size(), NumberSize));
}

/// What the name is in the folder, a link being a link; absent when there is nothing.
std::optional<struct stat> statusOf(int folder, const char* name) {
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return status;
}

Descriptor innerOpen(const Descriptor& folder, const std::string& name, std::string& failure) {
    if (mkdirat(folder.getNumber(), name.c_str(), 0777) != 0 && errno != EEXIST) {
        failure = sSystemReason();
        return {};
    }
    Descriptor inner(openat(folder.getNumber(), name.c_str(), FolderFlags | O_NOFOLLOW));
    if (inner.isOpen())
        return inner;
    failure = sSystemReason();
    const auto status = statusOf(folder.getNumber(), name.c_str());
    if (status && S_ISLNK(status->st_mode))
        failure = fmt::format("\"{}\" is a symbolic link, which no export follows", name);
    return {};
}

/// The file while it is written, under a name of its own.
class UnfinishedFile {
public:
    /// Made with these permissions, less those of the umask. Without a file afterwards, with the reason in
    /// `errno`, when it could not be made.
    UnfinishedFile(const Descriptor& folder, mode_t permissions) : folder_(folder.getNumber()) {
        for (int count = 0; count < UnfinishedNamesMax && !file_ && boMake(permissions); ++count) {
            if (file_ && !isLocked())
                vDrop();
        }
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile() { vUnfinishedFileRemove(); }

    std::FILE* getStream() const { return file_.get(); }

    bool boRename(const std::string& name) {
        const HeldEndSignals held;
        if (renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0)
            return false;
        vUnfinishedFileForget();
        return true;
    }

private:
    void vDrop() {
        vUnfinishedFileRemove();
        file_.reset();
    }

    /// True also when the name is taken, so that the next one is tried.
    bool boMake(mode_t permissions) {
        std::uint64_t number = 0;
        if (getentropy(&number, sizeof number) != 0)
            return false;
        name_ = sUnfinishedName(fmt::format("{:016x}", number));
        const HeldEndSignals held;
        Descriptor made(openat(folder_, name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
        if (!made.isOpen())
            return errno == EEXIST;
        vUnfinishedFileNote(folder_, name_.c_str());
        file_.reset(fdopen(made.getNumber(), "wb"));
        if (!file_)
            return false;
        made.vRelease();
        return true;
    }

    /// The lock shows others that who writes is alive; the system takes it away from the dead. False when
    /// somebody took the file for a leftover before there was a lock. Where there are no locks nobody does.
    bool isLocked() {
        struct stat status {};
        const int number = fileno(file_.get());
        return !(flock(number, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) &&
               fstat(number, &status) == 0 && status.st_nlink > 0;
    }

    int folder_;
    std::string name_;
    File file_{nullptr, &std::fclose};
};

/// Owner first, as a new owner loses the bits that lend rights. These are not lent for somebody else.
void vRightsHandOn(int file, const struct stat& former) {
    const bool isOwnerKept = fchown(file, former.st_uid, former.st_gid) == 0;
    const bool isGroupKept = isOwnerKept || fchown(file, static_cast<uid_t>(-1), former.st_gid) == 0;
    auto mode = former.st_mode & Permissions;
    if (!isOwnerKept)
        mode &= ~static_cast<mode_t>(S_ISUID | S_ISGID);
    // What the former group was allowed is not for the one that the file has now.
    if (!isGroupKept)
        mode &= ~static_cast<mode_t>(S_IRWXG) | ((mode & S_IRWXO) << 3U);
    // Where the system permits no other, the file keeps the mode it has.
    static_cast<void>(fchmod(file, mode));
}

/// Whole even after a loss of power.
bool isOnDisk(std::FILE* file) {
    return fsync(fileno(file)) == 0;
}

/// Some systems lock only what may be written to; others need no more than to read, and a file that was
/// given the mode of a former one may permit no more.
Descriptor leftoverOpen(const Descriptor& folder, const char* name) {
    constexpr int Flags = O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const int descriptor = openat(folder.getNumber(), name, O_RDWR | Flags);
    return Descriptor(descriptor < 0 && errno == EACCES ? openat(folder.getNumber(), name, O_RDONLY | Flags)
                                                        : descriptor);
}

/// Whether who wrote the file is dead: nobody has its lock. It is taken, so that nobody else finds that too.
bool isLeftover(const Descriptor& file) {
    struct stat status {};
    return file.isOpen() && fstat(file.getNumber(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == geteuid() && status.st_nlink == 1 &&
           flock(file.getNumber(), LOCK_EX | LOCK_NB) == 0;
}

} // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

void Descriptor::vRelease() {
    number_ = -1;
}

bool Descriptor::boClose() {
    return close(std::exchange(number_, -1)) == 0;
}

Descriptor::~Descriptor() {
    const int error = errno;
    if (isOpen())
        close(number_);
    errno = error;
}

std::string sSystemReason() {
    return errno == 0 ? "it cannot be written" : std::generic_category().message(errno);
}

Descriptor folderOpen(const fs::path& top, const fs::path& inner, std::string& failure) {
    const auto start = top.empty() ? fs::path(".") : top;
    std::error_code error;
    fs::create_directories(start, error);
    if (error) {
        failure = error.message();
        return {};
    }
    Descriptor folder(open(start.c_str(), FolderFlags));
    if (!folder.isOpen())
        failure = sSystemReason();
    for (const auto& name : inner) {
        if (folder.isOpen() && !name.empty())
            folder = innerOpen(folder, name.native(), failure);
    }
    return folder;
}

std::string sFileReplace(const Descriptor& folder, const std::string& name, const std::string& text) {
    return sFileReplace(folder, name, [&text](Output& output) { output.vWrite(text); });
}

std::string sFileReplace(const Descriptor& folder, const std::string& name,
                         const ContentWriter& vContentWrite) {
    const auto former = statusOf(folder.getNumber(), name.c_str());
    const bool isReplaced = former && S_ISREG(former->st_mode);
    errno = 0;
    // Nobody may look into it who was not permitted to look into the former one.
    UnfinishedFile file(folder, isReplaced ? S_IRUSR | S_IWUSR : 0666);
    auto* stream = file.getStream();
    if (!stream)
        return sSystemReason();
    Output output(stream);
    vContentWrite(output);
    if (auto failure = output.sFinish(); !failure.empty())
        return failure;
    errno = 0;
    if (!isOnDisk(stream))
        return sSystemReason();
    // As late as can be: what is left when the program is killed before is surely ours, and can be opened.
    if (isReplaced)
        vRightsHandOn(fileno(stream), *former);
    errno = 0;
    return file.boRename(name) ? std::string() : sSystemReason();
}

std::string sFileReplace(const fs::path& path, const std::string& text) {
    return sFileReplace(path, [&text](Output& output) { output.vWrite(text); });
}

std::string sFileReplace(const fs::path& path, const ContentWriter& vContentWrite) {
    const auto parent = path.parent_path();
    const Descriptor folder(open(parent.empty() ? "." : parent.c_str(), FolderFlags));
    if (!folder.isOpen())
        return sSystemReason();
    vLeftoversRemove(folder);
    return sFileReplace(folder, path.filename().native(), vContentWrite);
}

void vLeftoversRemove(const Descriptor& folder) {
    const int listed = openat(folder.getNumber(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(listed < 0 ? nullptr : fdopendir(listed), &closedir);
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nobody else reads from this stream
    while (const auto* entry = entries ? readdir(entries.get()) : nullptr) {
        if (!isUnfinishedName(entry->d_name))
            continue;
        const auto file = leftoverOpen(folder, entry->d_name);
        if (isLeftover(file))
            unlinkat(folder.getNumber(), entry->d_name, 0);
    }
}

} // namespace kiv::kivifc
