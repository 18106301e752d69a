#include "kivifc/Documents/Checksum.h"

#include <gtest/gtest.h>

namespace kiv::kivifc {

namespace {

// The values that the authors of FNV publish for these texts.
TEST(Checksum, IsFnv1aOf64Bits) {
    EXPECT_EQ(checksum(""), 0xCBF29CE484222325U);
    EXPECT_EQ(checksum("a"), 0xAF63DC4C8601EC8CU);
    EXPECT_EQ(checksum("foobar"), 0x85944171F73967E8U);
}

TEST(Checksum, BytesAreUnsigned) {
    // One step from the beginning: 0xCBF29CE484222325 ^ 0xFF, times 0x100000001B3.
    EXPECT_EQ(checksum("\xFF"), (0xCBF29CE484222325U ^ 0xFFU) * 0x100000001B3U);
    EXPECT_NE(checksum({"\0", 1}), checksum(""));
}

} // namespace

} // namespace kiv::kivifc
