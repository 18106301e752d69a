#include "Kit/Documents/ThreadSink.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace kiv::kit {

namespace {

using Messages = std::vector<std::string>;

void vReport(std::string_view message) {
    assert::Assert::addAssert({0, message, "function", "file", 7});
}

TEST(ThreadSink, TakesTheReportsOfItsThreadInOrder) {
    Messages messages;
    ThreadSink sink([&](const assert::AssertInfo& info) { messages.emplace_back(info.message); });
    {
        const assert::ScopedSink installed(sink);
        vReport("first");
        vReport("second");
    }
    vReport("late");
    sink.vCheck();
    EXPECT_EQ(messages, (Messages{"first", "second"}));
}

TEST(ThreadSink, ReportsOfOtherThreadsAreNotItsOwn) {
    Messages messages;
    ThreadSink sink([&](const assert::AssertInfo& info) { messages.emplace_back(info.message); });
    const assert::ScopedSink installed(sink);
    std::thread([] { vReport("other"); }).join();
    vReport("own");
    EXPECT_EQ(messages, Messages{"own"});
}

TEST(ThreadSink, WhatIsThrownIsThrownAfterwardsAndEndsTheReports) {
    int reports = 0;
    ThreadSink sink([&](const assert::AssertInfo&) {
        if (++reports == 2)
            throw std::bad_alloc();
    });
    const assert::ScopedSink installed(sink);
    vReport("first");
    EXPECT_NO_THROW(sink.vCheck());
    vReport("lost");
    vReport("third");
    EXPECT_EQ(reports, 2);
    EXPECT_THROW(sink.vCheck(), std::bad_alloc);
}

TEST(ThreadSink, ExceptionsOfAnyTypeDoNotReachTheService) {
    ThreadSink sink([](const assert::AssertInfo&) { throw std::runtime_error("thrown"); });
    EXPECT_NO_THROW(sink.vReport({0, "message", "function", "file", 7}));
    EXPECT_THROW(sink.vCheck(), std::runtime_error);
}

} // namespace

} // namespace kiv::kit
