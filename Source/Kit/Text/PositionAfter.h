/// @file
/// The position after a piece of text.
///
///     positionAfter({1, 5}, "a\nbc");  // line 2, column 3
///
/// Private to the kit.
///
/// Threads: may be called from any thread.
/// Errors:  none.
#pragma once

#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Text/TextPosition.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace kiv::kit {

/// Where one is after `passed`, which is UTF-8 and begins at `begin`; lines end with LF. The length is 0.
inline TextPosition positionAfter(TextPosition begin, std::string_view passed) {
    begin.length = 0;
    if (const auto lineEnd = passed.rfind('\n'); lineEnd != std::string_view::npos) {
        begin.line += static_cast<std::size_t>(std::ranges::count(passed, '\n'));
        begin.column = 1;
        passed.remove_prefix(lineEnd + 1);
    }
    begin.column += codePointsIn(passed);
    return begin;
}

} // namespace kiv::kit
