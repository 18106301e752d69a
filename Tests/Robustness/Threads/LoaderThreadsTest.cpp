#include "ManyThreads.h"
#include "Support/SampleStore.h"
#include "Support/StoreAnswers.h"
#include "kiv/Base/Exception.h"
#include "kiv/Format/Ifc/Def/SchemaLoader.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

namespace kiv::test {

namespace {

using ifc::SchemaLoader;
using ifc::def::SchemaPset;

class LoaderThreads : public testing::Test {
protected:
    ~LoaderThreads() override { SchemaLoader::vCurrFree(); }

    const SampleStore store;
    SchemaLoader& loader = newLoader();

private:
    static SchemaLoader& newLoader() {
        SchemaLoader::vCurrFree();
        return SchemaLoader::curr();
    }
};

SchemaPset* pSchemaNamed(const std::string& name) {
    std::istringstream stream("ENTITY Wall;\n  Name : STRING;\nEND_ENTITY;\nEND_SCHEMA;\n");
    return std::make_unique<SchemaPset>(stream, "SCHEMA " + name + ";", 0).release();
}

/// One thread makes the schema; the others look things up in it as soon as they have it.
TEST_F(LoaderThreads, SchemaOfFewNamesIsWholeForEveryThreadThatGetsIt) {
    const auto text = sSampleText("Building.exp");
    const auto expected = sAnswers(store.schema());
    std::atomic<int> calls = 0;
    loader.newSchemaCallback = [&](const std::string&) {
        ++calls;
        return schemaPsetFromWholeText(text).release();
    };
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t thread) {
        for (std::size_t round = 0; round < 2; ++round) {
            const auto* const schema = loader.pSchemaFromName((thread + round) % 2 == 0 ? "even" : "odd");
            wrong += sAnswers(*schema) == expected ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(calls, 2);
}

/// Through the function that makes no difference between a callback and the loader.
TEST_F(LoaderThreads, ManyNamesAreMadeOnceEachWhoeverAsks) {
    constexpr std::size_t Names = 150;
    std::map<std::string, int> calls; // The loader makes one schema at a time.
    loader.newSchemaCallback = [&](const std::string& name) {
        ++calls[name];
        return pSchemaNamed(name);
    };
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t thread) {
        for (std::size_t step = 0; step < Names; ++step) {
            const auto name = "SCHEMA" + std::to_string((step + thread * 19) % Names);
            const auto* const schema = SchemaLoader::pSchemaGet({}, name);
            const bool isRight =
                schema->getName() == name && schema->pAttributeGet("WALL", "name") != nullptr;
            wrong += isRight ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(calls.size(), Names);
    for (const auto& [name, count] : calls)
        EXPECT_EQ(count, 1) << name;
}

/// Failures of all kinds among requests that succeed: every thread gets its own outcome, and nothing bad is
/// kept.
TEST_F(LoaderThreads, FailuresAreTheirsWhoAskedForThem) {
    loader.newSchemaCallback = [](const std::string& name) -> SchemaPset* {
        if (name == "throws")
            throw std::runtime_error("this one");
        return name == "null" ? nullptr : pSchemaNamed(name);
    };
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t thread) {
        constexpr std::array<const char*, 3> names{"throws", "null", "fine"};
        for (std::size_t round = 0; round < 90; ++round) {
            const std::string name = names[(thread + round) % names.size()];
            std::string outcome;
            try {
                outcome = loader.pSchemaFromName(name) ? "fine" : "null";
            } catch (const std::runtime_error& error) {
                outcome = error.what() == std::string("this one") ? "throws" : "another";
            }
            wrong += outcome == name ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

/// Schemas made past the cache need no lock, and those of the loader are asked meanwhile.
TEST_F(LoaderThreads, SchemasAreMadePastTheCacheByManyThreadsAtOnce) {
    loader.newSchemaCallback = pSchemaNamed;
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t thread) {
        for (std::size_t round = 0; round < 20; ++round) {
            const auto name = std::to_string(thread);
            const std::unique_ptr<SchemaPset> own(SchemaLoader::pSchemaGet(pSchemaNamed, name));
            const auto* const cached = loader.pSchemaFromName(name);
            wrong += own->getName() == name && cached->getName() == name && own.get() != cached ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace

} // namespace kiv::test
