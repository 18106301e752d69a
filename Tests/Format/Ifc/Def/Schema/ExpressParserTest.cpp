#include "kiv/Format/Ifc/Def/Schema/ExpressParser.h"

#include "Format/Ifc/Def/Schema/SchemaTestTools.h"
#include "Support/ExpressionText.h"
#include "Support/SchemaFromText.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

namespace {

using namespace kiv::ifc::def::schema;
using namespace kiv::test;
using testing::StartsWith;

constexpr std::string_view Names = "TYPE Kind = ENUMERATION OF (SOLID, HOLLOW);\nEND_TYPE;\n"
                                   "ENTITY Ent;\nEND_ENTITY;\n"
                                   "FUNCTION Fun (a : REAL) : REAL;\nEND_FUNCTION;\n"
                                   "RULE Rul FOR (Ent);\nEND_RULE;\n";

class ExpressParserTest : public testing::Test {
protected:
    /// All rules of the text.
    std::vector<ParsedRule> rulesOf(std::string_view text) const {
        ExpressTokenizer tokenizer(text);
        ExpressParser parser(tokenizer, *schema_);
        std::vector<ParsedRule> rules;
        while (parser.boParseRule(rules)) {
        }
        return rules;
    }

    /// The rules as "label : expression" in lines, or the syntax error's message.
    std::string sParsed(std::string_view text) const {
        try {
            std::string result;
            for (const auto& rule : rulesOf(text))
                result += (result.empty() ? "" : "\n") + std::string(rule.label) + " : " +
                          sExpressionText(*rule.expression);
            return result;
        } catch (const ExpressParser::SyntaxError& error) {
            return error.what();
        }
    }

    /// The expression as text, or the syntax error's message.
    std::string sParsedExpression(const std::string& expression) const {
        const auto result = sParsed("w : " + expression + ';');
        return result.starts_with("w : ") ? result.substr(4) : result;
    }

    const std::unique_ptr<Schema> schema_ = schemaFromText(Names);
};

struct Row {
    std::string text;
    std::string result;
};

// ---- Good expressions

TEST_F(ExpressParserTest, LiteralsConstantsAndNames) {
    const Row rows[] = {
        {"a", "a"},
        {"IfcWall_2", "IfcWall_2"},
        {"1", "1"},
        {"007", "7"},
        {"2147483647", "2147483647"},
        {"2.", "2.0"},
        {"1.5E+3", "1500.0"},
        {"0.25", "0.25"},
        {"'x'", "'x'"},
        {"''", "''"},
        {"TRUE", "TRUE"},
        {"FALSE", "FALSE"},
        {"UNKNOWN", "UNKNOWN"},
        {"unknown", "UNKNOWN"},
        {"SELF", "SELF"},
        {"self", "SELF"},
        {"?", "?"},
        // These two keywords are names, as their words are misspelt in the table of words.
        {"integer", "integer"},
        {"STRING", "STRING"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, OperatorsGroupByTheirPrecedence) {
    const Row rows[] = {
        {"a - b - c", "((a - b) - c)"},
        {"a + b - c + d", "(((a + b) - c) + d)"},
        {"a * b / c", "((a * b) / c)"},
        {"a MOD b * c", "((a MOD b) * c)"},
        {"a + b * c", "(a + (b * c))"},
        {"a * b + c", "((a * b) + c)"},
        {"a + b * c - d / e", "((a + (b * c)) - (d / e))"},
        {"a OR b AND c", "(a OR (b AND c))"},
        {"a AND b OR c", "((a AND b) OR c)"},
        {"a XOR b OR c", "((a XOR b) OR c)"},
        {"a OR b + c", "((a OR b) + c)"},
        {"a AND b * c", "((a AND b) * c)"},
        {"a || b", "(a OR b)"},
        {"a + b || c", "(a + (b OR c))"},
        {"a || b * c", "((a OR b) * c)"},
        {"a OR b || c", "(a OR (b OR c))"},
        {"a ** b", "(a ** b)"},
        {"a * b ** c", "(a * (b ** c))"},
        {"a ** b * c", "((a ** b) * c)"},
        {"a ** b + c ** d", "((a ** b) + (c ** d))"},
        {"(a ** b) ** c", "((a ** b) ** c)"},
        {"a + b < c * d", "((a + b) < (c * d))"},
        {"a = b AND c", "(a = (b AND c))"},
        {"a < b OR c", "(a < (b OR c))"},
        {"(a < b) OR (c > d)", "((a < b) OR (c > d))"},
        {"(a < b) < c", "((a < b) < c)"},
        {"a < (b < c)", "(a < (b < c))"},
        {"a IN b + c", "(a IN (b + c))"},
        {"a+b", "(a + b)"},
        {"a(* note *)+b", "(a + b)"},
        {"a and b Or c", "((a AND b) OR c)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, EachRelationJoinsTwoSimpleExpressions) {
    for (const std::string relation : {"<", ">", "<=", ">=", "<>", "=", ":<>:", ":=:", "IN"})
        EXPECT_EQ(sParsedExpression("a " + relation + " b"), "(a " + relation + " b)");
}

TEST_F(ExpressParserTest, UnaryOperatorsBindTighterThanAllBinaryOnes) {
    const Row rows[] = {
        {"-a", "(- a)"},
        {"+1", "(+ 1)"},
        {"NOT a", "(NOT a)"},
        {"-a ** b", "((- a) ** b)"},
        {"a ** -b", "(a ** (- b))"},
        {"-a * b", "((- a) * b)"},
        {"-a + b", "((- a) + b)"},
        {"a - - b", "(a - (- b))"},
        {"a * -b", "(a * (- b))"},
        {"NOT a AND b", "((NOT a) AND b)"},
        {"NOT a = b", "((NOT a) = b)"},
        {"NOT (a = b)", "(NOT (a = b))"},
        {"NOT NOT a", "(NOT (NOT a))"},
        {"+ - NOT a", "(+ (- (NOT a)))"},
        {"-a.b[1]", "(- a.b[1])"},
        {"-{a < b < c}", "(- {a < b < c})"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, ParenthesesMakeNoNode) {
    EXPECT_EQ(sParsedExpression("((a))"), "a");
    EXPECT_EQ(sParsedExpression("(a + (b))"), "(a + b)");
    EXPECT_EQ(sParsedExpression("(a + b) * c"), "((a + b) * c)");
}

TEST_F(ExpressParserTest, EmptyBracketsAreAnEmptyAggregate) {
    EXPECT_EQ(sParsedExpression("[]"), "[]");
}

TEST_F(ExpressParserTest, ElementWithACountIsARepetition) {
    const auto rules = rulesOf("w : [1:3];");
    ASSERT_EQ(rules.size(), 1U);
    const auto* aggregate = dynamic_cast<const AggregateInitializerExpression*>(rules[0].expression.get());
    ASSERT_NE(aggregate, nullptr);
    ASSERT_EQ(aggregate->getElements().size(), 1U);
    const auto* repetition = dynamic_cast<const RepetitionExpression*>(aggregate->getElements()[0].get());
    ASSERT_NE(repetition, nullptr);
    EXPECT_EQ(sExpressionText(repetition->getElement()), "1");
    EXPECT_EQ(sExpressionText(repetition->getCount()), "3");
}

TEST_F(ExpressParserTest, AggregatesHoldExpressionsAndRepetitions) {
    const Row rows[] = {
        {"[a]", "[a]"},
        {"[a, 1, 'x']", "[a, 1, 'x']"},
        {"[[1], []]", "[[1], []]"},
        {"[a = b]", "[(a = b)]"},
        {"[0.0:3]", "[(0.0 : 3)]"},
        {"[a, b : 2 + c, d]", "[a, (b : (2 + c)), d]"},
        {"[a = b : c]", "[((a = b) : c)]"},
        {"[-1 : 2]", "[((- 1) : 2)]"},
        {"a IN [1, 2]", "(a IN [1, 2])"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, IntervalsHoldThreeSimpleExpressions) {
    const Row rows[] = {
        {"{0 < x <= 5}", "{0 < x <= 5}"},
        {"{a <= b < c}", "{a <= b < c}"},
        {"{a + 1 <= b * 2 < c OR d}", "{(a + 1) <= (b * 2) < (c OR d)}"},
        {"{0 < {1 < a < 2} < 3}", "{0 < {1 < a < 2} < 3}"},
        {"{a < b < c} = d", "({a < b < c} = d)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, QueriesHaveAVariableASourceAndACondition) {
    const Row rows[] = {
        {"QUERY(x <* a | x > 1)", "QUERY(x <* a | (x > 1))"},
        {"query ( x <* a + b | TRUE )", "QUERY(x <* (a + b) | TRUE)"},
        {"QUERY(x <* SELF\\Ent.items | x :=: SELF)", "QUERY(x <* SELF\\Ent.items | (x :=: SELF))"},
        {"QUERY(a <* QUERY(b <* c | d) | e)", "QUERY(a <* QUERY(b <* c | d) | e)"},
        {"SIZEOF(QUERY(x <* a | b)) = 0", "(SIZEOF(QUERY(x <* a | b)) = 0)"},
        // Any identifier may be the variable, the name of a type as well.
        {"QUERY(Kind <* a | b)", "QUERY(Kind <* a | b)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, CallsHaveExpressionsAsArguments) {
    const Row rows[] = {
        {"f()", "f()"},
        {"f ( )", "f()"},
        {"f(a, b + 1, c = d)", "f(a, (b + 1), (c = d))"},
        {"f(g(h()), [])", "f(g(h()), [])"},
        {"Ent()", "Ent()"},
        {"ENT(1, a)", "ENT(1, a)"},
        {"Fun(a) + 1", "(Fun(a) + 1)"},
        {"Kind(1)", "Kind(1)"},
        {"Rul(1)", "Rul(1)"},
        {"integer(1)", "integer(1)"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, NameOfASchemaObjectAndADotAreAnEnumerationValue) {
    const Row rows[] = {
        {"Kind.SOLID", "Kind::SOLID"},
        {"kind.solid", "kind::solid"},
        {"Kind . nothing", "Kind::nothing"},
        {"Kind.Kind", "Kind::Kind"},
        {"a = Kind.SOLID", "(a = Kind::SOLID)"},
        {"Ent.x", "Ent::x"},
        {"Fun.x", "Fun::x"},
        {"Rul.x", "Rul::x"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, QualifiersFollowPrimaries) {
    const Row rows[] = {
        {"a.b", "a.b"},
        {"a.b.c", "a.b.c"},
        {"a\\g.b", "a\\g.b"},
        {"SELF\\Ent.x", "SELF\\Ent.x"},
        {"SELF.x", "SELF.x"},
        {"?.x", "?.x"},
        {"SELF[1]", "SELF[1]"},
        {"a[1]", "a[1]"},
        {"a[1:2]", "a[1:2]"},
        {"a[i + 1 : j * 2]", "a[(i + 1):(j * 2)]"},
        {"a[-1]", "a[(- 1)]"},
        {"a[b[c]]", "a[b[c]]"},
        {"a.b[1][2].c", "a.b[1][2].c"},
        {"f(a).b", "f(a).b"},
        {"f(a)[1].b", "f(a)[1].b"},
        {"f()\\g", "f()\\g"},
        // After a qualifier any identifier is a name, that of a type as well.
        {"a.Kind", "a.Kind"},
        {"a\\Kind", "a\\Kind"},
        {"a . b [ 1 ]", "a.b[1]"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsedExpression(row.text), row.result) << row.text;
}

// ---- Syntax errors. The place is that of a token's last character, one greater on the first line.

TEST_F(ExpressParserTest, WrongTokenIsReportedAtTheTokenAfterIt) {
    const Row rows[] = {
        {"w = 1;", "Expected token COLON but got EQUAL at 1:6"},
        {"w", "Expected token COLON but got END_OF_FILE at 1:4"},
        {"w : a", "Expected token SEMICOLON but got END_OF_FILE at 1:8"},
        {"w : a b;", "Expected token SEMICOLON but got IDENTIFIER at 1:9"},
        {"w : a);", "Expected token SEMICOLON but got RIGHT_PAREN at 1:8"},
        {"w : (a;", "Expected token RIGHT_PAREN but got SEMICOLON at 1:9"},
        {"w : a < b < c;", "Expected token SEMICOLON but got LESS at 1:14"},
        {"w : a IN b = c;", "Expected token SEMICOLON but got EQUAL at 1:15"},
        {"w : a ** b ** c;", "Expected token SEMICOLON but got POWER at 1:16"},
        {"w : a := b;", "Expected token SEMICOLON but got ASSIGN at 1:11"},
        {"w : {0 < x <= 5;", "Expected token RIGHT_BRACE but got SEMICOLON at 1:18"},
        {"w : {0 < x < 5 < 6};", "Expected token RIGHT_BRACE but got LESS at 1:19"},
        {"w : [a;", "Expected token RIGHT_BRACKET but got SEMICOLON at 1:9"},
        {"w : [1:2:3];", "Expected token RIGHT_BRACKET but got COLON at 1:11"},
        {"w : [a = b : c = d];", "Expected token RIGHT_BRACKET but got EQUAL at 1:19"},
        {"w : a[1=2];", "Expected token RIGHT_BRACKET but got EQUAL at 1:10"},
        {"w : a[1:2:3];", "Expected token RIGHT_BRACKET but got COLON at 1:12"},
        {"w : a.;", "Expected token IDENTIFIER but got SEMICOLON at 1:9"},
        {"w : a.1;", "Expected token IDENTIFIER but got INTEGER_LITERAL at 1:9"},
        {"w : a\\self;", "Expected token IDENTIFIER but got SELF at 1:12"},
        {"w : QUERY x;", "Expected token LEFT_PAREN but got IDENTIFIER at 1:13"},
        {"w : QUERY(1 <* a | b);", "Expected token IDENTIFIER but got INTEGER_LITERAL at 1:15"},
        {"w : QUERY(x < a | b);", "Expected token QUERY_OPERATOR but got LESS at 1:16"},
        {"w : QUERY(x <* a = b | c);", "Expected token BITWISE_OR but got EQUAL at 1:21"},
        {"w : QUERY(x <* a || c);", "Expected token BITWISE_OR but got RIGHT_PAREN at 1:24"},
        {"w : QUERY(x <* a | b;", "Expected token RIGHT_PAREN but got SEMICOLON at 1:23"},
        {"w : f(a b);", "Expected token RIGHT_PAREN but got IDENTIFIER at 1:11"},
        {"w : Ent(a b);", "Expected token RIGHT_PAREN but got IDENTIFIER at 1:13"},
        {"a : b; c d;", "Expected token COLON but got IDENTIFIER at 1:12"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsed(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, TokenThatBeginsNoExpressionIsReportedAtItsOwnPlace) {
    const Row rows[] = {
        {"w :;", "Unexpected token at 1:5"},
        {"w :", "Unexpected token at 1:5"},
        {"w : ();", "Unexpected token at 1:7"},
        {"w : a +;", "Unexpected token at 1:9"},
        {"w : * a;", "Unexpected token at 1:6"},
        {"w : NOT;", "Unexpected token at 1:9"},
        {"w : - ;", "Unexpected token at 1:8"},
        {"w : a IN;", "Unexpected token at 1:10"},
        {"w : list;", "Unexpected token at 1:9"},
        {"w : {};", "Unexpected token at 1:7"},
        {"w : [,a];", "Unexpected token at 1:7"},
        {"w : [a,];", "Unexpected token at 1:9"},
        {"w : [1:];", "Unexpected token at 1:9"},
        {"w : a[];", "Unexpected token at 1:8"},
        {"w : a[1:];", "Unexpected token at 1:10"},
        {"w : f(a,);", "Unexpected token at 1:10"},
        {"w : f(;", "Unexpected token at 1:8"},
        {"w : QUERY(x <* | b);", "Unexpected token at 1:17"},
        {"w : QUERY(x <* a | );", "Unexpected token at 1:21"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsed(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, IntervalNeedsLessOrLessOrEqualTwice) {
    const Row rows[] = {
        {"w : {0 > x};", "Expected a interval operator at 1:9"},
        {"w : {0 < x};", "Expected a interval operator at 1:12"},
        {"w : {0 < x > 5};", "Expected a interval operator at 1:13"},
        {"w : {0 < x >= 5};", "Expected a interval operator at 1:14"},
        {"w : {a = b < c};", "Expected a interval operator at 1:9"},
        {"w : {a}", "Expected a interval operator at 1:8"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsed(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, NameOfASchemaObjectAloneIsNoReference) {
    const Row rows[] = {
        {"w : Ent;", "Expected token DOT but got SEMICOLON at 1:10"},
        {"w : Ent", "Expected token DOT but got END_OF_FILE at 1:10"},
        {"w : Ent + 1;", "Expected token DOT but got ADD at 1:12"},
        {"w : ent[1];", "Expected token DOT but got LEFT_BRACKET at 1:10"},
        {"w : Kind = 1;", "Expected token DOT but got EQUAL at 1:13"},
        {"w : Fun;", "Expected token DOT but got SEMICOLON at 1:10"},
        {"w : Rul;", "Expected token DOT but got SEMICOLON at 1:10"},
        {"w : Kind.;", "Expected token IDENTIFIER but got SEMICOLON at 1:12"},
        {"w : Kind\\a;", "Expected token DOT but got BACKSLASH at 1:11"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsed(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, NameThatTheSchemaDoesNotKnowIsAReference) {
    EXPECT_EQ(sParsedExpression("Entity1"), "Entity1");
    EXPECT_EQ(sParsedExpression("SOLID"), "SOLID");
}

TEST_F(ExpressParserTest, QualifiersFollowNothingButPrimaries) {
    const Row rows[] = {
        {"w : (a).b;", "Expected token SEMICOLON but got DOT at 1:10"},
        {"w : Ent(1).x;", "Expected token SEMICOLON but got DOT at 1:13"},
        {"w : Kind.SOLID.x;", "Expected token SEMICOLON but got DOT at 1:17"},
        {"w : 'a'[1];", "Expected token SEMICOLON but got LEFT_BRACKET at 1:10"},
        {"w : [a][1];", "Expected token SEMICOLON but got LEFT_BRACKET at 1:10"},
        {"w : TRUE.a;", "Expected token SEMICOLON but got DOT at 1:11"},
        {"w : 1.5.a;", "Expected token SEMICOLON but got DOT at 1:10"},
        {"w : 1\\a;", "Expected token SEMICOLON but got BACKSLASH at 1:8"},
        {"w : QUERY(a <* b | c)[1];", "Expected token SEMICOLON but got LEFT_BRACKET at 1:24"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsed(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, PlacesOnLaterLinesCountFromOne) {
    const Row rows[] = {
        {"w : a +\n  b c;", "Expected token SEMICOLON but got IDENTIFIER at 2:6"},
        {"\n\nw SEMICOLON : a;", "Expected token COLON but got IDENTIFIER at 3:13"},
        {"w\n;\n              a", "Expected token COLON but got SEMICOLON at 3:15"},
        {"w : (* two\nlines *) );", "Unexpected token at 2:10"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sParsed(row.text), row.result) << row.text;
}

TEST_F(ExpressParserTest, ErrorOfTheTokenizerHasNoPlace) {
    EXPECT_EQ(sParsed("w : a % b;"), "ExpressTokenizer didn't expect the character % here...");
    EXPECT_EQ(sParsed("% : a;"), "ExpressTokenizer didn't expect the character % here...");
}

TEST_F(ExpressParserTest, NumberOutOfRangePasses) {
    EXPECT_THROW(rulesOf("w : a = 99999999999;"), std::out_of_range);
    EXPECT_THROW(rulesOf("w : a = 1.0E999;"), std::out_of_range);
}

// ---- Rules

TEST_F(ExpressParserTest, RuleHasItsLabelAndItsExpression) {
    const auto rules = rulesOf("WR1 : SIZEOF(Items) >= 1;");
    ASSERT_EQ(rules.size(), 1U);
    EXPECT_EQ(rules[0].label, "WR1");
    const auto* relation = dynamic_cast<const BinaryExpression*>(rules[0].expression.get());
    ASSERT_NE(relation, nullptr);
    EXPECT_EQ(static_cast<std::uint32_t>(relation->getOperator()), 16U);
    const auto* call = dynamic_cast<const FunctionCallExpression*>(&relation->getLeft());
    ASSERT_NE(call, nullptr);
    EXPECT_EQ(call->getName(), "SIZEOF");
    ASSERT_EQ(call->getArguments().size(), 1U);
    EXPECT_EQ(sExpressionText(*call->getArguments()[0]), "Items");
    EXPECT_EQ(sExpressionText(relation->getRight()), "1");
}

TEST_F(ExpressParserTest, RulesFollowOneAnother) {
    EXPECT_EQ(sParsed("a : 1; b : 2;\nA : Kind.SOLID;"), "a : 1\nb : 2\nA : Kind::SOLID");
    EXPECT_EQ(sParsed(""), "");
}

TEST_F(ExpressParserTest, LabelMayBeTheNameOfASchemaObject) {
    EXPECT_EQ(sParsed("Kind : a;"), "Kind : a");
}

TEST_F(ExpressParserTest, RuleWithoutALabelEndsTheRulesAtOnce) {
    for (const auto* text :
         {"1 : a;", "(a) = b;", "'w' : a;", "SELF : a;", "list : a;", "; a : b;", ": a;"}) {
        ExpressTokenizer tokenizer(text);
        ExpressParser parser(tokenizer, *schema_);
        std::vector<ParsedRule> rules;
        EXPECT_FALSE(parser.boParseRule(rules)) << text;
        EXPECT_FALSE(parser.boParseRule(rules)) << text;
        EXPECT_TRUE(rules.empty()) << text;
    }
}

TEST_F(ExpressParserTest, WhereThereIsNoRuleNothingIsConsumed) {
    ExpressTokenizer tokenizer("(a)");
    ExpressParser parser(tokenizer, *schema_);
    std::vector<ParsedRule> rules;
    ASSERT_FALSE(parser.boParseRule(rules));
    EXPECT_EQ(sExpressionText(*parser.parseExpression()), "a");
}

TEST_F(ExpressParserTest, WhatFollowsTheLastRuleIsLeft) {
    EXPECT_EQ(sParsed("a : 1; 2 : b;"), "a : 1");
    EXPECT_EQ(sParsed("a : 1;; b : 2;"), "a : 1");
}

TEST_F(ExpressParserTest, LineCommentEndsARule) {
    EXPECT_EQ(sParsed("a : 1 -- note\nb : 2;"), "a : 1\nb : 2");
    // The comment and the ';' are two ends; the second begins no rule.
    EXPECT_EQ(sParsed("a : 1; -- note\nb : 2;"), "a : 1");
}

TEST_F(ExpressParserTest, RulesBeforeAnErrorAreKept) {
    ExpressTokenizer tokenizer("a : 1; b : 2; c : ; d : 4;");
    ExpressParser parser(tokenizer, *schema_);
    std::vector<ParsedRule> rules;
    EXPECT_TRUE(parser.boParseRule(rules));
    EXPECT_TRUE(parser.boParseRule(rules));
    EXPECT_THROW(parser.boParseRule(rules), ExpressParser::SyntaxError);
    ASSERT_EQ(rules.size(), 2U);
    EXPECT_EQ(rules[1].label, "b");
}

TEST_F(ExpressParserTest, RuleIsLostWhenTheTokenAfterItsEndIsAnError) {
    // The parser reads one token ahead: the ';' is not consumed before the next token is known.
    ExpressTokenizer tokenizer("a : 1; % : 2;");
    ExpressParser parser(tokenizer, *schema_);
    std::vector<ParsedRule> rules;
    EXPECT_THROW(parser.boParseRule(rules), ExpressParser::SyntaxError);
    EXPECT_TRUE(rules.empty());
}

// ---- The parser itself

TEST_F(ExpressParserTest, ConstructionReadsTheFirstToken) {
    ExpressTokenizer tokenizer("a b");
    const ExpressParser parser(tokenizer, *schema_);
    EXPECT_EQ(std::get<std::string>(tokenizer.getToken().value), "b");
}

TEST_F(ExpressParserTest, ConstructionRaisesTheErrorOfTheFirstToken) {
    ExpressTokenizer tokenizer("_a");
    EXPECT_THROW(ExpressParser(tokenizer, *schema_), ExpressParser::SyntaxError);
}

/// The message of a failure at the parser's next token.
std::string sFailure(const ExpressParser& parser) {
    try {
        parser.vFail("Broken");
    } catch (const ExpressParser::SyntaxError& error) {
        return error.what();
    }
}

TEST_F(ExpressParserTest, FailureHasThePlaceOfTheNextToken) {
    ExpressTokenizer tokenizer("abc\n  +");
    ExpressParser parser(tokenizer, *schema_);
    EXPECT_EQ(sFailure(parser), "Broken at 1:4");
}

TEST_F(ExpressParserTest, ExpressionEndsWhereNothingContinuesIt) {
    ExpressTokenizer tokenizer("a + b c");
    ExpressParser parser(tokenizer, *schema_);
    EXPECT_EQ(sExpressionText(*parser.parseExpression()), "(a + b)");
    EXPECT_EQ(sFailure(parser), "Broken at 1:8");
    EXPECT_EQ(sExpressionText(*parser.parseExpression()), "c");
}

TEST(SyntaxErrorTest, IsAnExceptionThatCarriesItsMessage) {
    static_assert(std::is_base_of_v<std::exception, ExpressParser::SyntaxError>);
    ExpressParser::SyntaxError error("one");
    const ExpressParser::SyntaxError copy(error);
    error = ExpressParser::SyntaxError("two");
    EXPECT_STREQ(copy.what(), "one");
    EXPECT_STREQ(error.what(), "two");
    EXPECT_STREQ(static_cast<const std::exception&>(error).what(), "two");
}

// ---- The tree

TEST_F(ExpressParserTest, BinaryOperatorsHaveTheirCodes) {
    const std::pair<std::string, std::uint32_t> rows[] = {
        {"+", 0},   {"-", 1},   {"*", 2},   {"/", 3},   {"AND", 4}, {"OR", 5},   {"||", 5},
        {"XOR", 6}, {"MOD", 7}, {"**", 8},  {"=", 9},   {"<>", 10}, {":=:", 11}, {":<>:", 12},
        {"<", 13},  {">", 14},  {"<=", 15}, {">=", 16}, {"IN", 17},
    };
    for (const auto& [text, code] : rows) {
        const auto rules = rulesOf("w : a " + text + " b;");
        ASSERT_EQ(rules.size(), 1U) << text;
        const auto* binary = dynamic_cast<const BinaryExpression*>(rules[0].expression.get());
        ASSERT_NE(binary, nullptr) << text;
        EXPECT_EQ(static_cast<std::uint32_t>(binary->getOperator()), code) << text;
    }
}

TEST_F(ExpressParserTest, UnaryOperatorsHaveTheirCodes) {
    const std::pair<std::string, std::uint32_t> rows[] = {{"+", 0}, {"-", 1}, {"NOT ", 2}};
    for (const auto& [text, code] : rows) {
        const auto rules = rulesOf("w : " + text + "a;");
        ASSERT_EQ(rules.size(), 1U) << text;
        const auto* unary = dynamic_cast<const UnaryExpression*>(rules[0].expression.get());
        ASSERT_NE(unary, nullptr) << text;
        EXPECT_EQ(static_cast<std::uint32_t>(unary->getOperator()), code) << text;
    }
}

/// The expression as a node of this class; a failure and null when it is of another.
template <typename Node>
const Node* pAs(const ExpressionPtr& expression) {
    const auto* node = dynamic_cast<const Node*>(expression.get());
    EXPECT_NE(node, nullptr);
    return node;
}

TEST_F(ExpressParserTest, ReferencesSayWhatTheyAre) {
    const auto rules = rulesOf("a : x; b : x\\g; c : x.y; d : x[1]; e : x[1:2];");
    ASSERT_EQ(rules.size(), 5U);
    std::vector<const GetExpression*> nodes;
    for (const auto& rule : rules) {
        nodes.push_back(pAs<GetExpression>(rule.expression));
        ASSERT_NE(nodes.back(), nullptr);
    }
    const std::pair<Qualifier, std::string> expected[] = {{Qualifier::None, "x"},
                                                          {Qualifier::Group, "g"},
                                                          {Qualifier::Attribute, "y"},
                                                          {Qualifier::Index, ""},
                                                          {Qualifier::Index, ""}};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        EXPECT_EQ(nodes[i]->getQualifier(), expected[i].first) << i;
        EXPECT_EQ(nodes[i]->getName(), expected[i].second) << i;
        EXPECT_EQ(nodes[i]->pBase() == nullptr, i == 0) << i;
        EXPECT_EQ(nodes[i]->pIndex() == nullptr, i < 3) << i;
        EXPECT_EQ(nodes[i]->pIndexEnd() == nullptr, i < 4) << i;
    }
}

TEST_F(ExpressParserTest, EachQualifierWrapsTheNodeSoFar) {
    const auto rules = rulesOf("w : a.b[1];");
    const auto* index = pAs<GetExpression>(rules.at(0).expression);
    ASSERT_NE(index, nullptr);
    EXPECT_EQ(index->getQualifier(), Qualifier::Index);
    const auto* attribute = dynamic_cast<const GetExpression*>(index->pBase());
    ASSERT_NE(attribute, nullptr);
    EXPECT_EQ(attribute->getName(), "b");
    const auto* base = dynamic_cast<const GetExpression*>(attribute->pBase());
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(base->getName(), "a");
}

TEST_F(ExpressParserTest, LogicalAndConstantNodesHaveTheirValues) {
    const auto rules = rulesOf("a : TRUE; b : FALSE; c : UNKNOWN; d : SELF; e : ?;");
    ASSERT_EQ(rules.size(), 5U);
    EXPECT_EQ(pAs<LogicalValueExpression>(rules[0].expression)->getValue(), Logical::True);
    EXPECT_EQ(pAs<LogicalValueExpression>(rules[1].expression)->getValue(), Logical::False);
    EXPECT_EQ(pAs<LogicalValueExpression>(rules[2].expression)->getValue(), Logical::Unknown);
    EXPECT_EQ(pAs<ConstantExpression>(rules[3].expression)->getConstant(), Constant::Self);
    EXPECT_EQ(pAs<ConstantExpression>(rules[4].expression)->getConstant(), Constant::Indeterminate);
}

TEST_F(ExpressParserTest, IntervalHasItsOperandsAndOperatorsInSourceOrder) {
    const auto rules = rulesOf("w : {a < b <= c};");
    const auto* interval = pAs<IntervalExpression>(rules.at(0).expression);
    ASSERT_NE(interval, nullptr);
    EXPECT_EQ(sExpressionText(interval->getLow()), "a");
    EXPECT_EQ(interval->getLowOperator(), IntervalOperator::Less);
    EXPECT_EQ(sExpressionText(interval->getItem()), "b");
    EXPECT_EQ(interval->getHighOperator(), IntervalOperator::LessOrEqual);
    EXPECT_EQ(sExpressionText(interval->getHigh()), "c");
}

/// Notes the class of the node it was handed.
class ClassNoter : public ExpressionVisitor {
public:
    std::string sClassOf(const Expression& node) {
        name_.clear();
        node.accept(*this);
        return name_;
    }

    void visit(const GetExpression&) override { name_ += "Get"; }
    void visit(const QueryExpression&) override { name_ += "Query"; }
    void visit(const EnumerationValueExpression&) override { name_ += "EnumerationValue"; }
    void visit(const LogicalValueExpression&) override { name_ += "LogicalValue"; }
    void visit(const DoubleValueExpression&) override { name_ += "DoubleValue"; }
    void visit(const IntegerValueExpression&) override { name_ += "IntegerValue"; }
    void visit(const StringValueExpression&) override { name_ += "StringValue"; }
    void visit(const RepetitionExpression&) override { name_ += "Repetition"; }
    void visit(const AggregateInitializerExpression&) override { name_ += "AggregateInitializer"; }
    void visit(const IntervalExpression&) override { name_ += "Interval"; }
    void visit(const FunctionCallExpression&) override { name_ += "FunctionCall"; }
    void visit(const ConstantExpression&) override { name_ += "Constant"; }
    void visit(const BinaryExpression&) override { name_ += "Binary"; }
    void visit(const UnaryExpression&) override { name_ += "Unary"; }

private:
    std::string name_;
};

TEST_F(ExpressParserTest, EachNodeCallsTheVisitorForItsOwnClassOnce) {
    const Row rows[] = {
        {"a", "Get"},
        {"a.b", "Get"},
        {"a[1]", "Get"},
        {"QUERY(a <* b | c)", "Query"},
        {"TRUE", "LogicalValue"},
        {"1.", "DoubleValue"},
        {"1", "IntegerValue"},
        {"Kind.SOLID", "EnumerationValue"},
        {"'a'", "StringValue"},
        {"f(1)", "FunctionCall"},
        {"{a < b < c}", "Interval"},
        {"[1]", "AggregateInitializer"},
        {"SELF", "Constant"},
        {"a + b", "Binary"},
        {"a = b", "Binary"},
        {"-a", "Unary"},
    };
    ClassNoter noter;
    for (const auto& row : rows) {
        const auto rules = rulesOf("w : " + row.text + ';');
        ASSERT_EQ(rules.size(), 1U) << row.text;
        EXPECT_EQ(noter.sClassOf(*rules[0].expression), row.result) << row.text;
    }
    const auto rules = rulesOf("w : [1:2];");
    const auto* aggregate = pAs<AggregateInitializerExpression>(rules.at(0).expression);
    ASSERT_NE(aggregate, nullptr);
    EXPECT_EQ(noter.sClassOf(*aggregate->getElements().at(0)), "Repetition");
}

TEST_F(ExpressParserTest, ListHasNoNodeAfterItsLast) {
    const auto rules = rulesOf("w : [a, b];");
    const auto* aggregate = pAs<AggregateInitializerExpression>(rules.at(0).expression);
    ASSERT_NE(aggregate, nullptr);
    const auto& elements = aggregate->getElements();
    ASSERT_EQ(elements.size(), 2U);
    EXPECT_EQ(sExpressionText(*elements.at(1)), "b");
    EXPECT_THROW(elements.at(2), std::out_of_range);
}

// ---- Nesting and length

struct NestingRow {
    std::string_view name;
    std::string_view open;
    std::string_view core;
    std::string_view close;
};

// Each opening adds one level.
constexpr NestingRow Nestings[] = {
    {"parentheses", "(", "a", ")"},
    {"not", "NOT ", "a", ""},
    {"minus", "- ", "a", ""},
    {"plus", "+", "a", ""},
    {"aggregates", "[", "a", "]"},
    {"calls", "f(", "a", ")"},
    {"calls of schema objects", "Ent(", "a", ")"},
    {"queries in the source", "QUERY(x <* ", "a", " | b)"},
    {"queries in the condition", "QUERY(x <* b | ", "a", ")"},
    {"indices", "a[", "1", "]"},
    {"second indices", "a[1:", "1", "]"},
    {"intervals in the first place", "{", "a", " < b < c}"},
    {"intervals in the middle", "{a < ", "b", " < c}"},
    {"intervals in the last place", "{a < b < ", "c", "}"},
};

TEST_F(ExpressParserTest, NestingOf256LevelsPasses) {
    for (const auto& row : Nestings) {
        const auto text =
            "w : " + repeated(row.open, 256) + std::string(row.core) + repeated(row.close, 256) + ';';
        EXPECT_THAT(sParsed(text), StartsWith("w : ")) << row.name;
    }
}

TEST_F(ExpressParserTest, NestingOf257LevelsIsAnUnexpectedToken) {
    for (const auto& row : Nestings) {
        const auto text =
            "w : " + repeated(row.open, 257) + std::string(row.core) + repeated(row.close, 257) + ';';
        EXPECT_THAT(sParsed(text), StartsWith("Unexpected token at 1:")) << row.name;
    }
}

TEST_F(ExpressParserTest, LevelsOfAllKindsCountTogether) {
    const auto passes = repeated("(NOT [-", 64) + 'a' + repeated("])", 64);
    EXPECT_THAT(sParsed("w : " + passes + ';'), StartsWith("w : "));
    const auto fails = repeated("(NOT [-", 64) + "(a)" + repeated("])", 64);
    EXPECT_THAT(sParsed("w : " + fails + ';'), StartsWith("Unexpected token at 1:"));
}

TEST_F(ExpressParserTest, DeeperNestingIsReportedAtTheTokenAfterTheOpeningThatGoesTooDeep) {
    // The 257th parenthesis is the character at offset 4 + 256.
    EXPECT_EQ(sParsed("w : " + repeated("(", 257) + 'a' + repeated(")", 257) + ';'),
              "Unexpected token at 1:263");
    EXPECT_EQ(sParsed("w : " + repeated("(", 300) + 'a' + repeated(")", 300) + ';'),
              "Unexpected token at 1:263");
    // The 258th NOT ends at offset 4 + 257 * 4 + 2.
    EXPECT_EQ(sParsed("w : " + repeated("NOT ", 300) + "a;"), "Unexpected token at 1:1036");
}

TEST_F(ExpressParserTest, LevelsSideBySideDoNotAddUp) {
    const auto deep = repeated("(", 200) + 'a' + repeated(")", 200);
    EXPECT_THAT(sParsed("w : " + deep + " + " + deep + ";\nx : f(" + deep + ", " + deep + ");"),
                StartsWith("w : "));
    EXPECT_THAT(sParsed("w : " + repeated("(-a) + ", 1000) + "a;"), StartsWith("w : "));
}

TEST_F(ExpressParserTest, LevelsAreLeftWhenAnExpressionFails) {
    // The ';' is consumed where a ')' was expected; what follows nests as deep again.
    const auto text = repeated("(", 200) + "a; " + repeated("(", 200) + 'b' + repeated(")", 200);
    ExpressTokenizer tokenizer(text);
    ExpressParser parser(tokenizer, *schema_);
    EXPECT_THROW(parser.parseExpression(), ExpressParser::SyntaxError);
    EXPECT_EQ(sExpressionText(*parser.parseExpression()), "b");
}

TEST_F(ExpressParserTest, ManyOpeningsEndInTheSameReport) {
    for (const auto& row : Nestings)
        EXPECT_THAT(sParsed("w : " + repeated(row.open, 100000)), StartsWith("Unexpected token at 1:"))
            << row.name;
}

constexpr std::size_t Many = 100000;

TEST_F(ExpressParserTest, LongChainsOfOperatorsAreParsedAndDestroyed) {
    for (const std::string op : {"+", "-", "OR", "XOR", "*", "/", "MOD", "AND"}) {
        const auto expected = repeated("(", Many) + 'a' + repeated(' ' + op + " a)", Many);
        EXPECT_TRUE(sParsedExpression('a' + repeated(' ' + op + " a", Many)) == expected) << op;
    }
}

TEST_F(ExpressParserTest, LongChainsOfDifferentOperatorsAreParsedAndDestroyed) {
    const auto expected = repeated("(", 2 * Many) + 'a' + repeated(" - (b * c)) OR (d AND (- e)))", Many);
    EXPECT_TRUE(sParsedExpression('a' + repeated(" - b * c OR d AND -e", Many)) == expected);
}

TEST_F(ExpressParserTest, LongChainsOfQualifiersAreParsedAndDestroyed) {
    for (const std::string qualifier : {".b", "\\b", "[1]", "[1:2]"}) {
        const auto text = 'a' + repeated(qualifier, Many);
        EXPECT_TRUE(sParsedExpression(text) == text) << qualifier;
    }
    const auto mixed = "f(x)" + repeated("\\b.c[1]", Many);
    EXPECT_TRUE(sParsedExpression(mixed) == mixed);
}

TEST_F(ExpressParserTest, ChainThatFailsAtItsEndIsDestroyed) {
    EXPECT_THAT(sParsed("w : a" + repeated(" + a", Many) + " +;"), StartsWith("Unexpected token at 1:"));
    EXPECT_THAT(sParsed("w : a" + repeated(".a", Many) + ".;"), StartsWith("Expected token IDENTIFIER"));
}

TEST_F(ExpressParserTest, LongListsAreParsed) {
    EXPECT_TRUE(sParsedExpression("f(a" + repeated(", a", Many) + ')') ==
                "f(a" + repeated(", a", Many) + ')');
    EXPECT_TRUE(sParsedExpression("Ent(a" + repeated(", a", Many) + ')') ==
                "Ent(a" + repeated(", a", Many) + ')');
    EXPECT_TRUE(sParsedExpression("[1:2" + repeated(", 1:2", Many) + ']') ==
                "[(1 : 2)" + repeated(", (1 : 2)", Many) + ']');
}

TEST_F(ExpressParserTest, ManyRulesAreParsed) {
    EXPECT_EQ(rulesOf(repeated("w : a;\n", Many)).size(), Many);
}

} // namespace
