#include "Format/Ifc/Def/Store/OrderedSets.h"

#include "Format/Ifc/Def/DefDoubles.h"
#include "Support/Allocations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def {
namespace {

using Sets = std::vector<const xml::SetDef*>;

/// Sets whose addresses distinguish them; nothing else of them is looked at.
const xml::SetDef& setNumber(std::size_t number) {
    static std::deque<kiv::test::PlainSet> all;
    while (all.size() <= number)
        all.emplace_back("");
    return all[number];
}

void vAdd(OrderedSets& sets, std::string_view name, std::size_t number) {
    sets.vReserve(name);
    sets.vAdd(name, setNumber(number));
}

Sets setsOf(const OrderedSets& sets) {
    Sets all;
    sets.vAppend(all);
    return all;
}

Sets mergedOf(const OrderedSets& left, const OrderedSets& right) {
    Sets all;
    OrderedSets::vMergedAppend(left, right, all);
    return all;
}

/// Enough sets for several blocks, in the order of their names.
struct ManySets {
    static constexpr std::size_t Count = 1000;

    ManySets() {
        for (std::size_t number = 0; number < Count; ++number) {
            names.push_back(std::to_string(Count + number));
            sets.push_back(&setNumber(number));
        }
    }

    std::vector<std::string> names;
    Sets sets;
};

TEST(OrderedSetsTest, WithoutSetsThereAreNone) {
    const OrderedSets none;
    EXPECT_TRUE(none.isEmpty());
    EXPECT_EQ(setsOf(none), Sets());
    EXPECT_EQ(mergedOf(none, none), Sets());
}

TEST(OrderedSetsTest, SetsAreAppendedInTheOrderOfTheirNames) {
    OrderedSets sets;
    vAdd(sets, "B", 1);
    vAdd(sets, "C", 2);
    vAdd(sets, "A", 0);
    EXPECT_FALSE(sets.isEmpty());
    Sets all{&setNumber(9)};
    sets.vAppend(all);
    EXPECT_EQ(all, (Sets{&setNumber(9), &setNumber(0), &setNumber(1), &setNumber(2)}));
}

/// Enough for blocks to be split, whether they are added at the end, at the front or in between.
TEST(OrderedSetsTest, ManySetsAreInOrderHoweverTheyAreAdded) {
    const ManySets many;
    for (const std::size_t step : {1U, 999U, 387U}) {
        OrderedSets sets;
        for (std::size_t index = 0; index < ManySets::Count; ++index)
            vAdd(sets, many.names[index * step % ManySets::Count], index * step % ManySets::Count);
        EXPECT_EQ(setsOf(sets), many.sets) << step;
    }
}

/// Whoever has made place for a set can rely on that it fits.
TEST(OrderedSetsTest, AddingAllocatesNothing) {
    const ManySets many;
    for (const std::size_t step : {1U, 999U, 387U}) {
        OrderedSets sets;
        for (std::size_t index = 0; index < ManySets::Count; ++index) {
            const auto number = index * step % ManySets::Count;
            sets.vReserve(many.names[number]);
            const auto before = kiv::test::allocationCount();
            sets.vAdd(many.names[number], *many.sets[number]);
            EXPECT_EQ(kiv::test::allocationCount(), before) << step << ' ' << index;
        }
    }
}

TEST(OrderedSetsTest, OfTwoTheNamesDecideWhichComesFirst) {
    OrderedSets left;
    OrderedSets right;
    OrderedSets none;
    vAdd(left, "B", 1);
    vAdd(left, "D", 3);
    vAdd(right, "A", 0);
    vAdd(right, "C", 2);
    vAdd(right, "E", 4);
    const Sets expected{&setNumber(0), &setNumber(1), &setNumber(2), &setNumber(3), &setNumber(4)};
    EXPECT_EQ(mergedOf(left, right), expected);
    EXPECT_EQ(mergedOf(right, left), expected);
    EXPECT_EQ(mergedOf(left, none), setsOf(left));
    EXPECT_EQ(mergedOf(none, left), setsOf(left));
}

TEST(OrderedSetsTest, ManyOfTwoAreMerged) {
    const ManySets many;
    OrderedSets left;
    OrderedSets right;
    for (std::size_t number = 0; number < ManySets::Count; ++number)
        vAdd(number % 3 == 0 ? left : right, many.names[number], number);
    EXPECT_EQ(mergedOf(left, right), many.sets);
    EXPECT_EQ(mergedOf(right, left), many.sets);
}

} // namespace
} // namespace kiv::ifc::def
