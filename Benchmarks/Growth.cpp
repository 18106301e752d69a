#include "Growth.h"

namespace kiv::bench {

namespace {

std::vector<Subject> subjectsOf(const std::vector<Growth>& growths) {
    std::vector<Subject> subjects;
    for (const auto& growth : growths) {
        for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
            const auto name = growth.job + " " + std::to_string(GrowthSizes[size]);
            subjects.push_back({name, growth.runs[size], {}, growth.after});
            if (growth.yardsticks[size])
                subjects.push_back({name + ", " + growth.yardstick, growth.yardsticks[size]});
        }
    }
    return subjects;
}

std::string sHowOften(std::size_t size) {
    return GrowthSizes[size] == 1 ? ", once" : ", " + std::to_string(GrowthSizes[size]) + " times";
}

/// The time of a unit at each size.
using Times = std::array<double, GrowthSizes.size()>;

/// The time at each further size, beside that at the first.
void vGrowthAdd(Figures& figures, const Growth& growth, const Times& times) {
    for (std::size_t size = 1; size != GrowthSizes.size(); ++size) {
        const bool isLast = size + 1 == GrowthSizes.size();
        figures.push_back({"growth", growth.job + sHowOften(size), times[size], "once", times[0],
                           Unit::Seconds, isLast ? growth.goal : std::nullopt});
    }
}

/// The time at each size, beside that of the yardstick.
void vYardsticksAdd(Figures& figures, const Growth& growth, const Times& times, const Times& yardsticks) {
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        if (growth.yardsticks[size])
            figures.push_back({"growth", growth.job + sHowOften(size), times[size], growth.yardstick,
                               yardsticks[size], Unit::Seconds, YardstickGoal});
    }
}

} // namespace

Figures growthOf(const std::vector<Growth>& growths, int repetitions) {
    const auto seconds = secondsOf(subjectsOf(growths), repetitions);
    Figures figures;
    auto next = seconds.begin();
    for (const auto& growth : growths) {
        Times times{};
        Times yardsticks{};
        for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
            const auto units = static_cast<double>(growth.units[size]);
            times[size] = *next++ / units;
            if (growth.yardsticks[size])
                yardsticks[size] = *next++ / units;
        }
        vGrowthAdd(figures, growth, times);
        vYardsticksAdd(figures, growth, times, yardsticks);
    }
    return figures;
}

} // namespace kiv::bench
