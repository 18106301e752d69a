#include "Kit/Findings/Rules/TypeRules.h"

#include "Kit/Findings/FindingLines.h"
#include "Kit/Findings/Rules/Types/TypeCases.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

using test::sSetOf;
using test::sSingle;
using test::TypeCase;

class TypeRulesTest : public testing::TestWithParam<TypeCase> {};

TEST_P(TypeRulesTest, FindsExactly) {
    EXPECT_EQ(test::findingLines(GetParam().document), GetParam().findings);
}

const std::string Asserted = " | the library reports: Excpeted name to exist in schema";

std::string sColumn(std::string_view tag, std::string_view items) {
    const std::string name(tag);
    return "<" + name + "><DataType type=\"IfcReal\"/><Values>" + std::string(items) + "</Values></" + name +
           ">";
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
        {"unknown where only an entity can be meant",
         sSetOf("<TypePropertyReferenceValue><DataType type=\"IfcPersn\"/></TypePropertyReferenceValue>"),
         {"5:45+8 error T001 IFC4 has no entity \"IfcPersn\" | did you mean \"IfcPerson\"?" + Asserted}},
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
        {"empty beside the entity",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcPerson\"><DataType type=\"\"/>"
                "</TypePropertyReferenceValue>"),
         {"5:59+4 error T008 the data type is empty, and readers take it in place of \"reftype\""}},
        {"not given beside the entity",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcPerson\"><DataType/></TypePropertyReferenceValue>"),
         {}},
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
        {"a value of what has none",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcPerson\"><DataType type=\"IfcLabel\"/>"
                "</TypePropertyReferenceValue>"),
         {"5:65+8 error T024 \"IfcLabel\" contradicts \"reftype\", which names \"IfcPerson\""
          " | \"reftype\" is here; readers take \"DataType\" @5:38"}},
        {"two entities",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcPerson\"><DataType type=\"IfcMaterial\"/>"
                "</TypePropertyReferenceValue>"),
         {"5:65+11 error T024 \"IfcMaterial\" contradicts \"reftype\", which names \"IfcPerson\""
          " | \"reftype\" is here; readers take \"DataType\" @5:38"}},
        {"an entity and its subtype",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcMaterialDefinition\"><DataType "
                "type=\"IfcMaterial\"/></TypePropertyReferenceValue>"),
         {}},
        {"one entity twice",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcPerson\"><DataType type=\"IfcPerson\"/>"
                "</TypePropertyReferenceValue>"),
         {}},
        {"a time series of nothing",
         sSetOf("<TypePropertyReferenceValue reftype=\"IfcTimeSeries\"><DataType/>"
                "</TypePropertyReferenceValue>"),
         {}},
        {"a choice of entities",
         sSingle("IfcObjectReferenceSelect"),
         {"5:42+24 error T003 \"IfcObjectReferenceSelect\" selects entities only, and a property of this "
          "kind "
          "has values of a defined type | a property that refers to an entity is a "
          "\"TypePropertyReferenceValue\""}},
        {"what nobody reads",
         sSetOf("<TypeSimpleProperty><DataType type=\"IfcReal\"/></TypeSimpleProperty>"),
         {"5:2+18 error T026 what is inside \"TypeSimpleProperty\" is not read: the property has no type"
          " | a property with one value is a \"TypePropertySingleValue\""}},
        {"any value",
         sSingle("IfcDerivedMeasureValue"),
         {"5:42+22 warning T018 \"IfcDerivedMeasureValue\" is a SELECT, which leaves open of which type the "
          "values are | it selects \"IfcThermalTransmittanceMeasure\""}},
    }));

INSTANTIATE_TEST_SUITE_P(
    Columns, TypeRulesTest,
    testing::ValuesIn<std::vector<TypeCase>>({
        {"a type after the unit of its column",
         sSetOf("<TypePropertyTableValue><DefiningValue><UnitType type=\"LENGTHUNIT\"/><DataType "
                "type=\"IfcLengthMeasure\"/></DefiningValue>" +
                sColumn("DefinedValue", "") + "</TypePropertyTableValue>"),
         {"5:70+8 error T025 \"DataType\" is not the first element of \"DefiningValue\", so \"LENGTHUNIT\" "
          "is "
          "read as the type of the column | move \"DataType\" before \"UnitType\""}},
        {"a type after the values of its list",
         sSetOf("<TypePropertyListValue><ListValue><Values><ValueItem>1</ValueItem></Values><DataType "
                "type=\"IfcReal\"/></ListValue></TypePropertyListValue>"),
         {"5:77+8 error T025 \"DataType\" is not the first element of \"ListValue\", so the type of the list "
          "is "
          "not read | move \"DataType\" before \"Values\""}},
        {"columns of different length",
         sSetOf("<TypePropertyTableValue>" + sColumn("DefiningValue", "<ValueItem>1</ValueItem>") +
                sColumn("DefinedValue", "<ValueItem>1</ValueItem><ValueItem>2</ValueItem>") +
                "</TypePropertyTableValue>"),
         {"5:124+12 warning T019 the table has 1 defining and 2 defined values"}},
        {"a column that lists no values",
         sSetOf("<TypePropertyTableValue>" + sColumn("DefiningValue", "<ValueItem>1</ValueItem>") +
                sColumn("DefinedValue", "") + "</TypePropertyTableValue>"),
         {}},
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

TEST(TypeRules, NamesTheTypeForThatOfAnotherLanguage) {
    for (const std::string_view name : {"String", "xs:string"}) {
        const auto findings = test::exampleFindings(sSingle(name));
        ASSERT_THAT(findings, testing::SizeIs(1)) << name;
        EXPECT_EQ(findings[0].code, "T001");
        ASSERT_FALSE(findings[0].notes.empty()) << name;
        EXPECT_EQ(findings[0].notes[0].message, "did you mean \"IfcLabel\"?") << name;
    }
}

TEST(TypeRules, NamesTheLetterOfAnotherScript) {
    const auto findings = test::exampleFindings(sSingle("IfcL\u0430bel"));
    ASSERT_THAT(findings, testing::SizeIs(1));
    EXPECT_EQ(findings[0].place.position, (TextPosition{5, 42, 8}));
    ASSERT_GE(findings[0].notes.size(), 2U);
    EXPECT_EQ(findings[0].notes[0].message, "did you mean \"IfcLabel\"?");
    EXPECT_EQ(findings[0].notes[1].message,
              "character 5 is U+0430, a letter of Cyrillic that looks like \"a\"");
}

} // namespace

} // namespace kiv::kit
