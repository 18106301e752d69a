#include "kiv/Kit/Express/ExpressionText.h"

#include "Support/ExpressionText.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kit {

namespace {

/// What is said of the rule, which may name the entity Wall and the enumeration Kind.
template <class Say>
std::string sRule(const std::string& expression, Say say) {
    const auto schema = kiv::test::schemaFromText("TYPE Kind = ENUMERATION OF (SOLID);\nEND_TYPE;\n"
                                                  "ENTITY Wall;\n WHERE\n  R : " +
                                                  expression + ";\nEND_ENTITY;");
    const auto& rules = kiv::test::entityOf(*schema, "Wall").pWhere()->getRules();
    return rules.size() == 1 ? say(*rules[0].expression) : "no rule";
}

std::string sTree(const std::string& expression) {
    return sRule(expression, kiv::test::sExpressionText);
}

struct Row {
    const char* expression;
    const char* text;
};

class ExpressionText : public testing::TestWithParam<Row> {};

TEST_P(ExpressionText, AreWrittenBackAndReadToTheSameTree) {
    EXPECT_EQ(sRule(GetParam().expression, sExpression), GetParam().text);
    EXPECT_EQ(sTree(GetParam().text), sTree(GetParam().expression));
}

INSTANTIATE_TEST_SUITE_P(
    All, ExpressionText,
    testing::Values(Row{"a - (b - c)", "a - (b - c)"}, Row{"(a - b) - c", "a - b - c"},
                    Row{"a * (b + c)", "a * (b + c)"}, Row{"(a * b) + c", "a * b + c"},
                    Row{"a || b AND c", "(a OR b) AND c"}, Row{"(a OR b) AND c", "(a OR b) AND c"},
                    Row{"(a ** b) ** c", "(a ** b) ** c"}, Row{"-a ** b", "-a ** b"},
                    Row{"-(a ** b)", "-(a ** b)"}, Row{"NOT(NOT a)", "NOT (NOT a)"},
                    Row{"(a = b) = c", "(a = b) = c"}, Row{"(a = b) OR (c :<>: d)", "(a = b) OR (c :<>: d)"},
                    Row{"a + b = c MOD d", "a + b = c MOD d"}, Row{"{1<=(a = b)<2}", "{1 <= (a = b) < 2}"},
                    Row{"QUERY(x<*(a+b)|x>1)", "QUERY(x <* a + b | x > 1)"},
                    Row{"SELF\\Wall.A[1:n-1]", "SELF\\Wall.A[1:n - 1]"}, Row{"f()[1].b", "f()[1].b"},
                    Row{"[0.:3, 'x', ?]", "[0.0:3, 'x', ?]"}, Row{"2.E-3 + 1.5", "0.002 + 1.5"},
                    Row{"1.E30 > 0", "1.0E+30 > 0"}, Row{"1.E5 + 0.00001", "100000.0 + 1.0E-05"},
                    Row{"1.E15 + 1.E16", "1000000000000000.0 + 1.0E+16"}, Row{"0.0 + 0.0001", "0.0 + 0.0001"},
                    Row{"Kind.SOLID IN [TRUE]", "Kind.SOLID IN [TRUE]"},
                    Row{"Wall(a, b - 1)", "Wall(a, b - 1)"}));

TEST(ExpressionText, WhatJoinsInstancesIsNoOr) {
    const auto schema = kiv::test::schemaFromText("ENTITY A;\nEND_ENTITY;\nENTITY B;\n WHERE\n"
                                                  "  R : SELF <> A() || B();\n  S : (SELF = A()) OR F();\n"
                                                  "END_ENTITY;");
    const auto rules = kiv::test::entityOf(*schema, "B").pWhere()->getRules();
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(sExpressionAs(*rules[0].expression, {.pSchema = schema.get()}), "SELF <> A() || B()");
    EXPECT_EQ(sExpressionAs(*rules[0].expression, {}), "SELF <> A() OR B()");
    EXPECT_EQ(sExpressionAs(*rules[1].expression, {.pSchema = schema.get()}), "(SELF = A()) OR F()");
}

TEST(ExpressionText, AndWithinOrIsInParenthesesWhenAskedFor) {
    const auto sGrouped = [](const std::string& expression) {
        return sRule(expression, [](const auto& rule) { return sExpressionAs(rule, {.groupsAnd = true}); });
    };
    EXPECT_EQ(sGrouped("a AND b OR c AND d OR e"), "(a AND b) OR (c AND d) OR e");
    EXPECT_EQ(sRule("a AND b OR c AND d OR e", sExpression), "a AND b OR c AND d OR e");
    EXPECT_EQ(sGrouped("a XOR b AND c AND d"), "a XOR (b AND c AND d)");
    EXPECT_EQ(sGrouped("(a OR b) AND c"), "(a OR b) AND c");
    EXPECT_EQ(sGrouped("a * b + c"), "a * b + c");
}

} // namespace

} // namespace kiv::kit
