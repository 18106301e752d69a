#include "Kit/Findings/FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace {

using test::findingLines;
using testing::ElementsAre;
using testing::IsEmpty;

/// A property set whose 7th line on is this, inside "PropertyDefs".
std::string setWith(std::string_view properties, std::string_view attributes = {}) {
    return "<PropertySetDef" + std::string(attributes) +
           ">\n<IfcVersion version=\"IFC4\"/>\n<Name>Pset_A</Name>\n<Definition>d</Definition>\n"
           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n<PropertyDefs>\n" +
           std::string(properties) + "\n</PropertyDefs>\n</PropertySetDef>\n";
}

/// One property, whose type is on line 8.
std::string setWithType(std::string_view type) {
    return setWith("<PropertyDef><Name>P</Name><Definition>d</Definition>\n" + std::string(type) +
                   "</PropertyDef>");
}

std::string setWithSingle(std::string_view value) {
    return setWithType("<PropertyType><TypePropertySingleValue>" + std::string(value) +
                       "</TypePropertySingleValue></PropertyType>");
}

/// One quantity, whose type is on line 8.
std::string quantitiesWithType(std::string_view type) {
    return "<QtoSetDef>\n<IfcVersion version=\"IFC4\"/>\n<Name>Qto_A</Name>\n<Definition>d</Definition>\n"
           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n<QtoDefs>\n"
           "<QtoDef><Name>Q</Name><Definition>d</Definition>\n" +
           std::string(type) + "</QtoDef>\n</QtoDefs>\n</QtoSetDef>\n";
}

constexpr std::string_view Single = "<PropertyType><TypePropertySingleValue><DataType type=\"IfcReal\"/>"
                                    "</TypePropertySingleValue></PropertyType>";

std::string property(std::string_view more) {
    return "<PropertyDef><Name>P</Name><Definition>d</Definition>" + std::string(Single) + std::string(more) +
           "</PropertyDef>";
}

TEST(StructureRulesTest, ARightSetHasNoFindings) {
    EXPECT_THAT(findingLines(setWith(property(""))), IsEmpty());
    EXPECT_THAT(findingLines(quantitiesWithType("<QtoType>Q_TIME</QtoType>")), IsEmpty());
}

TEST(StructureRulesTest, AnUnknownElementIsExplained) {
    EXPECT_THAT(
        findingLines(setWith(property("\n <NameAliass/>"))),
        ElementsAre(
            "8:3+10 error S001 \"NameAliass\" is not known inside \"PropertyDef\" | did you mean "
            "\"NameAliases\"? | legal here: \"Name\", \"Definition\", \"PropertyType\", \"NameAliases\", "
            "\"DefinitionAliases\" and \"ValueDef\" | the library reports: Unknown xml node"));
}

TEST(StructureRulesTest, AnElementInTheWrongPlaceIsSentToTheRightOne) {
    EXPECT_THAT(
        findingLines(setWith("<ClassName>IfcWall</ClassName>")),
        ElementsAre("7:2+9 error S001 \"ClassName\" is not known inside \"PropertyDefs\" | \"ClassName\" "
                    "belongs inside \"ApplicableClasses\""));
}

TEST(StructureRulesTest, WhatIsInsideAnUnknownElementIsNotLookedAt) {
    EXPECT_THAT(findingLines(setWith("<Foo><Bar/><PropertyDef/></Foo>")),
                ElementsAre("7:2+3 error S001 \"Foo\" is not known inside \"PropertyDefs\" | legal here: "
                            "\"PropertyDef\""));
}

TEST(StructureRulesTest, AnItemOfAnotherNameIsReadAllTheSame) {
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertyEnumeratedValue>\n<EnumList name=\"PEnum_A\">"
                                 "<Item>X</Item></EnumList></TypePropertyEnumeratedValue></PropertyType>")),
        ElementsAre("9:27+4 warning S001 \"Item\" is not known inside \"EnumList\" | did you mean "
                    "\"EnumItem\"? | legal here: \"EnumItem\""));
}

TEST(StructureRulesTest, AnUnknownAttributeIsExplained) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\" unit=\"m\"/>")),
        ElementsAre(
            "8:65+4 error S002 attribute \"unit\" of \"DataType\" is not known | legal here: \"type\""));
    EXPECT_THAT(findingLines(setWith(property(""), " xsi:schemaLocation=\"x\" xmlns:xsi=\"y\"")), IsEmpty());
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

TEST(StructureRulesTest, AMissingTypeIsOneFinding) {
    EXPECT_THAT(findingLines(setWithType("")),
                ElementsAre("7:2+11 error S004 the property has no type: there is no \"PropertyType\""));
    EXPECT_THAT(findingLines(setWithType("<PropertyTyp/>")).size(), 1);
    EXPECT_THAT(findingLines(quantitiesWithType("")),
                ElementsAre("7:2+6 error S004 the quantity has no type: there is no \"QtoType\""));
}

TEST(StructureRulesTest, AnEmptyTypeIsFound) {
    const auto lines = findingLines(setWithType("<PropertyType> </PropertyType>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("8:2+12 error S004 the property has no type: \"PropertyType\" is empty"));
}

TEST(StructureRulesTest, AMissingAttributeTakesBothReportsOver) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType/>")),
        ElementsAre(
            "8:67+8 error S005 the unit has no \"type\" | the library reports: Unknown xml node | the "
            "library reports: Could not find attribute"));
}

TEST(StructureRulesTest, AMisspeltAttributeIsTheOneMistake) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType typ=\"TIMEUNIT\"/>")),
        ElementsAre(
            "8:76+3 error S002 attribute \"typ\" of \"UnitType\" is not known | did you mean "
            "\"type\"? | legal here: \"type\" and \"currencytype\" | the library reports: Unknown xml "
            "node | the library reports: Could not find attribute"));
}

TEST(StructureRulesTest, ARepeatedElementNamesTheOneThatIsLost) {
    EXPECT_THAT(
        findingLines(setWith(property("\n<Name>Q</Name>"))),
        ElementsAre("8:2+4 error S006 \"Name\" is repeated; only the last one counts | this one does not "
                    "count @7:15"));
}

TEST(StructureRulesTest, OnlyTheFirstKindCounts) {
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertySingleValue><DataType type=\"IfcReal\"/>"
                                 "</TypePropertySingleValue>\n<TypePropertyListValue/></PropertyType>")),
        ElementsAre("9:2+21 error S006 \"TypePropertyListValue\" is a second kind of the property; only the "
                    "first one counts | this one counts @8:16"));
}

TEST(StructureRulesTest, ATemplateTypeHasLegalValues) {
    const auto lines = findingLines(setWith(property(""), " templatetype=\"PSET_TYPEDRIVENONLYX\""));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("1:31+20 error S007 \"PSET_TYPEDRIVENONLYX\" is no template type | did "
                                    "you mean \"PSET_TYPEDRIVENONLY\"? | legal values: "));
    EXPECT_THAT(lines[0], testing::EndsWith("| the library reports: Illegal templatetype used"));
}

TEST(StructureRulesTest, AnEmptyTemplateTypeIsLegal) {
    EXPECT_THAT(findingLines(setWith(property(""), " templatetype=\"\"")), IsEmpty());
}

TEST(StructureRulesTest, UnitsAreThoseOfTheSchema) {
    EXPECT_THAT(findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType type=\"FORCEUNIT\"/>")),
                ElementsAre("8:82+9 error S008 \"FORCEUNIT\" is no type of unit | legal values: the items of "
                            "IfcUnitEnum and IfcDerivedUnitEnum, such as \"AREAUNIT\" and \"USERDEFINED\""));
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType type=\"\"/>")),
        ElementsAre("8:76+4 note S022 the type of the unit is empty | leave \"UnitType\" out where there "
                    "is no unit"));
}

TEST(StructureRulesTest, ABlankAfterAUnitIsMended) {
    const auto text = setWithSingle("<DataType type=\"IfcLengthMeasure\"/><UnitType type=\"LENGTHUNIT \"/>");
    EXPECT_THAT(
        findingLines(text),
        ElementsAre("8:91+11 error S019 type of unit \"LENGTHUNIT\" has white space around it | write it as "
                    "\"LENGTHUNIT\" | the library reports: Name should not end with space"));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

TEST(StructureRulesTest, AQuantityTypeIsMended) {
    for (const std::string_view type : {" Q_AREA", "Q_AREA\n", "q_area", "IfcQuantityArea", "Q_AREAS"}) {
        const auto text = quantitiesWithType("<QtoType>" + std::string(type) + "</QtoType>");
        EXPECT_EQ(findingLines(text).size(), 1) << type;
        EXPECT_THAT(test::sMended(text), testing::HasSubstr("<QtoType>Q_AREA</QtoType>")) << type;
    }
}

TEST(StructureRulesTest, AnEmptyQuantityTypeIsFound) {
    const auto lines = findingLines(quantitiesWithType("<QtoType/>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("8:2+7 error S009 the type of the quantity is empty | legal values: "));
    EXPECT_THAT(lines[0], testing::EndsWith("the library reports: Child not found"));
}

TEST(StructureRulesTest, AnUnknownKindIsExplained) {
    const auto lines = findingLines(setWithType("<PropertyType><TypePropertySimpleValue/></PropertyType>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("8:16+23 error S010 \"TypePropertySimpleValue\" is no kind of property"));
    EXPECT_THAT(lines[0], testing::EndsWith("the library reports: Unknown node"));
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

TEST(StructureRulesTest, PrefixesAreRemoved) {
    const auto text = setWith("<PropertyDef><x:Name xmlns:x=\"u\">P</x:Name><Definition>d</Definition>" +
                              std::string(Single) + "</PropertyDef>");
    EXPECT_THAT(findingLines(text),
                ElementsAre("7:15+6 error S015 \"x:Name\" has a prefix; prefixes are not supported "
                            "| write it as \"Name\" | the library reports: Unknown xml node"));
    EXPECT_THAT(test::sMended(text), testing::HasSubstr("<Name xmlns:x=\"u\">P</Name>"));
}

TEST(StructureRulesTest, TextBetweenElementsIsFound) {
    EXPECT_THAT(findingLines(setWith(property("") + "\n  stray\n")),
                ElementsAre("8:3+5 error S016 there is text inside \"PropertyDefs\", where elements belong"));
}

TEST(StructureRulesTest, TextThatIsNotReadIsFound) {
    EXPECT_THAT(
        findingLines(
            setWith(property("<NameAliases><NameAlias lang=\"de\"><!--c-->A</NameAlias></NameAliases>"))),
        ElementsAre(
            "7:194+8 error S017 the text of \"NameAlias\" begins with a comment, which is read in its "
            "place"));
}

TEST(StructureRulesTest, CommentsBetweenElementsAreRight) {
    EXPECT_THAT(findingLines(setWith("<!-- one -->" + property("<!-- two -->\n") + "<!-- three -->")),
                IsEmpty());
    EXPECT_THAT(findingLines(setWith("<PropertyDef><!-- one --><Name>P</Name><Definition>d</Definition>" +
                                     std::string(Single) + "</PropertyDef>")),
                IsEmpty());
}

TEST(StructureRulesTest, ACommentThatIsReadAsANameIsOneFinding) {
    EXPECT_THAT(
        findingLines(setWith("<PropertyDef><Name><!-- P --></Name><Definition>d</Definition>" +
                             std::string(Single) + "</PropertyDef>")),
        ElementsAre("7:20+10 error S017 the text of \"Name\" begins with a comment, which is read in its "
                    "place"));
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

TEST(StructureRulesTest, QuantitiesInAPropertySetAreFoundOnce) {
    EXPECT_THAT(
        findingLines(setWith("<QtoDef><Name>Q</Name><QtoType>Q_AREA</QtoType></QtoDef>")),
        ElementsAre("7:2+6 error S018 \"QtoDef\" belongs to quantity sets; this is a property set | here it "
                    "would be \"PropertyDef\""));
}

TEST(StructureRulesTest, IgnoredContentIsLeftAlone) {
    EXPECT_THAT(findingLines(setWith(property("<ValueDef>text<Foo bar=\"1\"/></ValueDef>"))), IsEmpty());
}

std::string setWithSimple(std::string_view content) {
    return setWithType("<PropertyType><TypeSimpleProperty>" + std::string(content) +
                       "</TypeSimpleProperty></PropertyType>");
}

TEST(StructureRulesTest, OlderSimplePropertiesAreLookedAt) {
    EXPECT_THAT(findingLines(setWithSimple("<DataType type=\"IfcTimeSeries\"/>")), IsEmpty());
    EXPECT_THAT(findingLines(setWithSimple("<DataType type=\"IfcReal\"/><UnitType type=\"LENGTHUNIT\"/>")),
                IsEmpty());
    EXPECT_THAT(findingLines(setWithSimple("<DataType type=\"IfcReel\"/>")),
                ElementsAre("8:51+7 error T001 IFC4 has no type \"IfcReel\" | did you mean \"IfcReal\"?"));
    EXPECT_THAT(
        findingLines(setWithSimple("<DataType type=\"IfcReal\"/><Foo/>")),
        ElementsAre("8:62+3 error S001 \"Foo\" is not known inside \"TypeSimpleProperty\" | legal here: "
                    "\"DataType\" and \"UnitType\""));
    EXPECT_THAT(
        findingLines(setWithSimple("<UnitType/>")),
        ElementsAre("8:16+18 error T008 no data type is given: \"TypeSimpleProperty\" has no \"DataType\"",
                    "8:36+8 error S005 the unit has no \"type\""));
    // Time series name the measure of their values; readers do not look at it.
    EXPECT_THAT(findingLines(setWithSimple("<DataType type=\"IfcReal\"/><UnitType type=\"METREUNIT\"/>")),
                ElementsAre(testing::StartsWith("8:77+9 warning S008 \"METREUNIT\" is no type of unit")));
}

std::string setOf(std::string_view content) {
    return "<PropertySetDef>\n" + std::string(content) + "\n</PropertySetDef>\n";
}

constexpr std::string_view Head =
    "<IfcVersion version=\"IFC4\"/><Name>Pset_A</Name><Definition>d</Definition>"
    "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n";

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

TEST(StructureRulesTest, ChildrenOfALeftOutElementAreOneFinding) {
    EXPECT_THAT(
        findingLines(
            setOf(std::string(Head) + property("") + "\n" + "<PropertyDef><Name>Q</Name></PropertyDef>")),
        ElementsAre("3:2+11 error S001 \"PropertyDef\" is not known inside \"PropertySetDef\" | "
                    "\"PropertyDef\" belongs inside \"PropertyDefs\", which is missing | \"PropertyDef\" "
                    "belongs there too @4:2 | the library reports: Unknown xml node"));
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><DataType type=\"IfcReal\"/>\n<UnitType type=\"TIMEUNIT\"/>"
                                 "</PropertyType>")),
        ElementsAre(testing::AllOf(
            testing::StartsWith("8:16+8 error S010 \"DataType\" is no kind of property | "
                                "\"DataType\" belongs inside \"TypePropertySingleValue\", which is missing "
                                "| \"UnitType\" belongs there too @9:2"),
            testing::Not(testing::HasSubstr("S006")))));
}

TEST(StructureRulesTest, ManyChildrenOfALeftOutElementAreCounted) {
    std::string properties;
    for (int i = 0; i != 20; ++i)
        properties.append("<PropertyDef/>\n");
    const auto lines = findingLines(setOf(std::string(Head) + properties));
    ASSERT_EQ(lines.size(), 1);
    // The first one and ten others are shown.
    EXPECT_THAT(lines[0], testing::HasSubstr("belongs there too @13:2 | and 9 more | "));
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

TEST(StructureRulesTest, PrefixedAttributesAreFound) {
    const auto text = setWithSingle("<DataType x:type=\"IfcReal\" xmlns:x=\"u\"/>");
    EXPECT_THAT(findingLines(text),
                ElementsAre("8:50+6 error S015 attribute \"x:type\" of \"DataType\" has a prefix; prefixes "
                            "are not supported | write it as \"type\""));
    EXPECT_THAT(test::sMended(text), testing::HasSubstr("<DataType type=\"IfcReal\" xmlns:x=\"u\"/>"));
    // Another vocabulary may say more about a set than ours does.
    EXPECT_THAT(findingLines(setWith(property(""), " xmlns:x=\"u\" x:owner=\"me\" xml:lang=\"de\"")),
                IsEmpty());
}

TEST(StructureRulesTest, ValuesAreLookedAt) {
    const auto values = [](std::string_view content) {
        return setWithType("<PropertyType><TypePropertyListValue><ListValue><DataType type=\"IfcReal\"/>"
                           "<Values>\n" +
                           std::string(content) +
                           "</Values></ListValue></TypePropertyListValue></PropertyType>");
    };
    EXPECT_THAT(findingLines(values("<ValueItem>1.0</ValueItem>")), IsEmpty());
    EXPECT_THAT(findingLines(values("<ValueItm>1.0</ValueItm>")),
                ElementsAre("9:2+8 warning S001 \"ValueItm\" is not known inside \"Values\" | did you mean "
                            "\"ValueItem\"? | legal here: \"ValueItem\""));
    EXPECT_THAT(findingLines(values("1.0 2.0")), IsEmpty());
}

TEST(StructureRulesTest, AnOwnerAroundTheElementComesFirst) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"><UnitType type=\"TIMEUNIT\"/></DataType>")),
        ElementsAre("8:66+8 error S001 \"UnitType\" is not known inside \"DataType\" | \"UnitType\" belongs "
                    "inside \"TypePropertySingleValue\""));
}

TEST(StructureRulesTest, ListsThatAreEmptyOrRepeatedAreFound) {
    EXPECT_THAT(findingLines(setWith("")),
                ElementsAre("6:2+12 warning S020 \"PropertyDefs\" is empty, so the set says nothing"));
    EXPECT_THAT(findingLines(setWith(property("") + "</PropertyDefs>\n<PropertyDefs>")),
                ElementsAre("8:2+12 note S021 \"PropertyDefs\" is repeated | the first one is here @6:2"));
    EXPECT_THAT(findingLines(setWith("</PropertyDefs>\n<PropertyDefs>" + property(""))),
                ElementsAre("8:2+12 note S021 \"PropertyDefs\" is repeated | the first one is here @6:2"));
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
