#include "kiv/Kit/Findings/Findings.h"

#include "Kit/Findings/FindingLines.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace kiv::kit {

namespace {

using test::exampleFindings;
using test::findingLines;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::string setWith(std::string_view properties) {
    return "<PropertySetDef>\n<IfcVersion "
           "version=\"IFC4\"/>\n<Name>Pset_A</Name>\n<Definition>d</Definition>\n"
           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n<PropertyDefs>\n" +
           std::string(properties) + "\n</PropertyDefs>\n</PropertySetDef>\n";
}

std::string bounded(std::string_view name) {
    return "<PropertyDef><Name>" + std::string(name) +
           "</Name><Definition>d</Definition><PropertyType><TypePropertyBoundedValue>\n<ValueRangeDef>"
           "<LowerBoundValue value=\"0\"/><UpperBoundValue value=\"1\"/></ValueRangeDef>"
           "<DataType type=\"IfcReal\"/></TypePropertyBoundedValue></PropertyType></PropertyDef>\n";
}

TEST(FindingsTest, BoundsAreShownOnRequestOnly) {
    EXPECT_THAT(findingLines(setWith(bounded("P"))), IsEmpty());
    std::vector<std::string> lines;
    for (const auto& finding : exampleFindings(setWith(bounded("P") + bounded("Q")), true))
        lines.push_back(test::sFindingLine(finding));
    EXPECT_THAT(lines, ElementsAre("8:40+1 note R016 Excpeted name to exist in schema: \"0\"",
                                   "8:68+1 note R017 Excpeted name to exist in schema: \"1\"",
                                   "10:40+1 note R016 Excpeted name to exist in schema: \"0\"",
                                   "10:68+1 note R017 Excpeted name to exist in schema: \"1\""));
}

TEST(FindingsTest, AssertionsHaveTheirOrigin) {
    const auto findings = exampleFindings(setWith(bounded("P")), true);
    ASSERT_EQ(findings.size(), 2);
    ASSERT_TRUE(findings[0].origin);
    EXPECT_EQ(findings[0].origin->function, "kiv::ifc::def::pset::TypePropertyBoundedValue::checkForErrors");
    EXPECT_EQ(findings[0].origin->file, "Source/Format/Ifc/Def/Pset/IfcPropertyTypeDerived");
    EXPECT_EQ(findings[0].origin->line, 393);
}

TEST(FindingsTest, SubjectsNameSetAndMember) {
    const auto findings =
        exampleFindings(setWith("<PropertyDef><Name>Layer</Name><Definition>d</"
                                "Definition><PropertyType><TypeComplexProperty name=\"L\">"
                                "<PropertyDef><Name>Thickness</Name><Definition>d</Definition></PropertyDef>"
                                "</TypeComplexProperty></PropertyType></PropertyDef><Foo/>"));
    ASSERT_EQ(findings.size(), 2);
    EXPECT_EQ(findings[0].code, "S004");
    EXPECT_EQ(findings[0].subject, "Pset_A.Layer.Thickness");
    EXPECT_EQ(findings[1].code, "S001");
    EXPECT_EQ(findings[1].subject, "Pset_A");
}

TEST(FindingsTest, SayWhichNamesTheSchemaLacks) {
    const auto findings = exampleFindings(
        "<PropertySetDef><IfcVersion "
        "version=\"IFC4\"/><Name>A</Name><Definition>B</Definition><ApplicableClasses>"
        "<ClassName>IfcWal/SOLIDWALL</ClassName></ApplicableClasses><PropertyDefs><PropertyDef><Name>P</Name>"
        "<Definition>D</Definition><PropertyType><TypePropertySingleValue><DataType type=\"IfcReel\"/>"
        "</TypePropertySingleValue></PropertyType></PropertyDef></PropertyDefs></PropertySetDef>");
    ASSERT_EQ(findings.size(), 2);
    EXPECT_EQ(findings[0].code, "C001");
    EXPECT_EQ(findings[0].missingNames, std::vector<std::string>{"IfcWal"});
    EXPECT_EQ(findings[1].code, "T001");
    EXPECT_EQ(findings[1].missingNames, std::vector<std::string>{"IfcReel"});
}

TEST(FindingsTest, AreSortedByPlace) {
    const auto findings = exampleFindings(
        "<PropertySetDef templatetype=\"x\" ifdguid=\"x\"><Foo/><PropertyDefs/></PropertySetDef>");
    EXPECT_TRUE(
        std::ranges::is_sorted(findings, {}, [](const Finding& finding) { return finding.place.position; }));
    EXPECT_GE(findings.size(), 4);
}

TEST(FindingsTest, HaveThePathOfTheDocument) {
    for (const auto& finding : exampleFindings("<PropertySetDef/>"))
        EXPECT_EQ(finding.place.path, "Example.xml");
}

TEST(FindingsTest, ADocumentThatCannotBeReadHasOne) {
    struct Row {
        std::string_view text;
        std::string_view line;
    };
    for (const auto& [text, line] : {
             Row{"", "0:0+0 error R041 the file is empty"},
             Row{"<PropertySetDef>\n<Name></PropertySetDef>",
                 "2:9+14 error R044 the end tag is that of \"PropertySetDef\", where \"Name\" is "
                 "open | \"Name\" begins here @2:2 | the XML parser says: mismatched tag"},
         })
        EXPECT_THAT(findingLines(text), ElementsAre(std::string(line)));
    EXPECT_EQ(exampleFindings("<Other/>")[0].code, "S014");
    EXPECT_THAT(findingLines("<Catalogue/>"), ElementsAre(Not(HasSubstr(" | "))));
    EXPECT_THAT(findingLines("<propertysetdef/>"), ElementsAre(EndsWith("| write it as \"PropertySetDef\"")));
    EXPECT_THAT(findingLines("<PropertySet/>"), ElementsAre(EndsWith("| did you mean \"PropertySetDef\"?")));
}

TEST(FindingsTest, MissingFileIsOne) {
    const auto document = setDocumentCheck("/nonexistent/x.xml", test::exampleSchema());
    const auto findings = findingsOf(document, {test::exampleSchema(), {}, {}, false});
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings[0].code, "R040");
    EXPECT_EQ(findings[0].place.path, "/nonexistent/x.xml");
}

TEST(FindingsTest, LimitsAndLackOfMemoryAreFindingsOfTheWholeDocument) {
    const auto lineOf = [](const SetDocument& document) {
        const auto findings = findingsOf(document, {test::exampleSchema(), {}, {}, false});
        return findings.size() == 1 ? test::sFindingLine(findings[0]) : std::string();
    };
    ReadOptions options;
    options.budget.maxInput = 8;
    EXPECT_EQ(lineOf(setTextCheck("<PropertySetDef/>", "a.xml", test::exampleSchema(), options)),
              "0:0+0 error R042 more than 8 bytes of input are needed");
    SetDocument document;
    document.failure = ReadFailure{FailureKind::OutOfMemory, "not enough memory", {}, {}};
    EXPECT_EQ(lineOf(document), "0:0+0 error R043 not enough memory");
}

TEST(FindingsTest, FindingsOfOneCodeAreLimited) {
    std::string aliases;
    for (int i = 0; i != 10'001; ++i)
        aliases += "<Foo/>";
    const auto findings = exampleFindings(setWith(aliases));
    EXPECT_EQ(findings.size(), 10'000);
}

TEST(FindingsTest, LongValuesAreCut) {
    const auto findings = exampleFindings(setWith("<" + std::string(1000, 'F') + "/>"));
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings[0].message,
              "\"" + std::string(120, 'F') + "...\" is not known inside \"PropertyDefs\"");
}

TEST(FindingsTest, ThreadsGetTheSame) {
    const auto text = setWith("<Foo/>" + bounded("P ") + bounded("Q"));
    const auto document = setTextCheck(text, "Example.xml", test::exampleSchema());
    const auto lines = findingLines(text);
    std::vector<std::vector<std::string>> results(4);
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([&result, &document] {
            for (const auto& finding : findingsOf(document, {test::exampleSchema(), {}, {}, false}))
                result.push_back(test::sFindingLine(finding));
        });
    for (auto& thread : threads)
        thread.join();
    for (const auto& result : results)
        EXPECT_EQ(result, lines);
}

} // namespace

} // namespace kiv::kit
