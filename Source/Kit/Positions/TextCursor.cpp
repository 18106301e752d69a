#include "Kit/Positions/TextCursor.h"

#include "Kit/Text/Utf8.h"

namespace kiv::kit {

namespace {

constexpr std::string_view ReturnOrFeed = "\r\n";

bool hasLoneReturn(std::string_view text) {
    for (auto at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1)) {
        if (text.substr(at + 1, 1) != "\n")
            return true;
    }
    return false;
}

} // namespace

TextCursor::TextCursor(std::string_view text) : text_(text), hasLoneReturns_(hasLoneReturn(text)) {
    lineEnd_ = lineEndFrom(0);
    vLineLook();
}

std::size_t TextCursor::codePoints(std::string_view text) {
    return codePointsIn(text.substr(0, text.find_first_of(ReturnOrFeed)));
}

void TextCursor::vLineOf(std::size_t offset) {
    do {
        lineBegin_ = lineEnd_ + 1;
        lineEnd_ = lineEndFrom(lineBegin_);
        ++line_;
    } while (offset > lineEnd_);
    vLineLook();
}

/// At its LF, at a CR without one, or where the text ends.
std::size_t TextCursor::lineEndFrom(std::size_t begin) const {
    if (!hasLoneReturns_)
        return std::min(text_.find('\n', begin), text_.size());
    const auto end = std::min(text_.find_first_of(ReturnOrFeed, begin), text_.size());
    return text_.substr(end, 2) == "\r\n" ? end + 1 : end;
}

void TextCursor::vLineLook() {
    // The CR before an LF belongs to the end.
    const bool isReturn = lineEnd_ != lineBegin_ && text_[lineEnd_ - 1] == '\r';
    contentEnd_ = isReturn ? lineEnd_ - 1 : lineEnd_;
    asciiEnd_ = lineBegin_ + asciiAtFront(text_.substr(lineBegin_, lineEnd_ - lineBegin_));
    countedTo_ = asciiEnd_;
    column_ = asciiEnd_ - lineBegin_ + 1;
}

TextPosition TextCursor::countedAt(std::size_t offset, std::size_t length) {
    if (offset < asciiEnd_)
        return {line_, offset - lineBegin_ + 1, codePointsIn(text_.substr(offset, length))};
    column_ += codePointsIn(text_.substr(countedTo_, offset - countedTo_));
    countedTo_ = offset;
    return {line_, column_, codePointsIn(text_.substr(offset, length))};
}

} // namespace kiv::kit
