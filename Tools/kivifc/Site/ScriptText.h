/// @file
/// Text as a string of a script, which nothing in it ends.
///
///     script += sScriptString(name, 200);
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    bytes that are not UTF-8 are replaced by U+FFFD.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::kivifc::site {

/// With its quotes. What has more characters than `longest` is cut, with an ellipsis after it.
std::string sScriptString(std::string_view text, std::size_t longest);

} // namespace kiv::kivifc::site
