#include "kivifc/Documents/ShownFailure.h"

#include <gtest/gtest.h>

namespace kiv::kivifc {

namespace {

using ifc::def::BudgetLimit;
using kit::FailureKind;

TEST(ShownFailure, ThePlaceIsAfterThePath) {
    const auto failure = shownFailure("walls.xml", {FailureKind::NotXml, "no element found", {3, 7, 0}, {}});
    EXPECT_EQ(failure.subject, "walls.xml:3:7");
    EXPECT_EQ(failure.reason, "no element found");
}

TEST(ShownFailure, AWholeFileHasNoPlace) {
    const auto failure = shownFailure("walls.xml", {FailureKind::Empty, "the file is empty", {}, {}});
    EXPECT_EQ(failure.subject, "walls.xml");
    EXPECT_EQ(failure.reason, "the file is empty");
}

TEST(ShownFailure, ALimitHasItsOption) {
    const auto failure =
        shownFailure("a.xml", {FailureKind::OverBudget, "more than 9 objects", {}, BudgetLimit::Objects});
    EXPECT_EQ(failure.reason, "more than 9 objects (--max-objects)");
    // A stop is none.
    EXPECT_EQ(shownFailure("a.xml", {FailureKind::OverBudget, "stopped", {}, BudgetLimit::Stop}).reason,
              "stopped");
}

} // namespace

} // namespace kiv::kivifc
