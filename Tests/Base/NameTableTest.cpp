#include "Base/NameTable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <set>
#include <string>
#include <utility>

namespace kiv {
namespace {

using Table = NameTable<const std::string>;

/// The text is the owner of the name, and the name itself.
void vAdd(Table& table, const std::string& name) {
    table.vReserve(1);
    table.vAdd(name, name);
}

/// Names that differ in one byte each, at every place of a name of each length up to beyond what a
/// table keeps of it.
std::deque<std::string> namesOfEachLength() {
    std::deque<std::string> names;
    for (std::size_t length = 0; length <= 60; ++length) {
        names.push_back(std::string(length, 'A'));
        for (std::size_t place = 0; place < length; ++place)
            names.push_back(std::string(length, 'A').replace(place, 1, "B"));
    }
    return names;
}

TEST(NameTableTest, EmptyTableFindsNothing) {
    const Table table;
    EXPECT_EQ(table.pFind("A"), nullptr);
    EXPECT_EQ(table.pFindUpper(""), nullptr);
}

TEST(NameTableTest, EachNameIsFoundWhateverByteDistinguishesIt) {
    const auto names = namesOfEachLength();
    Table table;
    for (const auto& name : names)
        vAdd(table, name);
    for (const auto& name : names) {
        EXPECT_EQ(table.pFind(name), &name) << name;
        EXPECT_EQ(table.pFindUpper(name), &name) << name;
    }
}

TEST(NameTableTest, NamesThatDifferInOneByteOnlyAreNotFound) {
    Table table;
    const auto names = namesOfEachLength();
    for (const auto& name : names)
        vAdd(table, name);
    for (std::size_t length = 1; length <= 60; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            const auto other = std::string(length, 'A').replace(place, 1, "C");
            EXPECT_EQ(table.pFind(other), nullptr) << other;
            EXPECT_EQ(table.pFindUpper(other), nullptr) << other;
        }
    }
    EXPECT_EQ(table.pFind(std::string(61, 'A')), nullptr);
}

TEST(NameTableTest, LowerCaseLettersCountAsUpperCaseOnesOnlyWhereAskedFor) {
    for (std::size_t length = 1; length <= 60; ++length) {
        const std::string upper(length, 'Z');
        Table table;
        vAdd(table, upper);
        for (std::size_t place = 0; place < length; ++place) {
            const auto mixed = std::string(upper).replace(place, 1, "z");
            EXPECT_EQ(table.pFind(mixed), nullptr) << mixed;
            EXPECT_EQ(table.pFindUpper(mixed), &upper) << mixed;
        }
    }
}

/// In the bit in which letters of two cases differ, other bytes differ too.
TEST(NameTableTest, OtherBytesThanLettersHaveNoCase) {
    for (const std::size_t length : {1U, 3U, 7U, 8U, 9U, 40U, 41U, 60U}) {
        const std::string name = std::string(length - 1, 'A') + '[';
        Table table;
        vAdd(table, name);
        EXPECT_EQ(table.pFindUpper(std::string(length - 1, 'a') + '['), &name);
        EXPECT_EQ(table.pFindUpper(std::string(length - 1, 'a') + '{'), nullptr);
    }
}

TEST(NameTableTest, BytesBeyondAsciiAndNullBytesAreOfTheName) {
    const std::deque<std::string> names{"gr\xFCn", "gr\xDCn", std::string("a\0b", 3), std::string("a\0c", 3),
                                        "a"};
    Table table;
    for (const auto& name : names)
        vAdd(table, name);
    for (const auto& name : names)
        EXPECT_EQ(table.pFind(name), &name);
}

/// What a product makes of bytes that are all 0 or all 1 does not depend on what it is multiplied by, unless
/// they are hidden.
TEST(NameTableTest, LongNamesOfZerosAndOnesHaveDifferentHashes) {
    constexpr unsigned Chunks = 10;
    std::set<std::uint64_t> hashes;
    for (unsigned bits = 0; bits < 1U << Chunks; ++bits) {
        std::string name(32, 'A');
        for (unsigned chunk = 0; chunk < Chunks; ++chunk)
            name.append(8, (bits >> chunk & 1U) != 0 ? '\xFF' : '\0');
        name.append(8, 'B');
        hashes.insert(NameWords(name, [](std::uint64_t bytes) { return bytes; }).getHash(hashKeys()));
    }
    EXPECT_EQ(hashes.size(), 1U << Chunks);
}

TEST(NameTableTest, TheFirstOfANameStays) {
    const std::string first = "A";
    const std::string second = "A";
    Table table;
    vAdd(table, first);
    vAdd(table, second);
    EXPECT_EQ(table.pFind("A"), &first);
}

TEST(NameTableTest, AsManyAsPlaceWasMadeForAreTakenAtOnce) {
    std::deque<std::string> names;
    for (int number = 0; number < 1000; ++number)
        names.push_back("NAME" + std::to_string(number));
    Table table;
    table.vReserve(names.size());
    for (const auto& name : names)
        table.vAdd(name, name);
    for (const auto& name : names)
        EXPECT_EQ(table.pFind(name), &name) << name;
    EXPECT_EQ(table.pFind("NAME1000"), nullptr);
}

TEST(NameTableTest, MovedTableTakesItsNamesAlongAndLeavesAnEmptyOne) {
    const std::string a = "A";
    const std::string b = "B";
    Table from;
    vAdd(from, a);
    Table to(std::move(from));
    EXPECT_EQ(to.pFind("A"), &a);
    // NOLINTNEXTLINE(bugprone-use-after-move): that it may be used is what is tested
    EXPECT_EQ(from.pFind("A"), nullptr);
    vAdd(from, b);
    to = std::move(from);
    EXPECT_EQ(to.pFind("A"), nullptr);
    EXPECT_EQ(to.pFind("B"), &b);
}

} // namespace
} // namespace kiv
