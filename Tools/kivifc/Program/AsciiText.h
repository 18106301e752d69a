/// @file
/// Tests and changes of single bytes that look at ASCII alone, whatever the locale is.
///
///     ascii::isEqualIgnoringCase(".XML", ".xml") // true
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace kiv::kivifc::ascii {

constexpr bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

constexpr char getLower(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

constexpr char getUpper(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

constexpr bool isLetter(char byte) {
    return getLower(byte) >= 'a' && getLower(byte) <= 'z';
}

constexpr bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

/// Whether it is white space between the words of a text.
constexpr bool isBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

/// Whether both texts are the same but for the case of their letters.
constexpr bool isEqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, getLower, getLower);
}

inline std::string sLowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), getLower);
    return lower;
}

inline std::string sUpperCase(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), getUpper);
    return upper;
}

/// The text without those of the bytes that it begins or ends with.
constexpr std::string_view trimmed(std::string_view text, std::string_view bytes) {
    const auto begin = std::min(text.find_first_not_of(bytes), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(bytes) + 1);
}

} // namespace kiv::kivifc::ascii
