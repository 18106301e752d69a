/// Times things beside each other with Google Benchmark.
///
///     const auto seconds = secondsOf({{"load", [&] { pSchemaRead(text); }},
///                                     {"lines", [&] { vLinesRead(text); }}});
///     const auto ratio = seconds[0] / seconds[1];
///
/// Each subject is repeated many times, the repetitions of all of them in random order, so that noise of the
/// machine meets all alike; the least time counts.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace kiv::bench {

struct Subject {
    std::string name;
    /// What is timed.
    std::function<void()> run;
    /// Called before and after each run, if given, and not timed.
    std::function<void()> before = {};
    std::function<void()> after = {};
};

/// What a time is taken with.
enum class Clock {
    /// The processor time of the thread that runs; what else the machine does hardly counts.
    Processor,
    /// The time that passes, for what several threads do.
    Wall
};

/// The seconds of one run of each subject, in the order of the subjects.
std::vector<double> secondsOf(const std::vector<Subject>& subjects, int repetitions,
                              Clock clock = Clock::Processor);

/// Makes the value count as used, so that nothing that leads to it is left out.
void vUse(std::size_t value);
/// The same for what it points at.
void vUse(const void* value);

} // namespace kiv::bench
