#include "Kit/Positions/ExpressScanner.h"

#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace kiv::kit {

namespace {

enum class ByteKind : std::uint8_t { Letter, Digit, Quote, Other, Comment, Blank, LineEnd };

constexpr ByteKind byteKindOf(char letter) {
    if (isLetter(letter) || letter == '_' || !isAscii(letter))
        return ByteKind::Letter;
    if (isDigit(letter))
        return ByteKind::Digit;
    if (letter == '\'' || letter == '"')
        return ByteKind::Quote;
    if (letter <= ' ')
        return letter == '\r' || letter == '\n' ? ByteKind::LineEnd : ByteKind::Blank;
    return letter == '(' || letter == '-' ? ByteKind::Comment : ByteKind::Other;
}

/// Looked up, as each byte of a schema is asked for its kind.
constexpr std::array<ByteKind, 256> ByteKinds = [] {
    std::array<ByteKind, 256> kinds{};
    for (std::size_t byte = 0; byte < kinds.size(); ++byte)
        kinds[byte] = byteKindOf(static_cast<char>(static_cast<unsigned char>(byte)));
    return kinds;
}();

ByteKind kindOf(char letter) {
    return ByteKinds[static_cast<unsigned char>(letter)];
}

bool isWordPart(char letter) {
    return kindOf(letter) <= ByteKind::Digit;
}

bool isLineEnd(char letter) {
    return letter == '\r' || letter == '\n';
}

/// What the first line of a text takes, without its end.
std::size_t lineSize(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::find_if(text, isLineEnd) - text.begin());
}

std::size_t wordSize(std::string_view text) {
    const auto* const end = text.data() + text.size();
    const auto* at = text.data();
    while (at != end && isWordPart(*at))
        ++at;
    return static_cast<std::size_t>(at - text.data());
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
    for (std::size_t size = 1; size < text.size(); ++size) {
        if (text[size] == text.front())
            return size + 1;
        if (isLineEnd(text[size]))
            return size;
    }
    return text.size();
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

struct TokenSize {
    ExpressTokenKind kind;
    std::size_t size;
};

/// Of what the text begins with.
TokenSize tokenOf(std::string_view text) {
    if (text.empty())
        return {ExpressTokenKind::End, 0};
    switch (kindOf(text.front())) {
    case ByteKind::Letter:
        return {ExpressTokenKind::Word, wordSize(text)};
    case ByteKind::Digit:
        return {ExpressTokenKind::Number, numberSize(text)};
    case ByteKind::Quote:
        return {ExpressTokenKind::String, stringSize(text)};
    default:
        return {ExpressTokenKind::Symbol, symbolSize(text)};
    }
}

} // namespace

ExpressScanner::ExpressScanner(std::string_view text) : text_(text) {
    if (text.starts_with(ByteOrderMark))
        offset_ = ByteOrderMark.size();
}

/// Where the comment that begins here ends; npos when nothing closes it.
std::size_t ExpressScanner::commentEnd() {
    constexpr std::string_view Close = "*)";
    if (offset_ >= neverClosedFrom_)
        return std::string_view::npos;
    auto pos = offset_ + Close.size();
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
    const auto end = text_.find(Close, offset_ + Close.size());
    if (end != std::string_view::npos)
        return end + Close.size();
    neverClosedFrom_ = offset_;
    return std::string_view::npos;
}

void ExpressScanner::vCommentSkip() {
    constexpr std::size_t OpenSize = 2;
    const bool nested = nests_;
    const auto end = commentEnd();
    if (openComment_.empty() && (end == std::string_view::npos || nested != nests_))
        openComment_ = text_.substr(offset_, OpenSize);
    const auto size = end == std::string_view::npos ? lineSize(text_.substr(offset_)) : end - offset_;
    startsLine_ = startsLine_ || lineSize(text_.substr(offset_, size)) != size;
    offset_ += size;
}

/// Blanks and comments.
void ExpressScanner::vGapSkip() {
    const auto* const end = text_.data() + text_.size();
    for (;;) {
        const auto* at = text_.data() + offset_;
        auto kind = ByteKind::Other;
        while (at != end && (kind = kindOf(*at)) >= ByteKind::Blank) {
            startsLine_ = startsLine_ || kind == ByteKind::LineEnd;
            ++at;
        }
        offset_ = static_cast<std::size_t>(at - text_.data());
        if (at == end || kind != ByteKind::Comment)
            return;
        if (charAt(0) == '(' && charAt(1) == '*')
            vCommentSkip();
        else if (charAt(0) == '-' && charAt(1) == '-')
            offset_ += lineSize(text_.substr(offset_));
        else
            return;
    }
}

ExpressToken ExpressScanner::next() {
    vGapSkip();
    ExpressToken token;
    token.startsLine = std::exchange(startsLine_, false);
    const std::string_view rest(text_.data() + offset_, text_.size() - offset_);
    const auto [kind, size] = tokenOf(rest);
    token.kind = kind;
    token.text = {rest.data(), size};
    offset_ += size;
    return token;
}

} // namespace kiv::kit
