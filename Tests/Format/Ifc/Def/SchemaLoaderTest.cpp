#include "kiv/Format/Ifc/Def/SchemaLoader.h"

#include "Format/Ifc/Def/StoreTools.h"
#include "Support/Allocations.h"
#include "kiv/Base/Exception.h"

#include <array>
#include <atomic>
#include <barrier>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <type_traits>

namespace kiv::test {

namespace {

using ifc::SchemaLoader;
using ifc::def::SchemaPset;

static_assert(!std::is_copy_constructible_v<SchemaLoader> && !std::is_copy_assignable_v<SchemaLoader>);
static_assert(!std::is_default_constructible_v<SchemaLoader>, "there is one current one");

/// An empty schema of this name, as a callback hands it over.
SchemaPset* pNewSchema(const std::string& name) {
    return schemaPsetFromText("", name).release();
}

class SchemaLoaderTest : public StoreTest {
protected:
    SchemaLoader& loader = SchemaLoader::curr();

    /// Lets the loader make empty schemas and writes down for which names it was asked.
    void vRequestsRecord() {
        loader.newSchemaCallback = [this](const std::string& name) {
            requests.push_back(name);
            return pNewSchema(name);
        };
    }

    Texts requests;
};

/// What the request throws when there is no callback; empty when it throws nothing.
std::string sMessageWithoutCallback(const std::string& name) {
    try {
        SchemaLoader::curr().pSchemaFromName(name);
    } catch (const kiv::exception& error) {
        return error.what();
    }
    return {};
}

/// The code of the std::system_error that `action` ends in; none when it does not.
std::error_code systemErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::system_error& error) {
        return error.code();
    }
    return {};
}

TEST_F(SchemaLoaderTest, TwoRequestsForANameCallTheCallbackOnce) {
    vRequestsRecord();
    const auto* const first = loader.pSchemaFromName("IFC4");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), first);
    EXPECT_EQ(first->getName(), "IFC4");
    EXPECT_EQ(requests, Texts{"IFC4"});
}

TEST_F(SchemaLoaderTest, NamesThatDifferInCaseAreCachedSeparately) {
    vRequestsRecord();
    const auto* const upper = loader.pSchemaFromName("IFC4");
    const auto* const lower = loader.pSchemaFromName("ifc4");
    EXPECT_NE(upper, lower);
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), upper);
    EXPECT_EQ(requests, (Texts{"IFC4", "ifc4"}));
}

TEST_F(SchemaLoaderTest, AnyBytesAreAName) {
    vRequestsRecord();
    const Texts names{"", " IFC4", "IFC4 ", std::string("IFC\0X", 5), "\xC3\xA9"};
    for (const auto& name : names)
        EXPECT_NE(loader.pSchemaFromName(name), nullptr);
    for (const auto& name : names)
        EXPECT_NE(loader.pSchemaFromName(name), nullptr);
    EXPECT_EQ(requests, names);
}

TEST_F(SchemaLoaderTest, ASchemaNeedNotHaveTheNameItIsAskedBy) {
    loader.newSchemaCallback = [](const std::string&) { return pNewSchema("IFC4"); };
    const auto* const schema = loader.pSchemaFromName("IFC4X1");
    ASSERT_NE(schema, nullptr);
    EXPECT_EQ(loader.pSchemaFromName("IFC4X1"), schema);
    EXPECT_NE(loader.pSchemaFromName("IFC4"), schema);
}

TEST_F(SchemaLoaderTest, NullIsNotCachedAndAskedForAgain) {
    int calls = 0;
    loader.newSchemaCallback = [&calls](const std::string& name) {
        return ++calls < 3 ? nullptr : pNewSchema(name);
    };
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), nullptr);
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), nullptr);
    EXPECT_NE(loader.pSchemaFromName("IFC4"), nullptr);
    EXPECT_NE(loader.pSchemaFromName("IFC4"), nullptr);
    EXPECT_EQ(calls, 3);
}

TEST_F(SchemaLoaderTest, WithoutCallbackARequestThrowsAndCachesNothing) {
    EXPECT_EQ(sMessageWithoutCallback("IFC4"), "No schema new callback registered");
    EXPECT_EQ(sMessageWithoutCallback("IFC4"), "No schema new callback registered");
    vRequestsRecord();
    EXPECT_NE(loader.pSchemaFromName("IFC4"), nullptr);
    EXPECT_EQ(requests, Texts{"IFC4"});
}

TEST_F(SchemaLoaderTest, WhatIsCachedNeedsNoCallback) {
    vRequestsRecord();
    const auto* const schema = loader.pSchemaFromName("IFC4");
    loader.newSchemaCallback = nullptr;
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), schema);
    EXPECT_EQ(sMessageWithoutCallback("IFC2X3"), "No schema new callback registered");
}

TEST_F(SchemaLoaderTest, CurrIsOneLoaderUntilItIsFreed) {
    EXPECT_EQ(&SchemaLoader::curr(), &loader);
    vRequestsRecord();
    const auto* const schema = SchemaLoader::curr().pSchemaFromName("IFC4");
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), schema);
}

TEST_F(SchemaLoaderTest, AfterVCurrFreeARequestThrowsUntilACallbackIsSetAgain) {
    vRequestsRecord();
    loader.pSchemaFromName("IFC4");
    SchemaLoader::vCurrFree();
    EXPECT_EQ(sMessageWithoutCallback("IFC4"), "No schema new callback registered");
    int calls = 0;
    SchemaLoader::curr().newSchemaCallback = [&calls](const std::string& name) {
        ++calls;
        return pNewSchema(name);
    };
    EXPECT_NE(SchemaLoader::curr().pSchemaFromName("IFC4"), nullptr);
    EXPECT_EQ(calls, 1);
}

TEST_F(SchemaLoaderTest, VCurrFreeMayComeTwice) {
    SchemaLoader::vCurrFree();
    SchemaLoader::vCurrFree();
    EXPECT_EQ(sMessageWithoutCallback("IFC4"), "No schema new callback registered");
}

TEST_F(SchemaLoaderTest, VCurrFreeWithoutALoaderMakesNone) {
    SchemaLoader::vCurrFree();
    const auto before = allocationCount();
    SchemaLoader::vCurrFree();
    EXPECT_EQ(allocationCount(), before);
}

TEST_F(SchemaLoaderTest, PSchemaGetWithACallbackPassesTheCacheByAndLeavesItAsItWas) {
    vRequestsRecord();
    auto* const cached = loader.pSchemaFromName("IFC4");
    const std::unique_ptr<SchemaPset> own(SchemaLoader::pSchemaGet(pNewSchema, "IFC4"));
    ASSERT_NE(own, nullptr);
    EXPECT_NE(own.get(), cached);
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), cached);
    const std::unique_ptr<SchemaPset> other(SchemaLoader::pSchemaGet(pNewSchema, "IFC2X3"));
    EXPECT_NE(loader.pSchemaFromName("IFC2X3"), other.get());
    EXPECT_EQ(requests, (Texts{"IFC4", "IFC2X3"}));
}

TEST_F(SchemaLoaderTest, PSchemaGetHandsOnTheNullOfItsCallback) {
    vRequestsRecord();
    loader.pSchemaFromName("IFC4");
    EXPECT_EQ(SchemaLoader::pSchemaGet([](const std::string&) { return nullptr; }, "IFC4"), nullptr);
}

TEST_F(SchemaLoaderTest, PSchemaGetWithoutAnyCallbackThrowsAsTheLoaderDoes) {
    EXPECT_THROW(SchemaLoader::pSchemaGet({}, "IFC4"), kiv::exception);
}

TEST_F(SchemaLoaderTest, PSchemaGetWithoutCallbackAsksTheCurrentLoader) {
    vRequestsRecord();
    const auto* const schema = SchemaLoader::pSchemaGet({}, "IFC4");
    ASSERT_NE(schema, nullptr);
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), schema);
    EXPECT_EQ(requests, Texts{"IFC4"});
}

TEST_F(SchemaLoaderTest, TheCallbackOfPSchemaGetMayAskTheLoader) {
    vRequestsRecord();
    const auto askLoader = [](const std::string& name) { return SchemaLoader::curr().pSchemaFromName(name); };
    EXPECT_EQ(SchemaLoader::pSchemaGet(askLoader, "IFC4"), loader.pSchemaFromName("IFC4"));
}

TEST_F(SchemaLoaderTest, WhatTheCallbackThrowsIsPassedOnAndNothingIsCached) {
    loader.newSchemaCallback = [](const std::string&) -> SchemaPset* { throw std::range_error("broken"); };
    EXPECT_THROW(loader.pSchemaFromName("IFC4"), std::range_error);
    EXPECT_THROW(loader.pSchemaFromName("IFC4"), std::range_error);
    vRequestsRecord();
    EXPECT_NE(loader.pSchemaFromName("IFC4"), nullptr);
    EXPECT_EQ(requests, Texts{"IFC4"});
}

TEST_F(SchemaLoaderTest, ACallbackThatThrowsLeavesTheLoaderFreeForOtherThreads) {
    loader.newSchemaCallback = [](const std::string&) -> SchemaPset* { throw std::range_error("broken"); };
    EXPECT_THROW(loader.pSchemaFromName("IFC4"), std::range_error);
    vRequestsRecord();
    const SchemaPset* other = nullptr;
    std::thread([&] { other = loader.pSchemaFromName("IFC4"); }).join();
    EXPECT_NE(other, nullptr);
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), other);
}

TEST_F(SchemaLoaderTest, ACallbackThatAsksItsLoaderGetsAnErrorAndNoHang) {
    const struct {
        const char* what;
        std::function<void()> ask;
    } rows[] = {
        {"the name that is being made", [this] { loader.pSchemaFromName("NEW"); }},
        {"another name", [this] { loader.pSchemaFromName("OTHER"); }},
        {"a name that is cached", [this] { loader.pSchemaFromName("CACHED"); }},
        {"through curr", [] { SchemaLoader::curr().pSchemaFromName("OTHER"); }},
        {"through pSchemaGet", [] { SchemaLoader::pSchemaGet({}, "OTHER"); }},
        {"vCurrFree", [] { SchemaLoader::vCurrFree(); }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        vRequestsRecord();
        const auto* const cached = loader.pSchemaFromName("CACHED");
        loader.newSchemaCallback = [&row](const std::string&) -> SchemaPset* {
            row.ask();
            return nullptr;
        };
        EXPECT_EQ(systemErrorOf([this] { loader.pSchemaFromName("NEW"); }),
                  std::errc::resource_deadlock_would_occur);
        EXPECT_EQ(&SchemaLoader::curr(), &loader);
        EXPECT_EQ(loader.pSchemaFromName("CACHED"), cached);
    }
}

TEST_F(SchemaLoaderTest, ACallbackThatCatchesTheErrorGoesOn) {
    loader.newSchemaCallback = [this](const std::string& name) {
        EXPECT_THROW(loader.pSchemaFromName("OTHER"), std::system_error);
        return pNewSchema(name);
    };
    const auto* const schema = loader.pSchemaFromName("IFC4");
    ASSERT_NE(schema, nullptr);
    EXPECT_EQ(loader.pSchemaFromName("IFC4"), schema);
}

TEST_F(SchemaLoaderTest, ACallbackMayEndTheProcess) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            vRequestsRecord();
            loader.pSchemaFromName("IFC4");
            loader.newSchemaCallback = [](const std::string&) -> SchemaPset* { std::exit(7); };
            loader.pSchemaFromName("IFC2X3");
        },
        ::testing::ExitedWithCode(7), "");
}

/// Calls back when the last copy of what holds it goes.
std::shared_ptr<void> atTheEnd(std::function<void()> vCall) {
    return {nullptr, [vCall = std::move(vCall)](void*) { vCall(); }};
}

TEST_F(SchemaLoaderTest, VCurrFreeWaitsForALookUpThatIsRunning) {
    std::mutex mutex;
    Texts log;
    const auto vLog = [&](const char* what) {
        const std::lock_guard lock(mutex);
        log.emplace_back(what);
    };
    std::barrier isCalling(2);
    std::atomic<bool> isFreeing = false;
    loader.newSchemaCallback = [&, end = atTheEnd([&] { vLog("callback ends"); })](const std::string& name) {
        isCalling.arrive_and_wait();
        while (!isFreeing)
            std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        vLog("schema is made");
        return pNewSchema(name);
    };
    std::thread asking([this] { loader.pSchemaFromName("IFC4"); });
    isCalling.arrive_and_wait();
    isFreeing = true;
    SchemaLoader::vCurrFree();
    asking.join();
    EXPECT_EQ(log, (Texts{"schema is made", "callback ends"}));
}

/// The loader is a static object: at the end of the process its destructor comes by itself.
TEST_F(SchemaLoaderTest, TheDestructorWaitsForALookUpThatIsRunning) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            static std::atomic<bool> isCalling = false;
            static std::atomic<bool> isEnding = false;
            loader.newSchemaCallback =
                [end = atTheEnd([] { std::cerr << "callback ends" << std::endl; })](const std::string& name) {
                    isCalling = true;
                    while (!isEnding)
                        std::this_thread::yield();
                    std::this_thread::sleep_for(std::chrono::milliseconds(50));
                    std::cerr << "schema is made" << std::endl;
                    return pNewSchema(name);
                };
            std::thread([this] { loader.pSchemaFromName("IFC4"); }).detach();
            while (!isCalling)
                std::this_thread::yield();
            std::atexit([] { isEnding = true; });
            std::exit(0);
        },
        ::testing::ExitedWithCode(0), "schema is made\ncallback ends");
}

TEST_F(SchemaLoaderTest, ManyThreadsThatAskForAFewNamesCallTheCallbackOncePerName) {
    constexpr std::size_t Threads = 8;
    const Texts names{"IFC2X3", "IFC4", "IFC4X1", "IFC4X3"};
    loader.newSchemaCallback = [this](const std::string& name) {
        requests.push_back(name);
        std::this_thread::yield();
        return pNewSchema(name);
    };
    std::array<std::map<std::string, std::set<const SchemaPset*>>, Threads> seen;
    std::barrier start(Threads);
    std::vector<std::thread> threads;
    for (std::size_t index = 0; index < Threads; ++index)
        threads.emplace_back([&, index] {
            start.arrive_and_wait();
            for (std::size_t round = 0; round < 400; ++round) {
                const auto& name = names[(round + index) % names.size()];
                seen[index][name].insert(loader.pSchemaFromName(name));
            }
        });
    for (auto& thread : threads)
        thread.join();

    for (const auto& name : names) {
        const std::set<const SchemaPset*> one{loader.pSchemaFromName(name)};
        for (const auto& ofThread : seen)
            EXPECT_EQ(ofThread.at(name), one);
    }
    EXPECT_EQ(std::multiset<std::string>(requests.begin(), requests.end()),
              std::multiset<std::string>(names.begin(), names.end()));
}

TEST_F(SchemaLoaderTest, ManyThreadsThatAskForManyNamesCallTheCallbackOncePerNameAndOneAtATime) {
    constexpr std::size_t Threads = 8;
    constexpr std::size_t Names = 200;
    std::array<std::atomic<int>, Names> calls{};
    std::atomic<int> running = 0;
    std::atomic<int> sideBySide = 0;
    loader.newSchemaCallback = [&](const std::string& name) {
        sideBySide += running.exchange(1);
        ++calls.at(std::stoul(name));
        auto* const schema = pNewSchema(name);
        running = 0;
        return schema;
    };
    std::atomic<int> wrong = 0;
    std::barrier start(Threads);
    std::vector<std::thread> threads;
    for (std::size_t index = 0; index < Threads; ++index)
        threads.emplace_back([&, index] {
            start.arrive_and_wait();
            // Each thread goes through the names in an order of its own; 7 and 200 have no common divisor.
            for (std::size_t step = 0; step < Names; ++step) {
                const auto name = std::to_string((index * 25 + step * 7) % Names);
                wrong += loader.pSchemaFromName(name)->getName() == name ? 0 : 1;
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(sideBySide, 0);
    for (std::size_t name = 0; name < Names; ++name)
        EXPECT_EQ(calls[name], 1) << name;
}

/// A schema that writes down when it ends.
class LoggedSchema : public SchemaPset {
public:
    LoggedSchema(std::istream& stream, const std::string& header, Texts& log) :
        SchemaPset(stream, header, 0), log_(log) {}
    ~LoggedSchema() override { log_.push_back("schema " + std::string(getName())); }

private:
    Texts& log_;
};

TEST_F(SchemaLoaderTest, VCurrFreeEndsTheCallbackAndThenTheSchemas) {
    Texts log;
    {
        const std::shared_ptr<void> end(nullptr, [&log](void*) { log.emplace_back("callback"); });
        loader.newSchemaCallback = [end, &log](const std::string& name) {
            std::istringstream stream("END_SCHEMA;");
            return std::make_unique<LoggedSchema>(stream, "SCHEMA " + name + ";", log).release();
        };
    }
    loader.pSchemaFromName("B");
    loader.pSchemaFromName("A");
    ASSERT_EQ(log, Texts());
    SchemaLoader::vCurrFree();
    ASSERT_EQ(log.size(), 3U);
    EXPECT_EQ(log.front(), "callback");
    EXPECT_EQ(std::set<std::string>(log.begin() + 1, log.end()),
              (std::set<std::string>{"schema A", "schema B"}));
}

} // namespace

} // namespace kiv::test
