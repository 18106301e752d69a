/// @file
/// Names as keys of hash tables, whatever the case of their ASCII letters is, without upper-cased copies.
///
///     std::unordered_set<std::string_view, HashIgnoringCase, SameIgnoringCase> names{"IfcWall"};
///     names.contains("IFCWALL"); // true
///
/// Private to the kit.
///
/// Ownership: none.
/// Threads:   functions without state.
/// Errors:    none.
#pragma once

#include "Kit/Text/AsciiText.h"
#include "Kit/Text/EightBytes.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv::kit {

/// The bit that the two cases of a letter differ by does not count. Other characters may be equal without it
/// too: `SameIgnoringCase` tells them apart.
struct HashIgnoringCase {
    std::size_t operator()(std::string_view name) const noexcept {
        auto hash = mixed(name.size());
        for (; name.size() > EightBytes; name.remove_prefix(EightBytes))
            hash = mixed(hash ^ (eightBytesAt(name.data()) & (0x0101010101010101U * NoCase)));
        std::uint64_t last = 0;
        for (const char letter : name)
            last = (last << 8U) | (static_cast<unsigned char>(letter) & NoCase);
        return static_cast<std::size_t>(mixed(hash ^ last));
    }

private:
    static constexpr std::uint64_t NoCase = 0xDF;

    /// Each bit of the number changes about half of the bits of the result.
    static constexpr std::uint64_t mixed(std::uint64_t number) {
        constexpr std::uint64_t factor = 0x9FB21C651E98DF25U;
        number = (number ^ (number >> 32U)) * factor;
        return number ^ (number >> 29U);
    }
};

struct SameIgnoringCase {
    bool operator()(std::string_view left, std::string_view right) const noexcept {
        // Most are written in one way.
        return left == right || isEqualIgnoringCase(left, right);
    }
};

} // namespace kiv::kit
