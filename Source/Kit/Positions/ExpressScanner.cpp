#include "Kit/Positions/ExpressScanner.h"

#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"

#include <algorithm>
#include <array>

namespace kiv::kit {

namespace {

constexpr std::string_view LineEnds = "\r\n";

bool isWordStart(char letter) {
    return isLetter(letter) || letter == '_' || static_cast<unsigned char>(letter) >= 0x80;
}

/// Looked up, as most bytes of a schema are asked for this.
constexpr std::array<bool, 256> WordParts = [] {
    std::array<bool, 256> parts{};
    for (std::size_t byte = 0; byte < parts.size(); ++byte) {
        const auto letter = static_cast<char>(static_cast<unsigned char>(byte));
        parts[byte] = isLetter(letter) || isDigit(letter) || letter == '_' || byte >= 0x80;
    }
    return parts;
}();

bool isWordPart(char letter) {
    return WordParts[static_cast<unsigned char>(letter)];
}

bool isBlank(char letter) {
    return static_cast<unsigned char>(letter) <= ' ';
}

/// What blanks and comments begin with.
bool isGapBegin(char letter) {
    return isBlank(letter) || letter == '(' || letter == '-';
}

ExpressTokenKind kindOf(char letter) {
    if (isWordStart(letter))
        return ExpressTokenKind::Word;
    if (isDigit(letter))
        return ExpressTokenKind::Number;
    return letter == '\'' || letter == '"' ? ExpressTokenKind::String : ExpressTokenKind::Symbol;
}

std::size_t wordSize(std::string_view text) {
    std::size_t size = 0;
    while (size < text.size() && isWordPart(text[size]))
        ++size;
    return size;
}

/// A number takes its dot, but no second one, and no exponent, which nobody looks at here.
std::size_t numberSize(std::string_view text) {
    auto size = static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
    if (size < text.size() && text[size] == '.')
        ++size;
    while (size < text.size() && isWordPart(text[size]))
        ++size;
    return size;
}

/// Up to the closing quote or the end of the line; a doubled quote is two strings without anything between.
std::size_t stringSize(std::string_view text) {
    const char ends[] = {text.front(), '\r', '\n'};
    const auto end = text.find_first_of({ends, sizeof(ends)}, 1);
    if (end == std::string_view::npos)
        return text.size();
    return text[end] == text.front() ? end + 1 : end;
}

std::size_t symbolSize(std::string_view text) {
    if (text.front() != ':')
        return 1;
    for (const std::string_view symbol : {":<>:", ":=:", ":="}) {
        if (text.starts_with(symbol))
            return symbol.size();
    }
    return 1;
}

} // namespace

ExpressScanner::ExpressScanner(std::string_view text) : text_(text) {
    if (text.starts_with(ByteOrderMark))
        mark_.offset = ByteOrderMark.size();
}

ExpressScanner::ExpressScanner(std::string_view text, const ExpressMark& begin, std::size_t end) :
    text_(text.substr(0, end)), mark_(begin) {}

char ExpressScanner::charAt(std::size_t distance) const {
    return mark_.offset + distance < text_.size() ? text_[mark_.offset + distance] : '\0';
}

void ExpressScanner::vAdvance() {
    const char letter = text_[mark_.offset++];
    // A carriage return before a line feed belongs to that line's end.
    if (letter == '\n' || (letter == '\r' && charAt(0) != '\n')) {
        ++mark_.line;
        mark_.column = 1;
        return;
    }
    if (!isContinuation(charAt(0)))
        ++mark_.column;
}

void ExpressScanner::vAdvanceTo(std::size_t offset) {
    while (mark_.offset < offset)
        vAdvance();
}

void ExpressScanner::vLineSkip() {
    vAdvanceTo(std::min(text_.find_first_of(LineEnds, mark_.offset), text_.size()));
}

/// Where the comment that begins here ends; npos when nothing closes it.
std::size_t ExpressScanner::commentEnd() {
    constexpr std::string_view Close = "*)";
    if (mark_.offset >= neverClosedFrom_)
        return std::string_view::npos;
    auto pos = mark_.offset + Close.size();
    std::size_t depth = 1;
    while (depth > 0 && nests_) {
        pos = text_.find_first_of("*(", pos);
        if (pos == std::string_view::npos)
            break;
        const auto pair = text_.substr(pos, 2);
        depth = pair == Close ? depth - 1 : pair == "(*" ? depth + 1 : depth;
        pos += pair == Close || pair == "(*" ? 2U : 1U;
    }
    if (depth == 0)
        return pos;
    nests_ = false;
    const auto end = text_.find(Close, mark_.offset + Close.size());
    if (end != std::string_view::npos)
        return end + Close.size();
    neverClosedFrom_ = mark_.offset;
    return std::string_view::npos;
}

void ExpressScanner::vCommentSkip() {
    constexpr std::size_t OpenSize = 2;
    const bool nested = nests_;
    const TextPosition begin{mark_.line, mark_.column, OpenSize};
    const auto end = commentEnd();
    if (openComment_.line == 0 && (end == std::string_view::npos || nested != nests_))
        openComment_ = begin;
    if (end == std::string_view::npos)
        vLineSkip();
    else
        vAdvanceTo(end);
}

/// Blanks and tabs, which most gaps are made of.
void ExpressScanner::vBlanksSkip() {
    auto end = mark_.offset;
    while (end != text_.size() && (text_[end] == ' ' || text_[end] == '\t'))
        ++end;
    const auto size = end - mark_.offset;
    mark_.offset = end;
    // What goes on with a code point takes the column of the last one.
    mark_.column += size != 0 && isContinuation(charAt(0)) ? size - 1 : size;
}

void ExpressScanner::vGapSkip() {
    for (vBlanksSkip(); !isAtEnd(); vBlanksSkip()) {
        if (isBlank(charAt(0)))
            vAdvance();
        else if (charAt(0) == '(' && charAt(1) == '*')
            vCommentSkip();
        else if (charAt(0) == '-' && charAt(1) == '-')
            vLineSkip();
        else
            return;
    }
}

std::size_t ExpressScanner::tokenSize(ExpressTokenKind kind) const {
    const auto rest = text_.substr(mark_.offset);
    switch (kind) {
    case ExpressTokenKind::Word:
        return wordSize(rest);
    case ExpressTokenKind::Number:
        return numberSize(rest);
    case ExpressTokenKind::String:
        return stringSize(rest);
    default:
        return symbolSize(rest);
    }
}

ExpressToken ExpressScanner::next() {
    if (isGapBegin(charAt(0)))
        vGapSkip();
    ExpressToken token;
    token.position = {mark_.line, mark_.column, 0};
    if (isAtEnd())
        return token;
    token.kind = kindOf(charAt(0));
    token.text = text_.substr(mark_.offset, tokenSize(token.kind));
    token.position.length = lengthOf(token.text);
    mark_.column += token.position.length;
    mark_.offset += token.text.size();
    return token;
}

/// In code points, of the token that is here. No token has a line end in it.
std::size_t ExpressScanner::lengthOf(std::string_view token) const {
    // What follows is looked at, as it may go on with a byte of the last code point; the end of the text does
    // not.
    if (isAsciiOnly(token) && !isContinuation(charAt(token.size())))
        return token.size();
    const auto following = text_.substr(mark_.offset + 1, token.size());
    return codePointsIn(following) + (following.size() < token.size() ? 1U : 0U);
}

} // namespace kiv::kit
