#include "Base/ScratchList.h"

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

/// Adds up the memory that is held.
class MemoryMeter final : public WorkMeter {
public:
    void vTake(Unit unit, std::uint64_t amount) override {
        if (unit != Unit::HeldBytes)
            return;
        if (held_ + amount > limit_)
            throw std::bad_alloc();
        held_ += amount;
        most_ = std::max(most_, held_);
    }
    void vMemoryGiveBack(std::uint64_t bytes) noexcept override { held_ -= bytes; }
    void vPieceBegin() override {}
    void vLook() override {}

    void vLimitSet(std::uint64_t limit) { limit_ = limit; }
    std::uint64_t getHeld() const { return held_; }
    std::uint64_t getMost() const { return most_; }

private:
    std::uint64_t held_ = 0;
    std::uint64_t most_ = 0;
    std::uint64_t limit_ = UINT64_MAX;
};

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
    MemoryMeter meter;
    ScratchList<std::uint64_t, 4> list(&meter);
    for (std::uint64_t number = 0; number < 4; ++number)
        list.add(number);
    EXPECT_EQ(meter.getMost(), 0U);
}

TEST(ScratchListTest, TheMeterHearsOfBothPlacesWhileValuesMove) {
    MemoryMeter meter;
    {
        ScratchList<std::uint64_t, 4> list(&meter);
        for (std::uint64_t number = 0; number < 9; ++number)
            list.add(number);
        // Room for 8, then for 16.
        EXPECT_EQ(meter.getMost(), (8U + 16U) * 8U);
        EXPECT_EQ(meter.getHeld(), 16U * 8U);
    }
    EXPECT_EQ(meter.getHeld(), 0U);
}

TEST(ScratchListTest, WhenTheMeterRefusesTheValuesAreAsTheyWere) {
    MemoryMeter meter;
    meter.vLimitSet(8 * sizeof(Owner));
    ScratchList<Owner, 2> list(&meter);
    for (int number = 0; number < 4; ++number)
        list.add(std::make_unique<int>(number));
    EXPECT_THROW(list.add(std::make_unique<int>(4)), std::bad_alloc);
    EXPECT_EQ(numbersOf(list.getValues()), (std::vector{0, 1, 2, 3}));
    EXPECT_EQ(meter.getHeld(), 4 * sizeof(Owner));
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
