/// The text tools that every layer shares: the name hash, ASCII upper-casing, and those of `kiv::ascii`.
///
/// They look at bytes only and never at a locale, so that a host's global locale changes nothing.
///
/// Threads: free functions without state; safe from any number of threads.
#pragma once

#include "Host/KivAscii.h"
#include "Host/KivExport.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv::ifc::def::schema {

using ascii::trimmed;
using ascii::trimmedLeft;

/// Blank and tab: what is trimmed around the names of a declaration.
inline constexpr std::string_view BlankAndTab = " \t";

/// 32-bit FNV-1a of a name; the empty name gives 0x811C9DC5.
///
/// Each byte is widened as a signed char on purpose: a byte of 0x80 or more flips the upper 24 bits too.
/// Stored hashes and look-up hashes are both made here, so they agree.
constexpr std::uint32_t nameHash(std::string_view name) {
    std::uint32_t hash = 0x811C9DC5U;
    for (const char byte : name) {
        hash ^= static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<signed char>(byte)));
        hash *= 0x01000193U;
    }
    return hash;
}

/// The text upper-cased byte by byte.
KIV_EXPORT std::string sUpper(std::string_view text);

/// An upper-cased copy of a name, for one look-up; names up to 64 bytes are copied without an allocation.
class KIV_EXPORT UpperCopy {
public:
    explicit UpperCopy(std::string_view name);
    UpperCopy(const UpperCopy&) = delete;
    UpperCopy& operator=(const UpperCopy&) = delete;

    /// The upper-cased name; lives as long as this object.
    std::string_view getView() const { return view_; }

private:
    std::array<char, 64> small_;
    std::string large_;
    std::string_view view_;
};

} // namespace kiv::ifc::def::schema
