#include "ManyThreads.h"
#include "Support/SampleStore.h"
#include "Support/StoreAnswers.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def;
namespace defs = ifc::def::xml;

/// What comes of a document: the set and the records about it, or why there is no document.
std::string sOutcome(const std::string& text) {
    std::istringstream stream(text);
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(stream, "", nullptr);
    if (!root)
        return file.pError()->reason;
    defs::XmlSetErrors errors;
    const auto set = pSetFromElement(*root, errors);
    defs::XmlSetsErrors all;
    all.sets.insert(errors);
    XmlTarget target(set->pXmlElementName());
    set->exportDef(target.root(), nullptr);
    return target.sText() + all.getFormattedErrors();
}

std::vector<std::string> allTexts() {
    std::vector<std::string> texts;
    for (const auto& paths : {sampleSetPaths(), sampleBrokenSetPaths()})
        for (const auto& path : paths)
            texts.push_back(sSampleText(path));
    return texts;
}

TEST(DocumentThreads, DocumentsAreReadOnManyThreadsAtOnce) {
    const auto texts = allTexts();
    std::vector<std::string> expected;
    for (const auto& text : texts)
        expected.push_back(sOutcome(text));
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t thread) {
        for (std::size_t step = 0; step < texts.size(); ++step) {
            const auto index = (step + 3 * thread) % texts.size();
            wrong += sOutcome(texts[index]) == expected[index] ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

/// A document that nobody changes, by all threads.
TEST(DocumentThreads, OneDocumentBecomesASetOnManyThreads) {
    const XmlFromText document(sSampleText("Sets/Pset_BldWall.xml"));
    const auto written = sXmlText(document.root());
    defs::XmlSetErrors noErrors;
    const auto expected = pSetFromElement(document.root(), noErrors)->getApplicableClasses().size();
    EXPECT_EQ(expected, 3U);
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t) {
        for (int round = 0; round < 10; ++round) {
            defs::XmlSetErrors errors;
            const auto set = pSetFromElement(document.root(), errors);
            const bool isRight = set->getApplicableClasses().size() == expected &&
                                 errors.getRecords().empty() && sXmlText(document.root()) == written;
            wrong += isRight ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

/// Each thread fills a collection of its own against one schema, as a host that reads folders side by side.
TEST(DocumentThreads, CollectionsAreFilledSideBySide) {
    const SampleStore store;
    const auto& schema = store.schema();
    const auto expected = sCollectionAnswers(schema, setsFromPaths(schema, sampleSetPaths()));
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t) {
        wrong += sCollectionAnswers(schema, setsFromPaths(schema, sampleSetPaths())) == expected ? 0 : 1;
    });
    EXPECT_EQ(wrong, 0);
}

/// A configuration changes its schema, so each thread has one of its own.
TEST(DocumentThreads, ConfigurationsOfDifferentSchemasAreReadSideBySide) {
    const SampleStore store;
    const auto text = sSampleText("Building.exp");
    const auto sConfigured = [&] {
        const auto schema = schemaPsetFromWholeText(text);
        std::istringstream stream(SampleConfig);
        schema->vXmlSchemaConfigInit(stream);
        return sAnswers(*schema) + schema->pXmlSchemaConfig()->getUosElement().getName();
    };
    const auto expected = sConfigured();
    EXPECT_NE(expected.find("record: 3"), std::string::npos) << "the double tag of the root's name";
    std::atomic<int> wrong = 0;
    vOnManyThreads([&](std::size_t) { wrong += sConfigured() == expected ? 0 : 1; });
    EXPECT_EQ(wrong, 0);
}

} // namespace

} // namespace kiv::test
