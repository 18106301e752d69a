#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using kiv::ifc::def::schema::Keyword;

constexpr auto None = std::string_view::npos;
constexpr std::string_view Word = "END_ENTITY";

// Whichever byte of it is searched for, the answer is the same.
TEST(KeywordTest, IsFoundWhereverItIs) {
    for (std::size_t rare = 0; rare < Word.size(); ++rare) {
        const Keyword keyword(Word, rare);
        EXPECT_EQ(keyword.size(), 10U);
        EXPECT_EQ(keyword.findIn("END_ENTITY"), 0U) << rare;
        EXPECT_EQ(keyword.findIn("  END_ENTITY;"), 2U) << rare;
        EXPECT_EQ(keyword.findIn("END_END_ENTITY"), 4U) << rare;
        EXPECT_EQ(keyword.findIn("XEND_ENTITYX"), 1U) << rare; // a part of a word too
        EXPECT_EQ(keyword.findIn(std::string(1000, '_') + "END_ENTITY"), 1000U) << rare;
        EXPECT_EQ(keyword.findIn("END_ENTITY END_ENTITY"), 0U) << rare;
    }
}

TEST(KeywordTest, IsNotFoundInAnythingElse) {
    for (std::size_t rare = 0; rare < Word.size(); ++rare) {
        const Keyword keyword(Word, rare);
        for (const std::string_view text :
             {"", "E", "END_ENTIT", "ND_ENTITY", "end_entity", "END ENTITY", "END_ENTITTY", "________"}) {
            EXPECT_EQ(keyword.findIn(text), None) << text;
            EXPECT_FALSE(keyword.isIn(text)) << text;
        }
    }
}

TEST(KeywordTest, IsSearchedFromAPlaceOn) {
    const Keyword keyword(Word, 3);
    constexpr std::string_view Twice = "END_ENTITY END_ENTITY";
    EXPECT_EQ(keyword.findIn(Twice, 0), 0U);
    EXPECT_EQ(keyword.findIn(Twice, 1), 11U);
    EXPECT_EQ(keyword.findIn(Twice, 11), 11U);
    EXPECT_EQ(keyword.findIn(Twice, 12), None);
    EXPECT_EQ(keyword.findIn(Twice, Twice.size()), None);
    EXPECT_EQ(keyword.findIn(Twice, 1000), None);
    EXPECT_TRUE(keyword.isIn(Twice));
}

TEST(KeywordTest, ATextThatEndsWithinItIsNotReadFurther) {
    const std::string_view cut = std::string_view("END_ENTITY").substr(0, 9);
    EXPECT_FALSE(Keyword(Word, 3).isIn(cut));
}

} // namespace
