/// @file
/// Globally unique identifiers.
///
///     kiv::Guid guid;
///     if (!guid.boSet("e098e980d1bc11e1800000215ad4efdf"))
///         vComplain();
///
/// A host may build the library with GUIDs of its own in place of these, of 16 bytes too. The library needs
/// `generate`, `toString`, `boSet`, comparison, copies and the null GUID as the default.
///
/// Ownership: a value.
/// Threads:   each thread has its own. `generate` may be called from any number of threads.
/// Errors:    a text that is no GUID is false; std::random_device may throw from `generate`.
#pragma once

#include "kiv/Base/Export.h"

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {

/// A GUID of 16 bytes: one part of 32 bits, two of 16 bits and eight single bytes. All zero is the null GUID,
/// which means "none".
///
/// Ordered part by part from the first to the last, each compared unsigned.
class KIV_EXPORT Guid {
public:
    /// The null GUID.
    constexpr Guid() = default;
    constexpr Guid(std::uint32_t part1, std::uint16_t part2, std::uint16_t part3,
                   const std::array<std::uint8_t, 8>& part4) :
        part1_(part1), part2_(part2), part3_(part3), part4_(part4) {}

    /// A new random GUID (version 4 of RFC 4122), which is never null.
    /// Errors: passes on what `std::random_device` throws when the system has no random source.
    static Guid generate();

    /// False: 32 lower-case hexadecimal digits, as definition documents write them.
    /// True: lower-case digits in braces and in groups of 8-4-4-4-12.
    std::string toString(bool braced) const;

    /// Reads 32 hexadecimal digits or the hyphenated form 8-4-4-4-12, in either case and either of them in
    /// braces or not, or the 22 characters of an IFC GlobalId (ISO 16739, IfcGloballyUniqueId). Returns false
    /// and changes nothing when the text is anything else, white space around it included.
    bool boSet(std::string_view text);

    constexpr bool isNull() const { return *this == Guid(); }

    constexpr std::uint32_t getPart1() const { return part1_; }
    constexpr std::uint16_t getPart2() const { return part2_; }
    constexpr std::uint16_t getPart3() const { return part3_; }
    constexpr const std::array<std::uint8_t, 8>& getPart4() const { return part4_; }

    friend constexpr bool operator==(const Guid&, const Guid&) = default;
    friend constexpr std::strong_ordering operator<=>(const Guid&, const Guid&) = default;

private:
    std::uint32_t part1_ = 0;
    std::uint16_t part2_ = 0;
    std::uint16_t part3_ = 0;
    std::array<std::uint8_t, 8> part4_{};
};

static_assert(sizeof(Guid) == 16);

} // namespace kiv
