#include "Kit/Text/MeteredRoom.h"

#include "Support/CountingMeter.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <vector>

namespace kiv::kit {

namespace {

TEST(MeteredRoom, WithoutAMeterNothingIsHeard) {
    std::vector<int> values;
    vRoomForOne(values, nullptr);
    EXPECT_EQ(values.capacity(), 0U);
    std::string text;
    vRoomForMore(text, 1'000, nullptr);
    EXPECT_LT(text.capacity(), 1'000U);
    vMemoryTake(nullptr, 1);
    vMemoryGiveBack(nullptr, 1);
}

TEST(MeteredRoom, AListGrowsToTwiceItsRoom) {
    test::CountingMeter meter;
    std::vector<std::uint32_t> values;
    for (std::uint32_t value = 0; value != 5; ++value) {
        vRoomForOne(values, &meter);
        values.push_back(value);
        EXPECT_EQ(meter.held, values.capacity() * sizeof(std::uint32_t));
    }
    EXPECT_EQ(values.capacity(), 8U);
    // Both places while the values move.
    EXPECT_EQ(meter.most, (4 + 8) * sizeof(std::uint32_t));
}

TEST(MeteredRoom, AListThatMayNotGrowStaysAsItIs) {
    test::CountingMeter meter(10);
    std::vector<std::uint64_t> values;
    vRoomForOne(values, &meter);
    values.push_back(7);
    EXPECT_THROW(vRoomForOne(values, &meter), std::bad_alloc);
    EXPECT_EQ(values, std::vector<std::uint64_t>{7});
    EXPECT_EQ(meter.held, sizeof(std::uint64_t));
}

TEST(MeteredRoom, AListTakesTheRoomForAllAtOnce) {
    test::CountingMeter meter(80);
    std::vector<std::uint64_t> values;
    vRoomForAll(values, 10, &meter);
    EXPECT_EQ(values.capacity(), 10U);
    EXPECT_EQ(meter.held, 80U);
    std::vector<std::uint64_t> more;
    EXPECT_THROW(vRoomForAll(more, 1, &meter), std::bad_alloc);
    EXPECT_EQ(more.capacity(), 0U);
    vRoomForAll(more, 3, nullptr);
    EXPECT_EQ(more.capacity(), 3U);
}

TEST(MeteredRoom, AShortTextTakesNoMemory) {
    test::CountingMeter meter;
    std::string text;
    EXPECT_EQ(memoryOf(text), 0U);
    vRoomForText(text, text.capacity(), &meter);
    EXPECT_EQ(meter.held, 0U);
}

TEST(MeteredRoom, ATextTakesItsRoomAndTheEnd) {
    test::CountingMeter meter;
    std::string text;
    vRoomForText(text, 100, &meter);
    EXPECT_EQ(text.capacity(), 100U);
    EXPECT_EQ(memoryOf(text), 101U);
    EXPECT_EQ(meter.held, 101U);
    text.assign(100, 'x');
    vRoomForMore(text, 1, &meter);
    EXPECT_EQ(text.capacity(), 200U);
    EXPECT_EQ(meter.held, 201U);
    EXPECT_EQ(meter.most, 101U + 201U);
    vRoomForMore(text, 100, &meter);
    EXPECT_EQ(meter.held, 201U);
}

} // namespace

} // namespace kiv::kit
