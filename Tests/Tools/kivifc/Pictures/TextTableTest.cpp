#include "kivifc/Pictures/TextTable.h"

#include <gtest/gtest.h>

namespace kiv::kivifc {

namespace {

using namespace std::chrono_literals;

TEST(TextTable, ValuesBeginInTheEighteenthColumn) {
    EXPECT_EQ(sTableLine("time", "3.2 ms"), "time             3.2 ms\n");
    EXPECT_EQ(sTableLine("", "x"), "                 x\n");
    EXPECT_EQ(sTableLine("sixteen letters.", "x"), "sixteen letters. x\n");
    EXPECT_EQ(sTableLine("longer than that is", "x"), "longer than that is x\n");
}

TEST(TextTable, TimesAreInMillisecondsWithOneDigit) {
    EXPECT_EQ(sMilliseconds(0ns), "0.0 ms");
    EXPECT_EQ(sMilliseconds(3'249'999ns), "3.2 ms");
    EXPECT_EQ(sMilliseconds(60s), "60000.0 ms");
}

} // namespace

} // namespace kiv::kivifc
