#include "kivifc/Site/RuleHtml.h"

#include "kiv/Kit/Express/ExpressionText.h"
#include "kivifc/Site/DistinctRules.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// What is longer than this is laid out on lines of its own.
constexpr std::size_t LineSize = 72;
/// Within AND, OR; within that, AND again. More would be steps that nobody follows.
constexpr int DepthMax = 3;

const BinaryExpression* pJoin(const Expression& expression, BinaryOperator op) {
    const auto* binary = dynamic_cast<const BinaryExpression*>(&expression);
    return binary && binary->getOperator() == op ? binary : nullptr;
}

/// What the operator joins, in order. Chains grow to the left as long as the text likes.
std::vector<const Expression*> operandsOf(const Expression& expression, BinaryOperator op) {
    std::vector<const Expression*> operands;
    const auto* rest = &expression;
    while (const auto* join = pJoin(*rest, op)) {
        operands.push_back(&join->getRight());
        rest = &join->getLeft();
    }
    operands.push_back(rest);
    std::ranges::reverse(operands);
    return operands;
}

class Layout {
public:
    Layout(const SiteModel& model, const ExpressScope& scope, Html& html) :
        model_(model), scope_(scope), html_(html) {}

    void vWrite(const Expression& expression, int depth) {
        if (depth < DepthMax) {
            for (const auto op : {BinaryOperator::And, BinaryOperator::Or}) {
                const bool isAlways = depth == 0 && op == BinaryOperator::And;
                if (pJoin(expression, op) && (isAlways || kit::sExpression(expression).size() > LineSize))
                    return vJoinWrite(expression, op, depth);
            }
        }
        vExpressWrite(model_, scope_, kit::sExpression(expression), html_);
    }

private:
    void vJoinWrite(const Expression& expression, BinaryOperator op, int depth) {
        bool isFirst = true;
        for (const auto* operand : operandsOf(expression, op)) {
            if (!std::exchange(isFirst, false)) {
                html_ << "\n";
                vIndentWrite(depth);
                html_ << "<span class=\"kw\">" << (op == BinaryOperator::And ? Markup("AND") : Markup("OR"))
                      << "</span> ";
            }
            vOperandWrite(*operand, depth + 1);
        }
    }

    /// In parentheses when it is made with another operator than a power.
    void vOperandWrite(const Expression& operand, int depth) {
        const auto* binary = dynamic_cast<const BinaryExpression*>(&operand);
        const bool isLoose = binary && binary->getOperator() != BinaryOperator::Power;
        if (isLoose)
            html_ << "(";
        vWrite(operand, depth);
        if (isLoose)
            html_ << ")";
    }

    void vIndentWrite(int depth) {
        for (int level = 0; level < depth; ++level)
            html_ << "    ";
    }

    const SiteModel& model_;
    const ExpressScope& scope_;
    Html& html_;
};

} // namespace

void vExpressionWrite(const SiteModel& model, const ExpressScope& scope, const Expression& expression,
                      Html& html) {
    Layout(model, scope, html).vWrite(expression, 0);
}

void vWhereWrite(const SiteModel& model, const ExpressScope& scope, const Where* where, RowIds& ids,
                 Html& html) {
    const auto rules = distinctRules(where);
    if (rules.empty())
        return;
    vSectionBegin(html, "where", "Rules", rules.size());
    html << "<dl class=\"where\">\n";
    for (const auto* rule : rules) {
        const auto label = rule->label.getView();
        const auto id = ids.sTake(label);
        html << "<dt" << attribute("id", id) << "><code>" << escaped(sShort(label)) << "</code>";
        vRowLinkWrite(html, id, label);
        html << "</dt>\n<dd><pre class=\"express\"><code>";
        vExpressionWrite(model, scope, *rule->expression, html);
        html << "</code></pre></dd>\n";
    }
    html << "</dl>\n";
    vSectionEnd(html);
}

} // namespace kiv::kivifc::site
