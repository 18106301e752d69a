// Lets libexpat, which takes its memory from malloc, take it from operator new, so that Support/Allocations.h
// counts it and lets it fail too. Without a meter, the XML library makes every parser by XML_ParserCreate; a
// test program that lists this file among its sources links this one in its place.

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <expat.h>
#include <new>

namespace {

/// Before each block lies its size, in as much room as keeps the block aligned.
constexpr std::size_t SizeRoom = alignof(std::max_align_t);
static_assert(SizeRoom >= sizeof(std::size_t));

void* pAllocate(std::size_t size) {
    auto* const place = static_cast<std::byte*>(::operator new(SizeRoom + size, std::nothrow));
    if (place == nullptr)
        return nullptr;
    std::memcpy(place, &size, sizeof size);
    return place + SizeRoom;
}

void vFree(void* block) {
    if (block != nullptr)
        ::operator delete(static_cast<std::byte*>(block) - SizeRoom);
}

void* pReallocate(void* block, std::size_t size) {
    void* const other = pAllocate(size);
    if (other == nullptr || block == nullptr)
        return other;
    std::size_t formerSize = 0;
    std::memcpy(&formerSize, static_cast<std::byte*>(block) - SizeRoom, sizeof formerSize);
    std::memcpy(other, block, std::min(formerSize, size));
    vFree(block);
    return other;
}

} // namespace

extern "C" XML_Parser XMLCALL XML_ParserCreate(const XML_Char* encoding) {
    const XML_Memory_Handling_Suite memory{pAllocate, pReallocate, vFree};
    return XML_ParserCreate_MM(encoding, &memory, nullptr);
}
