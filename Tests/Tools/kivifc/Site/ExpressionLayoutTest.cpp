#include "kivifc/Site/ExpressionLayout.h"

#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kivifc::site::test {

namespace {

/// The lists that an expression is shown as: "{" begins one, "/" the next item, "}" ends it.
std::string sLayout(const std::string& expression) {
    const auto schema =
        kiv::test::schemaFromText("ENTITY Wall;\n WHERE\n  R : " + expression + ";\nEND_ENTITY;");
    const auto& rules = kiv::test::entityOf(*schema, "Wall").pWhere()->getRules();
    if (rules.size() != 1)
        return "no rule";
    const auto joined = kit::joinedExpressionAs(*rules[0].expression, {.groupsAnd = true});
    auto text = joined.text;
    const auto steps = layoutOf(joined);
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        const auto* mark = step->kind == LayoutStep::Kind::ListBegin ? "{"
                           : step->kind == LayoutStep::Kind::Item    ? "/"
                                                                     : "}";
        text.insert(step->at, mark);
    }
    return text;
}

struct LayoutRow {
    std::string expression;
    std::string layout;
};

class ExpressionLayout : public testing::TestWithParam<LayoutRow> {};

TEST_P(ExpressionLayout, HasALineForEachOperand) {
    EXPECT_EQ(sLayout(GetParam().expression), GetParam().layout);
}

const std::string LongName(60, 'n');

INSTANTIATE_TEST_SUITE_P(
    All, ExpressionLayout,
    testing::Values(LayoutRow{"a", "{a}"}, LayoutRow{"a AND b AND c", "{a /AND b /AND c}"},
                    // Wherever AND is.
                    LayoutRow{"NOT (a AND b)", "{NOT ({a /AND b)}}"},
                    LayoutRow{"(a AND b) XOR c", "{({a /AND b}) XOR c}"},
                    LayoutRow{"SIZEOF(QUERY(x <* y | a AND b)) = 0",
                              "{SIZEOF(QUERY(x <* y | {a /AND b})) = 0}"},
                    LayoutRow{"f(a AND b, c)", "{f({a /AND b}, c)}"},
                    LayoutRow{"a AND (b AND c) AND d", "{a /AND ({b /AND c)} /AND d}"},
                    LayoutRow{"a AND NOT (b AND NOT (c AND d))", "{a /AND NOT ({b /AND NOT ({c /AND d))}}}"},
                    // An operand that is the result of another operator.
                    LayoutRow{"a AND b * c", "{{a /AND b} * c}"},
                    // Of OR only where an operand takes several lines, or all of them more than one.
                    LayoutRow{"a OR b", "{a OR b}"}, LayoutRow{"a OR b AND c", "{a /OR ({b /AND c)}}"},
                    LayoutRow{"a OR f(b AND c)", "{a /OR f({b /AND c)}}"},
                    LayoutRow{"(a OR b) AND c", "{(a OR b) /AND c}"},
                    LayoutRow{"a OR " + LongName, "{a OR " + LongName + "}"},
                    LayoutRow{"a OR b OR c OR " + LongName, "{a /OR b /OR c /OR " + LongName + "}"}));

/// The thirteenth is text.
TEST(ExpressionLayout, ListsInListsHaveALimit) {
    std::string expression = "a AND b";
    std::string layout = "a AND b";
    for (int depth = 0; depth < 12; ++depth) {
        expression = "a AND NOT (" + expression + ")";
        layout = "{a /AND NOT (" + layout;
    }
    EXPECT_EQ(sLayout(expression), layout + std::string(12, ')') + std::string(12, '}'));
}

} // namespace

} // namespace kiv::kivifc::site::test
