/// @file
/// Hashes that nobody outside can foresee: for tables whose keys come from documents.
///
///     const HashKeys keys = hashKeys();
///     const auto hash = getFolded(first ^ keys[0], second ^ keys[1]) ^
///                       getFolded(third ^ keys[2], fourth ^ keys[3]);
///
/// Each pair of words is hidden by two keys and multiplied to 128 bits, whose halves are combined. Whoever
/// chooses words without knowing the keys, which are drawn once per process, cannot choose many that have the
/// same hash.
///
/// Ownership: none.
/// Threads:   any number of threads.
/// Errors:    the first use of `hashKeys` passes on what std::random_device throws when the system has no
///          random source.
#pragma once

#include <array>
#include <cstdint>

namespace kiv {

using HashKeys = std::array<std::uint64_t, 6>;

/// The numbers that are drawn.
const HashKeys& hashKeys();

/// Both halves of the product of two words, combined.
constexpr std::uint64_t getFolded(std::uint64_t left, std::uint64_t right) {
    __extension__ using Product = unsigned __int128;
    const auto product = static_cast<Product>(left) * right;
    return static_cast<std::uint64_t>(product >> 64) ^ static_cast<std::uint64_t>(product);
}

} // namespace kiv
