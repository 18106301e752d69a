// Each limit of a budget at both sides while a schema is read, and how long a reading goes on once it is
// asked to stop.

#include "Support/AssertCollector.h"
#include "Support/LookingMeter.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <stop_token>
#include <string>

namespace kiv::test {

namespace {

using ifc::def::Budget;
using ifc::def::BudgetExceeded;
using ifc::def::BudgetLimit;
using ifc::def::BudgetMeter;
using ifc::def::SchemaPset;

constexpr const char* Text = "SCHEMA S;\n"                 // 10 bytes
                             "ENTITY Wall;\n"              // 13
                             "  Name : STRING;\n"          // 17
                             "  Tag : Missing;\n"          // 17
                             "WHERE\n"                     // 6
                             "  R : Tag = 1 + 2;\n"        // 19
                             "END_ENTITY;\n"               // 12
                             "TYPE T = LIST OF Missing;\n" // 26
                             "END_TYPE;\n"                 // 10
                             "END_SCHEMA;\n";              // 12

/// What the text takes: all its bytes; the seven lines of the entity, of which the one of the header is read
/// as the first; Wall, its two attributes, the shared STRING, T and its LIST; the nodes `Tag`, `1`, `2`, `+`
/// and `=`; and one report, that there is no Missing to be the element of the list.
struct Row {
    const char* name;
    std::uint64_t Budget::*limit;
    std::uint64_t needed;
    BudgetLimit exceeded;
};

const Row Rows[] = {
    {"input", &Budget::maxInput, 142, BudgetLimit::Input},
    {"piece", &Budget::maxPiece, 84, BudgetLimit::Piece},
    {"objects", &Budget::maxObjects, 6, BudgetLimit::Objects},
    {"rule nodes", &Budget::maxRuleNodes, 5, BudgetLimit::RuleNodes},
    {"reports", &Budget::maxReports, 1, BudgetLimit::Reports},
};

/// Reads the text; what ended that, if anything did.
std::optional<BudgetExceeded> exceededBy(const std::string& text, const Budget& budget) {
    std::istringstream stream(text);
    try {
        EXPECT_NE(SchemaPset::pStepStreamRead(stream, budget), nullptr);
        return std::nullopt;
    } catch (const BudgetExceeded& exceeded) {
        return exceeded;
    }
}

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

class SchemaBudget : public testing::TestWithParam<Row> {};

TEST_P(SchemaBudget, IsEnoughAtItsLimit) {
    AssertCollector reports;
    Budget budget;
    budget.*GetParam().limit = GetParam().needed;
    EXPECT_FALSE(exceededBy(Text, budget)) << GetParam().name;
}

TEST_P(SchemaBudget, EndsTheReadingBeyondIt) {
    AssertCollector reports;
    Budget budget;
    budget.*GetParam().limit = GetParam().needed - 1;
    const auto exceeded = exceededBy(Text, budget);
    ASSERT_TRUE(exceeded) << GetParam().name;
    EXPECT_EQ(exceeded->getLimit(), GetParam().exceeded);
    EXPECT_EQ(exceeded->getValue(), GetParam().needed - 1);
}

INSTANTIATE_TEST_SUITE_P(Limits, SchemaBudget, testing::ValuesIn(Rows));

TEST(SchemaBudgetTest, MessageNamesLimitAndValue) {
    Budget budget;
    budget.maxRuleNodes = 4;
    EXPECT_STREQ(exceededBy(Text, budget)->what(), "more than 4 rule nodes are needed");
}

TEST(SchemaBudgetTest, ReportsThatNobodyListensToAreFree) {
    Budget budget;
    budget.maxReports = 0;
    EXPECT_FALSE(exceededBy(Text, budget));
}

TEST(SchemaBudgetTest, RequestedStopEndsTheReading) {
    std::stop_source source;
    Budget budget;
    budget.stop = source.get_token();
    EXPECT_FALSE(exceededBy(Text, budget));
    source.request_stop();
    const auto exceeded = exceededBy(Text, budget);
    ASSERT_TRUE(exceeded);
    EXPECT_EQ(exceeded->getLimit(), BudgetLimit::Stop);
    EXPECT_STREQ(exceeded->what(), "the reading was asked to stop");
}

TEST(SchemaBudgetTest, MemoryIsGivenBackWhenItIsExceeded) {
    Budget budget;
    budget.maxRuleNodes = 4;
    BudgetMeter meter(budget);
    std::istringstream stream(Text);
    EXPECT_THROW(SchemaPset::pStepStreamRead(stream, meter), BudgetExceeded);
    EXPECT_EQ(meter.getUsed(WorkMeter::Unit::HeldBytes), 0U);
}

TEST(SchemaBudgetTest, ReadingsThatShareAMeterShareItsBudget) {
    Budget budget;
    budget.maxObjects = 11;
    BudgetMeter meter(budget);
    std::istringstream first(Text);
    std::istringstream second(Text);
    const auto schema = SchemaPset::pStepStreamRead(first, meter);
    EXPECT_THROW(SchemaPset::pStepStreamRead(second, meter), BudgetExceeded);
    EXPECT_NE(schema->pObjectFromName("Wall"), nullptr);
}

TEST(SchemaBudgetTest, OfSeveralSchemasOnlyTheLastIsHeld) {
    Budget budget;
    BudgetMeter one(budget);
    BudgetMeter three(budget);
    std::istringstream text(Text);
    std::istringstream texts(std::string(Text) + Text + Text);
    const auto schema = SchemaPset::pStepStreamRead(text, one);
    const auto last = SchemaPset::pStepStreamRead(texts, three);
    // The blocks that are read ahead hold more where more is to come.
    EXPECT_LT(three.getUsed(WorkMeter::Unit::HeldBytes), one.getUsed(WorkMeter::Unit::HeldBytes) * 3 / 2);
}

struct Looks {
    std::uint64_t mostSteps;
    std::uint64_t objects;
};

/// The most steps between two looks while the text is read, also when its pieces are too long, and how many
/// objects it has.
Looks looksAt(const std::string& text) {
    Budget budget;
    budget.maxPiece = 1 << 14;
    LookingMeter meter(budget);
    std::istringstream stream(text);
    try {
        SchemaPset::pStepStreamRead(stream, meter);
    } catch (const BudgetExceeded& exceeded) {
        EXPECT_EQ(exceeded.getLimit(), BudgetLimit::Piece);
    }
    return {meter.getMost(), meter.getUsed(WorkMeter::Unit::Objects)};
}

struct Input {
    const char* name;
    std::function<std::string(std::size_t)> make;
};

const Input Inputs[] = {
    {"one long line", [](std::size_t size) { return "-- " + std::string(size * 8, 'x'); }},
    {"one long line outside of statements", [](std::size_t size) { return std::string(size * 8, ' '); }},
    {"one long list",
     [](std::size_t size) {
         return "TYPE E = ENUMERATION OF (" + sRepeated("Z#, \n", size) + "A);\nEND_TYPE;";
     }},
    {"long expressions",
     [](std::size_t size) {
         return sRepeated("TYPE T# = REAL;\nWHERE\nR : SELF = 0" + sRepeated(" + 1", 1000) + ";\nEND_TYPE;\n",
                          size / 1000);
     }},
    {"deep expressions",
     [](std::size_t size) {
         return sRepeated("TYPE T# = REAL;\nWHERE\nR : " + std::string(200, '(') + "1" +
                              std::string(200, ')') + ";\nEND_TYPE;\n",
                          size / 200);
     }},
    {"one long attribute",
     [](std::size_t size) { return "ENTITY E;\nA : " + std::string(size * 8, 'x') + ";\nEND_ENTITY;"; }},
    {"many attributes",
     [](std::size_t size) { return "ENTITY E;\n" + sRepeated("A# : REAL;\n", size) + "END_ENTITY;"; }},
    {"many entities",
     [](std::size_t size) { return sRepeated("ENTITY E#;\nA : REAL;\nEND_ENTITY;\n", size); }},
    {"many supertypes",
     [](std::size_t size) {
         return "ENTITY E;\nEND_ENTITY;\n" +
                sRepeated("ENTITY E#;\nSUBTYPE OF (E" + std::string() + "#E);\nEND_ENTITY;\n", size);
     }},
    {"a chain of types",
     [](std::size_t size) {
         return sRepeated("TYPE T# = X#;\nEND_TYPE;\nTYPE X# = T#;\nEND_TYPE;\n", size);
     }},
};

// What a host can rely on, as it limits both pieces and objects. Of what a byte takes, most is the sorting of
// a list; of what an object takes, the growth of the lists of all objects, which moves them one by one.
constexpr std::uint64_t StepsForAnObject = 8;

void PrintTo(const Input& input, std::ostream* stream) {
    *stream << input.name;
}

class SchemaStop : public testing::TestWithParam<Input> {};

TEST_P(SchemaStop, IsLookedAtAfterABoundedNumberOfSteps) {
    if (!isWorkCounted)
        GTEST_SKIP() << "nothing is counted with sanitizers";
    const auto text = [](std::size_t size) {
        return "SCHEMA S;\n" + GetParam().make(size) + "\nEND_SCHEMA;\n";
    };
    const auto few = looksAt(text(4'000));
    const auto many = looksAt(text(16'000));
    EXPECT_GT(few.mostSteps, 0U);
    EXPECT_LE(many.mostSteps, StepsForAByte << 14);
    // What grows with the text does so by its objects alone.
    EXPECT_LE(many.mostSteps,
              std::max<std::uint64_t>({2 * few.mostSteps, 16'000, StepsForAnObject * many.objects}));
}

INSTANTIATE_TEST_SUITE_P(Inputs, SchemaStop, testing::ValuesIn(Inputs));

} // namespace

} // namespace kiv::test
