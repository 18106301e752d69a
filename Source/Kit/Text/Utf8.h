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

#include "Kit/Text/EightBytes.h"
#include "kiv/Kit/Text/ByteOrderMark.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kiv::kit {

/// Whether the byte is the second or a later one of a code point.
constexpr bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

struct CodePointBytes {
    char32_t value = 0;
    std::size_t size = 1;
};

/// The code point that begins at that byte of a text that is UTF-8; a byte that begins none is one.
constexpr CodePointBytes codePointAt(std::string_view text, std::size_t offset) {
    const auto first = static_cast<unsigned char>(text[offset]);
    std::size_t size = 1;
    while (first >= 0xC0U && size != 4 && offset + size != text.size() && isContinuation(text[offset + size]))
        ++size;
    char32_t value = size == 1 ? first : first & (0x7FU >> size);
    for (std::size_t i = 1; i != size; ++i)
        value = (value << 6U) | (static_cast<unsigned char>(text[offset + i]) & 0x3FU);
    return {value, size};
}

/// How many bytes before the first that is no character of ASCII.
inline std::size_t asciiAtFront(std::string_view text) {
    std::size_t size = 0;
    while (size + EightBytes <= text.size() && isAsciiBytes(eightBytesAt(text.data() + size)))
        size += EightBytes;
    while (size != text.size() && static_cast<unsigned char>(text[size]) < 0x80U)
        ++size;
    return size;
}

/// Whether each byte is a character of ASCII.
inline bool isAsciiOnly(std::string_view text) {
    return asciiAtFront(text) == text.size();
}

inline std::size_t codePointsIn(std::string_view text) {
    auto codePoints = text.size();
    for (; text.size() >= EightBytes; text.remove_prefix(EightBytes))
        codePoints -= continuationsIn(eightBytesAt(text.data()));
    return codePoints - static_cast<std::size_t>(std::ranges::count_if(text, isContinuation));
}

} // namespace kiv::kit
