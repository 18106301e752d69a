#include "kivifc/Findings/SourceLines.h"

#include "kiv/Kit/Positions/XmlDecoding.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/CodePoints.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace kiv::kivifc {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

/// Offsets in a file that is UTF-8 are those of its bytes; in another, nobody asks for them.
std::string sToUtf8(std::string bytes) {
    const auto encoding = kit::encodingOf(bytes);
    if (encoding == kit::XmlEncoding::Utf8)
        return bytes;
    auto text = kit::sDecoded(bytes, encoding);
    return text.starts_with(ByteOrderMark) ? text.substr(ByteOrderMark.size()) : std::move(text);
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
    if (begin == 0 && rest.starts_with(ByteOrderMark))
        rest.remove_prefix(ByteOrderMark.size());
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
