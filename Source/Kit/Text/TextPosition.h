/// @file
/// Where something is in a text file.
///
///     const TextPosition position{7, 12, 4}; // line 7, from column 12 to column 15
///
/// Ownership: a value.
/// Threads:   any number of threads.
/// Errors:    none.
#pragma once

#include <compare>
#include <cstddef>

namespace kiv::kit {

/// A piece of one line.
struct TextPosition {
    /// From 1; 0 when the position is unknown or the whole file is meant.
    std::size_t line = 0;
    /// From 1, in code points: a tab is one, and so is a letter that takes several bytes. 0 for the whole
    /// line.
    std::size_t column = 0;
    /// In code points; 0 when it is unknown.
    std::size_t length = 0;

    auto operator<=>(const TextPosition&) const = default;
};

} // namespace kiv::kit
