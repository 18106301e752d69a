#include "Kit/Findings/Rules/Structure/UnknownElements.h"

#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Structure/StructureTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using test::findingLines;
using test::Head;
using test::property;
using test::setOf;
using test::setWith;
using test::setWithSingle;
using test::setWithType;
using test::Single;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(UnknownElementsTest, AnUnknownElementIsExplained) {
    EXPECT_THAT(
        findingLines(setWith(property("\n <NameAliass/>"))),
        ElementsAre(
            "8:3+10 error S001 \"NameAliass\" is not known inside \"PropertyDef\" | did you mean "
            "\"NameAliases\"? | legal here: \"Name\", \"Definition\", \"PropertyType\", \"NameAliases\", "
            "\"DefinitionAliases\" and \"ValueDef\" | the library reports: Unknown xml node"));
}

TEST(UnknownElementsTest, AnElementInTheWrongPlaceIsSentToTheRightOne) {
    EXPECT_THAT(
        findingLines(setWith("<ClassName>IfcWall</ClassName>")),
        ElementsAre("7:2+9 error S001 \"ClassName\" is not known inside \"PropertyDefs\" | \"ClassName\" "
                    "belongs inside \"ApplicableClasses\""));
}

TEST(UnknownElementsTest, WhatIsInsideAnUnknownElementIsNotLookedAt) {
    EXPECT_THAT(findingLines(setWith("<Foo><Bar/><PropertyDef/></Foo>")),
                ElementsAre("7:2+3 error S001 \"Foo\" is not known inside \"PropertyDefs\" | legal here: "
                            "\"PropertyDef\""));
}

TEST(UnknownElementsTest, AnItemOfAnotherNameIsReadAllTheSame) {
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertyEnumeratedValue>\n<EnumList name=\"PEnum_A\">"
                                 "<Item>X</Item></EnumList></TypePropertyEnumeratedValue></PropertyType>")),
        ElementsAre("9:27+4 warning S001 \"Item\" is not known inside \"EnumList\" | did you mean "
                    "\"EnumItem\"? | legal here: \"EnumItem\""));
}

TEST(UnknownElementsTest, OnlyTheFirstKindCounts) {
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertySingleValue><DataType type=\"IfcReal\"/>"
                                 "</TypePropertySingleValue>\n<TypePropertyListValue/></PropertyType>")),
        ElementsAre("9:2+21 error S006 \"TypePropertyListValue\" is a second kind of the property; only the "
                    "first one counts | this one counts @8:16"));
}

TEST(UnknownElementsTest, PartsAfterTheirKindBelongInside) {
    EXPECT_THAT(
        findingLines(
            setWithType("<PropertyType><TypePropertySingleValue/>\n<DataType "
                        "type=\"IfcLengthMeasure\"/>\n<UnitType type=\"LENGTHUNIT\"/></PropertyType>")),
        ElementsAre(
            "9:2+8 error S001 \"DataType\" is not known inside \"PropertyType\" | \"DataType\" belongs "
            "inside \"TypePropertySingleValue\" @8:16 | \"UnitType\" belongs there too @10:2"));
    EXPECT_THAT(findingLines(setWithType("<PropertyType><TypePropertySingleValue><DataType type=\"IfcReal\"/>"
                                         "</TypePropertySingleValue>\n<Foo/></PropertyType>")),
                ElementsAre("9:2+3 error S001 \"Foo\" is not known inside \"PropertyType\" | only the first "
                            "element inside counts @8:16"));
}

TEST(UnknownElementsTest, PartsOfAnotherKindNameIt) {
    const auto lines = findingLines(
        setWithSingle("\n<EnumList name=\"PEnum_A\"><EnumItem>A</EnumItem></EnumList>\n<ConstantList/>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith(
                    "9:2+8 error S001 \"EnumList\" is not known inside \"TypePropertySingleValue\" | "
                    "\"EnumList\" belongs inside \"TypePropertyEnumeratedValue\" | the kind of the "
                    "property would be \"TypePropertyEnumeratedValue\" | \"ConstantList\" belongs there "
                    "too @10:2"));
}

TEST(UnknownElementsTest, AnUnknownKindIsExplained) {
    const auto lines = findingLines(setWithType("<PropertyType><TypePropertySimpleValue/></PropertyType>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("8:16+23 error S010 \"TypePropertySimpleValue\" is no kind of property"));
    EXPECT_THAT(lines[0], testing::EndsWith("the library reports: Unknown node"));
}

TEST(UnknownElementsTest, PrefixesAreRemoved) {
    const auto text = setWith("<PropertyDef><x:Name xmlns:x=\"u\">P</x:Name><Definition>d</Definition>" +
                              std::string(Single) + "</PropertyDef>");
    EXPECT_THAT(findingLines(text),
                ElementsAre("7:15+6 error S015 \"x:Name\" has a prefix; prefixes are not supported "
                            "| write it as \"Name\" | the library reports: Unknown xml node"));
    EXPECT_THAT(test::sMended(text), testing::HasSubstr("<Name xmlns:x=\"u\">P</Name>"));
}

TEST(UnknownElementsTest, QuantitiesInAPropertySetAreFoundOnce) {
    EXPECT_THAT(
        findingLines(setWith("<QtoDef><Name>Q</Name><QtoType>Q_AREA</QtoType></QtoDef>")),
        ElementsAre("7:2+6 error S018 \"QtoDef\" belongs to quantity sets; this is a property set | here it "
                    "would be \"PropertyDef\""));
}

TEST(UnknownElementsTest, IgnoredContentIsLeftAlone) {
    EXPECT_THAT(findingLines(setOf(std::string(Head) +
                                   "<Applicability>text<Foo bar=\"1\"/></Applicability><PropertyDefs>" +
                                   property("") + "</PropertyDefs>")),
                IsEmpty());
}

TEST(UnknownElementsTest, ChildrenOfALeftOutElementAreOneFinding) {
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

TEST(UnknownElementsTest, ManyChildrenOfALeftOutElementAreCounted) {
    std::string properties;
    for (int i = 0; i != 20; ++i)
        properties.append("<PropertyDef/>\n");
    const auto lines = findingLines(setOf(std::string(Head) + properties));
    ASSERT_EQ(lines.size(), 1);
    // The first one and ten others are shown.
    EXPECT_THAT(lines[0], testing::HasSubstr("belongs there too @13:2 | and 9 more | "));
}

TEST(UnknownElementsTest, ValuesAreLookedAt) {
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

/// Of older documents: nobody reads it.
TEST(UnknownElementsTest, ValueDefIsLookedAt) {
    const auto valueDef = [](std::string_view content) {
        return setWith(property("<ValueDef>\n" + std::string(content) + "</ValueDef>"));
    };
    EXPECT_THAT(findingLines(valueDef("<MinValue value=\"0\"/><MaxValue value=\"?\"/><DefaultValue/>")),
                IsEmpty());
    EXPECT_THAT(findingLines(valueDef("")), IsEmpty());
    const std::string legal = " | legal here: \"MinValue\", \"MaxValue\" and \"DefaultValue\"";
    EXPECT_THAT(findingLines(valueDef("<MinVal value=\"0\"/>")),
                ElementsAre("8:2+6 warning S001 \"MinVal\" is not known inside \"ValueDef\" | did you mean "
                            "\"MinValue\"?" +
                            legal));
    EXPECT_THAT(findingLines(valueDef("<Foo bar=\"1\"/>")),
                ElementsAre("8:2+3 warning S001 \"Foo\" is not known inside \"ValueDef\"" + legal));
    EXPECT_THAT(
        findingLines(valueDef("<maxValue value=\"0\"/>")),
        ElementsAre("8:2+8 warning S003 \"maxValue\" inside \"ValueDef\" is written in another letter "
                    "case | write it as \"MaxValue\""));
    EXPECT_THAT(
        findingLines(valueDef("<MinValue valu=\"0\"/>")),
        ElementsAre("8:11+4 warning S002 attribute \"valu\" of \"MinValue\" is not known | did you mean "
                    "\"value\"? | legal here: \"value\""));
    EXPECT_THAT(findingLines(valueDef("0..1")),
                ElementsAre("8:1+4 warning S016 there is text inside \"ValueDef\", where elements belong"));
    EXPECT_THAT(findingLines(valueDef("<MinValue>0</MinValue>")),
                ElementsAre("8:11+1 warning S016 there is text inside \"MinValue\", where none belongs | its "
                            "value belongs in the attribute \"value\""));
}

TEST(UnknownElementsTest, AnOwnerAroundTheElementComesFirst) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"><UnitType type=\"TIMEUNIT\"/></DataType>")),
        ElementsAre("8:66+8 error S001 \"UnitType\" is not known inside \"DataType\" | \"UnitType\" belongs "
                    "inside \"TypePropertySingleValue\""));
}

TEST(UnknownElementsTest, AnEnumerationHasNoType) {
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertyEnumeratedValue><DataType type=\"IfcLabel\"/>"
                                 "</TypePropertyEnumeratedValue></PropertyType>")),
        ElementsAre(
            testing::StartsWith("8:45+8 error S001 \"DataType\" is not known inside "
                                "\"TypePropertyEnumeratedValue\" | an enumeration has no type: its items "
                                "belong inside \"EnumList\"")));
}

TEST(UnknownElementsTest, AComplexPropertyHasItsPropertiesDirectlyInside) {
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypeComplexProperty name=\"CP_A\"><PropertyDefs>" +
                                 property("") + "</PropertyDefs></TypeComplexProperty></PropertyType>")),
        ElementsAre(
            testing::StartsWith("8:49+12 error S001 \"PropertyDefs\" is not known inside "
                                "\"TypeComplexProperty\" | each \"PropertyDef\" belongs directly inside "
                                "\"TypeComplexProperty\"")));
}

} // namespace

} // namespace kiv::kit
