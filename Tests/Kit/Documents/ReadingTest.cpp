#include "Kit/Documents/Reading.h"

#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/IfcBudget.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::BudgetExceeded;
using ifc::def::BudgetLimit;

TextFile takenWithin(std::uint64_t maxInput, std::string text) {
    ifc::def::Budget budget;
    budget.maxInput = maxInput;
    ifc::def::BudgetMeter meter(budget);
    return textTake(std::move(text), meter);
}

TEST(Reading, ATextIsTakenUpToTheLimit) {
    EXPECT_EQ(takenWithin(4, "wall").text, "wall");
    EXPECT_EQ(takenWithin(4, "wall").failure, "");
    EXPECT_EQ(takenWithin(0, "").text, "");
}

TEST(Reading, ALongerTextIsOverTheLimitOfInput) {
    try {
        takenWithin(4, "walls");
        FAIL();
    } catch (const BudgetExceeded& exceeded) {
        EXPECT_EQ(exceeded.getLimit(), BudgetLimit::Input);
        EXPECT_EQ(exceeded.getValue(), 4U);
    }
}

template <class Exception>
ReadFailure failureFor(const Exception& thrown) {
    try {
        throw thrown;
    } catch (...) {
        return caughtFailure();
    }
}

TEST(Reading, EachExceptionIsAFailureOfItsKind) {
    const auto memory = failureFor(std::bad_alloc());
    EXPECT_EQ(memory.kind, FailureKind::OutOfMemory);
    EXPECT_EQ(memory.reason, "not enough memory");
    const auto literal = failureFor(std::out_of_range("stoi"));
    EXPECT_EQ(literal.kind, FailureKind::LiteralOutOfRange);
    EXPECT_EQ(literal.reason, "a literal of a WHERE rule is out of range: stoi");
    const auto open = failureFor(kiv::exception("whatever"));
    EXPECT_EQ(open.kind, FailureKind::ListLeftOpen);
    EXPECT_EQ(open.reason, "the schema ends in the middle of a list of names");
    const auto other = failureFor(std::runtime_error("no disk"));
    EXPECT_EQ(other.kind, FailureKind::Unreadable);
    EXPECT_EQ(other.reason, "no disk");
    for (const auto& failure : {memory, literal, open, other}) {
        EXPECT_EQ(failure.position, TextPosition());
        EXPECT_FALSE(failure.limit);
    }
}

TEST(Reading, AnExceededBudgetSaysWhichLimit) {
    const BudgetExceeded thrown(BudgetLimit::Objects, 7);
    const auto failure = failureFor(thrown);
    EXPECT_EQ(failure.kind, FailureKind::OverBudget);
    EXPECT_EQ(failure.reason, thrown.what());
    EXPECT_EQ(failure.limit, BudgetLimit::Objects);
}

TEST(Reading, WhatIsNoStandardExceptionGoesOn) {
    EXPECT_THROW(failureFor(42), int);
}

} // namespace

} // namespace kiv::kit
