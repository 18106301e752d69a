/// @file
/// Finds the name that was probably meant.
///
///     const auto names = entityNames(schema);
///     if (const auto meant = nearestName("IfcWal", names))
///         std::cout << "did you mean " << meant->name << "?\n"; // IfcWall
///
/// Names are near each other when few letters were changed (the longer the name, the more may be), when one
/// is the beginning or a word of the other ("ThermalTransmittance" of IfcThermalTransmittanceMeasure), and
/// when one abbreviates the other ("IfcWallStd" IfcWallStandardCase). The case of letters counts for nothing,
/// and neither do the prefixes Ifc, Pset_ and Qto_, which names have in common without being alike.
///
/// Ownership: matches are views of the candidates.
/// Threads:   any number of threads.
/// Errors:    nothing near is an empty answer; names of more than `maxNameLength` bytes are near nothing.
///            std::bad_alloc from the list alone.
#pragma once

#include "kiv/Base/Export.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace kiv::kit {

/// Longer names are not compared: the cost grows with the product of both lengths.
inline constexpr std::size_t maxNameLength = 100;

struct NameMatch {
    std::string_view name;
    /// How many letters were inserted, left out, replaced or swapped with their neighbour; a prefix that is
    /// missing is not counted.
    std::size_t changes = 0;
    /// Only a part of the one is like the other. Without it the candidate is a corrected spelling.
    bool isPart = false;
};

/// The nearest of the candidates, the first of several; absent when none is near. Takes time in proportion to
/// the number of the candidates and no memory.
KIV_EXPORT std::optional<NameMatch> nearestName(std::string_view name,
                                                std::span<const std::string_view> candidates);

/// Up to `maxCount` candidates that are near, the nearest first.
KIV_EXPORT std::vector<NameMatch>
nearestNames(std::string_view name, std::span<const std::string_view> candidates, std::size_t maxCount = 3);

} // namespace kiv::kit
