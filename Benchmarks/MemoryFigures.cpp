#include "Allocations.h"
#include "Questions.h"
#include "Reading.h"
#include "Require.h"
#include "Sections.h"
#include "Store.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"

#include <algorithm>

namespace kiv::bench {

namespace {

using ifc::def::SchemaPropertySetDefinitions;

constexpr std::size_t LongestName = 64;

/// Counts that are always zero would look as good as they can be.
void vCountingCheck() {
    std::string text;
    const auto counts = allocationsOf([&] { text.assign(1000, 'x'); });
    vRequire(counts.count == 1 && counts.heldBytes >= 1000, "allocations are not counted");
}

Figures schemaFigures(const Input& input) {
    std::istringstream stream(input.schemaText);
    std::unique_ptr<ifc::def::schema::Schema> schema;
    const auto counts = allocationsOf([&] { schema = pSchemaRead(stream); });
    return {
        {"memory", "bytes that a loaded schema holds", static_cast<double>(counts.heldBytes), "its text",
         static_cast<double>(input.schemaText.size()), Unit::Bytes, 3.5},
        {"memory", "allocations to load it", static_cast<double>(counts.count), "", 1, Unit::Count, 20'000}};
}

/// The most that reading any one of the documents takes.
std::ptrdiff_t largestPeak(Documents& documents, const ifc::def::schema::Schema& schema) {
    std::ptrdiff_t largest = 0;
    for (auto& document : documents) {
        SchemaPropertySetDefinitions sets;
        const auto counts = allocationsOf([&] { vDocumentAdd(document, schema, sets); });
        largest = std::max(largest, counts.peakBytes);
    }
    return largest;
}

Figure documentsFigure(const Input& input) {
    const auto schema = pSchemaRead(input.schemaText);
    auto documents = documentsFrom(input.setTexts);
    SchemaPropertySetDefinitions sets;
    const auto counts = allocationsOf([&] { sets = definitionsRead(documents, *schema); });
    const auto allowed = largestPeak(documents, *schema) + counts.heldBytes;
    return {"memory",
            "peak of reading " + std::to_string(documents.size()) + " documents",
            static_cast<double>(counts.peakBytes),
            "largest document's peak and what is kept",
            static_cast<double>(allowed),
            Unit::Bytes,
            1};
}

/// Leaves out the names for which an allocation is allowed.
std::vector<std::string> shortNames(std::vector<std::string> names) {
    std::erase_if(names, [](const std::string& name) { return name.size() > LongestName; });
    return names;
}

/// How often the answers to these questions, which are texts, ask for memory by themselves.
std::size_t answerAllocations(const Store& store, std::span<const std::string> questions) {
    std::size_t count = 0;
    for (const auto& name : questions) {
        const auto answer = ifc::findPropertyTypeName(name, store.getSchema());
        count += allocationsOf([&] { auto copy = answer; }).count;
    }
    return count;
}

Figures lookupFigures(const Input& input) {
    const Store store(input);
    const auto& schema = store.getSchema();
    const auto names = shortNames(nameQuestions(schema));
    const auto attributes = attributeQuestions(schema);
    const auto sets = shortNames(setQuestions(store.getSets()));
    const auto guids = guidQuestions(store.getSets());
    const auto members = shortNames(memberQuestions(store.getSets()));
    const auto found = allocationsOf([&] {
        namesAsk(schema, names);
        attributesAsk(attributes);
        setsAsk(store.getSets(), sets);
        guidsAsk(store.getSets(), guids);
    });
    const auto typesFound = allocationsOf([&] { membersAsk(schema, members); }).count;
    const auto beside = typesFound - answerAllocations(store, members);
    const auto count = names.size() + attributes.size() + sets.size() + guids.size();
    return {{"memory", "allocations of " + std::to_string(count) + " look-ups",
             static_cast<double>(found.count), "", 1, Unit::Count, 0},
            {"memory",
             "allocations of " + std::to_string(members.size()) + " findPropertyTypeName beside its answers",
             static_cast<double>(beside), "", 1, Unit::Count, 0}};
}

} // namespace

Figures memoryFigures(const Input& input) {
    vCountingCheck();
    auto figures = schemaFigures(input);
    figures.push_back(documentsFigure(input));
    const auto lookups = lookupFigures(input);
    figures.insert(figures.end(), lookups.begin(), lookups.end());
    return figures;
}

} // namespace kiv::bench
