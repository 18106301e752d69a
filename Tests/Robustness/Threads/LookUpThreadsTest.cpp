#include "ManyThreads.h"
#include "Support/NestedSelects.h"
#include "Support/SampleStore.h"
#include "Support/StoreAnswers.h"
#include "kiv/Format/Ifc/Def/IfcDefExtraExportInfo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;
namespace defs = ifc::def::xml;

TEST(LookUpThreads, EveryLookUpOfOneSchemaAndRegistryAnswersAsToOneThread) {
    const SampleStore store;
    const auto expected = sAnswers(store.schema());
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t) {
        for (int round = 0; round < 3; ++round)
            wrong += sAnswers(store.schema()) == expected ? 0 : 1;
    });
    EXPECT_EQ(wrong, 0);
}

/// Two schemas read side by side, while a third one is asked.
TEST(LookUpThreads, SchemasAreReadWhileAnotherOneIsAsked) {
    const SampleStore store;
    const auto text = sSampleText("Building.exp");
    const auto expected = sAnswers(store.schema());
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t thread) {
        if (thread % 2 == 0)
            wrong += sAnswers(store.schema()) == expected ? 0 : 1;
        else
            wrong += sAnswers(*schemaPsetFromWholeText(text)) == expected ? 0 : 1;
    });
    EXPECT_EQ(wrong, 0);
}

TEST(LookUpThreads, OneSelectIsAskedByManyThreads) {
    const NestedSelects selects;
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t) {
        for (int round = 0; round < 200; ++round)
            wrong += selects.sAnswers() == NestedSelects::Expected ? 0 : 1;
    });
    EXPECT_EQ(wrong, 0);
}

/// A filter that threads share is theirs to make safe; each thread's own is called for the thread alone.
TEST(LookUpThreads, FiltersAndVisitorsRunOnTheThreadThatAsks) {
    const SampleStore store;
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t) {
        int asked = 0;
        std::vector<std::string> visited;
        for (int round = 0; round < 50; ++round) {
            store.schema().forEachDefinition(
                [&](const auto& context, const auto&) { visited.push_back(context.name); },
                [&](const auto& context) {
                    ++asked;
                    return context.isStandard;
                });
        }
        wrong += asked == 100 && visited == std::vector<std::string>(50, "BUILDING1") ? 0 : 1;
    });
    EXPECT_EQ(wrong, 0);
}

TEST(LookUpThreads, OneSetIsExportedAndCheckedByManyThreads) {
    const SampleStore store;
    const auto* const set = store.schema().pXmlSetFromName("Pset_BldWall", {});
    ASSERT_NE(set, nullptr);
    defs::ExtraExportInfo info;
    info.schemaForBaseTypes = &store.schema();
    const auto sExport = [&] {
        XmlTarget target("PropertySetDef");
        defs::XmlSetErrors errors;
        const bool isFine = set->checkForErrors(store.schema(), errors);
        set->exportDef(target.root(), &info);
        return target.sText() + (isFine && errors.getRecords().empty() ? " fine" : " not fine");
    };
    const auto expected = sExport();
    EXPECT_THAT(expected, testing::HasSubstr("<ClassName>BldStandardWall/SOLID</ClassName>"));
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t) {
        for (int round = 0; round < 20; ++round)
            wrong += sExport() == expected ? 0 : 1;
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace

} // namespace kiv::test
