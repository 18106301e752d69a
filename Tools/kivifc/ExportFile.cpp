#include "kivifc/ExportFile.h"

#include "kivifc/Output.h"
#include "kivifc/TextFile.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fmt/format.h>
#include <memory>
#include <system_error>

namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

constexpr std::string_view Forbidden = "/\\:*?\"<>|%";
constexpr int TemporaryNamesMax = 1000;

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

/// Why the file may not be replaced; empty when it may, or is not there.
std::string sKeepReason(const fs::path& path, bool isForced) {
    std::error_code error;
    const auto status = fs::symlink_status(path, error);
    if (status.type() == fs::file_type::not_found)
        return {};
    if (fs::is_directory(status))
        return "is a folder";
    if (isForced)
        return {};
    const auto file = textFileRead(path.string());
    if (file.failure.empty() && isOwn(file.text))
        return {};
    return "is there already and no unchanged export; --force replaces it";
}

/// Opens a new file beside the path, and tells its name.
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

std::string sTextWrite(File file, const std::string& text) {
    Output output(file.get());
    output.vWrite(text);
    auto failure = output.sFinish();
    errno = 0;
    if (std::fclose(file.release()) != 0 && failure.empty())
        failure = std::generic_category().message(errno);
    return failure;
}

std::string sReplace(const fs::path& path, const std::string& text) {
    fs::path temporary;
    auto file = temporaryOpen(path, temporary);
    if (!file)
        return errno == 0 ? "it cannot be written" : std::generic_category().message(errno);
    auto failure = sTextWrite(std::move(file), text);
    std::error_code error;
    if (failure.empty()) {
        fs::rename(temporary, path, error);
        failure = error ? error.message() : std::string();
    }
    if (!failure.empty())
        fs::remove(temporary, error);
    return failure;
}

} // namespace

std::string sFileName(std::string_view name) {
    if (name.empty())
        return "%";
    std::string text;
    for (const char byte : name) {
        const auto number = static_cast<unsigned char>(byte);
        const bool isHiding = byte == '.' && text.empty();
        if (number < 0x20 || number == 0x7F || isHiding || Forbidden.find(byte) != std::string_view::npos)
            text += fmt::format("%{:02X}", number);
        else
            text += byte;
    }
    return text;
}

std::string sExportFileWrite(const fs::path& path, const std::string& text, bool isForced) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error)
        return error.message();
    auto reason = sKeepReason(path, isForced);
    return reason.empty() ? sReplace(path, text + sMark(text)) : reason;
}

} // namespace kiv::kivifc
