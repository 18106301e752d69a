#include "Kit/Findings/Rules/Structure/FixedValues.h"

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
using test::quantitiesWithType;
using test::setWith;
using test::setWithSingle;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(FixedValuesTest, ATemplateTypeHasLegalValues) {
    const auto lines = findingLines(setWith(property(""), " templatetype=\"PSET_TYPEDRIVENONLYX\""));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("1:31+20 error S007 \"PSET_TYPEDRIVENONLYX\" is no template type | did "
                                    "you mean \"PSET_TYPEDRIVENONLY\"? | legal values: "));
    EXPECT_THAT(lines[0], testing::EndsWith("| the library reports: Illegal templatetype used"));
}

TEST(FixedValuesTest, AnEmptyTemplateTypeIsNone) {
    EXPECT_THAT(
        findingLines(setWith(property(""), " templatetype=\"\"")),
        ElementsAre(testing::StartsWith(
            "1:17+12 warning S007 the template type is empty | legal values: \"PSET_TYPEDRIVENONLY\"")));
}

TEST(FixedValuesTest, UnitsAreThoseOfTheSchema) {
    EXPECT_THAT(findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType type=\"FORCEUNIT\"/>")),
                ElementsAre("8:82+9 error S008 \"FORCEUNIT\" is no type of unit | legal values: the items of "
                            "IfcUnitEnum and IfcDerivedUnitEnum, such as \"AREAUNIT\" and \"USERDEFINED\""));
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcReal\"/><UnitType type=\"\"/>")),
        ElementsAre("8:76+4 note S022 the type of the unit is empty | leave \"UnitType\" out where there "
                    "is no unit"));
}

TEST(FixedValuesTest, ABlankAfterAUnitIsMended) {
    const auto text = setWithSingle("<DataType type=\"IfcLengthMeasure\"/><UnitType type=\"LENGTHUNIT \"/>");
    EXPECT_THAT(
        findingLines(text),
        ElementsAre("8:91+11 error S019 type of unit \"LENGTHUNIT\" has white space around it | write it as "
                    "\"LENGTHUNIT\" | the library reports: Name should not end with space"));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

TEST(FixedValuesTest, AQuantityTypeIsMended) {
    for (const std::string_view type : {" Q_AREA", "Q_AREA\n", "q_area", "IfcQuantityArea", "Q_AREAS"}) {
        const auto text = quantitiesWithType("<QtoType>" + std::string(type) + "</QtoType>");
        EXPECT_EQ(findingLines(text).size(), 1) << type;
        EXPECT_THAT(test::sMended(text), testing::HasSubstr("<QtoType>Q_AREA</QtoType>")) << type;
    }
}

TEST(FixedValuesTest, AnEmptyQuantityTypeIsFound) {
    const auto lines = findingLines(quantitiesWithType("<QtoType/>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("8:2+7 error S009 the type of the quantity is empty | legal values: "));
    EXPECT_THAT(lines[0], testing::EndsWith("the library reports: Child not found"));
}

TEST(FixedValuesTest, TheUnitOfTheMeasureIsNamed) {
    EXPECT_THAT(
        findingLines(setWithSingle("<DataType type=\"IfcLengthMeasure\"/><UnitType type=\"METRE\"/>")),
        ElementsAre(
            "8:91+5 error S008 \"METRE\" is no type of unit | the unit of the measure is \"LENGTHUNIT\" | "
            "legal values: the items of IfcUnitEnum and IfcDerivedUnitEnum, such as \"AREAUNIT\" and "
            "\"USERDEFINED\""));
    // What is clearly misspelt is that, whatever the measure is.
    const auto lines =
        findingLines(setWithSingle("<DataType type=\"IfcLengthMeasure\"/><UnitType type=\"AREAUNITS\"/>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0], testing::HasSubstr(" | did you mean \"AREAUNIT\"? | "));
}

TEST(FixedValuesTest, AHeightIsALength) {
    const auto text = quantitiesWithType("<QtoType>Q_HEIGHT</QtoType>");
    const auto lines = findingLines(text);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0], testing::HasSubstr(" error S009 \"Q_HEIGHT\" is no type of quantity | did you mean "
                                             "\"Q_LENGTH\"? | "));
    EXPECT_EQ(test::sMended(text), text);
}

TEST(FixedValuesTest, LettersOfAnotherScriptAreNamedAndMended) {
    const auto text = quantitiesWithType("<QtoType>Q_AR\u0415A</QtoType>");
    const auto lines = findingLines(text);
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0], testing::HasSubstr(" | did you mean \"Q_AREA\"? | "));
    EXPECT_THAT(lines[0],
                testing::HasSubstr(" | character 5 is U+0415, a letter of Cyrillic that looks like \"E\""));
    EXPECT_THAT(findingLines(test::sMended(text)), IsEmpty());
}

} // namespace

} // namespace kiv::kit
