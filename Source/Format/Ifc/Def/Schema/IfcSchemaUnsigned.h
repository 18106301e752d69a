/// @file
/// The unsigned numbers in data types: widths and bounds.
///
///     const auto width = unsignedFromText<std::uint64_t>("255)"); // 255
///
/// Threads: a function without state.
/// Errors:  none.
#pragma once

#include <algorithm>
#include <limits>
#include <string_view>

namespace kiv::ifc::def::schema {

/// An unsigned number as stream extraction reads it: leading white space and a sign are allowed (a negative
/// number wraps around), the first byte that is no digit ends it, too large a number gives the largest, none
/// gives 0.
template <class Number>
Number unsignedFromText(std::string_view text) {
    constexpr auto largest = std::numeric_limits<Number>::max();
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    Number value = 0;
    for (const char byte : text) {
        if (byte < '0' || byte > '9')
            break;
        const auto digit = static_cast<Number>(byte - '0');
        if (value > (largest - digit) / 10)
            return largest;
        value = static_cast<Number>(value * 10 + digit);
    }
    return negative ? static_cast<Number>(Number{0} - value) : value;
}

} // namespace kiv::ifc::def::schema
