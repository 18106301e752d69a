#include "Support/Allocations.h"

#include <cstdlib>
#include <limits>

namespace {

constexpr std::size_t NoLimit = std::numeric_limits<std::size_t>::max();

thread_local std::size_t allocationsLeft = NoLimit;
thread_local bool isRefusedOnce = false;
thread_local bool wasRefused = false;
thread_local bool hasThrown = false;
thread_local std::size_t count = 0;
thread_local std::size_t size = 0;
thread_local std::ptrdiff_t held = 0;

/// Null when there is no memory or none is left to this thread.
void* pAllocateOrNull(std::size_t bytes) noexcept {
    if (allocationsLeft == 0) {
        wasRefused = true;
        if (isRefusedOnce)
            allocationsLeft = NoLimit;
        return nullptr;
    }
    if (allocationsLeft != NoLimit)
        --allocationsLeft;
    void* const memory = std::malloc(bytes == 0 ? 1 : bytes);
    if (!memory)
        return nullptr;
    ++count;
    size += bytes;
    ++held;
    return memory;
}

void* pAllocate(std::size_t bytes) {
    if (void* const memory = pAllocateOrNull(bytes))
        return memory;
    hasThrown = true;
    // It may free memory, which would change nothing here, or throw by itself.
    if (const auto handler = std::get_new_handler())
        handler();
    throw std::bad_alloc();
}

void vFree(void* memory) {
    if (memory)
        --held;
    std::free(memory);
}

} // namespace

// The whole test program allocates through these. They are kept whole because the compiler warns of what
// looks like a mismatch where it expands only one of a pair.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    return pAllocate(bytes);
}
[[gnu::noinline]] void* operator new[](std::size_t bytes) {
    return pAllocate(bytes);
}
[[gnu::noinline]] void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return pAllocateOrNull(bytes);
}
[[gnu::noinline]] void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return pAllocateOrNull(bytes);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    vFree(memory);
}
[[gnu::noinline]] void operator delete[](void* memory) noexcept {
    vFree(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    vFree(memory);
}
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept {
    vFree(memory);
}

[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t&) noexcept {
    vFree(memory);
}
[[gnu::noinline]] void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    vFree(memory);
}

namespace kiv::test {

std::size_t allocationCount() {
    return count;
}

std::size_t allocatedSize() {
    return size;
}

std::ptrdiff_t allocationsHeld() {
    return held;
}

AllocationLimit::AllocationLimit(std::size_t allocations, Refusal refusal) {
    allocationsLeft = allocations;
    isRefusedOnce = refusal == Refusal::Once;
    wasRefused = false;
    hasThrown = false;
}

AllocationLimit::~AllocationLimit() {
    allocationsLeft = NoLimit;
}

bool AllocationLimit::boRefused() const {
    return wasRefused;
}

bool AllocationLimit::boThrew() const {
    return hasThrown;
}

} // namespace kiv::test
