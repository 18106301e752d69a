#include "kiv/Kit/Text/TextLines.h"

#include "Kit/Text/Utf8.h"

#include <algorithm>

namespace kiv::kit {

TextLines::TextLines(std::string_view text) : text_(text) {
    for (auto at = text.find('\r'); at != std::string_view::npos && !hasLoneReturns_;
         at = text.find('\r', at + 1))
        hasLoneReturns_ = isLoneReturn(at);
    blocks_.reserve(text.size() / BlockSize + 1);
    blocks_.push_back({});
    for (std::size_t end = BlockSize; end <= text.size(); end += BlockSize)
        blocks_.push_back(after(blocks_.back(), end - BlockSize, end));
}

/// The CR before an LF belongs to the end of the line that the LF makes.
bool TextLines::isLoneReturn(std::size_t offset) const {
    return text_[offset] == '\r' && (offset + 1 == text_.size() || text_[offset + 1] != '\n');
}

/// The point at `to`, from that of a byte before it.
TextLines::Point TextLines::after(Point point, std::size_t from, std::size_t to) const {
    const auto part = text_.substr(from, to - from);
    std::size_t lineBegin = 0;
    for (auto at = part.find('\n'); at != std::string_view::npos; at = part.find('\n', lineBegin)) {
        ++point.line;
        lineBegin = at + 1;
    }
    if (hasLoneReturns_) {
        for (auto at = part.find('\r'); at != std::string_view::npos; at = part.find('\r', at + 1)) {
            if (isLoneReturn(from + at)) {
                ++point.line;
                lineBegin = std::max(lineBegin, at + 1);
            }
        }
    }
    if (lineBegin != 0)
        point.column = 1;
    point.column += codePointsIn(part.substr(lineBegin));
    return point;
}

TextPosition TextLines::at(std::size_t offset, std::size_t size) const {
    if (blocks_.empty())
        return {1, 1, 0};
    offset = std::min(offset, text_.size());
    const auto block = std::min(offset / BlockSize, blocks_.size() - 1);
    const auto [line, column] = after(blocks_[block], block * BlockSize, offset);
    return {line, column, codePointsOfLine(text_.substr(offset, size))};
}

std::size_t codePointsOfLine(std::string_view text) {
    text = text.substr(0, text.find('\n'));
    return codePointsIn(text.substr(0, text.find('\r')));
}

} // namespace kiv::kit
