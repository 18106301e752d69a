/// @file
/// The layout of numbers on the screen: a label, then its value.
///
///     sTableLine("time", sMilliseconds(elapsed)) // "time             3.2 ms"
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace kiv::kivifc {

/// One line of such a table.
std::string sTableLine(std::string_view label, std::string_view text);

std::string sMilliseconds(std::chrono::nanoseconds time);

} // namespace kiv::kivifc
