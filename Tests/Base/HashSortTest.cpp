#include "Base/HashSort.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace kiv {
namespace {

struct Entry {
    std::uint32_t hash = 0;
    /// Where it was at first.
    std::size_t place = 0;

    friend bool operator==(const Entry&, const Entry&) = default;
};

using Entries = std::vector<Entry>;
using Starts = std::vector<std::uint32_t>;

bool isBefore(const Entry& left, const Entry& right) {
    return left.hash < right.hash;
}

Entries entriesOf(const std::vector<std::uint32_t>& hashes) {
    Entries entries;
    for (const auto hash : hashes)
        entries.push_back({hash, entries.size()});
    return entries;
}

TEST(HashSortTest, EntriesAreSortedIntoBucketsByTheirHighestBits) {
    // Four entries have four buckets, by their two highest bits.
    auto entries = entriesOf({0xFFFFFFFFU, 0x40000001U, 0U, 0x40000000U});
    EXPECT_EQ(sortedByHash(entries, isBefore), (Starts{0, 1, 3, 3, 4}));
    EXPECT_EQ(entries, (Entries{{0U, 2}, {0x40000000U, 3}, {0x40000001U, 1}, {0xFFFFFFFFU, 0}}));
}

TEST(HashSortTest, BucketsAreAsManyAsAPowerOfTwoThatIsNotBelowTheCount) {
    struct Row {
        std::size_t count;
        std::size_t buckets;
    };
    for (const auto& [count, buckets] : {Row{0, 2}, Row{1, 2}, Row{2, 2}, Row{3, 4}, Row{5, 8}, Row{8, 8}}) {
        Entries entries(count);
        const auto starts = sortedByHash(entries, isBefore);
        EXPECT_EQ(starts.size(), buckets + 1) << count;
        EXPECT_EQ(starts.front(), 0U) << count;
        EXPECT_EQ(starts.back(), count);
    }
}

TEST(HashSortTest, TheShiftGivesTheBucketOfAHash) {
    EXPECT_EQ(bucketShift<std::uint32_t>(2), 31U);
    EXPECT_EQ(bucketShift<std::uint32_t>(1024), 22U);
    EXPECT_EQ(bucketShift<std::uint64_t>(2), 63U);
    EXPECT_EQ(bucketShift<std::uint64_t>(1024), 54U);
}

/// Hashes 5, 4, 3, 2, 1, 0, 5, 4, ... : in order, those of one hash must be in the order in which they came.
void vExpectStable(const Entries& sorted, std::size_t count) {
    ASSERT_EQ(sorted.size(), count);
    for (std::size_t index = 1; index < count; ++index) {
        EXPECT_LE(sorted[index - 1].hash, sorted[index].hash) << index;
        if (sorted[index - 1].hash == sorted[index].hash) {
            EXPECT_EQ(sorted[index - 1].place + 6, sorted[index].place) << index;
        }
    }
}

Entries descending(std::size_t count) {
    std::vector<std::uint32_t> hashes;
    for (std::size_t index = 0; index < count; ++index)
        hashes.push_back(static_cast<std::uint32_t>(5 - index % 6));
    return entriesOf(hashes);
}

TEST(HashSortTest, EqualEntriesOfABucketStayInTheirOrderHoweverManyThereAre) {
    for (const std::size_t count : {1U, 2U, 7U, 15U, 16U, 17U, 18U, 500U}) {
        SCOPED_TRACE(count);
        auto bucket = descending(count);
        vBucketSort(std::span(bucket), isBefore);
        vExpectStable(bucket, count);
    }
}

/// All hashes are small, so that all entries meet in the first bucket.
TEST(HashSortTest, EntriesThatAllMeetInOneBucketAreSortedAllTheSame) {
    for (const std::size_t count : {2U, 16U, 17U, 500U}) {
        SCOPED_TRACE(count);
        auto entries = descending(count);
        const auto starts = sortedByHash(entries, isBefore);
        EXPECT_EQ(starts[1], count);
        vExpectStable(entries, count);
    }
}

} // namespace
} // namespace kiv
