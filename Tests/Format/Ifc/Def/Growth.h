/// How the time that something takes grows with its size, to find what grows with the square.
///
///     const auto growth = growthFrom(100'000, [](std::size_t size) {
///         return [text = std::string(size, 'x')] { vRead(text); };
///     });
///     EXPECT_LE(growth, ProportionalGrowth);
#pragma once

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <limits>

namespace kiv::test {

/// What is in proportion to its size doubles with it, what grows with the square becomes four times as much.
inline constexpr double ProportionalGrowth = 3.0;

/// The processor time of one call; other processes on the machine hardly count.
template <typename Run>
double secondsOf(const Run& run) {
    const std::clock_t start = std::clock();
    run();
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// What is done sooner says nothing: the clock and the memory that comes from the system are as large. What grows with the
/// square takes longer than that at all sizes that are measured here.
inline constexpr double JudgedSeconds = 0.01;

/// How many times as long twice the size takes, each by the best of three runs; 1 when neither takes long enough to tell.
/// `prepare` makes what is measured for a size, and its own time does not count.
template <typename Prepare>
double growthFrom(std::size_t size, const Prepare& prepare) {
    const auto single = prepare(size);
    const auto twice = prepare(2 * size);
    double singleBest = std::numeric_limits<double>::max();
    double twiceBest = singleBest;
    for (int run = 0; run != 3; ++run) {
        singleBest = std::min(singleBest, secondsOf(single));
        twiceBest = std::min(twiceBest, secondsOf(twice));
    }
    return twiceBest < JudgedSeconds ? 1.0 : twiceBest / singleBest;
}

} // namespace kiv::test
