#include "Support/FrozenMemory.h"

#include "Support/Sanitized.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <link.h>
#include <new>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// More than any test places; pages that nobody touches cost nothing.
constexpr std::size_t PagesSize = std::size_t{256} << 20;

thread_local bool isPlacing = false;

struct Pages {
    char* begin = nullptr;
    char* next = nullptr;
};

Pages& pages() {
    static Pages reserved = [] {
        void* const place = mmap(nullptr, PagesSize, PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (place == MAP_FAILED)
            std::abort();
        return Pages{static_cast<char*>(place), static_cast<char*>(place)};
    }();
    return reserved;
}

std::uintptr_t numberOf(const void* place) {
    return reinterpret_cast<std::uintptr_t>(place);
}

bool isInPages(const void* place) {
    return numberOf(place) - numberOf(pages().begin) < PagesSize;
}

struct Freezing {
    std::string_view prefix;
    std::size_t frozen = 0;
};

std::string_view fileNameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

int onLibrary(dl_phdr_info* library, std::size_t, void* data) {
    auto& freezing = *static_cast<Freezing*>(data);
    if (!fileNameOf(library->dlpi_name).starts_with(freezing.prefix))
        return 0;
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    for (int index = 0; index != library->dlpi_phnum; ++index) {
        const auto& part = library->dlpi_phdr[index];
        if (part.p_type != PT_LOAD || (part.p_flags & PF_W) == 0)
            continue;
        const auto begin = (library->dlpi_addr + part.p_vaddr) & ~(pageSize - 1);
        const auto end = library->dlpi_addr + part.p_vaddr + part.p_memsz;
        if (mprotect(reinterpret_cast<void*>(begin), end - begin, PROT_READ) == 0)
            ++freezing.frozen;
    }
    return 0;
}

} // namespace

namespace kiv::test {

FrozenMemory::Placing::Placing() {
    isPlacing = true;
}

FrozenMemory::Placing::~Placing() {
    isPlacing = false;
}

bool FrozenMemory::has(const void* place) {
    return isInPages(place);
}

void FrozenMemory::vFreeze() {
    if (mprotect(pages().begin, PagesSize, PROT_READ) != 0)
        std::abort();
}

std::size_t FrozenMemory::librariesFreeze(const char* namePrefix) {
    Freezing freezing{namePrefix};
    dl_iterate_phdr(onLibrary, &freezing);
    return freezing.frozen;
}

} // namespace kiv::test

#if !KIV_SANITIZED // a sanitizer has operators of its own

namespace {

void* pPlace(std::size_t bytes, std::size_t alignment) {
    auto& [begin, next] = pages();
    next += (0 - numberOf(next)) & (alignment - 1);
    if (bytes > PagesSize - static_cast<std::size_t>(next - begin))
        std::abort();
    char* const place = next;
    next += std::max<std::size_t>(bytes, 1);
    return place;
}

void* pAllocate(std::size_t bytes, std::size_t alignment) {
    if (isPlacing)
        return pPlace(bytes, alignment);
    const auto size = std::max<std::size_t>(bytes, 1);
    void* const place = alignment <= alignof(std::max_align_t)
                            ? std::malloc(size)
                            : std::aligned_alloc(alignment, (size + alignment - 1) & ~(alignment - 1));
    if (!place)
        throw std::bad_alloc();
    return place;
}

void vFree(void* place) {
    if (!isInPages(place))
        std::free(place);
}

} // namespace

// Those for arrays, and those that give null, call these.
[[gnu::noinline]] void* operator new(std::size_t bytes) {
    return pAllocate(bytes, alignof(std::max_align_t));
}
[[gnu::noinline]] void* operator new(std::size_t bytes, std::align_val_t alignment) {
    return pAllocate(bytes, static_cast<std::size_t>(alignment));
}
[[gnu::noinline]] void operator delete(void* place) noexcept {
    vFree(place);
}
[[gnu::noinline]] void operator delete(void* place, std::size_t) noexcept {
    vFree(place);
}
[[gnu::noinline]] void operator delete(void* place, std::align_val_t) noexcept {
    vFree(place);
}
[[gnu::noinline]] void operator delete(void* place, std::size_t, std::align_val_t) noexcept {
    vFree(place);
}

#endif
