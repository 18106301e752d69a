#include "Kit/Names/KeywordSet.h"

#include <array>
#include <gtest/gtest.h>
#include <string_view>

namespace kiv::kit {

namespace {

constexpr KeywordSet Keywords(std::array<std::string_view, 5>{"WHERE", "INVERSE", "INTEGER", "OF",
                                                              "END_SCHEMA"});

TEST(KeywordSet, KeywordsAreFoundInAnyLetterCase) {
    EXPECT_EQ(Keywords.find("WHERE"), "WHERE");
    EXPECT_EQ(Keywords.find("inverse"), "INVERSE");
    EXPECT_EQ(Keywords.find("Integer"), "INTEGER");
    EXPECT_EQ(Keywords.find("end_Schema"), "END_SCHEMA");
    EXPECT_TRUE(Keywords.contains("oF"));
}

TEST(KeywordSet, OtherWordsAreNot) {
    // The same letter and length; a part; more; a character that shares its number with a letter.
    for (const std::string_view word : {"", "INVERTS", "INVERS", "INVERSES", "IfcWall", "O", "/F",
                                        "\x8F"
                                        "F",
                                        "WHERE_", "ENDxSCHEMA"})
        EXPECT_EQ(Keywords.find(word), "") << word;
    EXPECT_FALSE(Keywords.contains("WHEREWHEREWHEREWHEREWHEREWHEREWHEREWHERE"));
    static_assert(Keywords.contains("of") && !Keywords.contains("if"));
}

} // namespace

} // namespace kiv::kit
