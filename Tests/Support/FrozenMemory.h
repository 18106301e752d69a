/// Memory that can be made read-only: what is allocated while a `FrozenMemory::Placing` exists is placed in
/// pages reserved for that, which `vFreeze` makes read-only. A write to them then ends the process with
/// SIGSEGV.
///
///     std::optional<Store> store;
///     {
///         const FrozenMemory::Placing placing;
///         store.emplace();
///     }
///     EXPECT_EXIT({ FrozenMemory::vFreeze(); store->vAsk(); std::_Exit(0); },
///                 testing::ExitedWithCode(0), "");
///
/// Support/FrozenMemory.cpp has to be among the sources of the test program, whose operators new and delete
/// it replaces. A sanitizer replaces them too, so that nothing can be frozen in a build with one.
///
/// Ownership: the pages belong to the process. What lies in them is destroyed as usual, but its memory is not
///            used again.
/// Threads:   a `Placing` is for the allocations of its own thread; only one thread may have one at a time.
#pragma once

#include <cstddef>

namespace kiv::test {

class FrozenMemory {
public:
    /// While it lives, this thread allocates in the pages.
    class Placing {
    public:
        Placing();
        ~Placing();
        Placing(const Placing&) = delete;
        Placing& operator=(const Placing&) = delete;
    };

    /// Whether this lies in the pages.
    static bool has(const void* place);

    /// Makes the pages read-only, up to the end of the process.
    static void vFreeze();

    /// Makes the variables of all shared libraries read-only whose file name begins with this, and gives
    /// their number. What is set up at its first use must have been used before.
    static std::size_t librariesFreeze(const char* namePrefix);
};

} // namespace kiv::test
