#include "Base/HashTable.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {
namespace {

/// Puts every key into the last slot, so that all of them collide and searches go round the end of the table.
struct OneHash {
    std::uint64_t operator()(std::string_view) const noexcept {
        return std::numeric_limits<std::uint64_t>::max();
    }
};

using Table = HashTable<std::string_view, int, OneHash>;

TEST(HashTableTest, EmptyTableFindsNothing) {
    const Table table;
    EXPECT_EQ(table.pFind("A"), nullptr);
    EXPECT_EQ(table.pFind(""), nullptr);
}

TEST(HashTableTest, KeysOfOneHashAreToldApart) {
    const std::array<std::string, 5> keys{"A", "B", "", "AB", "a"};
    std::array<int, 5> bearers{};
    Table table;
    table.vReserve(keys.size());
    for (std::size_t index = 0; index < keys.size(); ++index)
        table.vAdd(keys[index], bearers[index]);
    for (std::size_t index = 0; index < keys.size(); ++index)
        EXPECT_EQ(table.pFind(keys[index]), &bearers[index]) << keys[index];
    EXPECT_EQ(table.pFind("C"), nullptr);
}

TEST(HashTableTest, FirstBearerOfAKeyStays) {
    int first = 0;
    int second = 0;
    Table table;
    table.vReserve(2);
    table.vAdd("A", first);
    table.vAdd("A", second);
    EXPECT_EQ(table.pFind("A"), &first);
}

TEST(HashTableTest, KeysAreKeptWhenTheTableGrows) {
    constexpr int count = 300;
    std::array<std::string, count> keys;
    std::array<int, count> bearers{};
    Table table;
    for (std::size_t index = 0; index < keys.size(); ++index) {
        keys[index] = std::to_string(index);
        table.vReserve(1);
        table.vAdd(keys[index], bearers[index]);
    }
    for (std::size_t index = 0; index < keys.size(); ++index)
        EXPECT_EQ(table.pFind(keys[index]), &bearers[index]) << index;
    EXPECT_EQ(table.pFind("300"), nullptr);
}

TEST(HashTableTest, MovedTableTakesItsKeysAlongAndLeavesAnEmptyOne) {
    int bearer = 0;
    Table from;
    from.vReserve(1);
    from.vAdd("A", bearer);
    Table to(std::move(from));
    EXPECT_EQ(to.pFind("A"), &bearer);
    EXPECT_EQ(from.pFind("A"),
              nullptr); // NOLINT(bugprone-use-after-move): that it may be used is what is tested
    from.vReserve(1);
    from.vAdd("B", bearer);
    to = std::move(from);
    EXPECT_EQ(to.pFind("A"), nullptr);
    EXPECT_EQ(to.pFind("B"), &bearer);
}

} // namespace
} // namespace kiv
