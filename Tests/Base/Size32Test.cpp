#include "Base/Size32.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace kiv {
namespace {

TEST(Size32Test, SizesBelowTheLimitAreKept) {
    EXPECT_EQ(size32(0), 0U);
    EXPECT_EQ(size32(0xFFFFFFFFU), 0xFFFFFFFFU);
}

TEST(Size32Test, LargerOnesAreRefused) {
    EXPECT_THROW(size32(std::size_t{1} << 32), std::length_error);
    EXPECT_THROW(size32((std::size_t{1} << 32) + 7), std::length_error);
}

} // namespace
} // namespace kiv
