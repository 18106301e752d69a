#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace kiv::ifc::def::schema;

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

// 0x811C9DC5 ^ 0xFFFFFF80 = 0x7EE36245, times 0x01000193 = 0x04F3B29F; unsigned widening would give 0x850B939F.
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

TEST(NameHashTest, IsKnownWhileCompiling) {
    static_assert(nameHash("foobar") == 0xBF9CF968U);
    static_assert(nameHash("\x80") == 0x04F3B29FU);
}

TEST(UpperTest, ChangesTheLettersAToZAndNoOtherByte) {
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<char>(value);
        const auto expected = value >= 'a' && value <= 'z' ? static_cast<char>(value - 32) : byte;
        EXPECT_EQ(kiv::ascii::getUpper(byte), expected) << value;
    }
}

TEST(UpperTest, OfATextTakesEachByteOnItsOwn) {
    EXPECT_EQ(sUpper(""), "");
    EXPECT_EQ(sUpper("IfcWall_2x3"), "IFCWALL_2X3");
    EXPECT_EQ(sUpper(" a\tz{`@["), " A\tZ{`@[");
    EXPECT_EQ(sUpper("gr\xFCn \xC3\xA4"), "GR\xFCN \xC3\xA4");
    EXPECT_EQ(sUpper(std::string_view("a\0b", 3)), std::string("A\0B", 3));
}

struct TrimRow {
    std::string_view text;
    std::string_view bothSides;
    std::string_view leftOnly;
};

constexpr TrimRow Trims[] = {
    {"", "", ""},
    {"   ", "", ""},
    {"\t \t", "", ""},
    {"a", "a", "a"},
    {"  a", "a", "a"},
    {"a  ", "a", "a  "},
    {" \ta b\t ", "a b", "a b\t "},
    {"\ra\r", "\ra\r", "\ra\r"},
    {"\na\v", "\na\v", "\na\v"},
};

TEST(TrimTest, RemovesTheGivenBytesOnBothSides) {
    for (const auto& row : Trims)
        EXPECT_EQ(trimmed(row.text, BlankAndTab), row.bothSides) << '"' << row.text << '"';
}

TEST(TrimTest, RemovesTheGivenBytesOnTheLeftOnly) {
    for (const auto& row : Trims)
        EXPECT_EQ(trimmedLeft(row.text, BlankAndTab), row.leftOnly) << '"' << row.text << '"';
}

TEST(TrimTest, TakesAnySetOfBytes) {
    EXPECT_EQ(trimmed("xyaxyx", "xy"), "a");
    EXPECT_EQ(trimmed(" a ", ""), " a ");
}

char byteOf(int value) {
    return static_cast<char>(static_cast<unsigned char>(value));
}

// Long enough for a place in each of the eight bytes that are looked at together, and behind them.
constexpr std::size_t Places = 18;

TEST(TextTest, WordEndsAtTheFirstByteThatIsNoLetterNoDigitAndNoUnderscore) {
    constexpr std::string_view wordBytes = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
    for (int value = 0; value < 256; ++value) {
        for (std::size_t place = 0; place < Places; ++place) {
            const auto text = std::string(place, 'q') + byteOf(value) + std::string(9, '7');
            const auto end = wordBytes.find(byteOf(value)) == std::string_view::npos ? place : text.size();
            EXPECT_EQ(pWordEnd(text.data(), text.data() + text.size()), text.data() + end)
                << value << ' ' << place;
        }
    }
}

TEST(TextTest, OnlyTheUpperCasedNameIsUpperOfIt) {
    for (int value = 0; value < 256; ++value) {
        const bool isLower = value >= 'a' && value <= 'z';
        for (std::size_t size = 1; size < Places; ++size) {
            for (std::size_t place = 0; place < size; ++place) {
                auto name = std::string(size, 'q');
                auto upper = std::string(size, 'Q');
                name[place] = byteOf(value);
                upper[place] = byteOf(isLower ? value - 'a' + 'A' : value);
                EXPECT_TRUE(isUpperOf(name, upper)) << value << ' ' << size << ' ' << place;
                upper[place] = byteOf(value ^ 0x80);
                EXPECT_FALSE(isUpperOf(name, upper)) << value << ' ' << size << ' ' << place;
                EXPECT_FALSE(isUpperOf(name + 'q', upper)) << value << ' ' << size << ' ' << place;
            }
        }
    }
    EXPECT_TRUE(isUpperOf("", ""));
    EXPECT_FALSE(isUpperOf("a", "a")) << "what is compared with must be upper-case";
}

} // namespace
