#include "kiv/Kit/Express/ExpressionOperators.h"

#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace kiv::kit {

namespace {

using namespace ifc::def::schema;

TEST(ExpressionOperators, EachHasItsText) {
    EXPECT_EQ(sOf(UnaryOperators, UnaryOperator::Plus), "+");
    EXPECT_EQ(sOf(UnaryOperators, UnaryOperator::Minus), "-");
    EXPECT_EQ(sOf(UnaryOperators, UnaryOperator::Not), "NOT");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Add), "+");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Subtract), "-");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Multiply), "*");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Divide), "/");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::And), "AND");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Or), "OR");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Xor), "XOR");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Mod), "MOD");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Power), "**");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Equal), "=");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::NotEqual), "<>");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::InstanceEqual), ":=:");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::InstanceNotEqual), ":<>:");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Less), "<");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::Greater), ">");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::LessOrEqual), "<=");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::GreaterOrEqual), ">=");
    EXPECT_EQ(sOf(BinaryOperators, BinaryOperator::In), "IN");
    EXPECT_EQ(sOf(IntervalOperators, IntervalOperator::Less), "<");
    EXPECT_EQ(sOf(IntervalOperators, IntervalOperator::LessOrEqual), "<=");
    EXPECT_EQ(sOf(Constants, Constant::Self), "SELF");
    EXPECT_EQ(sOf(Constants, Constant::Indeterminate), "?");
    EXPECT_EQ(sOf(Logicals, Logical::True), "TRUE");
    EXPECT_EQ(sOf(Logicals, Logical::False), "FALSE");
    EXPECT_EQ(sOf(Logicals, Logical::Unknown), "UNKNOWN");
}

TEST(ExpressionOperators, WhatIsNoEnumeratorHasNone) {
    EXPECT_THROW(sOf(Logicals, static_cast<Logical>(3)), std::out_of_range);
}

} // namespace

} // namespace kiv::kit
