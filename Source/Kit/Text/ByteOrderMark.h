/// @file
/// The mark that a text in UTF-8 may begin with.
///
///     const auto line = withoutByteOrderMark(text);
///
/// Ownership: results are views of the text.
/// Threads:   free functions without state.
/// Errors:    none.
#pragma once

#include <string_view>

namespace kiv::kit {

/// What some editors write before the text. It is no character of the first line.
inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

constexpr std::string_view withoutByteOrderMark(std::string_view text) {
    return text.starts_with(ByteOrderMark) ? text.substr(ByteOrderMark.size()) : text;
}

} // namespace kiv::kit
