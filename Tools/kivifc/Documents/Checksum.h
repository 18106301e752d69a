/// @file
/// The checksum of exports: that of their texts, of names that are cut, and of the names of unfinished files.
#pragma once

#include <cstdint>
#include <string_view>

namespace kiv::kivifc {

/// FNV-1a with 64 bits.
constexpr std::uint64_t checksum(std::string_view text) {
    std::uint64_t sum = 14695981039346656037U;
    for (const char byte : text)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 1099511628211U;
    return sum;
}

} // namespace kiv::kivifc
