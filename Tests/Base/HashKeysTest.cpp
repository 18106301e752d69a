#include "Base/HashKeys.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>

namespace kiv {
namespace {

constexpr std::uint64_t All = ~std::uint64_t{0};

TEST(HashKeysTest, FoldedCombinesBothHalvesOfTheProduct) {
    struct Row {
        std::uint64_t left;
        std::uint64_t right;
        std::uint64_t folded;
    };
    const Row rows[] = {
        {0, 12345, 0},
        {3, 5, 15},
        // 2^64: the high half is 1, the low one 0.
        {std::uint64_t{1} << 32, std::uint64_t{1} << 32, 1},
        // 3 * 2^63 = 2^64 + 2^63
        {3, std::uint64_t{1} << 63, 1 | std::uint64_t{1} << 63},
        // (2^64 - 1)^2 = (2^64 - 2) * 2^64 + 1
        {All, All, All},
        // (2^64 - 1) * 2 = 2^64 + (2^64 - 2)
        {All, 2, All},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(getFolded(row.left, row.right), row.folded) << row.left << " * " << row.right;
        EXPECT_EQ(getFolded(row.right, row.left), row.folded) << row.right << " * " << row.left;
    }
}

TEST(HashKeysTest, KeysAreDrawnOncePerProcess) {
    EXPECT_EQ(&hashKeys(), &hashKeys());
    const auto keys = hashKeys();
    EXPECT_EQ(hashKeys(), keys);
}

/// All are drawn, in both halves: that two numbers are the same by chance happens about once in fifty million
/// runs.
TEST(HashKeysTest, NoTwoKeysAreAlike) {
    std::set<std::uint32_t> halves;
    for (const auto key : hashKeys()) {
        halves.insert(static_cast<std::uint32_t>(key));
        halves.insert(static_cast<std::uint32_t>(key >> 32));
    }
    EXPECT_EQ(halves.size(), 2 * hashKeys().size());
    EXPECT_EQ(halves.count(0), 0U);
}

} // namespace
} // namespace kiv
