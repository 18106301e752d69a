#include "Host/Xml/KivXml.h"
#include "Host/Xml/KivXmlLines.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <new>
#include <sstream>

namespace {

/// How many more allocations succeed on this thread; negative for all.
thread_local long allocationsLeft = -1;
/// How often and how much was allocated on this thread up to now.
thread_local std::size_t allocationCount = 0;
thread_local std::size_t allocatedSize = 0;

void* pAllocate(std::size_t size) {
    if (allocationsLeft == 0)
        throw std::bad_alloc();
    if (allocationsLeft > 0)
        --allocationsLeft;
    ++allocationCount;
    allocatedSize += size;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

} // namespace

// The whole test program allocates through these. They are kept whole because the compiler warns of what
// looks like a mismatch where it expands only one of a pair.
[[gnu::noinline]] void* operator new(std::size_t size) {
    return pAllocate(size);
}
[[gnu::noinline]] void* operator new[](std::size_t size) {
    return pAllocate(size);
}
[[gnu::noinline]] void operator delete(void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete[](void* memory) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace kiv::xml {
namespace {

enum class Outcome { Document, Error, NoMemory };

/// What comes of reading when only so many allocations succeed.
Outcome getOutcome(const std::string& text, long allocations) {
    std::istringstream stream(text);
    File file(nullptr, VerboseLevel::Quiet, ValidateLevel::None);
    try {
        allocationsLeft = allocations;
        const bool isRead = file.parse(stream, "a name that needs memory of its own", nullptr).has_value();
        allocationsLeft = -1;
        return isRead ? Outcome::Document : Outcome::Error;
    } catch (const std::bad_alloc&) {
        allocationsLeft = -1;
        return Outcome::NoMemory;
    }
}

/// Every allocation fails once; nothing but the lack of memory may come of it until all succeed.
void vExpectNoMemoryUntil(const std::string& text, Outcome last) {
    long allocations = 0;
    while (getOutcome(text, allocations) == Outcome::NoMemory)
        ++allocations;
    EXPECT_GT(allocations, 3) << text.substr(0, 60);
    EXPECT_EQ(getOutcome(text, allocations), last) << text.substr(0, 60);
}

TEST(KivXmlMemory, LackOfItIsPassedOnFromEveryPlace) {
    std::string large = "<r><?a-target-of-some-length and its data?>";
    for (int i = 0; i != 2000; ++i)
        large += "<e a='1'>text<!-- comment --></e>\n";
    vExpectNoMemoryUntil(large + "</r>", Outcome::Document);
    vExpectNoMemoryUntil("<?xml version='1.0' encoding='an-encoding-with-a-long-name'?><a/>", Outcome::Error);
    vExpectNoMemoryUntil("<!DOCTYPE a [<!ENTITY e 'v'>]><a>&e;</a>", Outcome::Error);
    vExpectNoMemoryUntil("<a>", Outcome::Error);
}

TEST(KivXmlMemory, LinesOfALongTextAreNotedWithoutCopyingThemForEachBlock) {
    const std::string block = std::string(63, 'x') + '\n';
    LineCounter lines;
    const std::size_t before = allocationCount;
    for (int i = 0; i != 1000; ++i)
        lines.vBlockAdd(block);
    EXPECT_LT(allocationCount - before, 100U);
    EXPECT_EQ(lines.getLine(63999), 1000U);
}

TEST(KivXmlMemory, TextsThatGrowInTurnsAreCopiedAFewTimesOnly) {
    Document document;
    Element root = document.getNode().ElementNodeAppend("r");
    Element first = root.ElementNodeAppend("a");
    Element second = root.ElementNodeAppend("b");
    const std::size_t before = allocatedSize;
    std::string digits;
    std::string letters;
    for (int i = 0; i != 10000; ++i) {
        first.boTextNodeAppend("0123456789");
        second.boTextNodeAppend("abcdefghij");
        digits += "0123456789";
        letters += "abcdefghij";
    }
    EXPECT_LT(allocatedSize - before, std::size_t{4} << 20);
    EXPECT_TRUE(first.FirstChildGet()->getNodeValueView() == digits);
    EXPECT_TRUE(second.FirstChildGet()->getNodeValueView() == letters);
}

} // namespace
} // namespace kiv::xml
