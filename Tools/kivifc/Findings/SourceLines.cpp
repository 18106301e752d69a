#include "kivifc/Findings/SourceLines.h"

#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/CodePoints.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace kiv::kivifc {

namespace {

using namespace std::string_view_literals;

void vUtf8Append(std::string& text, char32_t value) {
    const auto vAppend = [&](char32_t bits) { text += static_cast<char>(static_cast<unsigned char>(bits)); };
    if (value < 0x80)
        return vAppend(value);
    if (value < 0x800) {
        vAppend(0xC0U | (value >> 6U));
        return vAppend(0x80U | (value & 0x3FU));
    }
    if (value < 0x10000) {
        vAppend(0xE0U | (value >> 12U));
    } else {
        vAppend(0xF0U | (value >> 18U));
        vAppend(0x80U | ((value >> 12U) & 0x3FU));
    }
    vAppend(0x80U | ((value >> 6U) & 0x3FU));
    vAppend(0x80U | (value & 0x3FU));
}

/// A text of two-byte units, of which a byte order mark says the order.
std::string sFromUtf16(std::string_view bytes, bool isLittleEndian) {
    std::string text;
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<char32_t>(isLittleEndian ? first | (second << 8U) : (first << 8U) | second);
    };
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
        auto value = unitAt(at);
        const bool isHigh = value >= 0xD800 && value < 0xDC00 && at + 3 < bytes.size();
        const auto low = isHigh ? unitAt(at + 2) : 0;
        if (low >= 0xDC00 && low < 0xE000) {
            value = 0x10000 + ((value - 0xD800) << 10U) + (low - 0xDC00);
            at += 2;
        }
        vUtf8Append(text, value);
    }
    return text;
}

std::string sToUtf8(std::string text) {
    if (text.starts_with("\xFF\xFE"sv))
        return sFromUtf16(text, true);
    return text.starts_with("\xFE\xFF"sv) ? sFromUtf16(text, false) : std::move(text);
}

/// A pipe is not opened again: nobody may write to it any more.
std::string sRegularFileRead(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    return textFileRead(path).text;
}

} // namespace

LinedText::LinedText(std::string text) : text_(std::move(text)), begins_{0} {
    for (auto at = text_.find_first_of("\r\n"); at != std::string::npos;
         at = text_.find_first_of("\r\n", begins_.back()))
        begins_.push_back(at + (text_.compare(at, 2, "\r\n") == 0 ? 2 : 1));
}

std::string_view LinedText::line(std::size_t number) const {
    if (number == 0 || number > begins_.size())
        return {};
    const auto begin = begins_[number - 1];
    const auto end = text_.find_first_of("\r\n", begin);
    return std::string_view(text_).substr(begin, end == std::string::npos ? end : end - begin);
}

std::pair<std::size_t, std::size_t> LinedText::lineAndColumn(std::size_t offset) const {
    const auto next = std::ranges::upper_bound(begins_, offset);
    const auto number = static_cast<std::size_t>(next - begins_.begin());
    if (number == 0)
        return {1, 1};
    const auto begin = begins_[number - 1];
    auto rest = std::string_view(text_).substr(begin, std::min(offset, text_.size()) - begin);
    // A byte order mark is no character of the first line.
    if (begin == 0 && rest.starts_with("\xEF\xBB\xBF"sv))
        rest.remove_prefix(3);
    std::size_t column = 1;
    for (; !rest.empty(); ++column)
        codePointTake(rest);
    return {number, column};
}

void SourceLines::vKeep(const std::string& path, std::string text) {
    kept_[path] = std::move(text);
}

const LinedText& SourceLines::text(const std::string& path) {
    if (path == path_)
        return current_;
    const auto kept = kept_.find(path);
    current_ = LinedText(sToUtf8(kept == kept_.end() ? sRegularFileRead(path) : kept->second));
    path_ = path;
    return current_;
}

} // namespace kiv::kivifc
