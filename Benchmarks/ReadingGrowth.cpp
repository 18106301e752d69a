#include "Growth.h"
#include "Questions.h"
#include "Reading.h"
#include "Require.h"
#include "Sections.h"

#include <algorithm>
#include <limits>

namespace kiv::bench {

namespace {

using ifc::def::schema::Entity;
using ifc::def::schema::Schema;

constexpr int Repetitions = 5;

/// As many entities as can be numbered.
constexpr std::size_t MostEntities = std::numeric_limits<std::uint16_t>::max();
constexpr std::size_t SubtypesOfEntity = 10;

std::string sEntityName(std::size_t number) {
    return std::string("Entity").append(std::to_string(number));
}

/// The line "SUPERTYPE OF (ONEOF (...))" for the entity of this number; empty when no others are left for it.
std::string sSubtypes(std::size_t number, std::size_t entities) {
    std::string names;
    const auto first = (number - 1) * SubtypesOfEntity + 2;
    for (auto subtype = first; subtype < first + SubtypesOfEntity && subtype <= entities; ++subtype)
        names.append(names.empty() ? "" : ", ").append(sEntityName(subtype));
    return names.empty() ? "" : std::string("\n SUPERTYPE OF (ONEOF (").append(names).append("))");
}

/// A schema whose entities, numbered from 1, are one tree.
std::string sTree(std::size_t entities) {
    std::string text = "SCHEMA TREE;\n";
    for (std::size_t number = 1; number <= entities; ++number) {
        text += "ENTITY " + sEntityName(number) + sSubtypes(number, entities);
        if (number != 1)
            text += "\n SUBTYPE OF (" + sEntityName((number - 2) / SubtypesOfEntity + 1) + ")";
        text += ";\nEND_ENTITY;\n";
    }
    return text + "END_SCHEMA;\n";
}

/// Each entity of a tree has a number of its own, and the root ends with the highest.
void vNumbersCheck(const Schema& schema, std::size_t entities) {
    std::vector<bool> isTaken(entities + 1);
    for (const auto* const entity : entityQuestions(schema)) {
        const std::size_t number = entity->getFirstNumber();
        vRequire(number != 0 && number <= entities && !isTaken[number],
                 "entities are not numbered one by one");
        isTaken[number] = true;
    }
    const auto* const root = Entity::pFrom(schema.pObjectFromName(sEntityName(1)));
    vRequire(std::count(isTaken.begin(), isTaken.end(), true) == static_cast<std::ptrdiff_t>(entities) &&
                 root->getFirstNumber() == 1 && root->getLastNumber() == entities,
             "the last entity has not the highest number");
}

/// Loading one text after the other; they are made before.
Figures loadingOf(const std::string& job, const std::array<std::string, GrowthSizes.size()>& texts) {
    std::array<std::istringstream, GrowthSizes.size()> streams;
    std::unique_ptr<Schema> schema;
    Growth growth{job, {}, {}, [&] { schema.reset(); }};
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        streams[size].str(texts[size]);
        growth.units[size] = pSchemaRead(streams[size])->getObjects().size();
        growth.runs[size] = [&schema, &stream = streams[size]] { schema = pSchemaRead(stream); };
    }
    vRequire(growth.units.back() > growth.units.front() * GrowthSizes.back() * 99 / 100,
             "a copied schema lacks objects");
    return growthOf({growth}, Repetitions);
}

Figures schemaGrowth(const InputCopies& copies) {
    std::array<std::string, GrowthSizes.size()> texts;
    std::transform(GrowthSizes.begin(), GrowthSizes.end(), texts.begin(),
                   [&](std::size_t size) { return copies.schema.text(size); });
    return loadingOf("load a schema, per object", texts);
}

Figures treeGrowth() {
    std::array<std::string, GrowthSizes.size()> texts;
    std::transform(GrowthSizes.begin(), GrowthSizes.end(), texts.begin(),
                   [](std::size_t size) { return sTree(MostEntities * size / GrowthSizes.back()); });
    vNumbersCheck(*pSchemaRead(texts.back()), MostEntities);
    return loadingOf("load up to 65535 entities, per entity", texts);
}

Figures setGrowth(const Input& input, const InputCopies& copies) {
    const auto schema = pSchemaRead(input.schemaText);
    std::array<Documents, GrowthSizes.size()> documents;
    ifc::def::SchemaPropertySetDefinitions read;
    Growth growth{"read and check sets, per set", {}, {}, [&] { read = {}; }};
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        documents[size] = documentsFrom(copies.sets.texts(GrowthSizes[size], 1));
        growth.units[size] = documents[size].size();
        growth.runs[size] = [&, size] { read = definitionsRead(documents[size], *schema); };
    }
    growth.runs.back()();
    vRequire(read.getXmlSets().size() == growth.units.back(), "copied sets have the same name");
    read = {};
    return growthOf({growth}, Repetitions);
}

} // namespace

Figures readingGrowth(const Input& input) {
    const InputCopies copies(input);
    auto figures = schemaGrowth(copies);
    for (const auto& more : {treeGrowth(), setGrowth(input, copies)})
        figures.insert(figures.end(), more.begin(), more.end());
    return figures;
}

} // namespace kiv::bench
