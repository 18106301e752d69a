#include "Support/Growth.h"

#include <algorithm>

namespace kiv::test {

namespace {

constexpr std::uint64_t CountedFrom = 100'000;

double growthBetween(std::uint64_t count, std::uint64_t larger) {
    return static_cast<double>(larger) / static_cast<double>(std::max(count, CountedFrom));
}

Work workOf(const std::function<void()>& run) {
    const auto before = workDone();
    run();
    const auto after = workDone();
    return {after.blocks - before.blocks, after.bytes - before.bytes,
            after.allocatedBytes - before.allocatedBytes};
}

double growthAt(std::size_t size, const Preparation& prepare) {
    return growthBetween(workOf(prepare(size)), workOf(prepare(2 * size)));
}

} // namespace

double growthBetween(const Work& work, const Work& larger) {
    return std::max({growthBetween(work.blocks, larger.blocks), growthBetween(work.bytes, larger.bytes),
                     growthBetween(work.allocatedBytes, larger.allocatedBytes)});
}

double growthFrom(std::size_t size, const Preparation& prepare) {
    if (!isWorkCounted) {
        prepare(size)();
        return 1.0;
    }
    const auto growth = growthAt(size, prepare);
    return growth <= ProportionalGrowth ? growth : std::min(growth, growthAt(size + size / 2, prepare));
}

} // namespace kiv::test
