#include "kiv/Host/Assert/KivAssert.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <gtest/gtest.h>
#include <latch>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace kiv::assert {
namespace {

AssertInfo getInfo(std::string_view message) {
    return {0, message, "kiv::ifc::def::Thing::check", "Source/Format/Ifc/Def/Thing", 42};
}

std::vector<std::string> getMessages(const CollectingSink& sink) {
    std::vector<std::string> messages;
    for (const AssertRecord& record : sink.getRecords())
        messages.push_back(record.message);
    return messages;
}

using Messages = std::vector<std::string>;

/// Does something with each report.
template <typename Action>
class ActionSink : public Sink {
public:
    explicit ActionSink(Action action) : action_(std::move(action)) {}
    void vReport(const AssertInfo& info) override { action_(info); }

private:
    Action action_;
};

TEST(KivAssertTest, IsEnabledWhileAnySinkIsInstalled) {
    CollectingSink first;
    CollectingSink second;
    EXPECT_FALSE(Assert::isEnabled());
    {
        const ScopedSink outer(first);
        EXPECT_TRUE(Assert::isEnabled());
        {
            const ScopedSink inner(second);
            EXPECT_TRUE(Assert::isEnabled());
        }
        EXPECT_TRUE(Assert::isEnabled());
    }
    EXPECT_FALSE(Assert::isEnabled());
}

TEST(KivAssertTest, ReportHasNoCodeAndNoLineUnlessGiven) {
    const AssertInfo info;
    EXPECT_EQ(info.code, 0);
    EXPECT_EQ(info.line, 0);
}

TEST(KivAssertTest, ReportReturnsSoThatTheOperationCanGoOn) {
    const auto getFallback = [] {
        Assert::addAssert(getInfo("Entity not found"));
        return "fallback";
    };
    EXPECT_STREQ(getFallback(), "fallback") << "without a sink";
    CollectingSink sink;
    const ScopedSink installed(sink);
    EXPECT_STREQ(getFallback(), "fallback");
    EXPECT_EQ(getMessages(sink), Messages{"Entity not found"});
}

TEST(KivAssertTest, CollectingSinkKeepsCopiesOfAllFields) {
    CollectingSink sink;
    const ScopedSink installed(sink);
    std::string message = "Type not found";
    std::string function = "function";
    std::string file = "file";
    Assert::addAssert({-7, message, function, file, 123});
    message = function = file = "overwritten, and longer than it was before";
    EXPECT_EQ(sink.getRecords(),
              (std::vector<AssertRecord>{{-7, "Type not found", "function", "file", 123}}));
}

TEST(KivAssertTest, RecordsAreEqualWhenAllTheirFieldsAre) {
    const AssertRecord record{1, "message", "function", "file", 2};
    EXPECT_EQ(record, (AssertRecord{1, "message", "function", "file", 2}));
    const AssertRecord others[] = {{0, "message", "function", "file", 2},
                                   {1, "Message", "function", "file", 2},
                                   {1, "message", "", "file", 2},
                                   {1, "message", "function", "files", 2},
                                   {1, "message", "function", "file", 3}};
    for (const AssertRecord& other : others)
        EXPECT_NE(record, other) << &other - others;
}

TEST(KivAssertTest, CollectingSinkKeepsTheOrderAndGivesAwayWhatItHas) {
    CollectingSink sink;
    const ScopedSink installed(sink);
    Assert::addAssert(getInfo("1"));
    Assert::addAssert(getInfo("2"));
    EXPECT_EQ(getMessages(sink), (Messages{"1", "2"}));
    EXPECT_EQ(sink.takeRecords().size(), 2U);
    EXPECT_EQ(getMessages(sink), Messages{});
    Assert::addAssert(getInfo("3"));
    EXPECT_EQ(getMessages(sink), Messages{"3"});
    sink.vClear();
    EXPECT_EQ(getMessages(sink), Messages{});
}

TEST(KivAssertTest, PrintingSinkWritesALineForEachReport) {
    std::ostringstream stream;
    PrintingSink sink(stream);
    const ScopedSink installed(sink);
    Assert::addAssert(getInfo("Entity not found"));
    Assert::addAssert({0, "Unknown node", "f", "Source/X", 7});
    EXPECT_EQ(stream.str(), "Source/Format/Ifc/Def/Thing:42: Entity not found (kiv::ifc::def::Thing::check)\n"
                            "Source/X:7: Unknown node (f)\n");
}

TEST(KivAssertTest, EverySinkReceivesReportsInTheOrderOfInstallation) {
    std::string order;
    ActionSink a([&](const AssertInfo&) { order += 'a'; });
    ActionSink b([&](const AssertInfo&) { order += 'b'; });
    const ScopedSink first(b);
    const ScopedSink second(a);
    const ScopedSink third(b);
    Assert::addAssert(getInfo("x"));
    EXPECT_EQ(order, "bab");
}

TEST(KivAssertTest, RemovedSinkReceivesNoMoreReports) {
    CollectingSink removed;
    CollectingSink kept;
    std::optional<ScopedSink> first(std::in_place, removed);
    const ScopedSink second(kept);
    Assert::addAssert(getInfo("1"));
    first.reset();
    Assert::addAssert(getInfo("2"));
    EXPECT_EQ(getMessages(removed), Messages{"1"});
    EXPECT_EQ(getMessages(kept), (Messages{"1", "2"}));
}

TEST(KivAssertTest, SinkThatThrowsDisturbsNobody) {
    ActionSink thrower([](const AssertInfo&) { throw std::bad_alloc(); });
    ActionSink other([](const AssertInfo&) { throw 1; });
    CollectingSink sink;
    const ScopedSink first(thrower);
    const ScopedSink second(other);
    const ScopedSink third(sink);
    Assert::addAssert(getInfo("1"));
    Assert::addAssert(getInfo("2"));
    EXPECT_EQ(getMessages(sink), (Messages{"1", "2"}));
}

TEST(KivAssertTest, ReportThatASinkMakesIsDropped) {
    CollectingSink sink;
    ActionSink nested([](const AssertInfo&) { Assert::addAssert(getInfo("nested")); });
    const ScopedSink first(sink);
    const ScopedSink second(nested);
    Assert::addAssert(getInfo("1"));
    Assert::addAssert(getInfo("2"));
    EXPECT_EQ(getMessages(sink), (Messages{"1", "2"}));
}

TEST(KivAssertTest, SinkInstalledByASinkReceivesLaterReportsOnly) {
    CollectingSink added;
    std::optional<ScopedSink> installed;
    ActionSink installer([&](const AssertInfo&) {
        if (!installed)
            installed.emplace(added);
    });
    const ScopedSink scope(installer);
    Assert::addAssert(getInfo("1"));
    Assert::addAssert(getInfo("2"));
    EXPECT_EQ(getMessages(added), Messages{"2"});
}

TEST(KivAssertTest, SinkCanEndItself) {
    int reports = 0;
    std::optional<ScopedSink> installed;
    ActionSink once([&](const AssertInfo&) {
        ++reports;
        installed.reset();
    });
    CollectingSink later;
    installed.emplace(once);
    const ScopedSink scope(later);
    Assert::addAssert(getInfo("1"));
    Assert::addAssert(getInfo("2"));
    EXPECT_EQ(reports, 1);
    EXPECT_EQ(getMessages(later), (Messages{"1", "2"}));
}

TEST(KivAssertTest, SinkCanRemoveTheNextOne) {
    CollectingSink next;
    std::optional<ScopedSink> installed;
    ActionSink remover([&](const AssertInfo&) { installed.reset(); });
    const ScopedSink scope(remover);
    installed.emplace(next);
    Assert::addAssert(getInfo("1"));
    EXPECT_EQ(getMessages(next), Messages{});
}

TEST(KivAssertTest, SinkCanInstallAndRemoveWithinOneReport) {
    CollectingSink inner;
    ActionSink outer([&](const AssertInfo&) { const ScopedSink brief(inner); });
    const ScopedSink scope(outer);
    Assert::addAssert(getInfo("1"));
    EXPECT_EQ(getMessages(inner), Messages{});
}

TEST(KivAssertTest, NoReportOfAnyThreadIsLost) {
    constexpr std::size_t threadCount = 8;
    constexpr std::size_t reportsPerThread = 2000;
    CollectingSink first;
    CollectingSink second;
    const ScopedSink firstInstalled(first);
    const ScopedSink secondInstalled(second);
    {
        std::latch start(threadCount);
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i != threadCount; ++i)
            threads.emplace_back([&start, text = std::to_string(i)] {
                start.arrive_and_wait();
                for (std::size_t k = 0; k != reportsPerThread; ++k)
                    Assert::addAssert(getInfo(text));
            });
    }
    for (const CollectingSink* sink : {&first, &second}) {
        std::vector<std::size_t> perThread(threadCount);
        for (const AssertRecord& record : sink->getRecords())
            ++perThread.at(std::stoul(record.message));
        EXPECT_EQ(perThread, std::vector<std::size_t>(threadCount, reportsPerThread));
    }
}

TEST(KivAssertTest, PrintedLinesOfSeveralThreadsNeverMix) {
    std::ostringstream stream;
    PrintingSink sink(stream);
    {
        const ScopedSink installed(sink);
        std::vector<std::jthread> threads;
        for (int i = 0; i != 4; ++i)
            threads.emplace_back([] {
                for (int k = 0; k != 500; ++k)
                    Assert::addAssert({0, "message", "function", "file", 1});
            });
    }
    std::istringstream lines(stream.str());
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        ASSERT_EQ(line, "file:1: message (function)");
    EXPECT_EQ(count, 2000U);
}

/// For the removal of the only sink: from its begin on no report is made any more.
void vUntilRemovalHasBegun() {
    while (Assert::isEnabled())
        std::this_thread::yield();
}

TEST(KivAssertTest, RemovingWaitsUntilNoReportIsUsingTheSink) {
    std::latch isInSink(1);
    std::latch mayLeave(1);
    std::atomic<bool> hasLeft = false;
    std::atomic<bool> wasRemovedTooEarly = false;
    ActionSink slow([&](const AssertInfo&) {
        isInSink.count_down();
        mayLeave.wait();
        // Without a pause a removal that does not wait might go unnoticed; one that waits passes with any
        // pause.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        hasLeft = true;
    });
    std::optional<ScopedSink> installed(std::in_place, slow);
    std::jthread reporter([] { Assert::addAssert(getInfo("slow")); });
    isInSink.wait();
    std::jthread remover([&] {
        installed.reset();
        wasRemovedTooEarly = !hasLeft;
    });
    vUntilRemovalHasBegun();
    mayLeave.count_down();
    remover.join();
    EXPECT_FALSE(wasRemovedTooEarly);
}

/// The removal has begun and waits for the first report; the second one must pass the sink by, although it is
/// still there.
TEST(KivAssertTest, SinkWhoseRemovalHasBegunGetsNoFurtherReport) {
    std::latch isInSink(1);
    std::latch mayLeave(1);
    Messages received;
    ActionSink leaving([&](const AssertInfo& info) {
        received.emplace_back(info.message);
        if (info.message != "first")
            return;
        isInSink.count_down();
        mayLeave.wait();
    });
    std::optional<ScopedSink> installed(std::in_place, leaving);
    std::jthread reporter([] { Assert::addAssert(getInfo("first")); });
    isInSink.wait();
    std::jthread remover([&] { installed.reset(); });
    vUntilRemovalHasBegun();
    CollectingSink staying;
    {
        const ScopedSink another(staying);
        Assert::addAssert(getInfo("second"));
    }
    mayLeave.count_down();
    reporter.join();
    remover.join();
    EXPECT_EQ(received, Messages{"first"});
    EXPECT_EQ(getMessages(staying), Messages{"second"});
}

TEST(KivAssertTest, SinksComeAndGoWhileOthersReport) {
    std::atomic<bool> isDone = false;
    std::atomic<std::size_t> reported = 0;
    CollectingSink always;
    {
        const ScopedSink installed(always);
        std::vector<std::jthread> threads;
        for (int i = 0; i != 2; ++i)
            threads.emplace_back([&] {
                while (!isDone) {
                    Assert::addAssert(getInfo("x"));
                    ++reported;
                }
            });
        for (int i = 0; i != 2000; ++i) {
            CollectingSink brief; // destroyed at once when it is removed
            const ScopedSink scope(brief);
            Assert::addAssert(getInfo("own"));
            EXPECT_GE(brief.getRecords().size(), 1U);
        }
        isDone = true;
    }
    EXPECT_EQ(always.getRecords().size(), reported + 2000U);
}

/// A static object that still reports in its destructor, and ends the process by what has come of it.
class LateReporter {
public:
    ~LateReporter() {
        if (!installed_)
            return;
        Assert::addAssert(getInfo("late"));
        installed_.reset();
        std::_Exit(getMessages(sink_) == Messages{"late"} && !Assert::isEnabled() ? 0 : 1);
    }

    void vInstall() { installed_.emplace(sink_); }

private:
    CollectingSink sink_;
    std::optional<ScopedSink> installed_;
};

LateReporter lateReporter; // older than all that is made at the first report, so destroyed later

TEST(KivAssertDeathTest, StaticObjectsCanReportWhileTheProcessEnds) {
    EXPECT_EXIT(
        {
            lateReporter.vInstall();
            std::exit(2);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace kiv::assert
