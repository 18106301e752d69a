#include "kivifc/Documents/ExportFile.h"

#include "kivifc/Documents/Checksum.h"
#include "kivifc/Program/CodePoints.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view Forbidden = "/\\:*?\"<>|%";
/// File systems take 255 bytes; this leaves room for a mark, a checksum and an extension.
constexpr std::size_t NameSizeMax = 200;

std::string sMark(std::uint64_t sum) {
    return fmt::format("<!-- kivifc export {:016x} -->\n", sum);
}

/// The next bytes of a file, as many as are asked for or up to its end.
std::string sPiece(std::FILE* file, std::size_t size) {
    std::string piece(size, '\0');
    piece.resize(std::fread(piece.data(), 1, size, file));
    return piece;
}

/// Whether the file, of that size, ends with the mark of what is before it. It is read piece by piece, so the
/// limits of what is read whole are not for it.
bool isOwn(std::FILE* file, std::uintmax_t size) {
    constexpr std::uintmax_t PieceSize = 65536;
    const auto markSize = sMark(EmptyChecksum).size();
    if (size < markSize)
        return false;
    auto sum = EmptyChecksum;
    for (auto left = size - markSize; left > 0;) {
        const auto piece = sPiece(file, static_cast<std::size_t>(std::min(left, PieceSize)));
        if (piece.empty())
            return false;
        sum = checksum(piece, sum);
        left -= piece.size();
    }
    // One byte more shows that the file has not grown meanwhile.
    return sPiece(file, markSize + 1) == sMark(sum);
}

/// Whether it is a file, reached by no link, that an export wrote and nobody changed.
bool isOwnFile(const Descriptor& folder, const char* name, const struct stat& status) {
    if (!S_ISREG(status.st_mode))
        return false;
    // What has taken its place meanwhile may be a link, or a pipe that would let us wait.
    Descriptor opened(openat(folder.getNumber(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat now {};
    if (!opened.isOpen() || fstat(opened.getNumber(), &now) != 0 || !S_ISREG(now.st_mode))
        return false;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(fdopen(opened.getNumber(), "rb"),
                                                               &std::fclose);
    if (!file)
        return false;
    opened.vRelease();
    return isOwn(file.get(), static_cast<std::uintmax_t>(now.st_size));
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
        failure = sFileReplace(folder_, path.filename().native(), text + sMark(checksum(text)));
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
    // A link there was made to write somewhere else, perhaps by somebody who may not write there.
    if (top_ && S_ISLNK(status.st_mode))
        return "is a symbolic link, which no export replaces";
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
