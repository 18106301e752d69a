/// @file
/// The edits of findings, applied to the text of their file.
///
///     const auto fixed = fixedText(text, findings);
///     if (fixed.text != text)
///         output.vWrite(sUnifiedDiff("walls.xml", text, fixed.text));
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc; an edit beyond the end of the text is left out.
#pragma once

#include "kiv/Kit/Findings/Finding.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

struct FixedText {
    std::string text;
    /// Of each finding, whether it is mended.
    std::vector<bool> isMended;
};

/// Applies the edits of one file. A finding is mended with all of its edits or not at all: those that touch
/// what an earlier finding changes wait for the next run.
FixedText fixedText(std::string_view text, std::span<const kit::Finding> findings);

} // namespace kiv::kivifc
