/// @file
/// The hash of names that hosts can ask for: 32-bit FNV-1a.
///
///     static_assert(nameHash("") == 0x811C9DC5U);
///
/// Ownership: none.
/// Threads:   free functions without state; safe from any number of threads.
/// Errors:    none.
#pragma once

#include "Base/Ascii.h"

#include <cstdint>
#include <string_view>

namespace kiv {

/// What one more byte makes of the hash of a name.
constexpr std::uint32_t nameHashStep(std::uint32_t hash, char byte) {
    return (hash ^ static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<signed char>(byte)))) *
           0x01000193U;
}

/// 32-bit FNV-1a of a name; the empty name gives 0x811C9DC5.
///
/// Each byte is widened as a signed char on purpose: a byte of 0x80 or more flips the upper 24 bits too.
/// Stored hashes and look-up hashes are both made here, so they agree.
constexpr std::uint32_t nameHash(std::string_view name) {
    std::uint32_t hash = 0x811C9DC5U;
    for (const char byte : name)
        hash = nameHashStep(hash, byte);
    return hash;
}

/// `nameHash` of the name with a to z made A to Z.
constexpr std::uint32_t upperNameHash(std::string_view name) {
    auto hash = nameHash({});
    for (const char byte : name)
        hash = nameHashStep(hash, ascii::getUpper(byte));
    return hash;
}

} // namespace kiv
