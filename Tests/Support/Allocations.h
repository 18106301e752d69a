/// Counts what the calling thread allocates, and lets its allocations fail.
///
///     for (std::size_t count = 0; !boRunWith(count, [&] { sets.xmlSetAdd(schema, std::move(set), errors);
///     }); ++count)
///         vExpectNothingChanged();
///
/// It replaces operator new and delete of the whole test program: list Support/Allocations.cpp among its
/// sources. What runs with few allocations must hold no expectations, as these allocate too.
///
/// Threads: each thread has counts and limits of its own.
#pragma once

#include <cstddef>
#include <new>

namespace kiv::test {

/// How often and how much was allocated up to now.
std::size_t allocationCount();
std::size_t allocatedSize();
/// How many allocations were not given back up to now.
std::ptrdiff_t allocationsHeld();
/// How many bytes were not given back up to now, and the most that this was since `vPeakBegin`; 0 where the C
/// library does not say how large an allocation is. Small allocations count as the C library rounds them up.
std::ptrdiff_t bytesHeld();
std::ptrdiff_t bytesHeldAtPeak();
void vPeakBegin();

/// Which allocations fail once a limit is reached.
enum class Refusal { FromThenOn, Once };

/// While it lives, only that many further allocations succeed; the next one is std::bad_alloc.
class AllocationLimit {
public:
    explicit AllocationLimit(std::size_t allocations, Refusal refusal = Refusal::FromThenOn);
    AllocationLimit(const AllocationLimit&) = delete;
    AllocationLimit& operator=(const AllocationLimit&) = delete;
    ~AllocationLimit();

    /// Whether it refused an allocation, and whether one that then threw. Others ask for null, and have
    /// another way.
    bool boRefused() const;
    bool boThrew() const;
};

/// Runs it with that many allocations; false when they were too few and std::bad_alloc came out of it.
template <class Run>
bool boRunWith(std::size_t allocations, const Run& run, Refusal refusal = Refusal::FromThenOn) {
    try {
        const AllocationLimit limit(allocations, refusal);
        run();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

} // namespace kiv::test
