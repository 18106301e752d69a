#include "kivifc/Site/RuleHtml.h"

#include "kiv/Kit/Express/ExpressionText.h"
#include "kivifc/Site/DistinctRules.h"

#include <algorithm>
#include <cstddef>
#include <optional>
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

    void vWrite(const Expression& expression) {
        vListWrite(operandsOf(expression, BinaryOperator::And), "AND", {0, 0});
    }

private:
    /// Where a list is, and how many parentheses its last operand closes.
    struct Place {
        int depth;
        std::size_t closing;
    };

    /// An item for each operand; `word` joins them.
    void vListWrite(const std::vector<const Expression*>& operands, Markup word, const Place& place) {
        html_ << "<ul class=\"operands\">\n";
        for (std::size_t index = 0; index < operands.size(); ++index) {
            html_ << "<li>";
            if (index > 0)
                html_ << "<b>" << word << "</b> ";
            const bool isLoose = operands.size() > 1 && isLooserThanJoin(*operands[index]);
            const bool isLast = index + 1 == operands.size();
            vOperandWrite(*operands[index], isLoose, {place.depth, isLast ? place.closing : 0});
            html_ << "</li>\n";
        }
        html_ << "</ul>\n";
    }

    /// What is laid out on several lines has its closing parenthesis on the last one.
    void vOperandWrite(const Expression& operand, bool isLoose, Place place) {
        place.closing += isLoose ? 1 : 0;
        const auto op = place.depth < DepthMax ? laidOutJoin(operand) : std::nullopt;
        if (!op)
            return vTextWrite(operand, isLoose, place.closing);
        html_ << (isLoose ? Markup("<code>(</code>") : Markup(""));
        ++place.depth;
        vListWrite(operandsOf(operand, *op), *op == BinaryOperator::Or ? Markup("OR") : Markup("AND"), place);
    }

    /// The operator by whose operands it is shown; none when one line has room for it. AND within OR is
    /// easily misread, however short it is.
    std::optional<BinaryOperator> laidOutJoin(const Expression& expression) const {
        const auto* join = dynamic_cast<const BinaryExpression*>(&expression);
        if (!join)
            return std::nullopt;
        const auto op = join->getOperator();
        const bool isOr = op == BinaryOperator::Or && !kit::isInstanceJoin(*join, model_.getSchema());
        if (!isOr && op != BinaryOperator::And)
            return std::nullopt;
        if ((isOr && hasAnd(expression)) || sText(expression).size() > LineSize)
            return op;
        return std::nullopt;
    }

    /// Among the operands of an OR.
    static bool hasAnd(const Expression& expression) {
        return std::ranges::any_of(operandsOf(expression, BinaryOperator::Or), [](const Expression* operand) {
            return pJoin(*operand, BinaryOperator::And) != nullptr;
        });
    }

    void vTextWrite(const Expression& expression, bool isLoose, std::size_t closing) {
        html_ << "<code>" << (isLoose ? Markup("(") : Markup(""));
        vExpressWrite(model_, scope_, sText(expression), html_);
        for (std::size_t count = 0; count < closing; ++count)
            html_ << ")";
        html_ << "</code>";
    }

    std::string sText(const Expression& expression) const {
        return kit::sExpressionAs(expression, {.pSchema = &model_.getSchema(), .groupsAnd = true});
    }

    /// It needs parentheses to be an operand.
    static bool isLooserThanJoin(const Expression& operand) {
        const auto* binary = dynamic_cast<const BinaryExpression*>(&operand);
        return binary && binary->getOperator() != BinaryOperator::Power;
    }

    const SiteModel& model_;
    const ExpressScope& scope_;
    Html& html_;
};

} // namespace

void vExpressionWrite(const SiteModel& model, const ExpressScope& scope, const Expression& expression,
                      Html& html) {
    Layout(model, scope, html).vWrite(expression);
}

std::vector<RowId> ruleIdsTake(const Where* where, RowIds& ids) {
    std::vector<RowId> taken;
    for (const auto* rule : distinctRules(where))
        taken.push_back(ids.take(rule->label.getView()));
    return taken;
}

void vWhereWrite(const SiteModel& model, const ExpressScope& scope, const Where* where,
                 const std::vector<RowId>& ids, Html& html) {
    const auto rules = distinctRules(where);
    if (rules.empty())
        return;
    vSectionBegin(html, "where", "Rules", rules.size());
    auto id = ids.begin();
    for (const auto* rule : rules) {
        const auto label = rule->label.getView();
        html << "<div class=\"rule\"" << attribute("id", id->getText()) << "><h3><code>"
             << escaped(sShort(label)) << "</code>";
        vRowLinkWrite(html, *id++, label);
        html << "</h3>\n";
        vExpressionWrite(model, scope, *rule->expression, html);
        html << "</div>\n";
    }
    vSectionEnd(html);
}

std::vector<RowId> unreadRuleIdsTake(const SiteModel& model, const ObjectBase& owner, RowIds& ids) {
    std::vector<RowId> taken;
    for (const auto* rule : model.getDeclarations().unreadRulesOf(owner))
        taken.push_back(ids.take(rule->name.text));
    return taken;
}

void vUnreadRulesWrite(const SiteModel& model, const ExpressScope& scope, const ObjectBase& owner,
                       const std::vector<RowId>& ids, Html& html) {
    const auto& rules = model.getDeclarations().unreadRulesOf(owner);
    if (rules.empty())
        return;
    vSectionBegin(html, "unread", "Rules that could not be read", rules.size());
    html << "<p>Shown as the file has them. A rule that cannot be parsed ends the reading of its "
            "clause.</p>\n";
    auto id = ids.begin();
    for (const auto* rule : rules) {
        const auto label = rule->name.text;
        html << "<div class=\"rule\"" << attribute("id", id->getText()) << "><h3><code>"
             << escaped(sShort(label)) << "</code>";
        vRowLinkWrite(html, *id++, label);
        html << "</h3>\n<pre class=\"express\"><code>";
        vExpressWrite(model, scope, rule->expression, html);
        html << "</code></pre></div>\n";
    }
    vSectionEnd(html);
}

} // namespace kiv::kivifc::site
