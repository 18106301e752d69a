#include "Kit/Findings/Rules/Types/TypedValues.h"

#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Types/TypeCases.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using test::sBounded;
using test::sSetOf;
using test::sSingle;
using test::TypeCase;

class TypedValuesTest : public testing::TestWithParam<TypeCase> {};

TEST_P(TypedValuesTest, FindsExactly) {
    EXPECT_EQ(test::findingLines(GetParam().document), GetParam().findings);
}

/// With these inside of "ValueDef", which begin in column 26 of line 6.
std::string sOlder(std::string_view type, std::string_view values) {
    auto text = sSingle(type);
    constexpr std::string_view After = "\n</PropertyType>";
    return text.insert(text.find(After) + After.size(), "<ValueDef>" + std::string(values) + "</ValueDef>");
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TypedValuesTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"a unit of a text",
         sSingle("IfcLabel", "<UnitType type=\"LENGTHUNIT\"/>"),
         {"5:69+10 warning T017 values of IfcLabel have no unit, and \"LENGTHUNIT\" is given"}},
        {"an empty unit of a text is no unit",
         sSingle("IfcLabel", "<UnitType type=\"\"/>"),
         {"5:63+4 note S022 the type of the unit is empty | leave \"UnitType\" out where there is no unit"}},
        {"a unit of a plain number",
         sSingle("IfcReal", "<UnitType type=\"LENGTHUNIT\"/>"),
         {"5:68+10 note T028 the schema has no unit for IfcReal, and \"LENGTHUNIT\" is given"
          " | \"LENGTHUNIT\" is the unit of IfcLengthMeasure"}},
        {"a unit of one's own for a plain number",
         sSingle("IfcReal", "<UnitType type=\"USERDEFINED\"/>"),
         {}},
        {"a unit of another measure",
         sSingle("IfcThermalTransmittanceMeasure", "<UnitType type=\"AREAUNIT\"/>"),
         {"5:91+8 warning T016 the unit \"AREAUNIT\" does not fit IfcThermalTransmittanceMeasure"
          " | the unit of IfcThermalTransmittanceMeasure is \"THERMALTRANSMITTANCEUNIT\""}},
        {"the unit along the chain of types",
         sSingle("IfcPositiveLengthMeasure", "<UnitType type=\"LENGTHUNIT\"/>"),
         {}},
        {"a measure without a unit of its own",
         sSingle("IfcCountMeasure", "<UnitType type=\"AREAUNIT\"/>"),
         {"5:76+8 note T028 the schema has no unit for IfcCountMeasure, and \"AREAUNIT\" is given"
          " | \"AREAUNIT\" is the unit of IfcAreaMeasure"}},
        {"a unit of one's own", sSingle("IfcLengthMeasure", "<UnitType type=\"USERDEFINED\"/>"), {}},
        {"older values that are right",
         sOlder("IfcReal", "<MinValue value=\"?\"/><MaxValue value=\"2\"/><DefaultValue value=\"\"/>"),
         {}},
        {"an older default of another type",
         sOlder("IfcInteger", "<DefaultValue value=\"a\"/>"),
         {"6:47+1 warning T015 the value \"a\" is not of the type IfcInteger, which needs an integer"}},
        {"an older default that a rule forbids",
         sOlder("IfcPositiveLengthMeasure", "<DefaultValue value=\"0\"/>"),
         {"6:47+1 warning T015 the value \"0\" breaks a rule of IfcPositiveLengthMeasure | the rule is SELF "
          "> 0.0"}},
        {"an older least value at the bound",
         sOlder("IfcPositiveLengthMeasure", "<MinValue value=\"0\"/>"),
         {}},
        {"older values in the wrong order",
         sOlder("IfcReal", "<MinValue value=\"5\"/><MaxValue value=\"1\"/>"),
         {"6:43+1 warning T014 the lower bound \"5\" is above the upper bound \"1\" | the upper bound is "
          "here "
          "@6:64"}},
        {"swapped bounds",
         sBounded("IfcReal", "2", "1.5"),
         {"5:66+1 warning T014 the lower bound \"2\" is above the upper bound \"1.5\""
          " | the upper bound is here @5:94"}},
        {"an upper bound out of range", sBounded("IfcReal", "0.5", "1e400"), {}},
        {"a lower bound out of range", sBounded("IfcReal", "-1e999", "-5"), {}},
        {"digits out of range", sBounded("IfcReal", "0.5", "1" + std::string(400, '0')), {}},
        {"a very small bound", sBounded("IfcReal", "0." + std::string(400, '0') + "1", "0.5"), {}},
        {"swapped bounds out of range",
         sBounded("IfcReal", "1E+400", "2.5"),
         {"5:66+6 warning T014 the lower bound \"1E+400\" is above the upper bound \"2.5\""
          " | the upper bound is here @5:99"}},
        {"swapped bounds near to zero",
         sBounded("IfcReal", "0.5", "1e-99999999999999999999"),
         {"5:66+3 warning T014 the lower bound \"0.5\" is above the upper bound \"1e-99999999999999999999\""
          " | the upper bound is here @5:96"}},
        {"swapped bounds of two ranges",
         sSetOf("<TypePropertyBoundedValue><ValueRangeDef><LowerBoundValue value=\"5\"/></ValueRangeDef>"
                "<ValueRangeDef><UpperBoundValue value=\"1\"/></ValueRangeDef><DataType type=\"IfcReal\"/>"
                "</TypePropertyBoundedValue>"),
         {"5:66+1 warning T014 the lower bound \"5\" is above the upper bound \"1\" | the upper bound is "
          "here "
          "@5:125",
          "5:87+13 note S021 \"ValueRangeDef\" is repeated | the one before is here @5:28"}},
        {"swapped dates",
         sBounded("IfcLabel", "2021-01-01", "2020-12-31"),
         {"5:66+10 warning T014 the lower bound \"2021-01-01\" is above the upper bound \"2020-12-31\""
          " | the upper bound is here @5:103"}},
        {"swapped times of a day",
         sBounded("IfcLabel", "2021-01-01T10:00:00Z", "2021-01-01T09:59:00Z"),
         {"5:66+20 warning T014 the lower bound \"2021-01-01T10:00:00Z\" is above the upper bound "
          "\"2021-01-01T09:59:00Z\" | the upper bound is here @5:113"}},
        {"dates in order", sBounded("IfcLabel", "2020-12-31", "2021-01-01"), {}},
        {"equal dates", sBounded("IfcLabel", "2020-12-31", "2020-12-31"), {}},
        {"a night", sBounded("IfcLabel", "22:00:00", "06:00:00"), {}},
        {"times of two zones",
         sBounded("IfcLabel", "2021-01-02T00:00:00+14:00", "2021-01-01T23:00:00-12:00"),
         {}},
        {"a date and a time", sBounded("IfcLabel", "2021-01-01", "2020-12-31T23:59:59"), {}},
        {"words that are no dates", sBounded("IfcLabel", "wide-to-10", "narrow-to9"), {}},
        {"equal bounds", sBounded("IfcReal", "1.0", "1"), {}},
        {"an unknown bound", sBounded("IfcReal", "0", "?"), {}},
        {"the name of the type where no bound is known", sBounded("IfcReal", "IfcReal", "IfcReal"), {}},
        {"a comma",
         sBounded("IfcReal", "1,5", "?"),
         {"5:66+3 warning T015 the value \"1,5\" is not of the type IfcReal, which needs a number"}},
        {"a value that a rule of its type forbids",
         sBounded("IfcPositiveLengthMeasure", "-0.5", "1"),
         {"5:66+4 warning T015 the value \"-0.5\" breaks a rule of IfcPositiveLengthMeasure | the rule is "
          "SELF > "
          "0.0"}},
        {"an upper bound that a rule forbids",
         sBounded("IfcPositiveLengthMeasure", "?", "-1"),
         {"5:94+2 warning T015 the value \"-1\" breaks a rule of IfcPositiveLengthMeasure | the rule is SELF "
          "> "
          "0.0"}},
        {"the bound of a rule", sBounded("IfcPositiveLengthMeasure", "0", "1"), {}},
        {"values that a rule allows", sBounded("IfcPositiveLengthMeasure", "1e-400", "1e400"), {}},
        {"a value that is no number", sBounded("IfcPositiveLengthMeasure", "?", "?"), {}},
        {"a fraction where an integer belongs",
         sBounded("IfcInteger", "1", "2.5"),
         {"5:94+3 warning T015 the value \"2.5\" is not of the type IfcInteger, which needs an integer"}},
        {"an item of a list",
         sSetOf("<TypePropertyListValue><ListValue><DataType type=\"IfcBoolean\"/><Values>"
                "<ValueItem>.T.</ValueItem><ValueItem>yes</ValueItem></Values></ListValue>"
                "</TypePropertyListValue>"),
         {"5:109+3 warning T015 the value \"yes\" is not of the type IfcBoolean, which needs true or false"}},
    }));

/// In a schema with units of its own; what else is found there is left out.
std::vector<std::string> unitLines(std::string_view type, std::string_view unit) {
    std::string text =
        "---- Own.exp\nSCHEMA Own;\nTYPE IfcLengthMeasure = REAL;\nEND_TYPE;\n"
        "TYPE IfcRatioMeasure = REAL;\nEND_TYPE;\nTYPE IfcPositiveRatioMeasure = IfcRatioMeasure;\n"
        "END_TYPE;\nTYPE IfcContextDependentMeasure = REAL;\nEND_TYPE;\n"
        "TYPE IfcMonetaryMeasure = REAL;\nEND_TYPE;\n"
        "TYPE IfcUnitEnum = ENUMERATION OF\n (LENGTHUNIT\n ,FORCEUNIT);\nEND_TYPE;\n"
        "ENTITY IfcContextDependentUnit;\n UnitType : IfcUnitEnum;\nEND_ENTITY;\n"
        "ENTITY IfcMonetaryUnit;\n Currency : IfcUnitEnum;\nEND_ENTITY;\nEND_SCHEMA;\n---- Set.xml\n";
    text += sSingle(type, "<UnitType type=\"" + std::string(unit) + "\"/>");
    std::vector<std::string> lines;
    for (const auto& finding : test::findingsBetween(text)) {
        if (finding.code.starts_with("T0"))
            lines.push_back(test::sFindingLine(finding));
    }
    return lines;
}

TEST(TypedValuesUnits, AUnitOfAnotherMeasureFitsNoneThatHasNone) {
    EXPECT_EQ(
        unitLines("IfcRatioMeasure", "LENGTHUNIT"),
        std::vector<std::string>{"5:76+10 warning T016 the unit \"LENGTHUNIT\" does not fit IfcRatioMeasure"
                                 " | \"LENGTHUNIT\" is the unit of IfcLengthMeasure"});
    EXPECT_EQ(unitLines("IfcPositiveRatioMeasure", "LENGTHUNIT").size(), 1);
    EXPECT_EQ(unitLines("IfcMonetaryMeasure", "LENGTHUNIT").size(), 1);
    // Nothing says of which measure the unit is; and one that depends on the context may be of any.
    EXPECT_TRUE(unitLines("IfcRatioMeasure", "FORCEUNIT").empty());
    EXPECT_TRUE(unitLines("IfcContextDependentMeasure", "LENGTHUNIT").empty());
}

} // namespace

} // namespace kiv::kit
