#include "Base/BloomBits.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kiv {
namespace {

using ArrayBits = BloomBits<std::array<std::uint64_t, 4>>;
using VectorBits = BloomBits<std::vector<std::uint64_t>>;

TEST(BloomBitsTest, NothingIsPossibleBeforeItIsAdded) {
    const ArrayBits bits;
    for (std::size_t number = 0; number < 256; ++number)
        EXPECT_FALSE(bits.isPossible(number)) << number;
    EXPECT_FALSE(VectorBits().isPossible(0)) << "without any bits";
}

TEST(BloomBitsTest, OnlyNumbersThatShareTheBitArePossible) {
    for (const std::size_t added : {0U, 1U, 63U, 64U, 200U, 255U}) {
        ArrayBits bits;
        bits.vAdd(added);
        for (std::size_t number = 0; number < 1024; ++number)
            EXPECT_EQ(bits.isPossible(number), number % 256 == added) << added << ' ' << number;
    }
}

TEST(BloomBitsTest, AVectorHasAtLeastAsManyBitsAsPlaceWasMadeFor) {
    for (const std::size_t count : {0U, 1U, 64U, 128U, 192U, 1000U}) {
        VectorBits bits;
        EXPECT_TRUE(bits.boReserve(count)) << count;
        bits.vAdd(0);
        for (std::size_t number = 1; number < count / 64 * 64; ++number)
            EXPECT_FALSE(bits.isPossible(number)) << count << ' ' << number;
        EXPECT_TRUE(bits.isPossible(0)) << count;
    }
}

TEST(BloomBitsTest, AVectorForgetsWhatWasAddedOnlyWhenItGrows) {
    VectorBits bits;
    EXPECT_TRUE(bits.boReserve(64));
    bits.vAdd(3);
    EXPECT_FALSE(bits.boReserve(64));
    EXPECT_FALSE(bits.boReserve(1));
    EXPECT_TRUE(bits.isPossible(3));
    EXPECT_TRUE(bits.boReserve(128));
    EXPECT_FALSE(bits.isPossible(3));
}

} // namespace
} // namespace kiv
