#include "Kit/Findings/Rules/TypeRules.h"

#include "../FindingLines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A set with one property, whose kind begins in line 5, column 1.
std::string sSetOf(std::string_view kind) {
    return "<PropertySetDef>\n"
           "<IfcVersion version=\"IFC4\"/><Name>A</Name><Definition>B</Definition>\n"
           "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>\n"
           "<PropertyDefs><PropertyDef><Name>P</Name><Definition>D</Definition><PropertyType>\n" +
           std::string(kind) + "\n</PropertyType></PropertyDef></PropertyDefs>\n</PropertySetDef>\n";
}

/// "<TypePropertySingleValue>" has 25 characters, so that the type begins in column 42.
std::string sSingle(std::string_view type, std::string_view more = {}) {
    return sSetOf("<TypePropertySingleValue><DataType type=\"" + std::string(type) + "\"/>" +
                  std::string(more) + "</TypePropertySingleValue>");
}

/// The lower bound begins in column 66, the upper bound 27 columns after its end.
std::string sBounded(std::string_view type, std::string_view lower, std::string_view upper) {
    return sSetOf("<TypePropertyBoundedValue><ValueRangeDef><LowerBoundValue value=\"" + std::string(lower) +
                  "\"/><UpperBoundValue value=\"" + std::string(upper) +
                  "\"/></ValueRangeDef><DataType type=\"" + std::string(type) +
                  "\"/></TypePropertyBoundedValue>");
}

struct TypeCase {
    const char* about;
    std::string document;
    std::vector<std::string> findings;
};

void PrintTo(const TypeCase& row, std::ostream* out) {
    *out << row.about;
}

class TypeRulesTest : public testing::TestWithParam<TypeCase> {};

TEST_P(TypeRulesTest, FindsExactly) {
    EXPECT_EQ(test::findingLines(GetParam().document), GetParam().findings);
}

const std::string Asserted = " | the library reports: Excpeted name to exist in schema";

/// The items of an enumeration, or what else is in its list; the first begins in column 55.
std::string sItems(std::string_view items, std::string_view constants = {}) {
    return sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"PEnum_A\">" + std::string(items) +
                  "</EnumList>" + std::string(constants) + "</TypePropertyEnumeratedValue>");
}

std::string sColumn(std::string_view tag, std::string_view items) {
    const std::string name(tag);
    return "<" + name + "><DataType type=\"IfcReal\"/><Values>" + std::string(items) + "</Values></" + name +
           ">";
}

INSTANTIATE_TEST_SUITE_P(
    Contents, TypeRulesTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"a unit of a text",
         sSingle("IfcLabel", "<UnitType type=\"LENGTHUNIT\"/>"),
         {"5:69+10 warning T017 values of IfcLabel have no unit, and \"LENGTHUNIT\" is given"}},
        {"an empty unit of a text is no unit",
         sSingle("IfcLabel", "<UnitType type=\"\"/>"),
         {"5:63+4 note S022 the type of the unit is empty | leave \"UnitType\" out where there is no unit"}},
        {"a unit of a plain number", sSingle("IfcReal", "<UnitType type=\"LENGTHUNIT\"/>"), {}},
        {"columns of different length",
         sSetOf("<TypePropertyTableValue>" + sColumn("DefiningValue", "<ValueItem>1</ValueItem>") +
                sColumn("DefinedValue", "<ValueItem>1</ValueItem><ValueItem>2</ValueItem>") +
                "</TypePropertyTableValue>"),
         {"5:124+12 warning T019 the table has 1 defining and 2 defined values"}},
        {"a column that lists no values",
         sSetOf("<TypePropertyTableValue>" + sColumn("DefiningValue", "<ValueItem>1</ValueItem>") +
                sColumn("DefinedValue", "") + "</TypePropertyTableValue>"),
         {}},
        {"an empty item",
         sItems("<EnumItem>A</EnumItem><EnumItem/>"),
         {"5:78+8 warning T020 the enumeration has an item without text, which is ignored"}},
        {"items in two letter cases",
         sItems("<EnumItem>A</EnumItem><EnumItem>a</EnumItem>"),
         {"5:87+1 warning T021 the items \"A\" and \"a\" differ in letter case only | the first one is here "
          "@5:65"}},
        {"a constant twice",
         sItems("<EnumItem>A</EnumItem>", "<ConstantList><ConstantDef><Name>A</Name></"
                                          "ConstantDef><ConstantDef><Name>A</Name></ConstantDef>"
                                          "</ConstantList>"),
         {"5:162+1 warning T022 the constant \"A\" is described twice | the first one is here @5:121"}},
        {"a blank before an item",
         sItems("<EnumItem> A</EnumItem>"),
         {"5:66+1 note T023 there is white space around the item \"A\""}},
    }));

TEST(TypeRules, BlanksAroundAnItemAreMended) {
    const auto mended = test::sMended(sItems("<EnumItem>\n A </EnumItem>"));
    EXPECT_NE(mended.find("<EnumItem>A</EnumItem>"), std::string::npos) << mended;
    EXPECT_THAT(test::findingLines(mended), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Names, TypeRulesTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"unknown, with the nearest",
         sSingle("IfcLabl"),
         {"5:42+7 error T001 IFC4 has no type \"IfcLabl\" | did you mean \"IfcLabel\"?" + Asserted}},
        {"unknown, and nothing is near",
         sSingle("Quux"),
         {"5:42+4 error T001 IFC4 has no type \"Quux\"" + Asserted}},
        {"code points count, not bytes",
         sSetOf("<TypePropertySingleValue><!-- \xC3\xA4 --><DataType "
                "type=\"\xC3\xA4\xC3\xA4\"/></TypePropertySingleValue>"),
         {"5:52+2 error T001 IFC4 has no type \"\xC3\xA4\xC3\xA4\"" + Asserted}},
        {"in another release",
         sSingle("IfcHourInDay"),
         {"5:42+12 error T002 the type \"IfcHourInDay\" is not in IFC4 but in IFC2X3" + Asserted}},
        {"letter case",
         sSingle("IFCLABEL"),
         {"5:42+8 warning T006 the type \"IFCLABEL\" is written \"IfcLabel\" in IFC4"}},
        {"blanks around",
         sSingle(" IfcLabel "),
         {"5:42+10 error T007 there are blanks around the name of the type \" IfcLabel \"" + Asserted}},
        {"empty", sSingle(""), {"5:36+4 error T008 the data type is empty"}},
        {"no attribute",
         sSetOf("<TypePropertySingleValue><DataType/></TypePropertySingleValue>"),
         {"5:27+8 error T008 \"DataType\" has no attribute \"type\""}},
        {"no element",
         sSetOf("<TypePropertySingleValue></TypePropertySingleValue>"),
         {"5:2+23 error T008 no data type is given: \"TypePropertySingleValue\" has no \"DataType\""}},
        {"a reference to nothing",
         sSetOf("<TypePropertyReferenceValue/>"),
         {"5:2+26 error T008 nothing says what the property refers to: there is no \"reftype\""}},
        {"a reference of an older spelling",
         sSetOf("<TypePropertyReferenceValue><DataType type=\"IfcMaterial\"/></TypePropertyReferenceValue>"),
         {}},
        {"known", sSingle("IfcLabel"), {}},
    }));

INSTANTIATE_TEST_SUITE_P(
    Uses, TypeRulesTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"an entity as a value",
         sSingle("IfcPerson"),
         {"5:42+9 error T003 \"IfcPerson\" is an entity, and a property of this kind has values of a defined "
          "type"
          " | a property that refers to an entity is a \"TypePropertyReferenceValue\""}},
        {"a value as a reference",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcLabel\"/>"),
         {"5:38+8 error T004 \"IfcLabel\" is a defined type, and a reference is to an entity"
          " | a property with values of a defined type is a \"TypePropertySingleValue\""}},
        {"a type that no property holds",
         sSingle("IfcWallTypeEnum"),
         {"5:42+15 warning T005 values of \"IfcWallTypeEnum\" cannot be in a property: IfcValue does not "
          "select "
          "that type"}},
        {"an entity that no property refers to",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcWall\"/>"),
         {"5:38+7 warning T005 a property cannot refer to \"IfcWall\": IfcObjectReferenceSelect does not "
          "select "
          "that entity | it selects \"IfcMaterialDefinition\", \"IfcPerson\" and \"IfcTimeSeries\""}},
        {"a subtype of a selected entity",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcMaterial\"/>"),
         {}},
        {"what a time series is made of",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcTimeSeries\">"
                "<DataType type=\"IfcReal\"/></TypePropertyReferenceValue>"),
         {}},
        {"a time series of nothing",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcTimeSeries\"><DataType/>"
                "</TypePropertyReferenceValue>"),
         {}},
        {"any value",
         sSingle("IfcDerivedMeasureValue"),
         {"5:42+22 warning T018 \"IfcDerivedMeasureValue\" is a SELECT, which leaves open of which type the "
          "values are | it selects \"IfcThermalTransmittanceMeasure\""}},
    }));

INSTANTIATE_TEST_SUITE_P(
    Values, TypeRulesTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"a unit of another measure",
         sSingle("IfcThermalTransmittanceMeasure", "<UnitType type=\"AREAUNIT\"/>"),
         {"5:91+8 warning T016 the unit \"AREAUNIT\" does not fit IfcThermalTransmittanceMeasure"
          " | the unit of IfcThermalTransmittanceMeasure is \"THERMALTRANSMITTANCEUNIT\""}},
        {"the unit along the chain of types",
         sSingle("IfcPositiveLengthMeasure", "<UnitType type=\"LENGTHUNIT\"/>"),
         {}},
        {"a measure without a unit of its own",
         sSingle("IfcCountMeasure", "<UnitType type=\"AREAUNIT\"/>"),
         {}},
        {"a unit of one's own", sSingle("IfcLengthMeasure", "<UnitType type=\"USERDEFINED\"/>"), {}},
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
        {"equal bounds", sBounded("IfcReal", "1.0", "1"), {}},
        {"an unknown bound", sBounded("IfcReal", "0", "?"), {}},
        {"the name of the type where no bound is known", sBounded("IfcReal", "IfcReal", "IfcReal"), {}},
        {"a comma",
         sBounded("IfcReal", "1,5", ""),
         {"5:66+3 warning T015 the value \"1,5\" is not of the type IfcReal, which needs a number"}},
        {"a fraction where an integer belongs",
         sBounded("IfcInteger", "1", "2.5"),
         {"5:94+3 warning T015 the value \"2.5\" is not of the type IfcInteger, which needs an integer"}},
        {"an item of a list",
         sSetOf("<TypePropertyListValue><ListValue><DataType type=\"IfcBoolean\"/><Values>"
                "<ValueItem>.T.</ValueItem><ValueItem>yes</ValueItem></Values></ListValue>"
                "</TypePropertyListValue>"),
         {"5:109+3 warning T015 the value \"yes\" is not of the type IfcBoolean, which needs true or false"}},
    }));

INSTANTIATE_TEST_SUITE_P(
    Parts, TypeRulesTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"an enumeration without items",
         sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"E\"/></TypePropertyEnumeratedValue>"),
         {"5:31+8 warning T009 the enumeration has no items"}},
        {"an enumeration with blank items",
         sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"E\"><EnumItem> </EnumItem></EnumList>"
                "</TypePropertyEnumeratedValue>"),
         {"5:31+8 warning T009 the enumeration has no items"}},
        {"an enumeration without a list",
         sSetOf("<TypePropertyEnumeratedValue/>"),
         {"5:2+27 warning T009 the enumeration has no items: there is no \"EnumList\""}},
        {"an item twice",
         sSetOf("<TypePropertyEnumeratedValue><EnumList name=\"E\"><EnumItem>X</EnumItem>"
                "<EnumItem> X </EnumItem></EnumList></TypePropertyEnumeratedValue>"),
         {"5:82+1 warning T010 the enumeration has the item \"X\" twice | it is here already @5:59"}},
        {"a constant that is no item",
         sSetOf("<TypePropertyEnumeratedValue><EnumList "
                "name=\"E\"><EnumItem>X</EnumItem></EnumList><ConstantList>"
                "<ConstantDef><Name>x</Name></ConstantDef></ConstantList></TypePropertyEnumeratedValue>"),
         {"5:115+1 warning T011 the constant \"x\" is no item of the enumeration | the item is written "
          "\"X\""}},
        {"a table of nothing",
         sSetOf("<TypePropertyTableValue/>"),
         {"5:2+22 note T012 the table has neither \"DefiningValue\" nor \"DefinedValue\", so the types of "
          "its "
          "columns are not known"}},
        {"half a table",
         sSetOf("<TypePropertyTableValue><DefinedValue><DataType type=\"IfcReal\"/></DefinedValue>"
                "</TypePropertyTableValue>"),
         {"5:2+22 warning T012 the table has no \"DefiningValue\", so the types of its columns are not "
          "known"}},
        {"a column without a type",
         sSetOf("<TypePropertyTableValue><DefiningValue/><DefinedValue><DataType "
                "type=\"IfcReal\"/></DefinedValue>"
                "</TypePropertyTableValue>"),
         {"5:26+13 error T008 no data type is given: \"DefiningValue\" has no \"DataType\""}},
        {"a list of nothing",
         sSetOf("<TypePropertyListValue/>"),
         {"5:2+21 error T013 the list has no type: there is no \"DataType\" in a \"ListValue\""}},
    }));

TEST(TypeRules, MendsLetterCaseAndBlanks) {
    EXPECT_EQ(test::sMended(sSingle(" IFCLABEL ")), sSingle("IfcLabel"));
    EXPECT_EQ(test::sMended(sSingle("IFCLABEL")), sSingle("IfcLabel"));
}

TEST(TypeRules, LeavesAMisspeltAttributeToTheRulesOfStructure) {
    const auto findings = test::exampleFindings(
        sSetOf("<TypePropertySingleValue><DataType Type=\"IfcLabel\"/></TypePropertySingleValue>"));
    ASSERT_THAT(findings, testing::SizeIs(1));
    EXPECT_EQ(findings[0].code, "S003");
}

TEST(TypeRules, LeavesAMisspeltElementToTheRulesOfStructure) {
    for (const auto& finding :
         test::exampleFindings(sSetOf("<TypePropertySingleValue><Datatype type=\"IfcLabel\"/>"
                                      "</TypePropertySingleValue>")))
        EXPECT_EQ(finding.code.front(), 'S') << test::sFindingLine(finding);
}

} // namespace

} // namespace kiv::kit
