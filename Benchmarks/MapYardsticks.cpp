#include "MapYardsticks.h"

#include "Base/Ascii.h"

#include <algorithm>

namespace kiv::bench {

namespace {

namespace def = ifc::def;

/// Upper-cases into a text that the caller may use again, so that it allocates next to never.
const std::string& upperOf(std::string_view name, std::string& upper) {
    upper.resize(name.size());
    std::transform(name.begin(), name.end(), upper.begin(), ascii::getUpper);
    return upper;
}

std::string sUpper(std::string_view name) {
    std::string upper;
    upperOf(name, upper);
    return upper;
}

template <class Thing>
void* pAny(const Thing& thing) {
    return const_cast<Thing*>(&thing);
}

const void* pFind(const NameMap& map, const std::string& name) {
    const auto found = map.find(name);
    return found == map.end() ? nullptr : found->second;
}

const void* pAttributeFind(const AttributeMap::Level* level, const std::string& name) {
    const void* found = nullptr;
    for (; level && !found; level = level->above)
        found = pFind(level->attributes, name);
    return found;
}

} // namespace

ObjectMap::ObjectMap(const def::schema::Schema& schema) {
    for (const auto* const object : schema.getObjectsByName())
        objects_.emplace(object->getNameUpper(), pAny(*object));
}

std::size_t ObjectMap::ask(std::span<const std::string> questions) const {
    std::size_t found = 0;
    for (const auto& name : questions)
        found += pFind(objects_, sUpper(name)) ? 1 : 0;
    return found;
}

std::size_t ObjectMap::askWithOneText(std::span<const std::string> questions) const {
    std::size_t found = 0;
    std::string upper;
    for (const auto& name : questions)
        found += pFind(objects_, upperOf(name, upper)) ? 1 : 0;
    return found;
}

AttributeMap::AttributeMap(const def::schema::Schema& schema) {
    for (const auto* const entity : entityQuestions(schema)) {
        auto& level = levels_[entity];
        level.above = entity->pSupertype() ? &levels_[entity->pSupertype()] : nullptr;
        for (const auto& attribute : entity->getAttributes())
            level.attributes.emplace(attribute.getName(), pAny(attribute));
    }
}

std::vector<AttributeMap::Question>
AttributeMap::questionsOf(std::span<const AttributeQuestion> questions) const {
    std::vector<Question> prepared;
    for (const auto& [entity, name] : questions)
        prepared.push_back({&levels_.at(entity), name});
    return prepared;
}

std::size_t AttributeMap::ask(std::span<const Question> questions) {
    std::size_t found = 0;
    for (const auto& [level, name] : questions)
        found += pAttributeFind(level, name) ? 1 : 0;
    return found;
}

MemberMap::MemberMap(const def::SchemaPropertySetDefinitions& sets) {
    vMembersVisit(sets, [this](const def::xml::SetDef& set, const def::xml::Def& member) {
        membersOfSet_[&set].emplace(member.getName(), pAny(member));
    });
    for (auto& [set, members] : membersOfSet_)
        sets_.emplace(sUpper(set->getName()), &members);
}

std::size_t MemberMap::ask(std::span<const std::string> questions) const {
    std::size_t found = 0;
    for (const auto& name : questions) {
        const auto dot = name.find('.');
        const auto* const members = pFind(sets_, sUpper(std::string_view(name).substr(0, dot)));
        found += pFind(*static_cast<const NameMap*>(members), name.substr(dot + 1)) ? 1 : 0;
    }
    return found;
}

SetMap::SetMap(const def::SchemaPropertySetDefinitions& sets) {
    for (const auto* const set : sets.getXmlSets())
        sets_.emplace(sUpper(set->getName()), pAny(*set));
}

std::size_t SetMap::ask(std::span<const std::string> questions) const {
    std::size_t found = 0;
    for (const auto& name : questions)
        found += pFind(sets_, sUpper(name)) ? 1 : 0;
    return found;
}

std::size_t GuidMap::Hash::operator()(const Guid& guid) const {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(&guid), sizeof(guid)});
}

GuidMap::GuidMap(const def::SchemaPropertySetDefinitions& sets) {
    vMembersVisit(sets, [this](const def::xml::SetDef&, const def::xml::Def& member) {
        members_.emplace(member.getIfdGuid(), &member);
    });
}

std::size_t GuidMap::ask(std::span<const Guid> questions) const {
    std::size_t found = 0;
    for (const auto& guid : questions) {
        const auto member = members_.find(guid);
        found += member != members_.end() && member->second ? 1 : 0;
    }
    return found;
}

ClassMap::ClassMap(const def::SchemaPropertySetDefinitions& sets) {
    for (const auto* const set : sets.getXmlSets()) {
        for (const auto& applicable : set->getApplicableClasses()) {
            auto& answer = classes_[applicable.getClassName()];
            if (answer.empty() || answer.back() != set)
                answer.push_back(set);
        }
    }
}

void ClassMap::vAppend(const def::schema::Entity* entity, Sets& answer) const {
    if (!entity)
        return;
    vAppend(entity->pSupertype(), answer);
    const auto named = classes_.find(entity->getName());
    if (named != classes_.end())
        answer.insert(answer.end(), named->second.begin(), named->second.end());
}

std::size_t ClassMap::ask(std::span<const def::schema::Entity* const> questions) const {
    std::size_t found = 0;
    for (const auto* const entity : questions) {
        Sets answer;
        vAppend(entity, answer);
        found += answer.size();
    }
    return found;
}

} // namespace kiv::bench
