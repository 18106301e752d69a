#include "kiv/Kit/Express/ExpressionText.h"

#include "Support/ExpressionText.h"
#include "Support/SchemaFromText.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

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

/// The text with "<" before a join, "|" before its words and ">" after it.
std::string sJoined(const std::string& expression) {
    return sRule(expression, [](const auto& rule) {
        const auto [text, joins] = joinedExpressionAs(rule, {.groupsAnd = true});
        EXPECT_EQ(text, sExpressionAs(rule, {.groupsAnd = true}));
        std::string marked;
        for (std::size_t at = 0; at <= text.size(); ++at) {
            for (const auto& join : joins) {
                marked += join.end == at ? ">" : "";
                marked += join.begin == at ? "<" : "";
                marked += std::ranges::count(join.words, at) == 1 ? "|" : "";
            }
            marked += text.substr(at, 1);
        }
        return marked;
    });
}

TEST(ExpressionText, JoinsAreWhatAndAndOrAreBetween) {
    EXPECT_EQ(sJoined("a = b"), "a = b");
    EXPECT_EQ(sJoined("a AND b AND c"), "<a |AND b |AND c>");
    EXPECT_EQ(sJoined("NOT (a AND b)"), "NOT (<a |AND b>)");
    EXPECT_EQ(sJoined("a OR b AND c"), "<a |OR (<b |AND c>)>");
    EXPECT_EQ(sJoined("a AND (b AND c)"), "<a |AND (<b |AND c>)>");
    EXPECT_EQ(sJoined("QUERY(x <* y | a AND b) + (c OR d)"), "QUERY(x <* y | <a |AND b>) + (<c |OR d>)");
    EXPECT_EQ(sJoined("(a AND b) XOR c"), "(<a |AND b>) XOR c");
    // The result of one operator is the first operand of the next.
    EXPECT_EQ(sJoined("a AND b AND c * d AND e"), "<<a |AND b |AND c> * d |AND e>");
    EXPECT_EQ(sJoined("a + b OR c"), "<a + b |OR c>");
}

TEST(ExpressionText, JoinsAreInTheOrderInWhichTheyBegin) {
    const auto begins = [](const std::string& expression) {
        std::vector<std::size_t> found;
        sRule(expression, [&](const auto& rule) {
            for (const auto& join : joinedExpressionAs(rule, {}).joins)
                found.push_back(join.begin);
            return std::string();
        });
        return found;
    };
    EXPECT_EQ(begins("f(a AND b) AND (c OR d)"), (std::vector<std::size_t>{0, 2, 16}));
    EXPECT_EQ(begins("(a AND b) OR (c AND d)"), (std::vector<std::size_t>{0, 0, 11}));
}

TEST(ExpressionText, WhatMakesAnInstanceIsNoJoin) {
    const auto schema = kiv::test::schemaFromText("ENTITY A;\nEND_ENTITY;\nENTITY B;\n WHERE\n"
                                                  "  R : f(A() || B() OR c);\nEND_ENTITY;");
    const auto& rules = kiv::test::entityOf(*schema, "B").pWhere()->getRules();
    const auto [text, joins] = joinedExpressionAs(*rules[0].expression, {.pSchema = schema.get()});
    EXPECT_EQ(text, "f(A() || B() OR c)");
    ASSERT_EQ(joins.size(), 1U);
    EXPECT_EQ(text.substr(joins[0].begin, joins[0].end - joins[0].begin), "A() || B() OR c");
    EXPECT_EQ(joins[0].words, (std::vector<std::size_t>{13}));
}

} // namespace

} // namespace kiv::kit
