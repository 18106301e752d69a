#include "kiv/Format/Ifc/Def/IfcBudget.h"

#include <exception>
#include <string_view>

namespace kiv::ifc::def {

namespace {

/// What there would be too much of; in the order of `BudgetLimit`, and of `WorkMeter::Unit` as far as that
/// goes.
constexpr std::string_view LimitTexts[] = {
    "bytes of input", "bytes of memory", "bytes in one statement or piece of markup",
    "objects",        "rule nodes",      "reports",
};

std::string messageOf(BudgetLimit limit, std::uint64_t value) {
    if (limit == BudgetLimit::Stop)
        return "the reading was asked to stop";
    return "more than " + std::to_string(value) + " " +
           std::string(LimitTexts[static_cast<std::size_t>(limit)]) + " are needed";
}

constexpr auto Held = static_cast<std::size_t>(WorkMeter::Unit::HeldBytes);
constexpr auto Piece = static_cast<std::size_t>(WorkMeter::Unit::PieceBytes);

} // namespace

BudgetExceeded::BudgetExceeded(BudgetLimit limit, std::uint64_t value) :
    exception(messageOf(limit, value)), limit_(limit), value_(value) {}
BudgetExceeded::BudgetExceeded(const BudgetExceeded& other) = default;
BudgetExceeded& BudgetExceeded::operator=(const BudgetExceeded& other) = default;
BudgetExceeded::~BudgetExceeded() = default;

BudgetMeter::BudgetMeter(const Budget& budget) :
    budget_(budget), limits_{budget.maxInput,   budget.maxMemory,    budget.maxPiece,
                             budget.maxObjects, budget.maxRuleNodes, budget.maxReports} {}

BudgetMeter::~BudgetMeter() = default;

void BudgetMeter::vTake(Unit unit, std::uint64_t amount) {
    const auto index = static_cast<std::size_t>(unit);
    // Never more than the limit, so that the difference is not negative.
    if (amount > limits_[index] - used_[index])
        throw BudgetExceeded(static_cast<BudgetLimit>(index), limits_[index]);
    used_[index] += amount;
}

void BudgetMeter::vMemoryGiveBack(std::uint64_t bytes) noexcept {
    used_[Held] -= bytes;
}

void BudgetMeter::vPieceBegin() {
    used_[Piece] = 0;
}

void BudgetMeter::vLook() {
    if (budget_.stop.stop_requested())
        throw BudgetExceeded(BudgetLimit::Stop, 0);
}

BudgetMeter::Reading::Reading(BudgetMeter& meter) :
    meter_(meter),
    heldBefore_(meter.getUsed(Unit::HeldBytes)),
    exceptionsBefore_(std::uncaught_exceptions()) {}

BudgetMeter::Reading::~Reading() {
    if (std::uncaught_exceptions() > exceptionsBefore_)
        meter_.used_[Held] = heldBefore_;
}

} // namespace kiv::ifc::def
