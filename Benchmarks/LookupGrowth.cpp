#include "Growth.h"
#include "MapYardsticks.h"
#include "Questions.h"
#include "Reading.h"
#include "Require.h"
#include "Sections.h"

#include <algorithm>

namespace kiv::bench {

namespace {

using ifc::def::SchemaPropertySetDefinitions;
using ifc::def::schema::Entity;
using ifc::def::schema::Schema;

constexpr int Repetitions = 7;

template <class Thing>
using BySize = std::array<Thing, GrowthSizes.size()>;

using Schemas = BySize<std::unique_ptr<Schema>>;

Schemas schemasRead(const InputCopies& copies) {
    Schemas schemas;
    std::transform(GrowthSizes.begin(), GrowthSizes.end(), schemas.begin(),
                   [&](std::size_t size) { return pSchemaRead(copies.schema.text(size)); });
    return schemas;
}

/// The questions at each size, and how they are asked there.
template <class Question>
struct Asked {
    BySize<std::vector<Question>> questions;
    /// Counts what is found.
    BySize<std::function<std::size_t(std::span<const Question>)>> ask;
    /// The same in `std::unordered_map`.
    BySize<std::function<std::size_t(std::span<const Question>)>> askMap;
};

/// Asking the first `count` questions of each size; `asked` must live as long as the result.
template <class Question>
Growth growthFrom(const std::string& job, const Asked<Question>& asked, BySize<std::size_t> counts) {
    Growth growth{job, {}, counts};
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        const auto questions = std::span(asked.questions[size]).first(counts[size]);
        growth.runs[size] = [&ask = asked.ask[size], questions] { vUse(ask(questions)); };
        growth.yardsticks[size] = [&ask = asked.askMap[size], questions] { vUse(ask(questions)); };
    }
    growth.yardstick = "std::unordered_map, the same";
    return growth;
}

/// The same number of questions at each size, about things from everywhere in it.
template <class Question>
Growth fewOf(const std::string& job, const Asked<Question>& asked) {
    BySize<std::size_t> counts;
    counts.fill(asked.questions.front().size());
    return growthFrom(job + ", as many questions as once", asked, counts);
}

/// Everything is asked for: a larger part of what is asked is no longer in the caches.
template <class Question>
Growth allOf(const std::string& job, const Asked<Question>& asked) {
    BySize<std::size_t> counts;
    std::transform(asked.questions.begin(), asked.questions.end(), counts.begin(),
                   [](const auto& questions) { return questions.size(); });
    return growthFrom(job + ", all of them", asked, counts);
}

template <class Question>
void vAllFoundCheck(const Asked<Question>& asked) {
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        const auto& questions = asked.questions[size];
        vRequire(!questions.empty() && asked.ask[size](questions) == questions.size() &&
                     asked.askMap[size](questions) == questions.size(),
                 "something is not found among copies");
    }
}

Figures nameGrowth(const Schemas& schemas) {
    Asked<std::string> asked;
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        const auto& schema = *schemas[size];
        asked.questions[size] = nameQuestions(schema);
        asked.ask[size] = [&schema](auto questions) { return namesAsk(schema, questions); };
        asked.askMap[size] = [map = ObjectMap(schema)](auto questions) { return map.ask(questions); };
    }
    vAllFoundCheck(asked);
    const std::string job = "look up objects by name";
    return growthOf({fewOf(job, asked), allOf(job, asked)}, Repetitions);
}

using Collections = BySize<SchemaPropertySetDefinitions>;

/// Copies of sets that apply to the same entities: their names and GUIDs.
Figures setGrowth(const Collections& sets) {
    Asked<std::string> names;
    Asked<Guid> guids;
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        names.questions[size] = setQuestions(sets[size]);
        names.ask[size] = [&, size](auto questions) { return setsAsk(sets[size], questions); };
        names.askMap[size] = [map = SetMap(sets[size])](auto questions) { return map.ask(questions); };
        guids.questions[size] = guidQuestions(sets[size]);
        guids.ask[size] = [&, size](auto questions) { return guidsAsk(sets[size], questions); };
        guids.askMap[size] = [map = GuidMap(sets[size])](auto questions) { return map.ask(questions); };
    }
    vAllFoundCheck(names);
    vAllFoundCheck(guids);
    return growthOf({fewOf("look up sets by name", names), allOf("look up sets by name", names),
                     fewOf("look up members by GUID", guids), allOf("look up members by GUID", guids)},
                    Repetitions);
}

/// The same sets for the entities of one schema: each answer grows with the collection.
Figures longAnswers(const Schema& schema, const Collections& sets) {
    const auto entities = entityQuestions(schema);
    Growth growth{"look up sets by entity, per set of growing answers", {}, {}};
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        growth.units[size] = entitiesAsk(sets[size], entities);
        growth.runs[size] = [&, size] { vUse(entitiesAsk(sets[size], entities)); };
        vRequire(growth.units[size] == GrowthSizes[size] * growth.units[0],
                 "an answer does not grow with its sets");
    }
    return growthOf({growth}, Repetitions);
}

/// Each copy of the sets applies to a copy of the entities: answers stay as long as they are.
Figures shortAnswers(const InputCopies& copies, const Schemas& schemas) {
    Collections sets;
    Asked<const Entity*> asked;
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        auto documents = documentsFrom(copies.sets.texts(GrowthSizes[size], GrowthSizes[size]));
        sets[size] = definitionsRead(documents, *schemas[size]);
        asked.questions[size] = entityQuestions(*schemas[size]);
        asked.ask[size] = [&, size](auto questions) { return entitiesAsk(sets[size], questions); };
        asked.askMap[size] = [map = ClassMap(sets[size])](auto questions) { return map.ask(questions); };
    }
    const auto found = asked.ask.back()(asked.questions.back());
    vRequire(found == GrowthSizes.back() * asked.ask[0](asked.questions[0]),
             "copied entities have other sets");
    vRequire(found == asked.askMap.back()(asked.questions.back()), "the map has other sets of entities");
    const std::string job = "look up sets by entity, answers as once";
    return growthOf({fewOf(job, asked), allOf(job, asked)}, Repetitions);
}

Figures sameEntitiesGrowth(const InputCopies& copies, const Schema& schema) {
    Collections sets;
    for (std::size_t size = 0; size != GrowthSizes.size(); ++size) {
        auto documents = documentsFrom(copies.sets.texts(GrowthSizes[size], 1));
        sets[size] = definitionsRead(documents, schema);
    }
    auto figures = setGrowth(sets);
    const auto more = longAnswers(schema, sets);
    figures.insert(figures.end(), more.begin(), more.end());
    return figures;
}

} // namespace

Figures lookupGrowth(const Input& input) {
    const InputCopies copies(input);
    const auto schemas = schemasRead(copies);
    auto figures = nameGrowth(schemas);
    for (const auto& more : {sameEntitiesGrowth(copies, *schemas.front()), shortAnswers(copies, schemas)})
        figures.insert(figures.end(), more.begin(), more.end());
    return figures;
}

} // namespace kiv::bench
