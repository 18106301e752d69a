#include "Base/ScratchList.h"

#include "Support/CountingMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <span>
#include <vector>

namespace kiv {
namespace {

using test::CountingMeter;

using Owner = std::unique_ptr<int>;

std::vector<int> numbersOf(std::span<Owner> owners) {
    std::vector<int> numbers;
    for (const auto& owner : owners)
        numbers.push_back(*owner);
    return numbers;
}

TEST(ScratchListTest, KeepsValuesInOrderHoweverManyThereAre) {
    ScratchList<Owner, 2> list(nullptr);
    EXPECT_TRUE(list.empty());
    std::vector<int> expected;
    for (int number = 0; number < 9; ++number) {
        EXPECT_EQ(*list.add(std::make_unique<int>(number)), number);
        expected.push_back(number);
        EXPECT_EQ(numbersOf(list.getValues()), expected);
    }
    EXPECT_FALSE(list.empty());
}

TEST(ScratchListTest, TheFirstFewNeedNoMemory) {
    CountingMeter meter;
    ScratchList<std::uint64_t, 4> list(&meter);
    for (std::uint64_t number = 0; number < 4; ++number)
        list.add(number);
    EXPECT_EQ(meter.most, 0U);
}

TEST(ScratchListTest, TheMeterHearsOfBothPlacesWhileValuesMove) {
    CountingMeter meter;
    {
        ScratchList<std::uint64_t, 4> list(&meter);
        for (std::uint64_t number = 0; number < 9; ++number)
            list.add(number);
        // Room for 8, then for 16.
        EXPECT_EQ(meter.most, (8U + 16U) * 8U);
        EXPECT_EQ(meter.held, 16U * 8U);
    }
    EXPECT_EQ(meter.held, 0U);
}

TEST(ScratchListTest, WhenTheMeterRefusesTheValuesAreAsTheyWere) {
    CountingMeter meter;
    meter.vLimitSet(8 * sizeof(Owner));
    ScratchList<Owner, 2> list(&meter);
    for (int number = 0; number < 4; ++number)
        list.add(std::make_unique<int>(number));
    EXPECT_THROW(list.add(std::make_unique<int>(4)), std::bad_alloc);
    EXPECT_EQ(numbersOf(list.getValues()), (std::vector{0, 1, 2, 3}));
    EXPECT_EQ(meter.held, 4 * sizeof(Owner));
}

TEST(ScratchListTest, MovesIntoAnArenaWithoutRoomToSpare) {
    Arena arena(1024);
    ScratchList<std::uint64_t, 2> list(nullptr);
    for (std::uint64_t number = 0; number < 5; ++number)
        list.add(number);
    const auto kept = list.movedTo(arena);
    EXPECT_EQ(std::vector<std::uint64_t>(kept.begin(), kept.end()),
              (std::vector<std::uint64_t>{0, 1, 2, 3, 4}));
    EXPECT_EQ(arena.pAllocateFor<std::uint64_t>(1), static_cast<void*>(kept.data() + kept.size()));
}

} // namespace
} // namespace kiv
