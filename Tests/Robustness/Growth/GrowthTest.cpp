// The measure itself: it tells what grows with the square from what does not, wherever measuring begins.

#include "Format/Ifc/Def/Growth.h"

#include "Support/Sanitized.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace kiv::test {

namespace {

/// So many steps that no compiler leaves out.
void vStepsTake(std::size_t steps) {
    volatile std::size_t taken = 0;
    for (std::size_t step = 0; step != steps; ++step)
        taken = step;
    static_cast<void>(taken);
}

class GrowthTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (isSanitized)
            GTEST_SKIP() << "left out: times tell nothing under a sanitizer";
    }
};

TEST_F(GrowthTest, WhatGrowsWithTheSquareIsFoundFromASizeThatIsTooSmallToTell) {
    EXPECT_GT(growthFrom(
                  10, [](std::size_t size) { return [size] { vStepsTake(size * size); }; }, 1'000'000),
              ProportionalGrowth);
}

TEST_F(GrowthTest, WhatGrowsInProportionIsFoundFromASizeThatIsTooSmallToTell) {
    const auto growth = growthFrom(
        10, [](std::size_t size) { return [size] { vStepsTake(size); }; }, std::size_t{1} << 40);
    EXPECT_LE(growth, ProportionalGrowth);
    EXPECT_NE(growth, 1.0) << "it was judged";
}

TEST_F(GrowthTest, WhatIsStillTooSoonAtTheLargestSizeIsGood) {
    EXPECT_EQ(growthFrom(
                  1, [](std::size_t size) { return [size] { vStepsTake(size * size); }; }, 16),
              1.0);
}

} // namespace

} // namespace kiv::test
