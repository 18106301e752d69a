/// @file
/// Tests and changes of single bytes and of texts that look at ASCII alone, whatever the locale is.
///
///     const auto name = ascii::trimmed(line, " \t");
///
/// Ownership: none; a trimmed text is a part of the text it was made from.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    none.
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

/// Whether the byte is one of a few; quicker than a search in a text for as few.
constexpr bool isOneOf(char byte, std::string_view bytes) {
    for (const char other : bytes) {
        if (byte == other)
            return true;
    }
    return false;
}

/// The text without those of the bytes that it begins with.
constexpr std::string_view trimmedLeft(std::string_view text, std::string_view bytes) {
    while (!text.empty() && isOneOf(text.front(), bytes))
        text.remove_prefix(1);
    return text;
}

/// The text without those of the bytes that it begins or ends with.
constexpr std::string_view trimmed(std::string_view text, std::string_view bytes) {
    while (!text.empty() && isOneOf(text.back(), bytes))
        text.remove_suffix(1);
    return trimmedLeft(text, bytes);
}

} // namespace kiv::ascii
