#include "kivifc/Documents/ExportFile.h"

#include "kivifc/Documents/Checksum.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/CodePoints.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Forbidden = "/\\:*?\"<>|%";
/// File systems take 255 bytes; this leaves room for a mark, a checksum and an extension.
constexpr std::size_t NameSizeMax = 200;

std::string sMark(std::string_view text) {
    return fmt::format("<!-- kivifc export {:016x} -->\n", checksum(text));
}

bool isOwn(std::string_view text) {
    const auto size = sMark({}).size();
    if (text.size() < size)
        return false;
    const auto body = text.substr(0, text.size() - size);
    return text.substr(body.size()) == sMark(body);
}

/// Whether it is a file, reached by no link, that an export wrote and nobody changed.
bool isOwnFile(const Descriptor& folder, const char* name, const struct stat& status) {
    if (!S_ISREG(status.st_mode))
        return false;
    // What has taken its place meanwhile may be a link, or a pipe that would let us wait.
    const int descriptor = openat(folder.getNumber(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const auto file = descriptorRead(descriptor);
    return file.failure.empty() && isOwn(file.text);
}

/// What paths to one file have in common; different files rarely have it.
std::string sFileKey(const fs::path& path) {
    struct stat file {};
    return lstat(path.c_str(), &file) == 0 ? fmt::format("{} {}", file.st_dev, file.st_ino) : std::string();
}

std::string sFileByte(char byte, bool isFirst) {
    const auto number = static_cast<unsigned char>(byte);
    const bool isControl = number < 0x20 || number == 0x7F;
    const bool isHiding = isFirst && byte == '.';
    if (isControl || isHiding || Forbidden.find(byte) != std::string_view::npos)
        return fmt::format("%{:02X}", number);
    return {byte};
}

/// Cut between characters of UTF-8. "%~" is in no name that was not cut.
std::string sShortened(const std::string& text, std::string_view name) {
    const auto size = characterBegin(text, NameSizeMax);
    return fmt::format("{}%~{:016x}", text.substr(0, size), checksum(name));
}

} // namespace

std::string sFileName(std::string_view name) {
    if (name.empty())
        return "%";
    std::string text;
    for (const char byte : name)
        text += sFileByte(byte, text.empty());
    return text.size() <= NameSizeMax ? text : sShortened(text, name);
}

std::string ExportFiles::sWrite(const fs::path& path, const std::string& text) {
    auto failure = sFolderOpen(path.parent_path());
    if (failure.empty())
        failure = sKeepReason(path);
    if (failure.empty())
        failure = sFileReplace(folder_, path.filename().native(), text + sMark(text));
    if (failure.empty())
        written_.emplace(sFileKey(path), path);
    return failure;
}

/// Opens the folder, unless it is the one that is open, and removes what is left there of exports that were
/// killed.
std::string ExportFiles::sFolderOpen(const fs::path& path) {
    if (folder_.isOpen() && path == folderPath_)
        return {};
    std::string failure;
    const auto& top = top_ ? *top_ : path;
    folder_ = folderOpen(top, top_ ? path.lexically_relative(top) : fs::path(), failure);
    folderPath_ = path;
    if (folder_.isOpen())
        vLeftoversRemove(folder_);
    return failure;
}

/// Why the file may not be replaced; empty when it may, or is not there.
std::string ExportFiles::sKeepReason(const fs::path& path) const {
    const auto name = path.filename();
    struct stat status {};
    if (fstatat(folder_.getNumber(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? std::string() : sSystemReason();
    if (S_ISDIR(status.st_mode))
        return "is a folder";
    if (isWritten(path))
        return "was written just now, for a set whose name is the same to this file system";
    if (isForced_ || isOwnFile(folder_, name.c_str(), status))
        return {};
    return "is there already and no unchanged export; --force replaces it";
}

/// Whether this export has written to the file that is there, under this name or another one.
bool ExportFiles::isWritten(const fs::path& path) const {
    const auto [begin, end] = written_.equal_range(sFileKey(path));
    return std::any_of(begin, end, [&](const auto& entry) {
        std::error_code error;
        return fs::equivalent(entry.second, path, error);
    });
}

} // namespace kiv::kivifc
