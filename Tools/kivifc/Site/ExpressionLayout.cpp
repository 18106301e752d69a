#include "kivifc/Site/ExpressionLayout.h"

#include <algorithm>
#include <string_view>

namespace kiv::kivifc::site {

namespace {

using Joins = std::vector<const kit::ExpressionJoin*>;

/// An OR that is longer than this is laid out.
constexpr std::size_t LineSize = 72;
/// Lists in lists; more would leave no room on their lines.
constexpr std::size_t ListsMax = 12;

/// Those that take several lines, in the same order.
Joins laidOutOf(const std::vector<kit::ExpressionJoin>& joins) {
    Joins laidOut;
    for (auto join = joins.rbegin(); join != joins.rend(); ++join) {
        // Of those that begin where this one does or after that, the first is in it if any is.
        const bool hasLines = !laidOut.empty() && laidOut.back()->begin < join->end;
        const bool isAnd = join->op == ifc::def::schema::BinaryOperator::And;
        if (isAnd || hasLines || join->end - join->begin > LineSize)
            laidOut.push_back(&*join);
    }
    std::ranges::reverse(laidOut);
    return laidOut;
}

/// Without what is in too many others.
Joins shallowOf(const Joins& joins) {
    Joins shallow;
    std::vector<std::size_t> ends;
    for (const auto* join : joins) {
        while (!ends.empty() && ends.back() <= join->begin)
            ends.pop_back();
        if (ends.size() == ListsMax)
            continue;
        ends.push_back(join->end);
        shallow.push_back(join);
    }
    return shallow;
}

/// Parentheses that close after the last operand are on its line, unless something other than the next item
/// comes after them.
std::size_t listEnd(std::string_view text, std::size_t end, const std::vector<std::size_t>& words) {
    const auto closed = std::min(text.find_first_not_of(')', end), text.size());
    const bool isLast = closed == text.size() || std::ranges::binary_search(words, closed + 1);
    return isLast ? closed : end;
}

} // namespace

std::vector<LayoutStep> layoutOf(const kit::JoinedExpression& joined) {
    const std::string_view text = joined.text;
    const auto joins = shallowOf(laidOutOf(joined.joins));
    std::vector<std::size_t> words;
    for (const auto* join : joins)
        words.insert(words.end(), join->words.begin(), join->words.end());
    std::ranges::sort(words);

    std::vector<LayoutStep> steps;
    if (joins.empty() || joins.front()->end - joins.front()->begin != text.size())
        steps = {{LayoutStep::Kind::ListBegin, 0}, {LayoutStep::Kind::ListEnd, text.size()}};
    for (const auto* join : joins) {
        steps.push_back({LayoutStep::Kind::ListBegin, join->begin});
        steps.push_back({LayoutStep::Kind::ListEnd, listEnd(text, join->end, words)});
    }
    for (const auto word : words)
        steps.push_back({LayoutStep::Kind::Item, word});
    std::ranges::stable_sort(steps, {}, &LayoutStep::at);
    return steps;
}

} // namespace kiv::kivifc::site
