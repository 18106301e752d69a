#include "Kit/Findings/Rules/Structure/ElementCounts.h"

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
using test::setWithType;
using testing::ElementsAre;

TEST(ElementCountsTest, AMissingTypeIsOneFinding) {
    EXPECT_THAT(findingLines(setWithType("")),
                ElementsAre("7:2+11 error S004 the property has no type: there is no \"PropertyType\""));
    EXPECT_THAT(findingLines(setWithType("<PropertyTyp/>")).size(), 1);
    EXPECT_THAT(findingLines(quantitiesWithType("")),
                ElementsAre("7:2+6 error S004 the quantity has no type: there is no \"QtoType\""));
}

TEST(ElementCountsTest, AnEmptyTypeIsFound) {
    const auto lines = findingLines(setWithType("<PropertyType> </PropertyType>"));
    ASSERT_EQ(lines.size(), 1);
    EXPECT_THAT(lines[0],
                testing::StartsWith("8:2+12 error S004 the property has no type: \"PropertyType\" is empty"));
}

TEST(ElementCountsTest, ARepeatedElementNamesTheOneThatIsLost) {
    EXPECT_THAT(
        findingLines(setWith(property("\n<Name>Q</Name>"))),
        ElementsAre("8:2+4 error S006 \"Name\" is repeated; only the last one counts | this one does not "
                    "count @7:15"));
}

/// Readers keep what the others say, but of types take the last one, and what is missing in it is the same
/// mistake.
TEST(ElementCountsTest, AnEmptyOneLeavesWhatTheOthersSay) {
    const auto line = [](const std::string& place, const std::string& name, const std::string& other) {
        return place + " S006 \"" + name + "\" is repeated, and this one is empty | this one counts @" +
               other;
    };
    const auto recorded = std::string(" | the library reports: Unknown xml node");
    EXPECT_THAT(findingLines(setWith(property("\n<Name/>"))),
                ElementsAre(line("8:2+4 warning", "Name", "7:15")));
    EXPECT_THAT(findingLines(setWithSingle("<DataType type=\"IfcReal\"/><DataType/>")),
                ElementsAre(line("8:67+8 warning", "DataType", "8:41")));
    EXPECT_THAT(findingLines(setWithSingle(
                    "<DataType type=\"IfcLengthMeasure\"/><UnitType type=\"LENGTHUNIT\"/><UnitType/>")),
                ElementsAre(line("8:105+8 error", "UnitType", "8:76") + recorded +
                            " | the library reports: Could not find attribute"));
    EXPECT_THAT(
        findingLines(setWithType("<PropertyType><TypePropertyBoundedValue><ValueRangeDef><LowerBoundValue "
                                 "value=\"0.5\"/><LowerBoundValue/></ValueRangeDef><DataType "
                                 "type=\"IfcReal\"/></TypePropertyBoundedValue></PropertyType>")),
        ElementsAre(line("8:87+15 warning", "LowerBoundValue", "8:57")));
    EXPECT_THAT(findingLines(test::setOf("<IfcVersion version=\"IFC4\"/>" + std::string(test::Head) +
                                         "<PropertyDefs>" + property("") + "</PropertyDefs>")),
                ElementsAre(testing::StartsWith("2:30+10 error S006 \"IfcVersion\" is repeated; only")));
    EXPECT_THAT(findingLines(test::setOf("<IfcVersion/>" + std::string(test::Head) + "<PropertyDefs>" +
                                         property("") + "</PropertyDefs>")),
                ElementsAre(line("2:2+10 error", "IfcVersion", "2:15") + recorded));
}

TEST(ElementCountsTest, TheLastTypeCountsEvenWhenItIsEmpty) {
    const auto line = [](const std::string& name, const std::string& more) {
        return "9:2+" + std::to_string(name.size()) + " error S006 \"" + name +
               "\" is repeated; only the last one counts" + more + " | this one does not count @8:2";
    };
    const std::string single(test::Single);
    EXPECT_THAT(findingLines(setWithType("<PropertyType/>\n" + single)),
                ElementsAre(line("PropertyType", "")));
    EXPECT_THAT(findingLines(setWithType(single + "\n<PropertyType/>")),
                ElementsAre(line("PropertyType", ", and it is empty")));
    const auto asserted = testing::HasSubstr(" | the library reports: ");
    EXPECT_THAT(findingLines(quantitiesWithType("<QtoType/>\n<QtoType>Q_AREA</QtoType>")),
                ElementsAre(testing::AllOf(testing::StartsWith(line("QtoType", "")), asserted)));
    EXPECT_THAT(
        findingLines(quantitiesWithType("<QtoType>Q_AREA</QtoType>\n<QtoType/>")),
        ElementsAre(testing::AllOf(testing::StartsWith(line("QtoType", ", and it is empty")), asserted)));
}

TEST(ElementCountsTest, OfListsThatAreJoinedWhatIsLostIsNamed) {
    const auto lines = [](std::string_view kind, std::string_view first, std::string_view second) {
        const std::string name(kind);
        return findingLines(setWithType("<PropertyType><" + name + ">\n" + std::string(first) + "\n" +
                                        std::string(second) + "</" + name + "></PropertyType>"));
    };
    const auto lost = [](const std::string& size, const std::string& list, const std::string& what) {
        return "10:2+" + size + " error S006 \"" + list + "\" is repeated; only " + what +
               " of the last one counts | " + what + " of this one is lost @9:2";
    };
    const auto joined = [](const std::string& size, const std::string& list) {
        return "10:2+" + size + " note S021 \"" + list + "\" is repeated | the one before is here @9:2";
    };
    constexpr std::string_view Enumerated = "TypePropertyEnumeratedValue";
    constexpr std::string_view ListOfA = "<EnumList name=\"A\"><EnumItem>X</EnumItem></EnumList>";
    EXPECT_THAT(lines(Enumerated, ListOfA, "<EnumList name=\"B\"><EnumItem>Y</EnumItem></EnumList>"),
                ElementsAre(lost("8", "EnumList", "the name")));
    EXPECT_THAT(lines(Enumerated, ListOfA, "<EnumList><EnumItem>Y</EnumItem></EnumList>"),
                ElementsAre(lost("8", "EnumList", "the name")));
    EXPECT_THAT(lines(Enumerated, "<EnumList name=\"A\"/>", ListOfA), ElementsAre(joined("8", "EnumList")));
    EXPECT_THAT(lines(Enumerated, "<EnumList/>", ListOfA), ElementsAre(joined("8", "EnumList")));
    constexpr std::string_view Bounded = "TypePropertyBoundedValue";
    constexpr std::string_view Upper = "<ValueRangeDef><UpperBoundValue value=\"2\"/></ValueRangeDef>";
    EXPECT_THAT(lines(Bounded, Upper,
                      "<ValueRangeDef><UpperBoundValue value=\"3\"/></ValueRangeDef><DataType "
                      "type=\"IfcReal\"/>"),
                ElementsAre(lost("13", "ValueRangeDef", "the \"UpperBoundValue\"")));
    EXPECT_THAT(lines(Bounded, Upper,
                      "<ValueRangeDef><LowerBoundValue value=\"1\"/></ValueRangeDef><DataType "
                      "type=\"IfcReal\"/>"),
                ElementsAre(joined("13", "ValueRangeDef")));
    constexpr std::string_view Label = "<ListValue><DataType type=\"IfcLabel\"/></ListValue>";
    EXPECT_THAT(
        lines("TypePropertyListValue", "<ListValue><DataType type=\"IfcReal\"/></ListValue>", Label),
        ElementsAre("10:2+9 warning S006 \"ListValue\" is repeated; only the type of the last one counts "
                    "| this one is of another type @9:2"));
    // As this library writes a list.
    EXPECT_THAT(lines("TypePropertyListValue", Label, Label), testing::IsEmpty());
}

TEST(ElementCountsTest, ListsThatAreEmptyOrRepeatedAreFound) {
    EXPECT_THAT(findingLines(setWith("")),
                ElementsAre("6:2+12 warning S020 \"PropertyDefs\" is empty, so the set says nothing"));
    EXPECT_THAT(findingLines(setWith(property("") + "</PropertyDefs>\n<PropertyDefs>")),
                ElementsAre("8:2+12 note S021 \"PropertyDefs\" is repeated | the first one is here @6:2"));
    EXPECT_THAT(findingLines(setWith("</PropertyDefs>\n<PropertyDefs>" + property(""))),
                ElementsAre("8:2+12 note S021 \"PropertyDefs\" is repeated | the first one is here @6:2"));
}

TEST(ElementCountsTest, AComplexPropertyHasProperties) {
    for (const std::string_view content : {"", "\n"})
        EXPECT_THAT(test::findingLines(test::setWithType("<PropertyType><TypeComplexProperty name=\"CP_A\">" +
                                                         std::string(content) +
                                                         "</TypeComplexProperty></PropertyType>")),
                    testing::ElementsAre(
                        "8:16+19 warning S020 the complex property has no properties, so it says nothing"))
            << content;
    EXPECT_THAT(
        test::findingLines(test::setWithType("<PropertyType><TypeComplexProperty name=\"CP_A\">" +
                                             test::property("") + "</TypeComplexProperty></PropertyType>")),
        testing::IsEmpty());
}

} // namespace

} // namespace kiv::kit
