#include "Kit/Text/PositionAfter.h"

#include <gtest/gtest.h>

namespace kiv::kit::test {

namespace {

TEST(PositionAfterTest, ColumnsAreCodePoints) {
    EXPECT_EQ(positionAfter({3, 5, 9}, ""), (TextPosition{3, 5, 0}));
    EXPECT_EQ(positionAfter({3, 5, 9}, "a\xC3\xA4\t"), (TextPosition{3, 8, 0}));
}

TEST(PositionAfterTest, LinesBeginAtColumnOne) {
    EXPECT_EQ(positionAfter({3, 5, 9}, "abc\n"), (TextPosition{4, 1, 0}));
    EXPECT_EQ(positionAfter({3, 5, 9}, "a\n\nbc"), (TextPosition{5, 3, 0}));
}

} // namespace

} // namespace kiv::kit::test
