/// Runs something on many threads at once.
///
///     std::atomic<int> wrong = 0;
///     vOnManyThreads([&](std::size_t thread) { wrong += ask(thread) == expected ? 0 : 1; });
///     EXPECT_EQ(wrong, 0);
///
/// Errors: what a thread throws ends the test program, so a thread expects nothing itself and counts what is
/// wrong.
#pragma once

#include <barrier>
#include <cstddef>
#include <thread>
#include <vector>

namespace kiv::test {

/// More than there are processors, so that threads are interrupted wherever they are.
inline constexpr std::size_t ThreadCount = 8;

/// Calls it once on each thread, with the thread's number from 0, all at the same moment; ends when all have.
template <class Run>
void vOnManyThreads(const Run& run) {
    std::barrier start(static_cast<std::ptrdiff_t>(ThreadCount));
    std::vector<std::jthread> threads;
    for (std::size_t number = 0; number < ThreadCount; ++number)
        threads.emplace_back([&run, &start, number] {
            start.arrive_and_wait();
            run(number);
        });
}

} // namespace kiv::test
