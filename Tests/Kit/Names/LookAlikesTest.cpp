#include "Kit/Names/LookAlikes.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

TEST(LookAlikesTest, AnyCharacterThatIsNotWhatItLooksLikeIsFound) {
    struct Row {
        std::string_view text;
        std::string_view said;
        std::string_view ascii;
    };
    const Row rows[] = {
        {"IfcW\u0430ll", "character 5 is U+0430, a letter of Cyrillic that looks like \"a\"", "IfcWall"},
        {"\u039Fpen", "character 1 is U+039F, a letter of Greek that looks like \"O\"", "Open"},
        {"IfcWall\u200B", "character 8 is U+200B, an invisible character", "IfcWall"},
        {"de\u2013AT", "character 3 is U+2013, a character that looks like \"-\"", "de-AT"},
        {"IfcLabel\u00A0", "character 9 is U+00A0, a blank that is no space", "IfcLabel "},
        {"\u00E4\uFF21", "character 2 is U+FF21, a character that looks like \"A\"", "\u00E4A"},
        // What comes before is of several bytes, and so is what comes after.
        {"\u0434\u0430", "character 2 is U+0430, a letter of Cyrillic that looks like \"a\"", "\u0434a"},
    };
    for (const auto& row : rows) {
        const auto found = lookAlikeIn(row.text);
        ASSERT_TRUE(found) << row.text;
        EXPECT_EQ(sLookAlike(*found), row.said);
        EXPECT_EQ(sAsciiOf(row.text), row.ascii);
    }
    for (const std::string_view text : {"", "IfcWall", "W\u00E4nde", "\u0434\u0436", "\u5EFA"}) {
        EXPECT_FALSE(lookAlikeIn(text)) << text;
        EXPECT_EQ(sAsciiOf(text), text);
    }
}

TEST(LookAlikesTest, OnlyWhatCannotBeSeenIsLeftOut) {
    EXPECT_EQ(sWithoutUnseen("A\u200BB\u202E"), "AB");
    for (const std::string text :
         {"", "A  B", "A\u2013B", "A\u00A0B", "\u0422\u041E\u0420", "IfcW\u0430ll", "\uFF21"})
        EXPECT_EQ(sWithoutUnseen(text), text);
}

TEST(LookAlikesTest, WordsOfTwoScriptsAreMixed) {
    struct Row {
        std::string_view text;
        std::size_t offset;
        std::size_t number;
        std::string_view unmixed;
    };
    const Row rows[] = {
        {"W\u0430ll", 1, 2, "Wall"},
        {"Pset_W\u0430ll", 6, 7, "Pset_Wall"},
        {"\u0420set_Wall", 0, 1, "Pset_Wall"},
        {"H2\u041E", 2, 3, "H2O"},
        // The words of the other script stay.
        {"\u0421\u041E W\u0430ll", 6, 5, "\u0421\u041E Wall"},
        {"Fa\u00E7\u0430de", 4, 4, "Fa\u00E7ade"},
    };
    for (const auto& row : rows) {
        const auto found = mixedLetterIn(row.text);
        ASSERT_TRUE(found) << row.text;
        EXPECT_EQ(found->offset, row.offset) << row.text;
        EXPECT_EQ(found->number, row.number) << row.text;
        EXPECT_EQ(sUnmixed(row.text), row.unmixed);
    }
}

TEST(LookAlikesTest, NamesOfOtherScriptsAreNotMixed) {
    // Whole words, a word with a letter that no Latin one looks like, and letters that stand for quantities.
    for (const std::string_view text :
         {"Wall", "\u0421\u0442\u0435\u043D\u0430", "Pset_\u0421\u041E\u0420\u0422",
          "Ifc\u0421\u0442\u0435\u043D\u0430", "k\u0412\u0442", "\u0394T", "\u03B1Value", "\u03C1max",
          "\u00B5m", "W\u00E4nde", "\u5EFA\u7BC9A"}) {
        EXPECT_FALSE(mixedLetterIn(text)) << text;
        EXPECT_EQ(sUnmixed(text), text);
    }
}

} // namespace

} // namespace kiv::kit
