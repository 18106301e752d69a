#include "kiv/Kit/Documents/Assertion.h"

#include "Support/CountingMeter.h"

#include <gtest/gtest.h>
#include <new>
#include <string>
#include <utility>

namespace kiv::kit {

namespace {

constexpr std::size_t Long = AssertionTexts::maxCompared + 1;

TEST(Assertion, KeepsWhatAReportSays) {
    test::CountingMeter meter;
    AssertionTexts texts;
    std::string message = "Type not found";
    const auto kept = texts.kept({4, message, "Type::vUpdate", "IfcSchemaType.cpp", 68}, meter);
    message = "overwritten";
    EXPECT_EQ(kept, (Assertion{4, "Type not found", "Type::vUpdate", "IfcSchemaType.cpp", 68}));
}

TEST(Assertion, EqualTextsAreThereOnce) {
    test::CountingMeter meter;
    AssertionTexts texts;
    const auto first = texts.kept({0, std::string("m"), "function", "file", 1}, meter);
    const auto held = meter.held;
    EXPECT_GE(held, std::string_view("mfunctionfile").size());
    const auto second = texts.kept({0, std::string("m"), "function", "file", 2}, meter);
    EXPECT_EQ(meter.held, held);
    EXPECT_EQ(second.message.data(), first.message.data());
    EXPECT_EQ(second.line, 2);
}

TEST(Assertion, ALongTextOfOnePlaceIsThereOnce) {
    test::CountingMeter meter;
    AssertionTexts texts;
    const std::string clause(Long, 'c');
    const auto first = texts.kept({0, clause, "", "", 0}, meter);
    const auto again = texts.kept({0, clause, "", "", 0}, meter);
    EXPECT_EQ(again.message.data(), first.message.data());
    // Of another place, it is not looked at whether it is the same.
    const std::string copy = clause;
    const auto other = texts.kept({0, copy, "", "", 0}, meter);
    EXPECT_EQ(other.message, first.message);
    EXPECT_NE(other.message.data(), first.message.data());
}

TEST(Assertion, APlaceThatHasAnotherTextIsAnother) {
    test::CountingMeter meter;
    AssertionTexts texts;
    std::string text(Long + 1, 'c');
    const auto whole = texts.kept({0, text, "", "", 0}, meter);
    const auto shorter = texts.kept({0, std::string_view(text).substr(0, Long), "", "", 0}, meter);
    text.front() = 'f';
    const auto front = texts.kept({0, text, "", "", 0}, meter);
    text.back() = 'b';
    const auto back = texts.kept({0, text, "", "", 0}, meter);
    EXPECT_EQ(whole.message, std::string(Long + 1, 'c'));
    EXPECT_EQ(shorter.message.size(), Long);
    EXPECT_EQ(front.message, 'f' + std::string(Long, 'c'));
    EXPECT_EQ(back.message, 'f' + std::string(Long - 1, 'c') + 'b');
}

TEST(Assertion, MovedTextsStayAndClearedOnesAreGivenBack) {
    test::CountingMeter meter;
    AssertionTexts texts;
    const auto kept = texts.kept({0, "message", "function", "file", 1}, meter);
    AssertionTexts moved(std::move(texts));
    EXPECT_EQ(kept.message, "message");
    moved.vClear(meter);
    EXPECT_EQ(meter.held, 0U);
}

TEST(Assertion, WhatTheMeterRefusesIsNotKept) {
    test::CountingMeter meter(Long);
    AssertionTexts texts;
    const std::string clause(Long, 'c');
    EXPECT_THROW(texts.kept({0, clause, "", "", 0}, meter), std::bad_alloc);
    EXPECT_LT(meter.held, Long);
    texts.vClear(meter);
    EXPECT_EQ(meter.held, 0U);
}

} // namespace

} // namespace kiv::kit
