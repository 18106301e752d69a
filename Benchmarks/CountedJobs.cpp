#include "CountedJobs.h"

#include "Questions.h"
#include "Reading.h"
#include "Require.h"
#include "Store.h"

namespace kiv::bench {

namespace {

using Measured = std::function<void(const std::function<void()>&)>;

Input input() {
    return sampleRead(10, 10);
}

void vSchemaRun(const Measured& measured) {
    std::istringstream stream(input().schemaText);
    std::unique_ptr<ifc::def::schema::Schema> schema;
    measured([&] { schema = pSchemaRead(stream); });
}

void vSetsRun(const Measured& measured) {
    auto [description, schemaText, setTexts] = input();
    const auto schema = pSchemaRead(schemaText);
    auto documents = documentsFrom(std::move(setTexts));
    ifc::def::SchemaPropertySetDefinitions sets;
    measured([&] { sets = definitionsRead(documents, *schema); });
}

void vLookupsRun(const Measured& measured) {
    const Store store(input());
    const auto& schema = store.getSchema();
    const auto& sets = store.getSets();
    const auto names = nameQuestions(schema);
    const auto attributes = attributeQuestions(schema);
    const auto setNames = setQuestions(sets);
    const auto guids = guidQuestions(sets);
    const auto entities = entityQuestions(schema);
    const auto members = memberQuestions(sets);
    std::size_t found = 0;
    measured([&] {
        found = namesAsk(schema, names) + attributesAsk(attributes) + setsAsk(sets, setNames) +
                guidsAsk(sets, guids) + entitiesAsk(schema, entities) + membersAsk(schema, members);
    });
    vRequire(found > names.size() + attributes.size() + setNames.size() + guids.size(),
             "something is not found");
}

} // namespace

const std::vector<CountedJob>& countedJobs() {
    static const std::vector<CountedJob> jobs{
        {"schema", vSchemaRun}, {"sets", vSetsRun}, {"lookups", vLookupsRun}};
    return jobs;
}

} // namespace kiv::bench
