#include "Base/NameHash.h"
#include "Base/UpperCase.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {
namespace {

struct HashRow {
    std::string_view name;
    std::uint32_t hash;
};

// FNV-1a: start with 0x811C9DC5; for each byte XOR, then multiply by 0x01000193, modulo 2^32.
constexpr HashRow Hashes[] = {
    {"", 0x811C9DC5U},        {"a", 0xE40C292CU},       {"A", 0xC40BF6CCU},    {"foobar", 0xBF9CF968U},
    {"IfcWall", 0x99ECC1DBU}, {"IFCWALL", 0x7BD1647BU}, {"Name", 0x0FE07306U}, {"\x7F", 0xFA0C4BCEU},
};

TEST(NameHashTest, IsFnv1aOfTheBytes) {
    for (const auto& row : Hashes)
        EXPECT_EQ(nameHash(row.name), row.hash) << row.name;
}

TEST(NameHashTest, OfTheEmptyNameIsTheStartValue) {
    EXPECT_EQ(nameHash({}), 2166136261U);
}

// 0x811C9DC5 ^ 0xFFFFFF80 = 0x7EE36245, times 0x01000193 = 0x04F3B29F; unsigned widening would give
// 0x850B939F.
constexpr HashRow SignedHashes[] = {
    {"\x80", 0x04F3B29FU},
    {"\xFF", 0xF9F3A14EU},
    {"Gr\xFCn", 0xB8804EEAU},
    {"GR\xFCN", 0x3BAA7CAAU},
    {"\xC3\xA4"
     "b",
     0x9F25E980U},
    {"x\x80y", 0x366ADB34U},
};

TEST(NameHashTest, WidensBytesOf0x80AndMoreWithTheirSign) {
    for (const auto& row : SignedHashes)
        EXPECT_EQ(nameHash(row.name), row.hash) << row.name;
}

TEST(NameHashTest, CountsZeroBytesAsBytes) {
    // The start value times the prime, no bit being changed by the zero.
    EXPECT_EQ(nameHash(std::string_view("\0", 1)), 0x050C5D1FU);
}

TEST(NameHashTest, OfTheUpperCasedNameChangesTheLettersAToZAlone) {
    for (const std::string_view name : {"", "IfcWall", "IFCWALL_2x3", "{`@[", "gr\xFCn \xC3\xA4"})
        EXPECT_EQ(upperNameHash(name), nameHash(sUpper(name))) << name;
    EXPECT_NE(upperNameHash("gr\xFCn"), upperNameHash("gr\xDCn"));
}

TEST(NameHashTest, IsKnownWhileCompiling) {
    static_assert(nameHash("foobar") == 0xBF9CF968U);
    static_assert(nameHash("\x80") == 0x04F3B29FU);
}

} // namespace
} // namespace kiv
