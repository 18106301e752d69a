#include "Kit/Findings/Rules/ReleaseRules.h"

#include "../FindingLines.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The element of the release is in line 2, column 1.
std::string sSetOf(std::string_view release) {
    return "<PropertySetDef>\n" + std::string(release) +
           "\n<Name>A</Name><Definition>B</Definition><ApplicableClasses><ClassName>IfcWall</ClassName>"
           "</ApplicableClasses><PropertyDefs><PropertyDef><Name>P</Name><Definition>D</"
           "Definition><PropertyType><TypePropertySingleValue><DataType "
           "type=\"IfcLabel\"/></TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs>\n</"
           "PropertySetDef>\n";
}

std::string sDeclared(std::string_view release) {
    return sSetOf("<IfcVersion version=\"" + std::string(release) + "\"/>");
}

TEST(ReleaseRules, AcceptsWhatTheSchemaIsCalled) {
    for (const auto* release : {"IFC4", "2x4", "ifc4", "IFC4_ADD2", "IFC 4", " IFC4 "})
        EXPECT_THAT(test::findingLines(sDeclared(release)), IsEmpty()) << release;
}

TEST(ReleaseRules, FindsAnotherRelease) {
    for (const std::string release : {"2x3", "2x3 TC1", "IFC2X3", "IFC4X3_ADD2"})
        EXPECT_THAT(test::findingLines(sDeclared(release)),
                    ElementsAre("2:22+" + std::to_string(release.size()) +
                                " warning V001 the document is written for \"" + release +
                                "\", and is checked with " + sReleaseOf(test::exampleSchema()) +
                                " | what the releases name differently is reported as unknown"));
}

TEST(ReleaseRules, FindsAnUnknownRelease) {
    EXPECT_THAT(
        test::findingLines(sDeclared("Version 7")),
        ElementsAre("2:22+9 warning V003 \"Version 7\" is no known release of IFC | the loaded schema is " +
                    sReleaseOf(test::exampleSchema())));
}

TEST(ReleaseRules, FindsNone) {
    const std::string note = " | a document for this schema has <IfcVersion version=\"IFC4\"/>";
    EXPECT_THAT(
        test::findingLines(sSetOf("")),
        ElementsAre("1:2+14 warning V002 the document declares no release: there is no \"IfcVersion\"" +
                    note));
    EXPECT_THAT(test::findingLines(sDeclared("")),
                ElementsAre("2:13+7 warning V002 the document declares no release" + note));
}

/// That the attribute is missing is said once, by the rules of structure.
TEST(ReleaseRules, LeavesAMissingAttributeToTheRulesOfStructure) {
    for (const auto& finding : test::exampleFindings(sSetOf("<IfcVersion/>")))
        EXPECT_EQ(finding.code.front(), 'S') << test::sFindingLine(finding);
}

TEST(ReleaseRules, BelievesAHostThatKnowsTheRelease) {
    const auto document = setTextCheck(sDeclared("IFC2X3"), "Example.xml", test::exampleSchema());
    EXPECT_THAT(findingsOf(document, {test::exampleSchema(), {}, "IFC2X3_TC1", false}), IsEmpty());
}

} // namespace

} // namespace kiv::kit
