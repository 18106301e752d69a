/// Character tests on single bytes that look at ASCII alone, whatever the locale of the process.
#pragma once

#include <algorithm>
#include <string_view>

namespace kiv::ascii {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
constexpr bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}
constexpr bool isLetter(char c) {
    return isUpper(c) || isLower(c);
}
constexpr bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

constexpr char getLower(char c) {
    return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether both texts are the same but for the case of their letters.
constexpr bool isEqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, getLower, getLower);
}

} // namespace kiv::ascii
