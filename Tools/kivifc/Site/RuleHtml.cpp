#include "kivifc/Site/RuleHtml.h"

#include "kiv/Kit/Express/ExpressionText.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/DistinctRules.h"
#include "kivifc/Site/ExpressionLayout.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// Closes the former item, where there is one, and begins what the step says.
void vStepWrite(LayoutStep::Kind kind, bool isFirst, Html& html) {
    switch (kind) {
    case LayoutStep::Kind::ListBegin:
        html << (isFirst ? Markup("<ul class=\"operands\">\n<li>") : Markup("<ul>\n<li>"));
        break;
    case LayoutStep::Kind::Item:
        html << "</li>\n<li>";
        break;
    case LayoutStep::Kind::ListEnd:
        html << "</li>\n</ul>\n";
        break;
    }
}

/// What is after each step, up to the next one.
std::vector<std::string_view> piecesOf(std::string_view text, const std::vector<LayoutStep>& steps) {
    std::vector<std::string_view> pieces;
    for (std::size_t index = 0; index < steps.size(); ++index) {
        const auto end = index + 1 < steps.size() ? steps[index + 1].at : text.size();
        pieces.push_back(ascii::trimmed(text.substr(steps[index].at, end - steps[index].at), " "));
    }
    return pieces;
}

} // namespace

void vExpressionWrite(const SiteModel& model, const ExpressScope& scope, const Expression& expression,
                      Html& html) {
    const auto joined =
        kit::joinedExpressionAs(expression, {.pSchema = &model.getSchema(), .groupsAnd = true});
    const auto steps = layoutOf(joined);
    const auto pieces = piecesOf(joined.text, steps);
    // There is nothing after the last step.
    const auto between = [&](std::size_t index) {
        if (index > 0 && !pieces[index - 1].empty())
            html << "</code>";
        vStepWrite(steps[index].kind, index == 0, html);
        if (!pieces[index].empty())
            html << "<code>";
    };
    vExpressPiecesWrite(model, scope, pieces, between, html);
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
