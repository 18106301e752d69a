#include "kivifc/Documents/ReadingLimits.h"

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace kiv::kivifc {

namespace {

using ifc::def::Budget;
using ifc::def::BudgetExceeded;
using ifc::def::BudgetLimit;

TEST(ReadingLimits, EachLimitHasOneOption) {
    std::set<BudgetLimit> limits;
    std::set<std::string> names;
    for (const auto& option : getLimitOptions()) {
        EXPECT_TRUE(limits.insert(option.limit).second) << option.name;
        EXPECT_TRUE(names.insert(option.name).second) << option.name;
    }
    EXPECT_EQ(limits, (std::set{BudgetLimit::Input, BudgetLimit::Memory, BudgetLimit::Piece,
                                BudgetLimit::Objects, BudgetLimit::RuleNodes, BudgetLimit::Reports}));
}

constexpr WorkMeter::Unit Units[] = {WorkMeter::Unit::InputBytes, WorkMeter::Unit::HeldBytes,
                                     WorkMeter::Unit::PieceBytes, WorkMeter::Unit::Objects,
                                     WorkMeter::Unit::RuleNodes,  WorkMeter::Unit::Reports};

// What the option sets is what ends the reading.
TEST(ReadingLimits, AnOptionSetsItsLimit) {
    for (const auto& option : getLimitOptions()) {
        Budget budget;
        budget.*option.value = 0;
        ifc::def::BudgetMeter meter(budget);
        std::set<BudgetLimit> exceeded;
        for (const auto unit : Units) {
            try {
                meter.vTake(unit, 1);
            } catch (const BudgetExceeded& error) {
                exceeded.insert(error.getLimit());
            }
        }
        EXPECT_EQ(exceeded, std::set{option.limit}) << option.name;
    }
}

TEST(ReadingLimits, FilesAreReadWithinThem) {
    const auto before = readingBudget();
    readingBudget().maxObjects = 7;
    EXPECT_EQ(readingOptions().budget.maxObjects, 7U);
    EXPECT_FALSE(readingOptions().withPositions);
    EXPECT_TRUE(readingOptions(true).withPositions);
    readingBudget() = before;
}

TEST(ReadingLimits, AFailureNamesTheOption) {
    const BudgetExceeded exceeded(BudgetLimit::Piece, 9);
    EXPECT_EQ(sLimitFailure(exceeded), std::string(exceeded.what()) + " (--max-piece)");
    EXPECT_EQ(sLimitFailure(BudgetLimit::Stop, "stopped"), "stopped");
}

TEST(ReadingLimits, TheTableHasALineForEach) {
    const auto text = sLimits();
    EXPECT_TRUE(text.starts_with("Limits of each file that is read:\n  --max-input "));
    EXPECT_FALSE(text.ends_with('\n'));
    std::size_t lines = 1;
    for (const char byte : text)
        lines += byte == '\n' ? 1 : 0;
    EXPECT_EQ(lines, 1 + getLimitOptions().size());
}

} // namespace

} // namespace kiv::kivifc
