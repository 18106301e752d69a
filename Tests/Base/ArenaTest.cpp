#include "Base/Arena.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kiv {
namespace {

std::uintptr_t placeOf(const void* piece) {
    return reinterpret_cast<std::uintptr_t>(piece);
}

/// A piece of one byte each; the pieces of one block lie side by side.
const char* pByte(Arena& arena) {
    return arena.getCopy("x").data();
}

struct Eight {
    std::uint64_t value = 8;
};

TEST(ArenaTest, CopiesStayWhereTheyAre) {
    Arena arena(16);
    std::vector<std::string_view> copies;
    for (int number = 0; number < 1000; ++number)
        copies.push_back(arena.getCopy(std::to_string(number)));
    for (int number = 0; number < 1000; ++number)
        EXPECT_EQ(copies[static_cast<std::size_t>(number)], std::to_string(number));
}

TEST(ArenaTest, RecordsAreMadeOfTheirArguments) {
    struct Pair {
        Pair(int a, int b) : first(a), second(b) {}
        int first;
        int second;
    };
    Arena arena;
    const auto* const pair = arena.pMake<Pair>(3, 4);
    EXPECT_EQ(pair->first, 3);
    EXPECT_EQ(pair->second, 4);
}

TEST(ArenaTest, ArraysAreFilledWithTheDefaultValue) {
    Arena arena(64);
    for (const std::size_t count : {1U, 5U, 100U}) {
        auto* const values = arena.pMakeArray<int>(count);
        EXPECT_EQ(std::count(values, values + count, 0), static_cast<std::ptrdiff_t>(count));
        std::fill_n(values, count, -1);
    }
}

template <class Object>
void vExpectAligned(Arena& arena) {
    EXPECT_EQ(placeOf(arena.pAllocateFor<Object>(1)) % alignof(Object), 0U) << alignof(Object);
}

TEST(ArenaTest, EveryPieceIsAlignedWhateverLiesBeforeIt) {
    Arena arena(61);
    for (std::size_t odd = 0; odd < 100; ++odd) {
        const std::string text(odd % 19, 'x');
        arena.getCopy(text);
        vExpectAligned<std::uint16_t>(arena);
        arena.getCopy(text);
        vExpectAligned<std::uint32_t>(arena);
        arena.getCopy(text);
        vExpectAligned<std::uint64_t>(arena);
        arena.getCopy(text);
        vExpectAligned<std::max_align_t>(arena);
    }
}

/// A block that ends at an odd place has bytes left that are enough for the piece, but not once it is
/// aligned.
TEST(ArenaTest, APieceThatFitsOnlyWithoutItsPaddingGoesToANewBlock) {
    constexpr std::size_t blockSize = 61;
    for (std::size_t used = 1; used <= blockSize; ++used) {
        Arena arena(blockSize);
        const auto block = placeOf(pByte(arena));
        for (std::size_t count = 1; count < used; ++count)
            pByte(arena);
        const auto piece = placeOf(arena.pMake<Eight>());
        const auto inBlock = block + (used + 7) / 8 * 8;
        ASSERT_EQ(block % 8, 0U);
        if (inBlock + sizeof(Eight) <= block + blockSize)
            EXPECT_EQ(piece, inBlock) << used;
        else
            EXPECT_TRUE(piece < block || piece >= block + blockSize) << used;
    }
}

TEST(ArenaTest, APieceThatFitsExactlyStaysInTheBlock) {
    Arena arena(64);
    const auto* const block = pByte(arena);
    EXPECT_EQ(arena.getCopy(std::string(63, 'y')).data(), block + 1);
}

/// How many pieces of one byte lie side by side, from the next one on.
class Runs {
public:
    explicit Runs(Arena& arena) : arena_(arena), next_(pByte(arena)) {}

    std::size_t getNext() {
        const auto* const first = next_;
        std::size_t size = 0;
        for (; next_ == first + size; ++size)
            next_ = pByte(arena_);
        return size;
    }

private:
    Arena& arena_;
    const char* next_;
};

TEST(ArenaTest, BlocksDoubleUpToALimit) {
    Arena arena(std::size_t{1} << 12);
    Runs runs(arena);
    for (const std::size_t bits : {12U, 13U, 14U, 15U, 16U, 16U, 16U})
        EXPECT_EQ(runs.getNext(), std::size_t{1} << bits);
}

TEST(ArenaTest, TheLimitOfBlocksCanBeSmaller) {
    Arena arena(std::size_t{1} << 8, std::size_t{1} << 9);
    Runs runs(arena);
    for (const std::size_t bits : {8U, 9U, 9U, 9U})
        EXPECT_EQ(runs.getNext(), std::size_t{1} << bits);
}

/// The first block has 64 bytes, so the second one 128, of which a quarter is 32.
TEST(ArenaTest, OnlyWhatIsLargerThanAQuarterOfTheNextBlockHasABlockOfItsOwn) {
    for (const std::size_t size : {32U, 33U, 1000U}) {
        Arena arena(64);
        const auto* last = pByte(arena);
        // No room is left for the piece, but there is for a byte.
        last = arena.getCopy(std::string(62, 'y')).data() + 61;
        const auto piece = arena.getCopy(std::string(size, 'z'));
        const bool isOfItsOwn = size > 32;
        EXPECT_EQ(pByte(arena), isOfItsOwn ? last + 1 : piece.data() + size) << size;
        EXPECT_EQ(piece, std::string(size, 'z'));
    }
}

TEST(ArenaTest, PiecesDoNotOverlap) {
    Arena arena(32);
    std::vector<std::string_view> pieces;
    for (std::size_t size = 0; size < 300; ++size)
        pieces.push_back(arena.getCopy(std::string(size, static_cast<char>(size))));
    for (std::size_t size = 0; size < 300; ++size)
        EXPECT_EQ(pieces[size], std::string(size, static_cast<char>(size)));
}

/// Counts how many of them there are.
class Counted {
public:
    explicit Counted(int& count) : count_(count) { ++count_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --count_; }

private:
    int& count_;
};

TEST(ArenaTest, OwnedObjectsAreDestroyedWithTheirOwner) {
    Arena arena;
    int count = 0;
    {
        const auto first = arena.pMakeOwned<Counted>(count);
        auto second = arena.pMakeOwned<Counted>(count);
        EXPECT_EQ(count, 2);
        second.reset();
        EXPECT_EQ(count, 1);
    }
    EXPECT_EQ(count, 0);
}

TEST(ArenaTest, AContainerTakesItsMemoryFromTheArenaAndLeavesItThere) {
    Arena arena;
    const auto* const before = pByte(arena);
    {
        ArenaVector<char> bytes(arena);
        bytes.assign(100, 'x');
        EXPECT_EQ(bytes.data(), before + 1);
    }
    EXPECT_EQ(pByte(arena), before + 101);
}

TEST(ArenaTest, AContainerMayOutliveItsArena) {
    auto arena = std::make_unique<Arena>();
    ArenaVector<int> values(*arena);
    values.assign(10, 1);
    arena.reset();
}

TEST(ArenaTest, AContainerWithoutArenaOwnsItsMemory) {
    ArenaVector<int> values;
    for (int value = 0; value < 1000; ++value)
        values.push_back(value);
    EXPECT_EQ(values.back(), 999);
    EXPECT_EQ(values.get_allocator().pArena(), nullptr);
}

TEST(ArenaTest, AllocatorsAreEqualWhenTheirArenaIsTheSame) {
    Arena first;
    Arena second;
    const ArenaAllocator<int> ofFirst(first);
    EXPECT_EQ(ofFirst, ArenaAllocator<int>(&first));
    EXPECT_EQ(ofFirst, ArenaAllocator<int>(ArenaAllocator<char>(first)));
    EXPECT_NE(ofFirst, ArenaAllocator<int>(second));
    EXPECT_NE(ofFirst, ArenaAllocator<int>());
    EXPECT_EQ(ArenaAllocator<int>(), ArenaAllocator<int>(ArenaAllocator<char>()));
}

} // namespace
} // namespace kiv
