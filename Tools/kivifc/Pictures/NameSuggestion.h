/// @file
/// Finds the name that was probably meant.
///
///     sClosestName("BldWal", {"BldDoor", "BldWall"}) // "BldWall"
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

/// The candidate that takes the fewest changes of a letter (inserted, left out or replaced; the case counts
/// for nothing), the first one of several; empty when even that takes more than a third of the name's
/// letters.
std::string sClosestName(std::string_view name, const std::vector<std::string_view>& candidates);

} // namespace kiv::kivifc
