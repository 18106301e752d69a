#include "kivifc/Documents/ReadingLimits.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace kiv::kivifc {

namespace {

using ifc::def::Budget;
using ifc::def::BudgetLimit;

constexpr std::array LimitOptions{
    LimitOption{BudgetLimit::Input, "--max-input", &Budget::maxInput, true, "The most bytes of a file"},
    LimitOption{BudgetLimit::Memory, "--max-memory", &Budget::maxMemory, true,
                "The most bytes of memory for what a file holds"},
    LimitOption{BudgetLimit::Piece, "--max-piece", &Budget::maxPiece, true,
                "The most bytes of one statement, tag or comment"},
    LimitOption{BudgetLimit::Objects, "--max-objects", &Budget::maxObjects, false,
                "The most objects and attributes of a file"},
    LimitOption{BudgetLimit::RuleNodes, "--max-rule-nodes", &Budget::maxRuleNodes, false,
                "The most nodes of the rules of a schema"},
    LimitOption{BudgetLimit::Reports, "--max-reports", &Budget::maxReports, false,
                "The most problems that reading a file may report"},
};

} // namespace

std::span<const LimitOption> getLimitOptions() {
    return LimitOptions;
}

Budget& readingBudget() {
    static Budget budget;
    return budget;
}

kit::ReadOptions readingOptions(bool withPositions) {
    return {readingBudget(), withPositions};
}

std::string sLimitFailure(const ifc::def::BudgetExceeded& exceeded) {
    return sLimitFailure(exceeded.getLimit(), exceeded.what());
}

std::string sLimitFailure(BudgetLimit limit, const std::string& reason) {
    const auto option = std::ranges::find(LimitOptions, limit, &LimitOption::limit);
    return option == LimitOptions.end() ? reason : fmt::format("{} ({})", reason, option->name);
}

std::string sLimits() {
    std::string text = "Limits of each file that is read:\n";
    const Budget defaults;
    for (const auto& option : LimitOptions)
        text += fmt::format("  {:<18}{:>12}  {}\n", option.name, defaults.*option.value, option.description);
    text.pop_back();
    return text;
}

} // namespace kiv::kivifc
