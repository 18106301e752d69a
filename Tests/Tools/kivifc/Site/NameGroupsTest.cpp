#include "kivifc/Site/NameGroups.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using Names = std::vector<std::string_view>;

TEST(NameGroups, CommonWordIsWhatHalfOfTheNamesBeginWith) {
    EXPECT_EQ(sCommonWord({"IfcWall", "IfcDoor", "IfcSlab"}), "Ifc");
    EXPECT_EQ(sCommonWord({"IfcWall", "IfcDoor", "Thing", "Other"}), "Ifc");
    EXPECT_EQ(sCommonWord({"IfcWall", "IfcDoor", "Thing", "Other", "Third"}), "");
    EXPECT_EQ(sCommonWord({}), "");
}

TEST(NameGroups, CommonWordGoesOnWithAnUpperCaseLetter) {
    EXPECT_EQ(sCommonWord({"Wall", "Wallpaper"}), "");
    EXPECT_EQ(sCommonWord({"WallType", "WallKind"}), "Wall");
    EXPECT_EQ(sCommonWord({"a_b", "a_c"}), "");
    EXPECT_EQ(sCommonWord({"IfcWall"}), "") << "one name has nothing in common with others";
}

TEST(NameGroups, LetterComesAfterTheCommonWord) {
    EXPECT_EQ(sLetterOf("IfcWall", "Ifc"), "W");
    EXPECT_EQ(sLetterOf("wall", "Ifc"), "W");
    EXPECT_EQ(sLetterOf("Ifc", "Ifc"), "I");
    EXPECT_EQ(sLetterOf("9to5", ""), "0-9");
    EXPECT_EQ(sLetterOf("\xC3\x84gypten", ""), "Other");
    EXPECT_EQ(sLetterOf("", ""), "Other");
}

TEST(NameGroups, PrefixEndsWithTheFirstUnderscore) {
    EXPECT_EQ(prefixOf("Pset_Wall_Common"), "Pset_");
    EXPECT_EQ(prefixOf("Wall"), "");
    EXPECT_EQ(prefixOf("_Wall"), "_");
    EXPECT_EQ(prefixOf(std::string(31, 'x') + "_"), std::string(31, 'x') + "_");
    EXPECT_EQ(prefixOf(std::string(32, 'x') + "_"), "") << "no prefix is as long";
}

TEST(NameGroups, OrderHasNoRegardForCaseUnlessAllElseIsEqual) {
    Names names{"b", "a", "B", "A", "\xC3\xA4", "a1"};
    vIndexSort(names, [](std::string_view name) { return name; });
    EXPECT_EQ(names, (Names{"A", "a", "a1", "B", "b", "\xC3\xA4"}));
    EXPECT_FALSE(isBeforeInIndex("a", "a"));
}

} // namespace

} // namespace kiv::kivifc::site
