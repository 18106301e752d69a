#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Structure/StructureTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kit {

namespace {

using test::findingLines;
using test::Head;
using test::property;
using test::quantitiesWithType;
using test::setOf;
using test::setWith;
using test::setWithSingle;
using test::setWithType;
using test::Single;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(StructureRulesTest, ARightSetHasNoFindings) {
    EXPECT_THAT(findingLines(setWith(property(""))), IsEmpty());
    EXPECT_THAT(findingLines(quantitiesWithType("<QtoType>Q_TIME</QtoType>")), IsEmpty());
}

TEST(StructureRulesTest, LetterCaseIsMended) {
    const auto text = setWith("<PropertyDef ifdGUID=\"aa3b8880d21511e1800000215ad4efdf\"><name>P</name>"
                              "<Definition>d</Definition>" +
                              std::string(Single) + "</PropertyDef>");
    EXPECT_THAT(
        findingLines(text),
        ElementsAre("7:14+7 error S003 attribute \"ifdGUID\" of \"PropertyDef\" is written in another letter "
                    "case | write it as \"ifdguid\"",
                    "7:58+4 error S003 \"name\" inside \"PropertyDef\" is written in another letter case | "
                    "write it as \"Name\" | the library reports: Unknown xml node"));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

TEST(StructureRulesTest, NamespacesOfOtherReleasesAreRight) {
    for (const std::string_view uri : {"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd",
                                       "http://www.buildingsmart-tech.org/xml/psd/PSD_IFC2X3.xsd"})
        EXPECT_THAT(findingLines(setWith(property(""), " xmlns=\"" + std::string(uri) + "\"")), IsEmpty());
    EXPECT_EQ(
        findingLines(
            setWith(property(""), " xmlns=\"http://www.buildingsmart-tech.org/xml/qto/QTO_IFC4.xsd\""))[0],
        "1:24+54 warning S012 \"http://www.buildingsmart-tech.org/xml/qto/QTO_IFC4.xsd\" is no namespace of "
        "property sets | property sets of IFC 4 have \"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\"");
}

TEST(StructureRulesTest, APrefixedRootIsRefusedByName) {
    const auto text = "<p:PropertySetDef xmlns:p=\"u\"><p:Name>A</p:Name></p:PropertySetDef>";
    const auto findings = test::exampleFindings(text);
    ASSERT_EQ(findings.size(), 1);
    EXPECT_EQ(findings[0].code, "S013");
    EXPECT_THAT(findings[0].message, testing::HasSubstr("p:PropertySetDef"));
    EXPECT_EQ(findings[0].place.position, (TextPosition{1, 2, 16}));
}

TEST(StructureRulesTest, WhatIsThereInAWrongWayIsNotMissing) {
    for (const std::string_view value :
         {"<DataType>IfcReal</DataType>", "<DataType typ=\"IfcReal\"/>", "<DataType Type=\"IfcReal\"/>"})
        EXPECT_EQ(findingLines(setWithSingle(value)).size(), 1) << value;
    EXPECT_EQ(findingLines(setWithType("<PropertyType><TypePropertyListValue><DataType type=\"IfcReal\"/>"
                                       "</TypePropertyListValue></PropertyType>"))
                  .size(),
              1);
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType>TIMEUNIT</UnitType>")),
        ElementsAre("8:76+8 error S016 there is text inside \"UnitType\", where none belongs | its value "
                    "belongs in the attribute \"type\" | the library reports: Unknown xml node | the library "
                    "reports: Could not find attribute"));
}

std::string setWithSimple(std::string_view content) {
    return setWithType("<PropertyType><TypeSimpleProperty>" + std::string(content) +
                       "</TypeSimpleProperty></PropertyType>");
}

TEST(StructureRulesTest, OlderSimplePropertiesAreLookedAt) {
    // Of each of them, that it is not read.
    const auto isUnread = testing::StartsWith("8:16+18 error T026 ");
    EXPECT_THAT(findingLines(setWithSimple("<DataType type=\"IfcTimeSeries\"/>")), ElementsAre(isUnread));
    EXPECT_THAT(findingLines(setWithSimple("<DataType type=\"IfcReal\"/><UnitType type=\"LENGTHUNIT\"/>")),
                ElementsAre(isUnread));
    EXPECT_THAT(
        findingLines(setWithSimple("<DataType type=\"IfcReel\"/>")),
        ElementsAre(isUnread, "8:51+7 error T001 IFC4 has no type \"IfcReel\" | did you mean \"IfcReal\"?"));
    EXPECT_THAT(findingLines(setWithSimple("<DataType type=\"IfcReal\"/><Foo/>")),
                ElementsAre(isUnread,
                            "8:62+3 error S001 \"Foo\" is not known inside \"TypeSimpleProperty\" | "
                            "legal here: \"DataType\" and \"UnitType\""));
    EXPECT_THAT(findingLines(setWithSimple("<UnitType/>")),
                ElementsAre(isUnread, "8:36+8 error S005 the unit has no \"type\""));
    EXPECT_THAT(findingLines(setWithSimple("<DataType/>")), ElementsAre(isUnread));
    // Time series name the measure of their values; readers do not look at it.
    EXPECT_THAT(
        findingLines(setWithSimple("<DataType type=\"IfcReal\"/><UnitType type=\"METREUNIT\"/>")),
        ElementsAre(isUnread, testing::StartsWith("8:77+9 warning S008 \"METREUNIT\" is no type of unit")));
}

/// Mistakes whose mending needs judgement: another element or attribute counts, or something was left out.
TEST(StructureRulesTest, WhatNeedsJudgementIsNotEdited) {
    const auto twoProperties = property("") + "\n" + property("");
    const std::string texts[] = {
        setOf(std::string(Head) + twoProperties),
        setWith(property("") + "</PropertyDefs>\n" + property("") + "<PropertyDefs>"),
        setWith(property("<NameAlias lang=\"de\">A</NameAlias>")),
        setWith(property("<DefinitionAlias lang=\"de\">A</DefinitionAlias>")),
        setWith(property("") + "<PropertyDefs/>"),
        setOf(std::string(Head) + "<PropretyDef><Name>P</Name></PropretyDef>"),
        setWith(property("<name>Other</name>")),
        setWith(property("<Nmae>Other</Nmae>")),
        setWith(property("<x:Name xmlns:x=\"u\">Other</x:Name>")),
        setWith("<PropertyDef><name>P</name><NAME>Q</NAME><Definition>d</Definition>" + std::string(Single) +
                "</PropertyDef>"),
        setWith("<PropertyDef><PropertyName>P</PropertyName><Definition>d</Definition>" +
                std::string(Single) + "</PropertyDef>"),
        setOf(std::string(Head) + "<definition>e</definition><PropertyDefs>" + property("") +
              "</PropertyDefs>"),
        setWithSingle("<DataType type=\"IfcReal\" typ=\"x\"/>"),
        setWithSingle("<DataType Type=\"IfcReal\" type=\"IfcReal\"/>"),
        setWithSingle("<DataType Type=\"IfcReal\" TYPE=\"IfcReal\"/>"),
        setWithSingle("<DataType Type=\"IfcReal\" x:type=\"IfcReal\" xmlns:x=\"u\"/>"),
        setWith(property(""), " ifdguid=\"aa3b8880d21511e1800000215ad4efdf\" IFDGUID=\"x\"")};
    for (const auto& text : texts) {
        EXPECT_FALSE(findingLines(text).empty()) << text;
        EXPECT_EQ(test::sMended(text), text);
    }
}

TEST(StructureRulesTest, WhatIsThereAlreadyIsSaid) {
    EXPECT_THAT(findingLines(setWithSingle("<DataType type=\"IfcReal\" typ=\"x\"/>")),
                ElementsAre("8:65+3 error S002 attribute \"typ\" of \"DataType\" is not known | \"type\" is "
                            "there already @8:50 | legal here: \"type\""));
    const auto lines = findingLines(setWith(property("\n<name>Other</name>")));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0], testing::StartsWith("8:2+4 error S003 \"name\" inside \"PropertyDef\" is written "
                                              "in another letter case | \"Name\" is there already @7:15"));
}

TEST(StructureRulesTest, APartOfANameIsRecognised) {
    const std::pair<std::string, std::string_view> rows[] = {
        {setWithSingle("<DataType type=\"IfcReal\"/><Unit type=\"TIMEUNIT\"/>"), "\"UnitType\""},
        {setWith(property(""), " guid=\"x\""), "\"ifdguid\""},
        {setWithType("<PropertyType><SingleValue/></PropertyType>"), "\"TypePropertySingleValue\""},
        {setWithType("<Type><TypePropertySingleValue/></Type>"), "\"PropertyType\""},
        {quantitiesWithType("<QtoType>LENGTH</QtoType>"), "\"Q_LENGTH\""}};
    for (const auto& [text, meant] : rows) {
        const auto lines = findingLines(text);
        ASSERT_EQ(lines.size(), 1) << text;
        EXPECT_THAT(lines[0], testing::HasSubstr("did you mean " + std::string(meant) + "?"));
        EXPECT_EQ(test::sMended(text), text);
    }
}

TEST(StructureRulesTest, LineEndsOfTwoBytesAreMendedWithTheBlanks) {
    const auto text = quantitiesWithType("<QtoType>\r\n   Q_AREA\r\n  </QtoType>");
    EXPECT_EQ(test::sMended(text), quantitiesWithType("<QtoType>Q_AREA</QtoType>"));
    const auto named = setWith("<PropertyDef><Name>\r\n  Load\r\n </Name><Definition>d</Definition>" +
                               std::string(Single) + "</PropertyDef>");
    EXPECT_THAT(test::sMended(named), testing::HasSubstr("<Name>Load</Name>"));
    const auto listed = setWithType("<PropertyType><TypePropertyEnumeratedValue><EnumList name=\"PEnum_A\">"
                                    "<EnumItem>\r\n X\r\n</EnumItem></EnumList>"
                                    "</TypePropertyEnumeratedValue></PropertyType>");
    EXPECT_THAT(test::sMended(listed), testing::HasSubstr("<EnumItem>X</EnumItem>"));
}

TEST(StructureRulesTest, NamespacesNameARelease) {
    for (const std::string_view release : {"IFC4", "R2x3", "IFC2x3", "IFC4x3", "IFC4_ADD2"})
        EXPECT_THAT(findingLines(setWith(property(""), " xmlns=\"http://buildingsmart-tech.org/xml/psd/PSD_" +
                                                           std::string(release) + ".xsd\"")),
                    IsEmpty())
            << release;
    for (const std::string_view name : {"", "WALLS", "IFC"})
        EXPECT_THAT(findingLines(setWith(property(""), " xmlns=\"http://buildingsmart-tech.org/xml/psd/PSD_" +
                                                           std::string(name) + ".xsd\"")),
                    ElementsAre(testing::HasSubstr("warning S012 ")))
            << name;
}

} // namespace

} // namespace kiv::kit
