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
    /// Views find texts.
    using is_transparent = void;

    // Not noexcept on purpose: libstdc++ then keeps the hashes in its tables, in place of computing those of
    // all that it passes on the way to what it looks for.
    std::size_t operator()(std::string_view name) const {
        auto hash = mixed(name.size());
        if (name.size() < EightBytes) {
            std::uint64_t all = 0;
            for (const char letter : name)
                all = (all << 8U) | (static_cast<unsigned char>(letter) & NoCase);
            return static_cast<std::size_t>(mixed(hash ^ all));
        }
        const auto* const last = name.data() + (name.size() - EightBytes);
        for (const auto* at = name.data(); at < last; at += EightBytes)
            hash = mixed(hash ^ wordAt(at));
        return static_cast<std::size_t>(mixed(hash ^ wordAt(last)));
    }

private:
    static constexpr std::uint64_t NoCase = 0xDF;

    static std::uint64_t wordAt(const char* text) {
        return eightBytesAt(text) & (0x0101010101010101U * NoCase);
    }

    /// Each bit of the number changes about half of the bits of the result.
    static constexpr std::uint64_t mixed(std::uint64_t number) {
        constexpr std::uint64_t factor = 0x9FB21C651E98DF25U;
        number = (number ^ (number >> 32U)) * factor;
        return number ^ (number >> 29U);
    }
};

struct SameIgnoringCase {
    using is_transparent = void;

    bool operator()(std::string_view left, std::string_view right) const noexcept {
        // Most are written in one way.
        return left == right || isEqualIgnoringCase(left, right);
    }
};

} // namespace kiv::kit
