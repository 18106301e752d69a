// The kit on texts that break off or were damaged: there is a set or a failure, findings are in order and in
// the text, and edits replace bytes that are there.
#include "Robustness/Input/Mutation.h"
#include "Support/SampleData.h"
#include "Support/SchemaFromText.h"
#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::test {

namespace {

const ifc::def::schema::Schema& sampleSchema() {
    static const auto schema = schemaFromWholeText(sSampleText("Building.exp"));
    return *schema;
}

bool isInText(const kit::Finding& finding, std::size_t size, std::size_t lines) {
    const auto isEditInText = [size](const kit::FindingEdit& edit) {
        return edit.offset <= size && edit.length <= size - edit.offset;
    };
    return finding.place.position.line <= lines && std::ranges::all_of(finding.edits, isEditInText);
}

/// What is wrong with the kit's answer; empty when nothing is.
std::string sDocumentFault(const std::string& text) {
    const auto document = kit::setTextCheck(text, "a.xml", sampleSchema());
    if (document.failure.has_value() == (document.pSet() != nullptr))
        return "neither a set nor a failure, or both";
    if (document.text != text)
        return "another text";
    // A line end may be "\r" alone.
    const auto lines =
        1 + static_cast<std::size_t>(std::ranges::count(text, '\n') + std::ranges::count(text, '\r'));
    const auto findings = kit::findingsOf(document, {sampleSchema(), {}, {}, true});
    for (const auto& finding : findings) {
        if (!isInText(finding, text.size(), lines))
            return "not in the text: " + finding.message;
    }
    const auto lineOf = [](const kit::Finding& finding) { return finding.place.position.line; };
    return std::ranges::is_sorted(findings, {}, lineOf) ? "" : "findings are not in order";
}

std::string sSchemaFault(const std::string& text) {
    const auto file = kit::schemaTextRead(text, "a.exp");
    if (file.failure.has_value() == (file.schema != nullptr))
        return "neither a schema nor a failure, or both";
    if (file.schema && kit::sReleaseOf(*file.schema).empty())
        return "no release";
    return {};
}

std::vector<std::string> setTexts() {
    std::vector<std::string> texts;
    for (const auto& paths : {sampleSetPaths(), sampleBrokenSetPaths()}) {
        for (const auto& path : paths)
            texts.push_back(sSampleText(path));
    }
    return texts;
}

} // namespace

TEST(KitDamagedInputTest, SetDocumentsThatBreakOff) {
    for (const auto& text : setTexts()) {
        for (std::size_t size = 0; size <= text.size(); size += 1 + text.size() / 100)
            ASSERT_EQ(sDocumentFault(text.substr(0, size)), "") << text.substr(0, size);
    }
}

TEST(KitDamagedInputTest, SetDocumentsThatAreDamaged) {
    for (const auto& text : setTexts()) {
        for (const auto seed : seeds(50)) {
            const auto damaged = sMutated(text, seed);
            ASSERT_EQ(sDocumentFault(damaged), "") << sReplay(seed) << '\n' << damaged;
        }
    }
}

TEST(KitDamagedInputTest, SchemasThatBreakOffOrAreDamaged) {
    const auto text = sSampleText("Building.exp");
    for (std::size_t size = 0; size <= text.size(); size += 1 + text.size() / 100)
        ASSERT_EQ(sSchemaFault(text.substr(0, size)), "") << size;
    for (const auto seed : seeds(50))
        ASSERT_EQ(sSchemaFault(sMutated(text, seed)), "") << sReplay(seed);
}

} // namespace kiv::test
