#include "Support/Allocations.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

constexpr std::size_t NoLimit = std::numeric_limits<std::size_t>::max();

thread_local std::size_t allocationsLeft = NoLimit;
thread_local bool isRefusedOnce = false;
thread_local bool wasRefused = false;
thread_local bool hasThrown = false;
thread_local std::size_t count = 0;
thread_local std::size_t size = 0;
thread_local std::ptrdiff_t held = 0;
thread_local std::ptrdiff_t heldBytes = 0;
thread_local std::ptrdiff_t heldBytesAtPeak = 0;

std::ptrdiff_t sizeOf([[maybe_unused]] void* memory) {
#if defined(__GLIBC__)
    return static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
#else
    return 0;
#endif
}

void vBytesAdd(std::ptrdiff_t bytes) {
    heldBytes += bytes;
    heldBytesAtPeak = std::max(heldBytesAtPeak, heldBytes);
}

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
    vBytesAdd(sizeOf(memory));
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
    if (memory) {
        --held;
        heldBytes -= sizeOf(memory);
    }
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
// Values of a stricter alignment: their bytes count, and they are never refused.
[[gnu::noinline]] void* operator new(std::size_t bytes, std::align_val_t alignment) {
    const auto step = static_cast<std::size_t>(alignment);
    void* const memory = std::aligned_alloc(step, (bytes + step - 1) / step * step);
    if (!memory)
        throw std::bad_alloc();
    vBytesAdd(sizeOf(memory));
    return memory;
}
[[gnu::noinline]] void operator delete(void* memory, std::align_val_t) noexcept {
    heldBytes -= sizeOf(memory);
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    heldBytes -= sizeOf(memory);
    std::free(memory);
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

std::ptrdiff_t bytesHeld() {
    return heldBytes;
}

std::ptrdiff_t bytesHeldAtPeak() {
    return heldBytesAtPeak;
}

void vPeakBegin() {
    heldBytesAtPeak = heldBytes;
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
