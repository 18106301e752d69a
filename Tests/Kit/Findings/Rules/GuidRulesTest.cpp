#include "Kit/Findings/FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using test::findingLines;
using testing::ElementsAre;
using testing::IsEmpty;

std::string quantity(std::string_view name, std::string_view guid) {
    return "<QtoDef ifdguid=\"" + std::string(guid) + "\"><Name>" + std::string(name) +
           "</Name><Definition>d</Definition><QtoType>Q_AREA</QtoType></QtoDef>\n";
}

constexpr std::string_view Plain =
    "<QtoDef><Name>W</Name><Definition>d</Definition><QtoType>Q_AREA</QtoType></QtoDef>\n";

/// The quantities begin on line 3.
std::string setWith(std::string_view guid, std::string_view quantities) {
    return "<QtoSetDef ifdguid=\"" + std::string(guid) +
           "\"><IfcVersion "
           "version=\"IFC4\"/><Name>A</Name><Definition>d</Definition><ApplicableClasses><ClassName>"
           "IfcWall</ClassName></ApplicableClasses>\n<QtoDefs>\n" +
           std::string(quantities.empty() ? Plain : quantities) + "</QtoDefs></QtoSetDef>";
}

constexpr std::string_view Guid = "aa3b8880d21511e1800000215ad4efdf";
/// The same in the characters of IFC: 128 bits to the base of 64.
constexpr std::string_view ShortGuid = "2gEuY0qXKHuO0000XQrkxV";
constexpr std::string_view Null = "00000000000000000000000000000000";

TEST(GuidRulesTest, AllFormsAreRight) {
    for (const std::string_view guid :
         {Guid, ShortGuid, std::string_view("{aa3b8880-d215-11e1-8000-00215ad4efdf}")})
        EXPECT_THAT(findingLines(setWith(guid, "")), IsEmpty()) << guid;
}

TEST(GuidRulesTest, AMalformedOneIsExplained) {
    EXPECT_THAT(
        findingLines(setWith(Guid, quantity("B", "aa3b"))),
        ElementsAre(
            "3:18+4 error G001 \"aa3b\" is no GUID | it has 4 hexadecimal digits, a GUID has 32 | the "
            "library reports: Illegal ifdguid in xml file"));
}

TEST(GuidRulesTest, AnEmptyOneIsRemoved) {
    const auto text = setWith("", "");
    EXPECT_THAT(findingLines(text),
                ElementsAre("1:12+7 error G001 the GUID is empty | leave \"ifdguid\" out when there "
                            "is no GUID | the library reports: Illegal ifdguid in xml file"));
    EXPECT_THAT(test::sMended(text), testing::StartsWith("<QtoSetDef><IfcVersion"));
}

TEST(GuidRulesTest, BlanksAreRemoved) {
    const auto text = setWith(std::string(Guid) + " ", "");
    EXPECT_EQ(findingLines(text).size(), 1);
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

TEST(GuidRulesTest, ARepeatedOneNamesTheFirst) {
    EXPECT_THAT(
        findingLines(setWith(Guid, quantity("B", "AA3B8880-D215-11E1-8000-00215AD4EFDF"))),
        ElementsAre(
            "3:18+36 error G002 the GUID \"AA3B8880-D215-11E1-8000-00215AD4EFDF\" is used twice in this "
            "document | the first use is here @1:21"));
}

TEST(GuidRulesTest, TheNullGuidMayBeRepeated) {
    EXPECT_THAT(findingLines(setWith(Null, quantity("B", Null))), IsEmpty());
}

TEST(GuidRulesTest, TheCharacterThatIsNoDigitIsNamed) {
    EXPECT_THAT(
        findingLines(setWith("aa3b8880d21511e1800000215ad4efdO", "")),
        ElementsAre(
            "1:21+32 error G001 \"aa3b8880d21511e1800000215ad4efdO\" is no GUID | character 32, \"O\", is "
            "no hexadecimal digit | the library reports: Illegal ifdguid in xml file"));
}

} // namespace

} // namespace kiv::kit
