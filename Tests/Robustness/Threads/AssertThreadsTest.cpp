#include "ManyThreads.h"
#include "Support/SampleData.h"
#include "Support/SampleStore.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using assert::Assert;
using assert::CollectingSink;
using assert::ScopedSink;

/// Counts the reports that one thread makes, whoever receives them.
class OwnReports final : public assert::Sink {
public:
    void vReport(const assert::AssertInfo& info) override {
        ++count;
        size += info.message.size() + info.function.size() + info.file.size();
    }

    std::atomic<std::size_t> count = 0;
    std::atomic<std::size_t> size = 0;
};

/// Half of the threads read a schema with many faults; the others install sinks and remove them meanwhile.
/// The sink that is there all the time misses nothing, and the schema is the same whether somebody listens or
/// not.
TEST(AssertThreads, SinksComeAndGoWhileSchemasReport) {
    constexpr std::size_t Rounds = 5;
    const auto text = sSampleText("Broken.exp");
    const auto objects = schemaPsetFromWholeText(text)->getObjects().size();
    OwnReports once;
    {
        const ScopedSink installed(once);
        schemaPsetFromWholeText(text);
    }
    ASSERT_GT(once.count, 5U);

    OwnReports always;
    std::atomic<int> wrong = 0;
    {
        const ScopedSink installed(always);
        vOnManyThreads([&](std::size_t thread) {
            for (std::size_t round = 0; round < (thread % 2 == 0 ? Rounds : 40 * Rounds); ++round) {
                if (thread % 2 == 0) {
                    wrong += schemaPsetFromWholeText(text)->getObjects().size() == objects ? 0 : 1;
                    continue;
                }
                CollectingSink brief; // gone as soon as it is removed
                const ScopedSink scope(brief);
                wrong += Assert::isEnabled() ? 0 : 1;
            }
        });
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(always.count, ThreadCount / 2 * Rounds * once.count);
    EXPECT_EQ(always.size, ThreadCount / 2 * Rounds * once.size);
}

/// Nobody listens most of the time: a report is made or it is not, and both leave the reading as it is.
TEST(AssertThreads, ServiceIsSwitchedOnAndOffWhileSetsAreChecked) {
    const SampleStore store;
    const auto set = pSetFromText(sSampleText("BrokenSets/Broken_Reports.xml"));
    OwnReports sometimes;
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t thread) {
        for (int round = 0; round < 200; ++round) {
            if (thread == 0) {
                const ScopedSink scope(sometimes);
                continue;
            }
            ifc::def::xml::XmlSetErrors errors;
            wrong += set->checkForErrors(store.schema(), errors) ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_FALSE(Assert::isEnabled());
}

/// One sink, installed by every thread for itself too: it receives a report once for each installation.
TEST(AssertThreads, SinkThatEveryThreadInstallsHearsFromAll) {
    constexpr std::size_t Rounds = 100;
    CollectingSink shared;
    vOnManyThreads([&](std::size_t) {
        for (std::size_t round = 0; round < Rounds; ++round) {
            const ScopedSink scope(shared);
            Assert::addAssert({.message = "own", .function = "f", .file = "g"});
        }
    });
    EXPECT_GE(shared.getRecords().size(), ThreadCount * Rounds);
    for (const auto& record : shared.takeRecords())
        ASSERT_EQ(record, (assert::AssertRecord{0, "own", "f", "g", 0}));
}

} // namespace

} // namespace kiv::test
