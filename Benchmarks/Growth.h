/// How the time of one unit of work grows with the size of what it is done on.
///
///     Figures figures = growthOf({"load a schema", "object", {[] {...}, [] {...}, [] {...}}, {776, 7760,
///     77600}});
#pragma once

#include "Figures.h"
#include "Timing.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kiv::bench {

/// The sizes that are compared, as multiples of the first.
inline constexpr std::array<std::size_t, 3> GrowthSizes{1, 10, 100};

/// What a unit may cost at the last size, compared with the first.
inline constexpr double GrowthGoal = 1.5;
/// What it may cost there, compared with the yardstick at the same size.
inline constexpr double YardstickGoal = 1.5;

struct Growth {
    std::string job;
    /// The work at each size.
    std::array<std::function<void()>, GrowthSizes.size()> runs;
    /// The units that it consists of at each size.
    std::array<std::size_t, GrowthSizes.size()> units;
    /// Takes back what the work did; not timed.
    std::function<void()> after = {};
    std::optional<double> goal = GrowthGoal;
    /// What does the same work at each size, if there is such a thing, and its name.
    std::array<std::function<void()>, GrowthSizes.size()> yardsticks = {};
    std::string yardstick = {};
};

/// For each of them the time of a unit at each further size, beside that at the first, and then at every size
/// beside that of its yardstick.
Figures growthOf(const std::vector<Growth>& growths, int repetitions);

} // namespace kiv::bench
