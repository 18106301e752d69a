// Counts the work of the whole program for Growth.h: what compilers call at each basic block, and functions
// of the C library and of libexpat, which are called here first, by shared libraries too, and then where they
// are.

#include "Support/Growth.h"

namespace {

constinit thread_local kiv::test::Work work;
// What is held now. Memory of another thread that is freed here counts down.
constinit thread_local std::int64_t heldBytes = 0;

} // namespace

namespace kiv::test {

Work workDone() {
    return work;
}

std::uint64_t peakBegin() {
    const auto held = heldBytes > 0 ? static_cast<std::uint64_t>(heldBytes) : 0;
    work.peakBytes = held;
    return held;
}

void vOutputCount(std::size_t bytes) {
    work.writtenBytes += bytes;
}

} // namespace kiv::test

#if defined(KIV_WORK_COUNTED)

#include <dlfcn.h>
#include <expat.h>
#include <malloc.h>
#include <sys/stat.h>

namespace {

/// The function of this name that would be called were ours not there.
template <typename Function>
Function* pNext(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// What a question to the file system counts as.
constexpr std::uint64_t FileQuestionBytes = 1000;

void* pHeld(void* memory) {
    heldBytes += static_cast<std::int64_t>(malloc_usable_size(memory));
    if (heldBytes > static_cast<std::int64_t>(work.peakBytes))
        work.peakBytes = static_cast<std::uint64_t>(heldBytes);
    return memory;
}

void vGivenBack(void* memory) {
    heldBytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
}

std::size_t equalSize(const char* left, const char* right, std::size_t size) {
    std::size_t at = 0;
    while (at != size && left[at] == right[at])
        ++at;
    return at;
}

int compared(const void* left, const void* right, std::size_t size) {
    const auto* const leftBytes = static_cast<const unsigned char*>(left);
    const auto* const rightBytes = static_cast<const unsigned char*>(right);
    const auto at = equalSize(static_cast<const char*>(left), static_cast<const char*>(right), size);
    work.bytes += at;
    return at == size ? 0 : leftBytes[at] - rightBytes[at];
}

/// The text that libexpat has been given and looks at once more, from the beginning of a piece of markup that
/// was not complete, when more comes.
struct OpenMarkup {
    XML_Parser parser;
    int size;
};
constinit thread_local OpenMarkup openMarkup{nullptr, 0};

int openSizeOf(XML_Parser parser) {
    int begin = 0;
    int end = 0;
    return XML_GetInputContext(parser, &begin, &end) ? end - begin : 0;
}

} // namespace

// Declared under names of our own, so that the compiler does not take them for the functions that it knows.
// Exported, so that shared libraries find them.
#pragma GCC visibility push(default)
extern "C" {

void countedBlock() asm("__sanitizer_cov_trace_pc");
void* pCountedCopy(void* to, const void* from, std::size_t size) asm("memcpy");
void* pCountedMove(void* to, const void* from, std::size_t size) asm("memmove");
void* pCountedFill(void* to, int value, std::size_t size) asm("memset");
void* pCountedFind(const void* in, int value, std::size_t size) asm("memchr");
int countedCompare(const void* left, const void* right, std::size_t size) asm("memcmp");
int countedCompareEqual(const void* left, const void* right, std::size_t size) asm("bcmp");
std::size_t countedLength(const char* text) asm("strlen");
void* pCountedAllocate(std::size_t size) asm("malloc");
void* pCountedReallocate(void* memory, std::size_t size) asm("realloc");
void* pCountedAllocateAligned(std::size_t alignment, std::size_t size) asm("aligned_alloc");
void countedFree(void* memory) asm("free");
int countedStatus(const char* path, struct stat* status) asm("stat");
int countedLinkStatus(const char* path, struct stat* status) asm("lstat");
XML_Status countedParse(XML_Parser parser, const char* text, int size, int isLast) asm("XML_Parse");
XML_Status countedParseBuffer(XML_Parser parser, int size, int isLast) asm("XML_ParseBuffer");

void countedBlock() {
    ++work.blocks;
}

void* pCountedCopy(void* to, const void* from, std::size_t size) {
    static auto* const next = pNext<decltype(pCountedCopy)>("memcpy");
    work.bytes += size;
    return next(to, from, size);
}

void* pCountedMove(void* to, const void* from, std::size_t size) {
    static auto* const next = pNext<decltype(pCountedMove)>("memmove");
    work.bytes += size;
    return next(to, from, size);
}

void* pCountedFill(void* to, int value, std::size_t size) {
    static auto* const next = pNext<decltype(pCountedFill)>("memset");
    work.bytes += size;
    return next(to, value, size);
}

void* pCountedFind(const void* in, int value, std::size_t size) {
    static auto* const next = pNext<decltype(pCountedFind)>("memchr");
    void* const found = next(in, value, size);
    work.bytes +=
        found ? static_cast<std::size_t>(static_cast<const char*>(found) - static_cast<const char*>(in))
              : size;
    return found;
}

int countedCompare(const void* left, const void* right, std::size_t size) {
    return compared(left, right, size);
}

int countedCompareEqual(const void* left, const void* right, std::size_t size) {
    return compared(left, right, size);
}

std::size_t countedLength(const char* text) {
    static auto* const next = pNext<decltype(countedLength)>("strlen");
    const auto length = next(text);
    work.bytes += length;
    return length;
}

void* pCountedAllocate(std::size_t size) {
    static auto* const next = pNext<decltype(pCountedAllocate)>("malloc");
    work.allocatedBytes += size;
    return pHeld(next(size));
}

void* pCountedReallocate(void* memory, std::size_t size) {
    static auto* const next = pNext<decltype(pCountedReallocate)>("realloc");
    work.allocatedBytes += size;
    vGivenBack(memory);
    return pHeld(next(memory, size));
}

void* pCountedAllocateAligned(std::size_t alignment, std::size_t size) {
    static auto* const next = pNext<decltype(pCountedAllocateAligned)>("aligned_alloc");
    work.allocatedBytes += size;
    return pHeld(next(alignment, size));
}

void countedFree(void* memory) {
    static auto* const next = pNext<decltype(countedFree)>("free");
    vGivenBack(memory);
    next(memory);
}

int countedStatus(const char* path, struct stat* status) {
    static auto* const next = pNext<decltype(countedStatus)>("stat");
    work.bytes += FileQuestionBytes;
    return next(path, status);
}

int countedLinkStatus(const char* path, struct stat* status) {
    static auto* const next = pNext<decltype(countedLinkStatus)>("lstat");
    work.bytes += FileQuestionBytes;
    return next(path, status);
}

XML_Status countedParse(XML_Parser parser, const char* text, int size, int isLast) {
    static auto* const next = pNext<decltype(countedParse)>("XML_Parse");
    work.bytes += static_cast<std::size_t>(size);
    return next(parser, text, size, isLast);
}

XML_Status countedParseBuffer(XML_Parser parser, int size, int isLast) {
    static auto* const next = pNext<decltype(countedParseBuffer)>("XML_ParseBuffer");
    work.bytes += static_cast<std::size_t>(size + (openMarkup.parser == parser ? openMarkup.size : 0));
    const auto status = next(parser, size, isLast);
    openMarkup = isLast ? OpenMarkup{} : OpenMarkup{parser, openSizeOf(parser)};
    return status;
}
}
#pragma GCC visibility pop

#endif
