/// How the time that something takes grows with its size, to find what grows with the square.
///
///     const auto growth = growthFrom(10'000, [](std::size_t size) {
///         return [text = std::string(size, 'x')] { vRead(text); };
///     });
///     EXPECT_LE(growth, ProportionalGrowth);
///
/// The law is that twice the size takes three times as long at most. It is judged where the clock can tell: from the size
/// that is given on, sizes are doubled until the larger one takes `JudgedSeconds`. Where it does not hold there, it is
/// judged at two larger sizes too, and the least growth counts: what else the machine does, a cache that is full and memory
/// that comes from the system only ever make things look worse, while what grows with the square does so at every size.
#pragma once

#include <algorithm>
#include <cstddef>
#include <ctime>

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

/// What is done sooner says nothing: the clock and the memory that comes from the system are as large.
inline constexpr double JudgedSeconds = 0.01;

/// A size, and how long its double took once.
struct JudgedSize {
    std::size_t size;
    double twiceSeconds;
};

/// The first size from the given one on whose double takes long enough to tell, or the last that is not above `sizeMax`.
template <typename Prepare>
JudgedSize judgedSizeFrom(std::size_t size, const Prepare& prepare, std::size_t sizeMax) {
    for (;; size *= 2) {
        const double twiceSeconds = secondsOf(prepare(2 * size));
        if (twiceSeconds >= JudgedSeconds || size > sizeMax / 2)
            return {size, twiceSeconds};
    }
}

/// How many times as long twice the size takes: by the best of two runs of the size, and of as many of its double, three at
/// most, as it takes to see the law hold.
template <typename Prepare>
double growthAt(JudgedSize judged, const Prepare& prepare) {
    const auto single = prepare(judged.size);
    const double singleBest = std::min(secondsOf(single), secondsOf(single));
    double twiceBest = judged.twiceSeconds;
    if (twiceBest <= ProportionalGrowth * singleBest)
        return twiceBest / singleBest;
    const auto twice = prepare(2 * judged.size);
    for (int run = 0; run != 2 && twiceBest > ProportionalGrowth * singleBest; ++run)
        twiceBest = std::min(twiceBest, secondsOf(twice));
    return twiceBest / singleBest;
}

/// How many times as long twice the size takes, which is judged as told above; 1 when even twice `sizeMax` takes too little
/// time to tell. `prepare` makes what is measured for a size, four times `sizeMax` at most; its own time does not count.
template <typename Prepare>
double growthFrom(std::size_t size, const Prepare& prepare, std::size_t sizeMax) {
    const auto judged = judgedSizeFrom(size, prepare, sizeMax);
    if (judged.twiceSeconds < JudgedSeconds)
        return 1.0;
    double growth = growthAt(judged, prepare);
    for (const auto larger : {judged.size * 3 / 2, judged.size * 2}) {
        if (growth <= ProportionalGrowth)
            break;
        growth = std::min(growth, growthAt({larger, secondsOf(prepare(2 * larger))}, prepare));
    }
    return growth;
}

/// The same, with sizes up to sixteen times the given one.
template <typename Prepare>
double growthFrom(std::size_t size, const Prepare& prepare) {
    return growthFrom(size, prepare, 16 * size);
}

} // namespace kiv::test
