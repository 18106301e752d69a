#include "Kit/Positions/KeptLists.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

std::vector<std::size_t> numbersFrom(std::size_t first, std::size_t count) {
    std::vector<std::size_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

TEST(KeptLists, ListsOfAnyLengthStayWhereTheyAre) {
    KeptLists lists;
    std::vector<std::span<const std::size_t>> kept;
    // Some fill a block together, and some are longer than one.
    for (std::size_t count = 0; count != 3'000; count += 1 + count / 8)
        kept.push_back(lists.list(std::span<const std::size_t>(numbersFrom(count, count))));
    std::size_t count = 0;
    for (const auto& list : kept) {
        EXPECT_TRUE(std::ranges::equal(list, numbersFrom(count, count))) << count;
        count += 1 + count / 8;
    }
}

TEST(KeptLists, AnEmptyListTakesNoPlace) {
    KeptLists lists;
    EXPECT_EQ(lists.list(std::span<const std::size_t>()).data(), nullptr);
}

} // namespace

} // namespace kiv::kit
