#include "MapYardsticks.h"
#include "Questions.h"
#include "Require.h"
#include "Sections.h"
#include "Store.h"
#include "Timing.h"

namespace kiv::bench {

namespace {

/// A look-up and its yardstick, both asked all questions.
struct Lookup {
    std::string job;
    std::size_t questions;
    std::function<std::size_t()> ask;
    std::string yardstick;
    std::function<std::size_t()> askYardstick;
    std::optional<double> goal = {};
};

Figures figuresOf(const std::vector<Lookup>& lookups) {
    std::vector<Subject> subjects;
    for (const auto& lookup : lookups) {
        subjects.push_back({lookup.job + ", beside " + lookup.yardstick, [&lookup] { vUse(lookup.ask()); }});
        subjects.push_back(
            {lookup.job + ", " + lookup.yardstick, [&lookup] { vUse(lookup.askYardstick()); }});
    }
    const auto seconds = secondsOf(subjects, 15);
    Figures figures;
    for (std::size_t index = 0; index != lookups.size(); ++index) {
        const auto& lookup = lookups[index];
        const auto count = static_cast<double>(lookup.questions);
        figures.push_back({"jobs", lookup.job, seconds[2 * index] / count, lookup.yardstick,
                           seconds[2 * index + 1] / count, Unit::Seconds, lookup.goal});
    }
    return figures;
}

using Sets = std::vector<const ifc::def::xml::SetDef*>;

std::size_t copied(const Sets& sets) {
    const auto copy = sets;
    vUse(copy.data());
    return copy.size();
}

/// The sets of each entity, prepared to be copied.
class Answers {
public:
    Answers(const ifc::def::SchemaPset& schema, std::span<const ifc::def::schema::Entity* const> entities) {
        for (const auto* const entity : entities) {
            const auto& answer = alone_.emplace_back(schema.getXmlSetsAllToEntity(*entity, true, {}));
            together_.insert(together_.end(), answer.begin(), answer.end());
        }
    }

    /// One copy, as long as all answers together.
    std::size_t copyTogether() const { return copied(together_); }

    /// A copy of each answer, as a vector of its own, which is what the caller gets.
    std::size_t copyAlone() const {
        std::size_t count = 0;
        for (const auto& answer : alone_)
            count += copied(answer);
        return count;
    }

private:
    std::vector<Sets> alone_;
    Sets together_;
};

/// All look-ups with what they are asked and what they are compared with.
class Lookups {
public:
    explicit Lookups(const Input& input) : store_(input) {}

    /// Each answer is found, by the library and in the maps.
    void vCheck() const {
        vRequire(namesAsk(schema_, names_) == names_.size(), "a name is not found");
        vRequire(objectMap_.ask(names_) == names_.size(), "a name is not found in the map");
        vRequire(attributesAsk(attributes_) == attributes_.size(), "an attribute is not found");
        vRequire(AttributeMap::ask(mapAttributes_) == attributes_.size(),
                 "an attribute is not found in the maps");
        vRequire(entitiesAsk(schema_, entities_) != 0, "no entity has a set");
        vRequire(membersAsk(schema_, members_) != 0, "no member has a type");
        vRequire(memberMap_.ask(members_) == members_.size(), "a member is not found in the maps");
    }

    /// They refer to this object.
    std::vector<Lookup> lookups() const {
        const auto askNames = [this] { return namesAsk(schema_, names_); };
        const auto askEntities = [this] { return entitiesAsk(schema_, entities_); };
        return {{"pObjectFromName, each name", names_.size(), askNames, "std::unordered_map, upper-cased",
                 [this] { return objectMap_.ask(names_); }, 0.8},
                {"pObjectFromName, each name", names_.size(), askNames,
                 "the same map, one text for all names",
                 [this] { return objectMap_.askWithOneText(names_); }},
                {"pAttributeFromName, each inherited one", attributes_.size(),
                 [this] { return attributesAsk(attributes_); }, "such a map for each level",
                 [this] { return AttributeMap::ask(mapAttributes_); }, 1},
                {"getXmlSetsAllToEntity, each entity", entities_.size(), askEntities,
                 "all answers, copied at once", [this] { return answers_.copyTogether(); }, 8},
                {"getXmlSetsAllToEntity, each entity", entities_.size(), askEntities,
                 "each answer, copied alone", [this] { return answers_.copyAlone(); }},
                {"findPropertyTypeName, each member", members_.size(),
                 [this] { return membersAsk(schema_, members_); }, "two finds in such maps",
                 [this] { return memberMap_.ask(members_); }, 3}};
    }

private:
    Store store_;
    const ifc::def::SchemaPset& schema_ = store_.getSchema();
    std::vector<std::string> names_ = nameQuestions(schema_);
    std::vector<AttributeQuestion> attributes_ = attributeQuestions(schema_);
    std::vector<const ifc::def::schema::Entity*> entities_ = entityQuestions(schema_);
    std::vector<std::string> members_ = memberQuestions(store_.getSets());
    ObjectMap objectMap_{schema_};
    AttributeMap attributeMap_{schema_};
    std::vector<AttributeMap::Question> mapAttributes_ = attributeMap_.questionsOf(attributes_);
    MemberMap memberMap_{store_.getSets()};
    Answers answers_{schema_, entities_};
};

} // namespace

Figures lookupJobs(const Input& input) {
    const Lookups lookups(input);
    lookups.vCheck();
    return figuresOf(lookups.lookups());
}

} // namespace kiv::bench
