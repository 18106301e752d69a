/// @file
/// The code points of a text in UTF-8, and the mark that it may begin with.
///
///     codePointsIn("m\xC2\xB2"); // 2
///
/// Private to the kit.
///
/// Ownership: none.
/// Threads:   free functions without state.
/// Errors:    none; any bytes are counted.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kiv::kit {

/// What some editors write before the text.
inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

/// Whether the byte is the second or a later one of a code point.
constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

constexpr std::size_t codePointsIn(std::string_view text) {
    return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, isContinuation));
}

} // namespace kiv::kit
