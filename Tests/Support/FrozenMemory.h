/// Memory that can be made read-only: what is allocated while a `FrozenMemory::Placing` lives lies in pages
/// of its own, which `vFreeze` makes read-only. Whoever writes to them then ends the process with SIGSEGV.
///
///     std::optional<Store> store;
///     {
///         const FrozenMemory::Placing placing;
///         store.emplace();
///     }
///     EXPECT_EXIT({ FrozenMemory::vFreeze(); store->vAsk(); std::_Exit(0); }, testing::ExitedWithCode(0),
///     "");
///
/// It replaces operator new and delete of the whole test program: list Support/FrozenMemory.cpp among its
/// sources. With a sanitizer, which replaces them too, there is nothing to be frozen.
///
/// Ownership: the pages belong to the process; what lies in them is destroyed as usual, and its memory not
/// used
///            again.
/// Threads:   each thread places what it allocates itself; one at a time.
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
