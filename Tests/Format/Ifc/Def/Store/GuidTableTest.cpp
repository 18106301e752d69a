#include "Format/Ifc/Def/Store/GuidTable.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

namespace kiv::ifc::def {
namespace {

using Table = GuidTable<const int>;

/// The null GUID, and one for each bit that alone is set.
std::vector<kiv::Guid> guidsOfEachBit() {
    std::vector<kiv::Guid> guids(1);
    for (std::size_t bit = 0; bit < 128; ++bit) {
        std::array<std::uint8_t, 16> bytes{};
        bytes[bit / 8] = static_cast<std::uint8_t>(1U << bit % 8);
        guids.push_back(std::bit_cast<kiv::Guid>(bytes));
    }
    return guids;
}

TEST(GuidTableTest, EmptyTableFindsNothing) {
    const Table table;
    EXPECT_EQ(table.pFind(kiv::Guid()), nullptr);
}

TEST(GuidTableTest, EachGuidIsFoundWhateverBitDistinguishesIt) {
    const auto guids = guidsOfEachBit();
    const std::vector<int> owners(guids.size());
    Table table;
    for (std::size_t index = 0; index < guids.size(); ++index) {
        EXPECT_EQ(table.pFind(guids[index]), nullptr) << index;
        table.vReserve(1);
        table.vAdd(guids[index], owners[index]);
    }
    for (std::size_t index = 0; index < guids.size(); ++index)
        EXPECT_EQ(table.pFind(guids[index]), &owners[index]) << index;
}

TEST(GuidTableTest, TheFirstOwnerOfAGuidStays) {
    const std::array<int, 2> owners{};
    Table table;
    table.vReserve(2);
    table.vAdd(kiv::Guid(), owners[0]);
    table.vAdd(kiv::Guid(), owners[1]);
    EXPECT_EQ(table.pFind(kiv::Guid()), &owners[0]);
}

TEST(GuidTableTest, MovedTableTakesItsGuidsAlongAndLeavesAnEmptyOne) {
    const int owner = 0;
    Table from;
    from.vReserve(1);
    from.vAdd(kiv::Guid(), owner);
    const Table to(std::move(from));
    EXPECT_EQ(to.pFind(kiv::Guid()), &owner);
    // NOLINTNEXTLINE(bugprone-use-after-move): that it may be used is what is tested
    EXPECT_EQ(from.pFind(kiv::Guid()), nullptr);
}

/// The keys hide both words: GUIDs that differ in one bit have different hashes, the null GUID among them.
TEST(GuidTableTest, HashesOfGuidsThatDifferInOneBitAreDifferent) {
    std::set<std::uint64_t> hashes;
    const auto guids = guidsOfEachBit();
    for (const auto& guid : guids)
        hashes.insert(GuidKey(guid, hashKeys()).getHash());
    EXPECT_EQ(hashes.size(), guids.size());
}

TEST(GuidTableTest, HashesDependOnTheKeys) {
    // (0 ^ 2^63) * (0 ^ 6) = 3 * 2^64: the halves are 3 and 0.
    EXPECT_EQ(GuidKey(kiv::Guid(), {std::uint64_t{1} << 63, 6}).getHash(), 3U);
    // (0 ^ 5) * (0 ^ 7) = 35
    EXPECT_EQ(GuidKey(kiv::Guid(), {5, 7}).getHash(), 35U);
}

} // namespace
} // namespace kiv::ifc::def
