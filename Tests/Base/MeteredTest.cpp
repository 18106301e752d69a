#include "Base/Metered.h"

#include "Support/CountingMeter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <string>
#include <vector>

namespace kiv {
namespace {

using test::CountingMeter;

TEST(MeteredTest, AScopeGivesBackWhatItHolds) {
    CountingMeter meter;
    {
        MeteredScope scope(&meter);
        scope.vTake(10);
        scope.vTake(5);
        EXPECT_EQ(meter.held, 15U);
        scope.vGiveBack();
        EXPECT_EQ(meter.held, 0U);
        scope.vTake(7);
    }
    EXPECT_EQ(meter.held, 0U);
    EXPECT_EQ(meter.most, 15U);
}

TEST(MeteredTest, WhatAScopeCouldNotTakeItDoesNotGiveBack) {
    CountingMeter meter(10);
    {
        MeteredScope scope(&meter);
        scope.vTake(8);
        EXPECT_THROW(scope.vTake(3), std::bad_alloc);
        EXPECT_EQ(meter.held, 8U);
    }
    EXPECT_EQ(meter.held, 0U);
}

TEST(MeteredTest, ScopesExchangeWhatTheyHold) {
    CountingMeter meter;
    MeteredScope outer(&meter);
    {
        MeteredScope inner(&meter);
        inner.vTake(3);
        outer.vTake(20);
        inner.vSwap(outer);
    }
    EXPECT_EQ(meter.held, 3U);
    EXPECT_EQ(outer.pMeter(), &meter);
}

TEST(MeteredTest, WithoutAMeterNothingIsNoted) {
    MeteredScope scope(nullptr);
    scope.vTake(100);
    vLook(nullptr);
    vMemoryTake(nullptr, 100);
    vObjectTake(nullptr);
    vTextMemoryTake(100, nullptr);
    std::vector<int> values;
    vRoomForOne(values, nullptr);
    EXPECT_EQ(values.capacity(), 0U);
    std::string text;
    vRoomForText(text, 100, nullptr);
    EXPECT_EQ(text.capacity(), std::string().capacity());
    vTextSet(text, "wall", nullptr);
    EXPECT_EQ(text, "wall");
}

TEST(MeteredTest, AnObjectIsAPlaceToStop) {
    CountingMeter meter;
    vObjectTake(&meter);
    vLook(&meter);
    vMemoryTake(&meter, 9);
    EXPECT_EQ(meter.objects, 1U);
    EXPECT_EQ(meter.looks, 2);
    EXPECT_EQ(meter.held, 9U);
}

TEST(MeteredTest, RoomIsTakenBeforeTheOldOneIsGivenBack) {
    CountingMeter meter;
    std::vector<std::uint32_t> values;
    vRoomFor(values, 4, &meter);
    EXPECT_EQ(values.capacity(), 4U);
    EXPECT_EQ(meter.held, 16U);
    vRoomFor(values, 4, &meter); // there is room already
    vRoomFor(values, 0, &meter);
    EXPECT_EQ(meter.held, 16U);
    vRoomFor(values, 10, &meter);
    EXPECT_EQ(meter.held, 40U);
    EXPECT_EQ(meter.most, 56U);
}

TEST(MeteredTest, RoomForOneMoreDoubles) {
    CountingMeter meter;
    std::vector<std::uint64_t> values;
    for (std::uint64_t value = 0; value < 5; ++value) {
        vRoomForOne(values, &meter);
        values.push_back(value);
        EXPECT_EQ(meter.held, 8 * values.capacity()) << value;
    }
    EXPECT_EQ(values.capacity(), 8U);
    EXPECT_EQ(values, (std::vector<std::uint64_t>{0, 1, 2, 3, 4}));
    EXPECT_EQ(meter.most, 8U * (4 + 8));
}

TEST(MeteredTest, WithoutRoomTheValuesAreAsBefore) {
    CountingMeter meter(100);
    std::vector<std::uint64_t> values{1, 2};
    meter.vTake(WorkMeter::Unit::HeldBytes, 8 * values.capacity());
    EXPECT_THROW(vRoomFor(values, 100, &meter), std::bad_alloc);
    EXPECT_EQ(values, (std::vector<std::uint64_t>{1, 2}));
    EXPECT_EQ(meter.held, 16U);
}

TEST(MeteredTest, TrimmedRoomIsThatOfTheValues) {
    CountingMeter meter;
    std::vector<std::uint64_t> values;
    vRoomFor(values, 10, &meter);
    values = {7, 8};
    ASSERT_EQ(values.capacity(), 10U);
    vRoomTrim(values, &meter);
    EXPECT_EQ(values.capacity(), 2U);
    EXPECT_EQ(values, (std::vector<std::uint64_t>{7, 8}));
    EXPECT_EQ(meter.held, 16U);
    EXPECT_EQ(meter.most, 96U);
    vRoomTrim(values, &meter); // nothing to do, so that both places are not needed
    EXPECT_EQ(meter.most, 96U);
    values.clear();
    vRoomTrim(values, &meter);
    EXPECT_EQ(values.capacity(), 0U);
    EXPECT_EQ(meter.held, 0U);
}

TEST(MeteredTest, AShortTextTakesNoMemoryOfItsOwn) {
    const auto shortest = std::string().capacity();
    EXPECT_EQ(memoryOf(std::string()), 0U);
    EXPECT_EQ(memoryOf(std::string(shortest, 'x')), 0U);
    const std::string longer(shortest + 1, 'x');
    EXPECT_EQ(memoryOf(longer), longer.capacity() + 1);
    CountingMeter meter;
    vTextMemoryTake(shortest, &meter);
    EXPECT_EQ(meter.held, 0U);
    vTextMemoryTake(shortest + 1, &meter);
    EXPECT_EQ(meter.held, shortest + 2);
}

TEST(MeteredTest, ATextGrowsToTwiceItsRoomAtLeast) {
    const auto shortest = std::string().capacity();
    CountingMeter meter;
    std::string text(shortest, 'x');
    vRoomForText(text, 0, &meter);
    EXPECT_EQ(meter.held, 0U);
    vRoomForText(text, 1, &meter);
    EXPECT_EQ(text.capacity(), 2 * shortest);
    EXPECT_EQ(meter.held, memoryOf(text));
    vRoomForText(text, 1000, &meter);
    EXPECT_GE(text.capacity(), shortest + 1000);
    EXPECT_EQ(meter.held, memoryOf(text));
    EXPECT_EQ(text, std::string(shortest, 'x'));
}

TEST(MeteredTest, AReplacedTextIsNotedBeforeItIsTaken) {
    CountingMeter meter(100);
    std::string text("wall");
    vTextSet(text, std::string(60, 'y'), &meter);
    EXPECT_EQ(text, std::string(60, 'y'));
    EXPECT_EQ(meter.held, memoryOf(text));
    vTextSet(text, "door", &meter); // there is room
    EXPECT_EQ(text, "door");
    EXPECT_EQ(meter.held, memoryOf(text));
    EXPECT_THROW(vTextSet(text, std::string(200, 'z'), &meter), std::bad_alloc);
}

} // namespace
} // namespace kiv
