#include "Growth.h"

namespace kiv::bench {

namespace {

std::vector<Subject> subjectsOf(const std::vector<Growth>& growths) {
    std::vector<Subject> subjects;
    for (const auto& growth : growths) {
        for (std::size_t size = 0; size != GrowthSizes.size(); ++size)
            subjects.push_back(
                {growth.job + " " + std::to_string(GrowthSizes[size]), growth.runs[size], {}, growth.after});
    }
    return subjects;
}

} // namespace

Figures growthOf(const std::vector<Growth>& growths, int repetitions) {
    const auto seconds = secondsOf(subjectsOf(growths), repetitions);
    Figures figures;
    auto times = seconds.begin();
    for (const auto& growth : growths) {
        const auto unitTime = [&](std::size_t size) {
            return times[static_cast<std::ptrdiff_t>(size)] / static_cast<double>(growth.units[size]);
        };
        for (std::size_t size = 1; size != GrowthSizes.size(); ++size) {
            const bool isLast = size + 1 == GrowthSizes.size();
            figures.push_back({"growth", growth.job + ", " + std::to_string(GrowthSizes[size]) + " times",
                               unitTime(size), "once", unitTime(0), Unit::Seconds,
                               isLast ? growth.goal : std::nullopt});
        }
        times += GrowthSizes.size();
    }
    return figures;
}

} // namespace kiv::bench
