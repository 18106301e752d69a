/// @file
/// Texts looked at eight bytes at a time, where one at a time would take most of the time that places take.
///
///     codePoints += EightBytes - continuationsIn(eightBytesAt(text.data()));
///
/// Private to the kit.
///
/// Ownership: none.
/// Threads:   free functions without state.
/// Errors:    none; any bytes are counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kiv::kit {

inline constexpr std::size_t EightBytes = sizeof(std::uint64_t);

/// The bytes of memory, of which there have to be as many.
inline std::uint64_t eightBytesAt(const char* text) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof(bytes));
    return bytes;
}

/// Whether none of the eight has its highest bit set.
constexpr bool isAsciiBytes(std::uint64_t bytes) {
    return (bytes & 0x8080808080808080U) == 0;
}

/// How many of the eight go on with a code point of UTF-8: their highest bit is set, and the next one is not.
constexpr std::size_t continuationsIn(std::uint64_t bytes) {
    constexpr std::uint64_t every = 0x0101010101010101U;
    const auto marks = (bytes & ~(bytes << 1U) & (0x80 * every)) >> 7U;
    // The highest byte of the product is the sum of all.
    return static_cast<std::size_t>((marks * every) >> 56U);
}

} // namespace kiv::kit
