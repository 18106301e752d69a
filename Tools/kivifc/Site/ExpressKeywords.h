/// @file
/// The reserved words and built-in functions of EXPRESS (ISO 10303-11).
///
///     isExpressKeyword("ENTITY"); // true
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads.
/// Errors:    none.
#pragma once

#include <string_view>

namespace kiv::kivifc::site {

/// `upper` is in upper case.
bool isExpressKeyword(std::string_view upper);

} // namespace kiv::kivifc::site
