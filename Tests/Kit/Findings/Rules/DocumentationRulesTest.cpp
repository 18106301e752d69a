#include "Kit/Findings/Rules/DocumentationRules.h"

#include "../FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The set's definition is in line 3, that of its quantity in line 6.
std::string sSetOf(std::string_view ofSet, std::string_view ofMember) {
    return "<QtoSetDef>\n<IfcVersion version=\"IFC4\"/><Name>A</Name>\n" + std::string(ofSet) +
           "\n<ApplicableClasses><ClassName>IfcWall</ClassName></"
           "ApplicableClasses>\n<QtoDefs><QtoDef><Name>P</Name>\n" +
           std::string(ofMember) + "\n<QtoType>Q_AREA</QtoType></QtoDef></QtoDefs>\n</QtoSetDef>\n";
}

constexpr std::string_view Text = "<Definition>B</Definition>";

TEST(DocumentationRules, FindsASetWithoutDefinition) {
    EXPECT_THAT(test::findingLines(sSetOf("", Text)),
                ElementsAre("2:30+4 note D001 the set \"A\" has no definition"));
    EXPECT_THAT(test::findingLines(sSetOf("<Definition> </Definition>", Text)),
                ElementsAre("3:2+10 note D001 the set \"A\" has no definition"));
}

TEST(DocumentationRules, FindsAMemberWithoutDefinition) {
    EXPECT_THAT(test::findingLines(sSetOf(Text, "")),
                ElementsAre("5:19+4 note D002 the quantity \"P\" has no definition"));
    EXPECT_THAT(test::findingLines(sSetOf(Text, "<Definition/>")),
                ElementsAre("6:2+10 note D002 the quantity \"P\" has no definition"));
}

TEST(DocumentationRules, LeavesOutNamesThatAreEmpty) {
    EXPECT_THAT(
        test::findingLines("<QtoSetDef>\n<IfcVersion version=\"IFC4\"/><Name/>\n"
                           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n"
                           "<QtoDefs><QtoDef><Name> </Name><QtoType>Q_AREA</QtoType></QtoDef></QtoDefs>"
                           "</QtoSetDef>\n"),
        ElementsAre("2:30+4 note D001 the set has no definition",
                    "2:30+4 error N001 the name of the set is empty",
                    "4:19+4 note D002 the quantity has no definition",
                    "4:19+4 error N002 the name of the quantity is empty"));
}

TEST(DocumentationRules, AcceptsDefinitions) {
    EXPECT_THAT(test::findingLines(sSetOf(Text, Text)), IsEmpty());
}

} // namespace

} // namespace kiv::kit
