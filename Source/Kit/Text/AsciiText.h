/// @file
/// Letters and white space of ASCII, whatever the locale is.
///
///     isEqualIgnoringCase("IFCWALL", "IfcWall"); // true
///     trimmed("  IfcWall\t");                    // "IfcWall"
///     sUpperCase("IfcWall");                     // "IFCWALL"
///
/// Private to the kit.
///
/// Ownership: views are parts of the text they were made from.
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc from those that copy.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::kit {

/// The white space of XML.
inline constexpr std::string_view WhiteSpace = " \t\r\n";

constexpr bool isWhiteSpace(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n';
}

constexpr bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

constexpr char getLower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

constexpr char getUpper(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

constexpr bool isLetter(char letter) {
    return getLower(letter) >= 'a' && getLower(letter) <= 'z';
}

constexpr bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

/// As XML, ISO 10303-11 and BCP 47 compare what is written in either letter case.
constexpr bool isEqualIgnoringCase(std::string_view left, std::string_view right) {
    return std::ranges::equal(left, right, {}, getLower, getLower);
}

constexpr bool startsWithIgnoringCase(std::string_view text, std::string_view beginning) {
    return isEqualIgnoringCase(text.substr(0, beginning.size()), beginning);
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

/// Without white space at both ends. Where nothing is left, the empty view still lies in the text.
constexpr std::string_view trimmed(std::string_view text) {
    // Not by a search for any of them: that asks a function about each byte.
    std::size_t first = 0;
    while (first < text.size() && isWhiteSpace(text[first]))
        ++first;
    if (first == text.size())
        return text.substr(0, 0);
    auto end = text.size();
    while (isWhiteSpace(text[end - 1]))
        --end;
    return text.substr(first, end - first);
}

} // namespace kiv::kit
