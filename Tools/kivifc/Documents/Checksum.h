/// @file
/// The checksum of exports: that of their texts, of names that are cut, and of the names of unfinished files.
///
/// Threads:   free function without state.
/// Errors:    none.
#pragma once

#include <cstdint>
#include <string_view>

namespace kiv::kivifc {

/// That of an empty text.
inline constexpr std::uint64_t EmptyChecksum = 14695981039346656037U;

/// FNV-1a with 64 bits. `sum` is the checksum of what comes before the text.
constexpr std::uint64_t checksum(std::string_view text, std::uint64_t sum = EmptyChecksum) {
    for (const char byte : text)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    return sum;
}

} // namespace kiv::kivifc
