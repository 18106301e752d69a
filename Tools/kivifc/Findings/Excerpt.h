/// @file
/// The source line of a finding with a caret below it, as compilers show them.
///
///     excerptOf("<Name>Pset_Wal</Name>", {3, 7, 8})
///     // <Name>Pset_Wal</Name>
///     //       ^~~~~~~~
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Text/TextPosition.h"
#include "kivifc/Findings/SourceLines.h"

#include <string>
#include <string_view>

namespace kiv::kivifc {

/// Two lines, without their ends; both empty when the line has nothing to show.
struct Excerpt {
    std::string source;
    /// Tabs are where the source has them, so that the caret is below its letter whatever a tab is worth.
    std::string caret;
};

/// What a terminal must not be given is escaped. A line that is wider than about a hundred columns is cut on
/// both sides of the caret, with "..." where something is left out. Without a column there is no caret.
Excerpt excerptOf(std::string_view line, const kit::TextPosition& position);

/// The same for a line of which only what is near the position is at hand.
Excerpt excerptOf(const LinePart& part, const kit::TextPosition& position);

} // namespace kiv::kivifc
