#include "Format/Ifc/Def/Store/VisitedDefinitions.h"

#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace kiv::test {

namespace {

using namespace ifc::def;

using Definitions = std::shared_ptr<const SchemaPropertySetDefinitions>;

Definitions pMade() {
    return std::make_shared<const SchemaPropertySetDefinitions>();
}

TEST(VisitedDefinitions, WhatLeavesDuringItsVisitLivesUntilTheVisitEnds) {
    auto leaving = pMade();
    const std::weak_ptr watched = leaving;
    {
        const VisitedDefinitions visited(*leaving);
        VisitedDefinitions::vKeep(leaving);
        leaving.reset();
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
}

TEST(VisitedDefinitions, NothingIsKeptThatIsNotVisited) {
    auto leaving = pMade();
    const auto other = pMade();
    const VisitedDefinitions visited(*other);
    VisitedDefinitions::vKeep(leaving);
    EXPECT_EQ(leaving.use_count(), 1);
    EXPECT_EQ(other.use_count(), 1);
}

/// Two visits of one collection, one within the visitor of the other, around a visit of another one.
TEST(VisitedDefinitions, EveryVisitAroundTheRemovalKeepsIt) {
    auto leaving = pMade();
    const auto other = pMade();
    const std::weak_ptr watched = leaving;
    {
        const VisitedDefinitions outer(*leaving);
        const VisitedDefinitions between(*other);
        {
            const VisitedDefinitions inner(*leaving);
            VisitedDefinitions::vKeep(leaving);
            leaving.reset();
            EXPECT_EQ(watched.use_count(), 2);
        }
        EXPECT_EQ(watched.use_count(), 1);
    }
    EXPECT_TRUE(watched.expired());
}

TEST(VisitedDefinitions, AVisitThatEndedKeepsNothing) {
    auto leaving = pMade();
    {
        const VisitedDefinitions outer(*leaving);
        { const VisitedDefinitions inner(*leaving); }
        VisitedDefinitions::vKeep(leaving);
        EXPECT_EQ(leaving.use_count(), 2);
    }
    VisitedDefinitions::vKeep(leaving);
    EXPECT_EQ(leaving.use_count(), 1);
}

TEST(VisitedDefinitions, AThreadKnowsItsOwnVisitsAlone) {
    const auto leaving = pMade();
    const VisitedDefinitions visited(*leaving);
    std::jthread([&] { VisitedDefinitions::vKeep(leaving); }).join();
    EXPECT_EQ(leaving.use_count(), 1);
}

} // namespace

} // namespace kiv::test
