#include "Kit/Findings/Rules/Structure/ElementAttributes.h"

#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Structure/StructureTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

using test::findingLines;
using test::property;
using test::setWith;
using test::setWithSingle;
using test::setWithType;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(ElementAttributesTest, AnUnknownAttributeIsExplained) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\" unit=\"m\"/>")),
        ElementsAre(
            "8:65+4 error S002 attribute \"unit\" of \"DataType\" is not known | legal here: \"type\""));
    EXPECT_THAT(findingLines(setWith(property(""), " xsi:schemaLocation=\"x\" xmlns:xsi=\"y\"")), IsEmpty());
}

TEST(ElementAttributesTest, SeveralStrangeAttributesAreOneMistake) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\" unit=\"m\" factor=\"2\"/>")),
        ElementsAre(
            "8:65+4 error S002 attribute \"unit\" of \"DataType\" is not known | legal here: \"type\" | nor "
            "is \"factor\" @8:74"));
}

TEST(ElementAttributesTest, OfThousandsOfStrangeAttributesAFewAreShown) {
    std::string attributes;
    for (int number = 0; number != 5'000; ++number)
        attributes += " q" + std::to_string(number) + "=\"\"";
    const auto findings =
        test::exampleFindings(setWithSingle("<DataType type=\"IfcReal\"" + attributes + "/>"));
    ASSERT_EQ(findings.size(), 1);
    // Those that are legal, ten of the 4999 others, and how many are left.
    ASSERT_EQ(findings[0].notes.size(), 12U);
    EXPECT_EQ(findings[0].notes.back().message, "and 4989 more");
}

TEST(ElementAttributesTest, WhatIsNotThereMayHaveBeenMeant) {
    const auto lines = findingLines(setWithSingle("<DataType value=\"IfcReal\"/>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0], testing::StartsWith(
                              "8:50+5 error S002 attribute \"value\" of \"DataType\" is not known | there "
                              "is no \"type\"; was it meant? | legal here: \"type\""));
    const auto text = findingLines(test::quantitiesWithType("<QtoType type=\"Q_AREA\"/>"));
    ASSERT_EQ(text.size(), 1);
    EXPECT_THAT(text[0], testing::HasSubstr(" | the value of \"QtoType\" is the text between its tags | "));
}

TEST(ElementAttributesTest, AnAttributeAsAnElementIsOneMistake) {
    const auto lines = findingLines(setWithType("<PropertyType><TypePropertyEnumeratedValue><EnumList><Name>"
                                                "PEnum_A</Name><EnumItem>X</EnumItem></EnumList>"
                                                "</TypePropertyEnumeratedValue></PropertyType>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0], testing::StartsWith(
                              "8:55+4 warning S001 \"Name\" is not known inside \"EnumList\" | it is an "
                              "attribute of \"EnumList\": name=\"...\""));
}

TEST(ElementAttributesTest, TheElementThatWasMeantIsNamed) {
    EXPECT_THAT(
        findingLines(setWith("<PropertyDef name=\"P\"><Definition>d</Definition>" +
                             std::string(test::Single) + "</PropertyDef>")),
        ElementsAre("7:14+4 error S002 attribute \"name\" of \"PropertyDef\" is not known | it belongs in "
                    "an element \"Name\" | legal here: \"ifdguid\""));
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertySingleValue type=\"IfcReal\"/></PropertyType>")),
        ElementsAre("8:40+4 error S002 attribute \"type\" of \"TypePropertySingleValue\" is not known | "
                    "it belongs in an element \"DataType\" | \"TypePropertySingleValue\" has no "
                    "attributes"));
    // The name is there already.
    EXPECT_THAT(
        findingLines(setWith("<PropertyDef name=\"P\"><Name>P</Name><Definition>d</Definition>" +
                             std::string(test::Single) + "</PropertyDef>")),
        ElementsAre("7:14+4 error S002 attribute \"name\" of \"PropertyDef\" is not known | legal here: "
                    "\"ifdguid\""));
}

TEST(ElementAttributesTest, AMissingAttributeTakesBothReportsOver) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType/>")),
        ElementsAre(
            "8:67+8 error S005 the unit has no \"type\" | the library reports: Unknown xml node | the "
            "library reports: Could not find attribute"));
}

TEST(ElementAttributesTest, AMisspeltAttributeIsTheOneMistake) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType typ=\"TIMEUNIT\"/>")),
        ElementsAre(
            "8:76+3 error S002 attribute \"typ\" of \"UnitType\" is not known | did you mean "
            "\"type\"? | legal here: \"type\" and \"currencytype\" | the library reports: Unknown xml "
            "node | the library reports: Could not find attribute"));
}

TEST(ElementAttributesTest, ABoundHasAValue) {
    const auto bounded = [](std::string_view attributes) {
        return setWithType("<PropertyType><TypePropertyBoundedValue><ValueRangeDef><LowerBoundValue" +
                           std::string(attributes) +
                           "/></ValueRangeDef><DataType type=\"IfcReal\"/></TypePropertyBoundedValue>"
                           "</PropertyType>");
    };
    EXPECT_THAT(findingLines(bounded(" value=\"0\"")), IsEmpty());
    EXPECT_THAT(findingLines(bounded("")), ElementsAre("8:57+15 warning S005 the bound has no \"value\""));
    for (const auto* const value : {" value=\"\"", " value=\" \""})
        EXPECT_THAT(findingLines(bounded(value)), testing::SizeIs(1));
    EXPECT_THAT(findingLines(bounded(" value=\"\"")),
                ElementsAre("8:73+5 warning S005 the \"value\" of the bound is empty"));
}

TEST(ElementAttributesTest, AComplexPropertySaysWhatItIsUsedFor) {
    const auto complex = [](std::string_view attributes) {
        return setWithType("<PropertyType><TypeComplexProperty" + std::string(attributes) + ">" +
                           test::property("") + "</TypeComplexProperty></PropertyType>");
    };
    EXPECT_THAT(findingLines(complex(" name=\"A\"")), IsEmpty());
    EXPECT_THAT(
        findingLines(complex("")),
        ElementsAre("8:16+19 warning S005 the complex property has no \"name\", so nothing says what it "
                    "is used for"));
    EXPECT_THAT(
        findingLines(complex(" name=\"\"")),
        ElementsAre("8:36+4 warning S005 the name of the complex property is empty, so nothing says what "
                    "it is used for"));
    EXPECT_THAT(
        findingLines(complex(" name=\"A \"")),
        ElementsAre("8:42+2 warning N004 the name of the complex property \"A\" has white space around "
                    "it"));
    EXPECT_THAT(findingLines(complex(" Name=\"A\"")),
                ElementsAre("8:36+4 error S003 attribute \"Name\" of \"TypeComplexProperty\" is written in "
                            "another letter case | write it as \"name\""));
}

TEST(ElementAttributesTest, PrefixedAttributesAreFound) {
    const auto text = setWithSingle("<DataType x:type=\"IfcReal\" xmlns:x=\"u\"/>");
    EXPECT_THAT(findingLines(text),
                ElementsAre("8:50+6 error S015 attribute \"x:type\" of \"DataType\" has a prefix; prefixes "
                            "are not supported | write it as \"type\""));
    EXPECT_THAT(test::sMended(text), testing::HasSubstr("<DataType type=\"IfcReal\" xmlns:x=\"u\"/>"));
    // Another vocabulary may say more about a set than ours does.
    EXPECT_THAT(findingLines(setWith(property(""), " xmlns:x=\"u\" x:owner=\"me\" xml:lang=\"de\"")),
                IsEmpty());
}

} // namespace

} // namespace kiv::kit
