#include "kivifc/NameSuggestion.h"

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
    EXPECT_EQ(sClosestName("abcdef", {"abcdxy"}), "abcdxy");
    EXPECT_EQ(sClosestName("abcdef", {"abcxyz"}), "");
}

TEST(NameSuggestion, NamesOfAbsurdLengthAreNotCompared) {
    const std::string name(1'000'000, 'a');
    EXPECT_EQ(sClosestName(name, {name}), "");
}

} // namespace

} // namespace kiv::kivifc
