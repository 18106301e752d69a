#include "Kit/Findings/Rules/Types/SchemaValues.h"

#include "Kit/Findings/FindingLines.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataType.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

std::unique_ptr<ifc::def::schema::Schema> typesSchema() {
    return test::schemaFromText("TYPE R = REAL;\nEND_TYPE;\n"
                                "TYPE N = NUMBER;\nEND_TYPE;\n"
                                "TYPE I = INTEGER;\nEND_TYPE;\n"
                                "TYPE B = BOOLEAN;\nEND_TYPE;\n"
                                "TYPE L = LOGICAL;\nEND_TYPE;\n"
                                "TYPE S = STRING;\nEND_TYPE;\n"
                                "TYPE W = STRING(3);\nEND_TYPE;\n"
                                "TYPE E = ENUMERATION OF\n (SOLID, HOLLOW);\nEND_TYPE;\n"
                                "TYPE X = BINARY;\nEND_TYPE;\n"
                                "TYPE A = LIST OF REAL;\nEND_TYPE;\n");
}

TEST(SchemaValueTypes, ATextFitsTheTypeOrNot) {
    struct Row {
        const char* type;
        std::string_view value;
        ValueFit fit;
    };
    constexpr auto Yes = ValueFit::Yes;
    constexpr auto No = ValueFit::No;
    const Row rows[] = {
        {"R", "12.5", Yes},
        {"R", "-1.E-3", Yes},
        {"R", "7", Yes},
        {"R", "12,5", No},
        {"R", "inf", No},
        {"R", "1 m", No},
        {"N", "1.5", Yes},
        {"N", "x", No},
        {"I", "12", Yes},
        {"I", "-12", Yes},
        {"I", "+0", Yes},
        {"I", "1.5", No},
        {"I", "-", No},
        {"I", "0x1", No},
        {"B", "TRUE", Yes},
        {"B", "false", Yes},
        {"B", ".T.", Yes},
        {"B", "1", Yes},
        {"B", "UNKNOWN", No},
        {"B", "yes", No},
        {"L", "UNKNOWN", Yes},
        {"L", ".U.", Yes},
        {"L", "maybe", No},
        {"S", "anything", Yes},
        {"W", "abc", Yes},
        {"W", "abcd", No},
        {"W", "\xC3\xA9\xC3\xA9\xC3\xA9", Yes},
        {"E", "SOLID", Yes},
        {"E", "solid", Yes},
        {"E", ".HOLLOW.", Yes},
        {"E", "ROUND", No},
        {"E", "..", No},
        {"X", "0101", ValueFit::Unknown},
        {"A", "1.0", ValueFit::Unknown},
    };
    const auto schema = typesSchema();
    for (const auto& row : rows)
        EXPECT_EQ(fitOf(row.value, *test::typeOf(*schema, row.type).pDataType()), row.fit)
            << row.type << ' ' << row.value;
}

TEST(SchemaValueTypes, WhatIsNotKnownFitsEveryTypeThatIsJudged) {
    const auto schema = typesSchema();
    for (const auto* type : {"R", "N", "I", "B", "L", "S", "W", "E"}) {
        EXPECT_EQ(fitOf("", *test::typeOf(*schema, type).pDataType()), ValueFit::Yes) << type;
        EXPECT_EQ(fitOf("?", *test::typeOf(*schema, type).pDataType()), ValueFit::Yes) << type;
    }
}

TEST(SchemaValueTypes, ValuesInWords) {
    const auto schema = typesSchema();
    const auto values = [&](const char* type) { return sValuesOf(*test::typeOf(*schema, type).pDataType()); };
    EXPECT_EQ(values("R"), "a number");
    EXPECT_EQ(values("N"), "a number");
    EXPECT_EQ(values("I"), "an integer");
    EXPECT_EQ(values("B"), "true or false");
    EXPECT_EQ(values("L"), "true, false or unknown");
    EXPECT_EQ(values("S"), "a text");
    EXPECT_EQ(values("W"), "a text of at most 3 characters");
    EXPECT_EQ(values("E"), "one of its items");
    EXPECT_EQ(values("X"), "");
    EXPECT_EQ(values("A"), "");
}

TEST(SchemaValueTypes, Numbers) {
    EXPECT_EQ(numberOf("12.5"), 12.5);
    EXPECT_EQ(numberOf("-2"), -2.0);
    EXPECT_EQ(numberOf("+2."), 2.0);
    EXPECT_EQ(numberOf(".5e1"), 5.0);
    for (const auto* text :
         {"", "+", "-", "x", "1x", "inf", "nan", "--1", "+-1", "1,5", " 1", "1 ", "0x10", "."})
        EXPECT_FALSE(numberOf(text)) << text;
}

TEST(SchemaValueTypes, NumbersOutOfTheRangeAreInfiniteOrNothing) {
    EXPECT_EQ(numberOf("1e400"), HUGE_VAL);
    EXPECT_EQ(numberOf("-1e400"), -HUGE_VAL);
    EXPECT_EQ(numberOf(std::string(400, '9')), HUGE_VAL);
    EXPECT_EQ(numberOf("1e99999999999999999999"), HUGE_VAL);
    EXPECT_EQ(numberOf("1e-400"), 0.0);
    EXPECT_EQ(numberOf("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(numberOf(std::string(400, '9') + "e-800"), 0.0);
}

TEST(SchemaValueTypes, UnitsAreThoseOfEnumerationsOfUnits) {
    const auto schema = test::schemaFromText(
        "TYPE Units = ENUMERATION OF\n (LENGTHUNIT, AREAUNIT, UNIT, USERDEFINED);\nEND_TYPE;\n"
        "TYPE Mixed = ENUMERATION OF\n (TIMEUNIT, OTHER);\nEND_TYPE;\n"
        "TYPE None = ENUMERATION OF\n (USERDEFINED, NOTDEFINED);\nEND_TYPE;\n"
        "TYPE IfcLengthMeasure = REAL;\nEND_TYPE;\n"
        "TYPE IfcPositiveLengthMeasure = IfcLengthMeasure;\nEND_TYPE;\n"
        "TYPE IfcTimeMeasure = REAL;\nEND_TYPE;\n"
        "TYPE IfcMeasure = REAL;\nEND_TYPE;\n"
        "TYPE IfcLabel = STRING;\nEND_TYPE;\n"
        "TYPE Around = Circle;\nEND_TYPE;\nTYPE Circle = Around;\nEND_TYPE;\n");
    const SchemaUnits units(*schema);
    EXPECT_TRUE(units.boContains("LENGTHUNIT"));
    EXPECT_FALSE(units.boContains("USERDEFINED"));
    EXPECT_FALSE(units.boContains("TIMEUNIT"));
    const auto unitOf = [&](const char* type) { return units.unitOf(test::typeOf(*schema, type)); };
    EXPECT_EQ(unitOf("IfcLengthMeasure"), "LENGTHUNIT");
    EXPECT_EQ(unitOf("IfcPositiveLengthMeasure"), "LENGTHUNIT");
    EXPECT_EQ(unitOf("IfcTimeMeasure"), "");
    EXPECT_EQ(unitOf("IfcMeasure"), "");
    EXPECT_EQ(unitOf("IfcLabel"), "");
    EXPECT_EQ(unitOf("Circle"), "");
}

TEST(SchemaValueTypes, SelectsSayWhichTypesCanBeThere) {
    const auto schema =
        test::schemaFromText("TYPE IfcLabel = STRING;\nEND_TYPE;\n"
                             "TYPE IfcText = STRING;\nEND_TYPE;\n"
                             "TYPE IfcValue = SELECT\n (IfcLabel);\nEND_TYPE;\n"
                             "ENTITY Root;\n  Value : IfcValue;\n  Name : IfcLabel;\nEND_ENTITY;\n"
                             "ENTITY Single\n SUBTYPE OF (Root);\nEND_ENTITY;\n");
    const auto* select = pSelectOf(*schema, "Single", "Value");
    EXPECT_EQ(select, &test::typeOf(*schema, "IfcValue"));
    EXPECT_EQ(pSelectOf(*schema, "Single", "Name"), nullptr);
    EXPECT_EQ(pSelectOf(*schema, "Single", "Missing"), nullptr);
    EXPECT_EQ(pSelectOf(*schema, "Missing", "Value"), nullptr);
    EXPECT_EQ(pSelectOf(*schema, "IfcLabel", "Value"), nullptr);
    EXPECT_TRUE(boIsSelected(select, test::typeOf(*schema, "IfcLabel")));
    EXPECT_TRUE(boIsSelected(select, test::typeOf(*schema, "IfcValue")));
    EXPECT_FALSE(boIsSelected(select, test::typeOf(*schema, "IfcText")));
    EXPECT_TRUE(boIsSelected(nullptr, test::typeOf(*schema, "IfcText")));
}

bool boHasValues(SelectedValues& values, const ifc::def::schema::Schema& schema, const char* select) {
    return values.boHas(
        dynamic_cast<const ifc::def::schema::DataTypeSelect&>(*test::typeOf(schema, select).pDataType()));
}

TEST(SelectedValues, AreDefinedTypesAlsoThroughOtherSelects) {
    const auto schema =
        test::schemaFromText("TYPE Label = STRING;\nEND_TYPE;\n"
                             "ENTITY Actor;\nEND_ENTITY;\n"
                             "TYPE Actors = SELECT\n (Actor);\nEND_TYPE;\n"
                             "TYPE Labels = SELECT\n (Actor,\n Label);\nEND_TYPE;\n"
                             "TYPE Outer = SELECT\n (Actors,\n Labels);\nEND_TYPE;\n"
                             "TYPE OfActors = SELECT\n (Actors,\n Actor);\nEND_TYPE;\n"
                             "TYPE Around = SELECT\n (Circle,\n Actor);\nEND_TYPE;\n"
                             "TYPE Circle = SELECT\n (Around);\nEND_TYPE;\n"
                             "TYPE AroundLabel = SELECT\n (CircleLabel);\nEND_TYPE;\n"
                             "TYPE CircleLabel = SELECT\n (AroundLabel,\n Label);\nEND_TYPE;\n"
                             "TYPE Unknown = SELECT\n (Missing);\nEND_TYPE;\n");
    // In both orders, as answers are kept.
    const char* const with[] = {"Labels", "Outer", "AroundLabel", "CircleLabel", "Unknown"};
    const char* const without[] = {"Actors", "OfActors", "Around", "Circle"};
    for (const bool isFirst : {true, false}) {
        SelectedValues values(*schema);
        for (const auto* select : isFirst ? std::span<const char* const>(with) : without)
            EXPECT_EQ(boHasValues(values, *schema, select), isFirst) << select;
        for (const auto* select : isFirst ? std::span<const char* const>(without) : with)
            EXPECT_EQ(boHasValues(values, *schema, select), !isFirst) << select;
    }
}

// Deeper than calls of functions can be nested.
TEST(SelectedValues, AreFoundAtTheEndOfALongChain) {
    constexpr int Length = 200'000;
    for (const bool isValue : {true, false}) {
        std::string text = "ENTITY Actor;\nEND_ENTITY;\nTYPE Label = STRING;\nEND_TYPE;\n";
        for (int number = 0; number != Length; ++number) {
            const auto next = number + 1 != Length ? "S" + std::to_string(number + 1)
                                                   : std::string(isValue ? "Label" : "Actor");
            text += "TYPE S" + std::to_string(number) + " = SELECT\n (" + next + ");\nEND_TYPE;\n";
        }
        const auto schema = test::schemaFromText(text);
        SelectedValues values(*schema);
        EXPECT_EQ(boHasValues(values, *schema, "S0"), isValue);
        EXPECT_EQ(boHasValues(values, *schema, "S199999"), isValue);
    }
}

/// The label of the first rule that the value breaks.
std::string sBroken(std::string_view base, std::string_view rules, std::string_view value,
                    bool isBound = true) {
    const auto text = "SCHEMA A;\nTYPE B = " + std::string(base) + ";\n WHERE\n" + std::string(rules) +
                      "END_TYPE;\nTYPE C = B;\nEND_TYPE;\nEND_SCHEMA;\n";
    const auto schema = test::schemaFromWholeText(text);
    const auto* const type = ifc::def::schema::Type::pFrom(schema->pObjectFromName("C"));
    const auto broken = isBound ? brokenRuleOf(value, *type) : brokenRuleOfValue(value, *type);
    return broken.rule ? std::string(broken.rule->label.getView()) : std::string();
}

TEST(SchemaValues, OnlyABoundMayBeWhereValuesMayNot) {
    constexpr std::string_view Positive = " W : SELF > 0;\n";
    EXPECT_EQ(sBroken("REAL", Positive, "0"), "");
    EXPECT_EQ(sBroken("REAL", Positive, "0", false), "W");
    EXPECT_EQ(sBroken("REAL", Positive, "0.1", false), "");
    // No integer is nearer.
    EXPECT_EQ(sBroken("INTEGER", Positive, "0"), "W");
    EXPECT_EQ(sBroken("INTEGER", Positive, "1"), "");
    EXPECT_EQ(sBroken("INTEGER", " W : SELF >= 0;\n", "0"), "");
    EXPECT_EQ(sBroken("INTEGER", " W : SELF < 5;\n", "5"), "W");
}

struct Row {
    std::string_view rules;
    std::string_view value;
    std::string_view broken;
};

TEST(SchemaValues, PlainRulesAboutNumbersAreChecked) {
    constexpr Row Rows[] = {
        {" W : SELF > 0.;\n", "-0.001", "W"},
        {" W : SELF > 0.;\n", "0", ""},
        {" W : SELF > 0.;\n", "0.001", ""},
        {" W : SELF >= 0.;\n", "0", ""},
        {" W : SELF >= 0.;\n", " -1 ", "W"},
        {" W : SELF < 2;\n", "2.5", "W"},
        {" W : SELF <= 2;\n", "2", ""},
        {" W : 2 < SELF;\n", "1", "W"},
        {" W : -2 <= SELF;\n", "-2.5", "W"},
        {" W : +2 <= SELF;\n", "2", ""},
        {" W : {0 <= SELF < 24};\n", "25", "W"},
        {" W : {0 <= SELF < 24};\n", "0", ""},
        {" W : {0 < SELF <= 24};\n", "0", ""},
        {" W : {0 < SELF <= 24};\n", "-1", "W"},
        {" W : (SELF > 0) AND (SELF < 2) AND (SELF > 1);\n", "0.5", "W"},
        {" W : (SELF > 0) AND (SELF < 2) AND (SELF > 1);\n", "1.5", ""},
        {" V : SELF > 0;\n W : SELF > 5;\n", "4", "W"},
        {" W : SELF > 0;\n", "1e999", ""},
        {" W : SELF < 1000;\n", "1e999", "W"},
        {" W : SELF > 0;\n", "1e-999", ""},
    };
    for (const auto& row : Rows)
        EXPECT_EQ(sBroken("REAL", row.rules, row.value), row.broken) << row.rules << row.value;
}

TEST(SchemaValues, OtherRulesAreNotChecked) {
    constexpr Row Rows[] = {
        {" W : NOT (SELF > 0);\n", "1", ""},
        {" W : (SELF > 0) OR (SELF < -5);\n", "-1", ""},
        {" W : (SELF > 0) AND (F(SELF) > 0);\n", "-1", ""},
        {" W : (SELF > 0) AND ((SELF < 9) AND (SELF > 1));\n", "-1", ""},
        {" W : ABS(SELF) > 5;\n", "1", ""},
        {" W : SELF + 1 > 5;\n", "1", ""},
        {" W : SELF = 5;\n", "1", ""},
        {" W : {0 <= SELF <= Max};\n", "-1", ""},
        {" W : SELF > 0;\n", "?", ""},
        {" W : SELF > 0;\n", "", ""},
        {" W : SELF > 0;\n", "-1 mm", ""},
    };
    for (const auto& row : Rows)
        EXPECT_EQ(sBroken("REAL", row.rules, row.value), row.broken) << row.rules << row.value;
    EXPECT_EQ(sBroken("STRING", " W : SELF > 0;\n", "-1"), "");
    EXPECT_EQ(sBroken("INTEGER", " W : SELF > 0;\n", "-1"), "W");
    EXPECT_EQ(sBroken("INTEGER", " W : SELF > 0;\n", "-1.5"), "");
    EXPECT_EQ(sBroken("NUMBER", " W : SELF > 0;\n", "-1"), "W");
}

} // namespace

} // namespace kiv::kit
