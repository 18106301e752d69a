#include "kivifc/Documents/ExportFile.h"

#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Program/Output.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fmt/format.h>
#include <memory>
#include <system_error>
#include <utility>

#if __has_include(<unistd.h>)
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

constexpr std::string_view Forbidden = "/\\:*?\"<>|%";
constexpr int TemporaryNamesMax = 1000;
/// File systems take 255 bytes; this leaves room for a mark, a checksum and an extension.
constexpr std::size_t NameSizeMax = 200;

/// FNV-1a with 64 bits.
std::uint64_t checksum(std::string_view text) {
    std::uint64_t sum = 14695981039346656037U;
    for (const char byte : text)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    return sum;
}

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

/// What paths to one file have in common; different files rarely have it.
std::string sFileKey(const fs::path& path) {
#if __has_include(<unistd.h>)
    struct stat file {};
    return lstat(path.c_str(), &file) == 0 ? fmt::format("{} {}", file.st_dev, file.st_ino) : std::string();
#else
    // Letter case, and the form of characters beyond ASCII, may not count.
    auto key = path.string();
    std::ranges::transform(key, key.begin(),
                           [](char byte) { return ascii::isAscii(byte) ? ascii::getLower(byte) : '?'; });
    key.erase(std::unique(key.begin(), key.end(), [](char a, char b) { return a == '?' && b == '?'; }),
              key.end());
    return key;
#endif
}

std::string sSystemReason() {
    return errno == 0 ? "it cannot be written" : std::generic_category().message(errno);
}

/// Opens a new file beside the path and sets `temporary` to its name.
File temporaryOpen(const fs::path& path, fs::path& temporary) {
    File file(nullptr, &std::fclose);
    for (int number = 0; !file && number < TemporaryNamesMax; ++number) {
        temporary = path.parent_path() / fmt::format(".kivifc-export-{}", number);
        errno = 0;
        file.reset(std::fopen(temporary.c_str(), "wbx"));
        if (!file && errno != EEXIST)
            break;
    }
    return file;
}

/// So that a file that has got its name is whole even after a loss of power. Elsewhere that is left to the
/// system.
bool isOnDisk([[maybe_unused]] std::FILE* file) {
#if __has_include(<unistd.h>)
    return fsync(fileno(file)) == 0;
#else
    return true;
#endif
}

std::string sTextWrite(File file, const std::string& text) {
    Output output(file.get());
    output.vWrite(text);
    auto failure = output.sFinish();
    errno = 0;
    if (failure.empty() && !isOnDisk(file.get()))
        failure = sSystemReason();
    if (std::fclose(file.release()) != 0 && failure.empty())
        failure = sSystemReason();
    return failure;
}

/// Removes a file at the end of its scope, however that is left.
class Removal {
public:
    explicit Removal(const fs::path& path) : path_(&path) {}
    Removal(const Removal&) = delete;
    Removal& operator=(const Removal&) = delete;
    ~Removal() {
        std::error_code error;
        if (path_ != nullptr)
            fs::remove(*path_, error);
    }

    void vCancel() { path_ = nullptr; }

private:
    const fs::path* path_;
};

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
    auto size = NameSizeMax;
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U)
        --size;
    return fmt::format("{}%~{:016x}", text.substr(0, size), checksum(name));
}

} // namespace

std::string sFileReplace(const fs::path& path, const std::string& text) {
    fs::path temporary;
    auto file = temporaryOpen(path, temporary);
    if (!file)
        return sSystemReason();
    Removal removal(temporary);
    if (auto failure = sTextWrite(std::move(file), text); !failure.empty())
        return failure;
    std::error_code error;
    fs::rename(temporary, path, error);
    if (error)
        return error.message();
    removal.vCancel();
    return {};
}

std::string sFileName(std::string_view name) {
    if (name.empty())
        return "%";
    std::string text;
    for (const char byte : name)
        text += sFileByte(byte, text.empty());
    return text.size() <= NameSizeMax ? text : sShortened(text, name);
}

std::string ExportFiles::sWrite(const fs::path& path, const std::string& text) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error)
        return error.message();
    auto failure = sKeepReason(path);
    if (failure.empty())
        failure = sFileReplace(path, text + sMark(text));
    if (failure.empty())
        written_.emplace(sFileKey(path), path);
    return failure;
}

/// Why the file may not be replaced; empty when it may, or is not there.
std::string ExportFiles::sKeepReason(const fs::path& path) const {
    std::error_code error;
    const auto status = fs::symlink_status(path, error);
    if (status.type() == fs::file_type::not_found)
        return {};
    if (error)
        return error.message();
    if (fs::is_directory(status))
        return "is a folder";
    if (isWritten(path))
        return "was written just now, for a set whose name is the same to this file system";
    if (isForced_)
        return {};
    if (fs::is_regular_file(status)) {
        const auto file = textFileRead(path.string());
        if (file.failure.empty() && isOwn(file.text))
            return {};
    }
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
