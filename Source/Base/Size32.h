/// @file
/// Sizes in 32 bits, for what a model holds thousands of: a pointer and its size in 12 bytes instead of 16.
///
///     nameSize_ = kiv::size32(name.size());
///
/// Ownership: none.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    std::length_error for a size of 4 GiB or more.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

namespace kiv {

/// Throws std::length_error; a function of its own, so that the code for all other sizes stays short.
[[noreturn]] void vSizeRefuse();

inline std::uint32_t size32(std::size_t size) {
    if (size > std::numeric_limits<std::uint32_t>::max()) [[unlikely]]
        vSizeRefuse();
    return static_cast<std::uint32_t>(size);
}

} // namespace kiv
