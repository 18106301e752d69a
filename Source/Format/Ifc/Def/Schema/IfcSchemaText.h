/// The text tools that every layer shares: the name hash, ASCII upper-casing, trimming.
///
/// They look at bytes only and never at a locale, so that a host's global locale changes nothing.
///
/// Threads: free functions without state; safe from any number of threads.
#pragma once

#include "Host/KivExport.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv::ifc::def::schema {

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

/// The byte with a to z made A to Z; every other byte as it is.
constexpr char toUpper(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - ('a' - 'A')) : byte;
}

/// The text upper-cased byte by byte.
KIV_EXPORT std::string sUpper(std::string_view text);

/// The text without the leading and trailing bytes that are among `bytes`.
KIV_EXPORT std::string_view trimmed(std::string_view text, std::string_view bytes);

/// The text without the leading bytes that are among `bytes`.
KIV_EXPORT std::string_view trimmedLeft(std::string_view text, std::string_view bytes);

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
