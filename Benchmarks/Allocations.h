/// Counts what is allocated, by functions that are called in place of those of the C library. So the C
/// libraries that are called count too, the XML parser above all. Only programs that link this file count.
///
///     std::unique_ptr<Schema> schema;
///     const auto counts = allocationsOf([&] { schema = pSchemaRead(text); });
///
/// Threads: one thread at a time counts, and what other threads allocate meanwhile counts too.
#pragma once

#include <cstddef>
#include <functional>

namespace kiv::bench {

struct Allocations {
    /// How often memory was asked for.
    std::size_t count = 0;
    /// The bytes that are held afterwards and were not before; a block counts with what it has room for.
    /// Negative when more was given back than taken.
    std::ptrdiff_t heldBytes = 0;
    /// The most bytes that were held at any time, compared with before.
    std::ptrdiff_t peakBytes = 0;
};

/// What the work allocates.
Allocations allocationsOf(const std::function<void()>& work);

/// From now on the process keeps memory that is given back, so that no figure depends on whether the C
/// library has just handed it to the system.
void vFreedMemoryKeep();

/// Hands all memory that was given back to the system: what is allocated next has to be fetched from there.
void vFreedMemoryHandBack();

} // namespace kiv::bench
