#include "kivifc/Json/ExpressionJson.h"

#include "Support/ExpressionJson.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc {

namespace {

/// The JSON of the expression, which may name the entity Wall and the enumeration Kind.
std::string sJson(const std::string& expression) {
    const auto schema = kiv::test::schemaFromText("TYPE Kind = ENUMERATION OF (SOLID);\n"
                                                  "END_TYPE;\n"
                                                  "ENTITY Wall;\n"
                                                  " WHERE\n"
                                                  "  R : " +
                                                  expression +
                                                  ";\n"
                                                  "END_ENTITY;");
    const auto& rules = kiv::test::entityOf(*schema, "Wall").pWhere()->getRules();
    return rules.size() == 1 ? expressionJson(*rules[0].expression).dump() : "no rule";
}

/// In the rows, the letters a to z are plain references and 1 is the integer, to be readable.
std::string sShort(std::string json) {
    const auto replace = [&json](const std::string& what, const std::string& by) {
        for (auto pos = json.find(what); pos != std::string::npos; pos = json.find(what, pos + by.size()))
            json.replace(pos, what.size(), by);
    };
    for (char name = 'a'; name <= 'z'; ++name)
        replace(R"({"node":"GetExpression","name":")" + std::string(1, name) + "\"}", std::string(1, name));
    replace(R"({"node":"IntegerValueExpression","value":1})", "1");
    return json;
}

TEST(ExpressionJson, EveryNodeClassHasItsForm) {
    struct Row {
        const char* expression;
        const char* json;
    };
    const Row rows[] = {
        {"-a", R"({"node":"UnaryExpression","operator":"-","operand":a})"},
        {"+a", R"({"node":"UnaryExpression","operator":"+","operand":a})"},
        {"NOT a", R"({"node":"UnaryExpression","operator":"NOT","operand":a})"},
        {"a + b", R"({"node":"BinaryExpression","operands":[a,b],"operators":["+"]})"},
        {"SELF", R"({"node":"ConstantExpression","constant":"SELF"})"},
        {"?", R"({"node":"ConstantExpression","constant":"?"})"},
        {"f()", R"({"node":"FunctionCallExpression","name":"f","arguments":[]})"},
        {"Wall(a, 1)", R"({"node":"FunctionCallExpression","name":"Wall","arguments":[a,1]})"},
        {"{a <= b < c}", R"({"node":"IntervalExpression","operands":[a,b,c],"operators":["<=","<"]})"},
        {"[]", R"({"node":"AggregateInitializerExpression","elements":[]})"},
        {"[a : 1, b]", R"({"node":"AggregateInitializerExpression","elements":)"
                       R"([{"node":"RepetitionExpression","element":a,"count":1},b]})"},
        {"7", R"({"node":"IntegerValueExpression","value":7})"},
        {"2.0", R"({"node":"DoubleValueExpression","value":2.0})"},
        {"'x y'", R"({"node":"StringValueExpression","value":"x y"})"},
        {"TRUE", R"({"node":"LogicalValueExpression","value":"TRUE"})"},
        {"FALSE", R"({"node":"LogicalValueExpression","value":"FALSE"})"},
        {"UNKNOWN", R"({"node":"LogicalValueExpression","value":"UNKNOWN"})"},
        {"Kind.SOLID", R"({"node":"EnumerationValueExpression","type":"Kind","value":"SOLID"})"},
        {"QUERY(v <* a | b)", R"({"node":"QueryExpression","variable":"v","source":a,"condition":b})"},
        {"name", R"({"node":"GetExpression","name":"name"})"},
        {"a\\Wall.b[1][c:d]", R"({"node":"GetExpression","base":a,"qualifiers":[{"group":"Wall"},)"
                              R"({"attribute":"b"},{"index":1},{"index":c,"indexEnd":d}]})"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(sShort(sJson(row.expression)), row.json) << row.expression;
}

TEST(ExpressionJson, EveryBinaryOperatorHasItsText) {
    for (const std::string op : {"+", "-", "*", "/", "AND", "OR", "XOR", "MOD", "**", "=", "<>",
                                 ":=:", ":<>:", "<", ">", "<=", ">=", "IN"})
        EXPECT_EQ(sShort(sJson("a " + op + " b")),
                  R"({"node":"BinaryExpression","operands":[a,b],"operators":[")" + op + "\"]}");
    EXPECT_EQ(sShort(sJson("a || b")), R"({"node":"BinaryExpression","operands":[a,b],"operators":["OR"]})");
}

TEST(ExpressionJson, ChainsOfSumsAndProductsAreFlat) {
    EXPECT_EQ(sShort(sJson("a - b + c OR d XOR e")),
              R"({"node":"BinaryExpression","operands":[a,b,c,d,e],"operators":["-","+","OR","XOR"]})");
    EXPECT_EQ(
        sShort(sJson("a * b / c MOD d AND e || f")),
        R"({"node":"BinaryExpression","operands":[a,b,c,d,e,f],"operators":["*","/","MOD","AND","OR"]})");
    EXPECT_EQ(sShort(sJson("a * b - c")),
              R"({"node":"BinaryExpression","operands":[a,b,c],"operators":["*","-"]})");
}

TEST(ExpressionJson, OperandsOnTheRightNest) {
    EXPECT_EQ(sShort(sJson("a - (b - c)")),
              R"({"node":"BinaryExpression","operands":[a,{"node":"BinaryExpression","operands":[b,c],)"
              R"("operators":["-"]}],"operators":["-"]})");
    EXPECT_EQ(sShort(sJson("a - b * c")),
              R"({"node":"BinaryExpression","operands":[a,{"node":"BinaryExpression","operands":[b,c],)"
              R"("operators":["*"]}],"operators":["-"]})");
}

TEST(ExpressionJson, RelationsAndPowersNestOnTheLeftToo) {
    EXPECT_EQ(sShort(sJson("(a < b) AND c")),
              R"({"node":"BinaryExpression","operands":[{"node":"BinaryExpression","operands":[a,b],)"
              R"("operators":["<"]},c],"operators":["AND"]})");
    EXPECT_EQ(sShort(sJson("a ** b * c")),
              R"({"node":"BinaryExpression","operands":[{"node":"BinaryExpression","operands":[a,b],)"
              R"("operators":["**"]},c],"operators":["*"]})");
}

} // namespace

} // namespace kiv::kivifc
