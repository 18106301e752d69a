/// @file
/// Numbers as options of the command line and of kivifc.toml give them.
///
///     app.add_option("--jobs", jobs)->transform(CLI::Validator(numberCheck({1, 1024}), "", "number"));
///
/// The parser's own conversion takes "-1" for the largest number there is, and what is too large for that
/// number too.
///
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <string>

namespace kiv::kivifc {

/// Both ends belong to it.
struct NumberRange {
    std::uint64_t min = 0;
    std::uint64_t max = std::numeric_limits<std::uint64_t>::max();
};

/// Says what is wrong with a text; empty for nothing, and the text then is the number in decimal digits.
using TextCheck = std::function<std::string(std::string& text)>;

/// Decimal digits alone.
TextCheck numberCheck(const NumberRange& range);

/// A number of bytes: digits, and perhaps a unit after them, in any letter case: K, M, G, T, P or E, each
/// 1024 times the one before it. KB, KI and KIB mean K, and B bytes.
TextCheck sizeCheck();

} // namespace kiv::kivifc
