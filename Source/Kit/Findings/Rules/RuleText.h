/// @file
/// Texts as rules compare and show them.
///
/// Private to the kit.
///
///     trimmed("  IfcWall\t");   // "IfcWall"
///     sUpperCase("IfcWall");    // "IFCWALL"
///
/// Ownership: views refer to what they are given.
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::kit {

/// Without the white space of XML around it.
inline std::string_view trimmed(std::string_view text) {
    constexpr std::string_view WhiteSpace = " \t\n\r";
    const auto first = text.find_first_not_of(WhiteSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(WhiteSpace) - first + 1);
}

/// With a to z made A to Z, as EXPRESS compares names.
inline std::string sUpperCase(std::string_view text) {
    std::string upper(text);
    for (auto& letter : upper) {
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    }
    return upper;
}

inline bool boIsSameName(std::string_view left, std::string_view right) {
    return left.size() == right.size() && sUpperCase(left) == sUpperCase(right);
}

/// The characters of a text in UTF-8.
inline std::size_t codePointsIn(std::string_view text) {
    const auto isFirstByte = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; };
    return static_cast<std::size_t>(std::ranges::count_if(text, isFirstByte));
}

} // namespace kiv::kit
