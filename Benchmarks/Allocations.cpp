#include "Allocations.h"

#include "Require.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <malloc.h>

namespace {

using kiv::bench::Allocations;

constinit std::atomic<bool> isCounting{false};
constinit Allocations counted;

void* pTaken(void* block) {
    if (!isCounting.load(std::memory_order_relaxed) || !block)
        return block;
    ++counted.count;
    counted.heldBytes += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    counted.peakBytes = std::max(counted.peakBytes, counted.heldBytes);
    return block;
}

void vGiveBack(void* block) {
    if (isCounting.load(std::memory_order_relaxed) && block)
        counted.heldBytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
}

} // namespace

// The functions of the GNU C library themselves, under the names that stay free for this.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

#define KIV_IN_FRONT [[gnu::visibility("default")]]

KIV_IN_FRONT void* malloc(std::size_t size) noexcept {
    return pTaken(__libc_malloc(size));
}

KIV_IN_FRONT void* calloc(std::size_t count, std::size_t size) noexcept {
    return pTaken(__libc_calloc(count, size));
}

KIV_IN_FRONT void* realloc(void* block, std::size_t size) noexcept {
    vGiveBack(block);
    return pTaken(__libc_realloc(block, size));
}

KIV_IN_FRONT void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return pTaken(__libc_memalign(alignment, size));
}

KIV_IN_FRONT void free(void* block) noexcept {
    vGiveBack(block);
    __libc_free(block);
}
}

namespace kiv::bench {

Allocations allocationsOf(const std::function<void()>& work) {
    counted = {};
    isCounting = true;
    work();
    isCounting = false;
    return counted;
}

void vFreedMemoryKeep() {
    constexpr int enough = 1 << 30;
    vRequire(mallopt(M_TRIM_THRESHOLD, enough) == 1 && mallopt(M_MMAP_THRESHOLD, enough) == 1,
             "the C library does not let memory be kept");
}

void vFreedMemoryHandBack() {
    malloc_trim(0);
}

} // namespace kiv::bench
