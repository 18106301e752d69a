#include "kivifc/Program/CodePoints.h"

#include "kiv/Kit/Text/InvisibleCharacters.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <iterator>
#include <span>

namespace kiv::kivifc {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// East Asian Width "W" and "F" of Unicode, neighbouring blocks joined.
constexpr std::array Wide{Range{0x1100, 0x115F},   Range{0x231A, 0x231B},   Range{0x2E80, 0x303E},
                          Range{0x3041, 0x33FF},   Range{0x3400, 0x4DBF},   Range{0x4E00, 0x9FFF},
                          Range{0xA000, 0xA4CF},   Range{0xA960, 0xA97F},   Range{0xAC00, 0xD7A3},
                          Range{0xF900, 0xFAFF},   Range{0xFE30, 0xFE6F},   Range{0xFF00, 0xFF60},
                          Range{0xFFE0, 0xFFE6},   Range{0x17000, 0x18CFF}, Range{0x1F300, 0x1F64F},
                          Range{0x1F680, 0x1F6FF}, Range{0x1F900, 0x1FAFF}, Range{0x20000, 0x3FFFD}};

// Marks that combine with the letter before them, and joiners that show nothing.
constexpr std::array Combining{
    Range{0x0300, 0x036F}, Range{0x0483, 0x0489}, Range{0x0591, 0x05BD},  Range{0x0610, 0x061A},
    Range{0x064B, 0x065F}, Range{0x0670, 0x0670}, Range{0x06D6, 0x06DC},  Range{0x0900, 0x0902},
    Range{0x093C, 0x093C}, Range{0x0941, 0x0948}, Range{0x0E31, 0x0E31},  Range{0x0E34, 0x0E3A},
    Range{0x0E47, 0x0E4E}, Range{0x1AB0, 0x1AFF}, Range{0x1DC0, 0x1DFF},  Range{0x200B, 0x200D},
    Range{0x20D0, 0x20FF}, Range{0x302A, 0x302D}, Range{0x3099, 0x309A},  Range{0xFE00, 0xFE0F},
    Range{0xFE20, 0xFE2F}, Range{0xFEFF, 0xFEFF}, Range{0xE0100, 0xE01EF}};

constexpr std::array Unsafe{Range{0x0000, 0x001F}, Range{0x007F, 0x009F}, Range{0x061C, 0x061C},
                            Range{0x200E, 0x200F}, Range{0x2028, 0x202E}, Range{0x2066, 0x2069}};

bool isIn(std::span<const Range> ranges, char32_t value) {
    return std::ranges::any_of(
        ranges, [value](const Range& range) { return range.first <= value && value <= range.last; });
}

/// How many bytes follow a first byte; 0 when it is no first byte of several.
std::size_t followingBytes(unsigned char first) {
    if (first >= 0xC2 && first <= 0xDF)
        return 1;
    if (first >= 0xE0 && first <= 0xEF)
        return 2;
    return first >= 0xF0 && first <= 0xF4 ? 3 : 0;
}

/// Overlong forms, surrogates and what is beyond Unicode.
bool isForbidden(char32_t value, std::size_t following) {
    constexpr std::array<char32_t, 4> Least{0, 0x80, 0x800, 0x10000};
    return value < Least[following] || (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF;
}

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// A code point of several bytes; invalid when the text does not begin with one.
CodePoint severalBytes(std::string_view text, std::size_t following) {
    const CodePoint invalid{static_cast<unsigned char>(text[0]), text.substr(0, 1), false};
    const auto bytes = text.substr(0, following + 1);
    if (bytes.size() <= following || !std::ranges::all_of(bytes.substr(1), isContinuation))
        return invalid;
    char32_t value = static_cast<unsigned char>(text[0]) & (0x3FU >> following);
    for (const char byte : bytes.substr(1))
        value = (value << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    return isForbidden(value, following) ? invalid : CodePoint{value, bytes, true};
}

} // namespace

CodePoint codePointTake(std::string_view& text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const auto following = followingBytes(first);
    const auto point =
        following == 0 ? CodePoint{first, text.substr(0, 1), first < 0x80} : severalBytes(text, following);
    text.remove_prefix(point.bytes.size());
    return point;
}

std::size_t characterBegin(std::string_view text, std::size_t position) {
    while (position > 0 && position < text.size() && isContinuation(text[position]))
        --position;
    return position;
}

std::size_t displayWidth(const CodePoint& point) {
    if (point.isValid && isIn(Combining, point.value))
        return 0;
    return point.isValid && isIn(Wide, point.value) ? 2 : 1;
}

bool isUnsafe(const CodePoint& point) {
    return point.isValid && isIn(Unsafe, point.value);
}

bool ShownPoints::boNext() {
    if (rest_.empty())
        return false;
    point_ = codePointTake(rest_);
    isEscaped_ = isUnsafe(point_) || (point_.isValid && kit::isInvisible(point_.value, before_));
    before_ = kit::isTag(point_.value) ? before_ : point_.value;
    return true;
}

std::string sEscaped(const CodePoint& point) {
    switch (point.value) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    if (point.isValid && point.value > 0x9F)
        return fmt::format("\\u{{{:04X}}}", static_cast<unsigned>(point.value));
    std::string text;
    for (const char byte : point.bytes)
        fmt::format_to(std::back_inserter(text), "\\x{:02X}", static_cast<unsigned char>(byte));
    return text;
}

} // namespace kiv::kivifc
