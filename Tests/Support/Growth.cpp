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
    const auto held = peakBegin();
    run();
    const auto after = workDone();
    return {after.blocks - before.blocks, after.bytes - before.bytes,
            after.allocatedBytes - before.allocatedBytes, after.peakBytes - held,
            after.writtenBytes - before.writtenBytes};
}

/// The growth of the work for each byte that is written, as if these had grown in proportion.
double growthForOutputBetween(const Work& work, const Work& larger) {
    const auto written = std::max(growthBetween(work.writtenBytes, larger.writtenBytes), 2.0);
    const auto done =
        std::max({growthBetween(work.blocks, larger.blocks), growthBetween(work.bytes, larger.bytes),
                  growthBetween(work.allocatedBytes, larger.allocatedBytes)});
    return std::max(2.0 * done / written, growthBetween(work.peakBytes, larger.peakBytes));
}

using Judgement = double (*)(const Work& work, const Work& larger);

double growthAt(std::size_t size, const Preparation& prepare, Judgement judgement) {
    return judgement(workOf(prepare(size)), workOf(prepare(2 * size)));
}

double growthFrom(std::size_t size, const Preparation& prepare, Judgement judgement) {
    if (!isWorkCounted) {
        prepare(size)();
        return 1.0;
    }
    const auto growth = growthAt(size, prepare, judgement);
    return growth <= ProportionalGrowth ? growth
                                        : std::min(growth, growthAt(size + size / 2, prepare, judgement));
}

} // namespace

double growthBetween(const Work& work, const Work& larger) {
    return std::max({growthBetween(work.blocks, larger.blocks), growthBetween(work.bytes, larger.bytes),
                     growthBetween(work.allocatedBytes, larger.allocatedBytes),
                     growthBetween(work.peakBytes, larger.peakBytes),
                     growthBetween(work.writtenBytes, larger.writtenBytes)});
}

double growthFrom(std::size_t size, const Preparation& prepare) {
    return growthFrom(size, prepare, growthBetween);
}

double growthForOutputFrom(std::size_t size, const Preparation& prepare) {
    return growthFrom(size, prepare, growthForOutputBetween);
}

} // namespace kiv::test
