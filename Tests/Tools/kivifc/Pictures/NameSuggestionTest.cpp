#include "kivifc/Pictures/NameSuggestion.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

TEST(NameSuggestion, FindsTheNameWithTheFewestChanges) {
    const std::vector<std::string_view> names{"BldDoor", "BldWall", "BldSlab", "IfcWall", "BldStandardWall"};
    EXPECT_EQ(sClosestName("BldWal", names), "BldWall");   // one left out
    EXPECT_EQ(sClosestName("BldWaall", names), "BldWall"); // one too many
    EXPECT_EQ(sClosestName("BldFoor", names), "BldDoor");  // one replaced
    EXPECT_EQ(sClosestName("bldwAL", names), "BldWall");   // case counts for nothing
    EXPECT_EQ(sClosestName("Wall", names), "");            // three of four letters are too many
    EXPECT_EQ(sClosestName("Quantity", names), "");
    EXPECT_EQ(sClosestName("", names), "");
}

TEST(NameSuggestion, FirstOfEquallyCloseNamesIsTaken) {
    EXPECT_EQ(sClosestName("BldXall", {"BldHall", "BldWall"}), "BldHall");
}

TEST(NameSuggestion, ChangesUpToAThirdOfTheNameAreClose) {
    struct Row {
        std::string_view name;
        /// As many letters replaced as a third of the name allows, and one more.
        std::string_view close;
        std::string_view far;
    };
    // A third is rounded down: it is the same for three lengths in a row.
    const Row rows[] = {
        {"ab", "ab", "ax"},
        {"abc", "abx", "axx"},
        {"abcd", "abcx", "abxx"},
        {"abcde", "abcdx", "abcxx"},
        {"abcdef", "abcdxx", "abcxxx"},
        {"abcdefg", "abcdexx", "abcdxxx"},
        {"abcdefgh", "abcdefxx", "abcdexxx"},
        {"abcdefghi", "abcdefxxx", "abcdexxxx"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(sClosestName(row.name, {row.close}), row.close);
        EXPECT_EQ(sClosestName(row.name, {row.far}), "") << row.name;
    }
}

TEST(NameSuggestion, NamesOfAbsurdLengthAreNotCompared) {
    const std::string name(1'000'000, 'a');
    EXPECT_EQ(sClosestName(name, {name}), "");
}

} // namespace

} // namespace kiv::kivifc
