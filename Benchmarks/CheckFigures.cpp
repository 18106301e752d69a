#include "Require.h"
#include "Sections.h"
#include "Timing.h"

#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/AcrossDocuments.h"
#include "kiv/Kit/Findings/Findings.h"
#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kivifc/Program/OrderedJobs.h"

#include <cstddef>
#include <future>
#include <string>
#include <vector>

namespace kiv::bench {

namespace {

/// One schema and all documents, checked with and without the rules of the kit.
class Checks {
public:
    explicit Checks(const Input& input) :
        schema_(kit::schemaTextRead(input.schemaText, "schema.exp")), texts_(input.setTexts) {
        vRequire(schema_.schema != nullptr, "the schema cannot be read");
        findings_ = findingsOnThreads(1);
        vRequire(findings_ != 0, "the rules find nothing");
    }

    /// Reads and checks the documents as the library does it.
    void vReadOnly() const {
        kit::ReadOptions options;
        options.withPositions = false;
        std::size_t sets = 0;
        for (const auto& text : texts_)
            sets += kit::setTextCheck(text, "set.xml", *schema_.schema, options).pSet() != nullptr ? 1U : 0U;
        vRequire(sets == texts_.size(), "a document is not read");
    }

    /// The same with all rules: in the schema, in each document and between them.
    void vCheck(std::size_t threads) const {
        vRequire(findingsOnThreads(threads) == findings_, "the rules find something else");
    }

private:
    struct Checked {
        kit::SetDocument document;
        std::vector<kit::Finding> findings;
    };

    Checked documentCheck(const std::string& text) const {
        Checked checked{kit::setTextCheck(text, "set.xml", *schema_.schema), {}};
        checked.findings = kit::findingsOf(checked.document, {*schema_.schema});
        return checked;
    }

    std::size_t schemaFindings() const {
        return kit::schemaFindingsOf(schema_.schema.get(), schema_.assertions, schema_.text, schema_.path)
            .size();
    }

    /// As `kivifc check` does it: each document is compared with those before it and given back, and where
    /// there are threads the schema is checked beside the documents.
    std::size_t findingsOnThreads(std::size_t threads) const {
        auto found = std::async(threads > 1 ? std::launch::async : std::launch::deferred,
                                [this] { return schemaFindings(); });
        kit::AcrossDocuments across;
        std::size_t foundInDocuments = 0;
        kivifc::vInOrder(
            texts_.size(), threads, [this](std::size_t number) { return documentCheck(texts_[number]); },
            [&](Checked&& checked) {
                across.vAdd(checked.document, {}, checked.findings);
                foundInDocuments += checked.findings.size();
            });
        return found.get() + foundInDocuments + across.getFindings().size();
    }

    kit::SchemaFile schema_;
    const std::vector<std::string>& texts_;
    std::size_t findings_ = 0;
};

} // namespace

Figures checkFigures(const Input& input) {
    const Checks checks(input);
    constexpr int Repetitions = 15;
    const auto seconds = secondsOf({{"check, without rules", [&] { checks.vReadOnly(); }},
                                    {"check, all rules", [&] { checks.vCheck(1); }}},
                                   Repetitions);
    const auto passed = secondsOf(
        {{"check, one thread", [&] { checks.vCheck(1); }}, {"check, two threads", [&] { checks.vCheck(2); }}},
        Repetitions, Clock::Wall);
    return {{"check", "all documents by all rules", seconds[1], "reading and checking them without rules",
             seconds[0], Unit::Seconds, 2.0},
            {"check", "checks of two threads", 1 / passed[1], "of one thread", 1 / passed[0], Unit::PerSecond,
             1.7, Sense::AtLeast}};
}

} // namespace kiv::bench
