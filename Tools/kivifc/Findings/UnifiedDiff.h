/// @file
/// What differs between two versions of a text, as patch(1) reads it.
///
///     output.vWrite(sUnifiedDiff("walls.xml", before, after));
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

namespace kiv::kivifc {

/// Empty when both are the same. Texts of as many lines are compared line by line; of others, everything
/// between their equal beginnings and ends is one change. So the work grows with their size alone.
std::string sUnifiedDiff(std::string_view path, std::string_view before, std::string_view after);

} // namespace kiv::kivifc
