/// Tests and changes of single bytes and of texts that look at ASCII alone, whatever the locale is.
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
constexpr char getUpper(char c) {
    return isLower(c) ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Whether both texts are the same but for the case of their letters.
constexpr bool isEqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, getLower, getLower);
}

/// The text without those of the bytes that it begins with.
constexpr std::string_view trimmedLeft(std::string_view text, std::string_view bytes) {
    return text.substr(std::min(text.find_first_not_of(bytes), text.size()));
}

/// The text without those of the bytes that it begins or ends with.
constexpr std::string_view trimmed(std::string_view text, std::string_view bytes) {
    return trimmedLeft(text.substr(0, text.find_last_not_of(bytes) + 1), bytes); // npos + 1 is 0
}

} // namespace kiv::ascii
