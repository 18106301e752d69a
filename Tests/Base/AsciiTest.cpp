#include "Base/Ascii.h"

#include <gtest/gtest.h>

namespace kiv::ascii {
namespace {

TEST(AsciiTest, ChangesTheCaseOfAsciiLettersOnly) {
    struct Row {
        char upper;
        char lower;
    };
    const Row letters[] = {{'A', 'a'}, {'M', 'm'}, {'Z', 'z'}};
    for (const Row& row : letters) {
        EXPECT_EQ(getUpper(row.lower), row.upper);
        EXPECT_EQ(getUpper(row.upper), row.upper);
        EXPECT_EQ(getLower(row.upper), row.lower);
        EXPECT_EQ(getLower(row.lower), row.lower);
    }
    for (const char c : {'@', '[', '`', '{', '0', '_', '\xE4', '\xC4', '\0'}) {
        EXPECT_EQ(getUpper(c), c);
        EXPECT_EQ(getLower(c), c);
    }
}

TEST(AsciiTest, TrimsTheGivenBytesOnly) {
    constexpr std::string_view bytes = " \t\r\n";
    struct Row {
        std::string_view text;
        std::string_view left;
        std::string_view both;
    };
    const Row rows[] = {{"", "", ""},
                        {" \t\r\n", "", ""},
                        {"a", "a", "a"},
                        {" a b\n", "a b\n", "a b"},
                        {"a\t", "a\t", "a"},
                        {"\va ", "\va ", "\va"},
                        {"\xC2\xA0", "\xC2\xA0", "\xC2\xA0"}};
    for (const Row& row : rows) {
        EXPECT_EQ(trimmedLeft(row.text, bytes), row.left) << "\"" << row.text << "\"";
        EXPECT_EQ(trimmed(row.text, bytes), row.both) << "\"" << row.text << "\"";
    }
    EXPECT_EQ(trimmed(" a ", ""), " a ");
}

TEST(AsciiTest, WhatIsTrimmedLiesInTheText) {
    constexpr std::string_view text = "  ";
    EXPECT_EQ(trimmedLeft(text, " ").data(), text.data() + 2);
    EXPECT_EQ(trimmed(text, " ").data(), text.data());
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

TEST(AsciiTest, RemovesTheGivenBytesOnBothSides) {
    for (const auto& row : Trims)
        EXPECT_EQ(trimmed(row.text, " \t"), row.bothSides) << '"' << row.text << '"';
}

TEST(AsciiTest, RemovesTheGivenBytesOnTheLeftOnly) {
    for (const auto& row : Trims)
        EXPECT_EQ(trimmedLeft(row.text, " \t"), row.leftOnly) << '"' << row.text << '"';
}

TEST(AsciiTest, TakesAnySetOfBytes) {
    EXPECT_EQ(trimmed("xyaxyx", "xy"), "a");
    EXPECT_EQ(trimmed(" a ", ""), " a ");
}

} // namespace
} // namespace kiv::ascii
