#include "Questions.h"

#include "Base/Ascii.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include <algorithm>
#include <random>

namespace kiv::bench {

namespace {

namespace def = ifc::def;
using def::schema::Entity;
using Random = std::mt19937;

/// Like std::shuffle, which each standard library may do in its own way. What comes back are copies: their
/// texts lie in memory in the order in which they are asked, so that what is timed waits for the answers and
/// not for the questions.
template <class Question>
std::vector<Question> shuffled(std::vector<Question> questions) {
    Random random;
    for (auto left = questions.size(); left > 1; --left)
        std::swap(questions[left - 1], questions[random() % left]);
    return {questions.begin(), questions.end()};
}

/// Turns some of the letters into the other case.
std::string mixedCase(std::string_view name, Random& random) {
    constexpr char CaseBit = 0x20;
    std::string mixed(name);
    for (char& byte : mixed) {
        if (ascii::isLetter(byte) && random() % 2 == 0)
            byte = static_cast<char>(byte ^ CaseBit);
    }
    return mixed;
}

} // namespace

std::vector<std::string> nameQuestions(const def::schema::Schema& schema) {
    Random random;
    std::vector<std::string> questions;
    for (const auto* const object : schema.getObjectsByName())
        questions.push_back(mixedCase(object->getName(), random));
    return shuffled(std::move(questions));
}

std::vector<AttributeQuestion> attributeQuestions(const def::schema::Schema& schema) {
    std::vector<AttributeQuestion> questions;
    for (const auto* const entity : entityQuestions(schema)) {
        for (const auto* above = entity->pSupertype(); above; above = above->pSupertype()) {
            for (const auto& attribute : above->getAttributes())
                questions.push_back({entity, std::string(attribute.getName())});
        }
    }
    return shuffled(std::move(questions));
}

std::vector<const Entity*> entityQuestions(const def::schema::Schema& schema) {
    std::vector<const Entity*> questions;
    for (const auto* const object : schema.getObjectsByName()) {
        if (const auto* const entity = Entity::pFrom(object))
            questions.push_back(entity);
    }
    return shuffled(std::move(questions));
}

void vMembersVisit(const def::SchemaPropertySetDefinitions& sets,
                   const std::function<void(const def::xml::SetDef&, const def::xml::Def&)>& use) {
    for (const auto* const set : sets.getXmlSets()) {
        const auto visit = [&](const def::xml::Def& member) { use(*set, member); };
        if (const auto* const properties = dynamic_cast<const def::pset::PropertySetDef*>(set))
            std::ranges::for_each(properties->getProperties(), visit);
        if (const auto* const quantities = dynamic_cast<const def::qto::QuantitySetDef*>(set))
            std::ranges::for_each(quantities->getQuantities(), visit);
    }
}

std::vector<std::string> memberQuestions(const def::SchemaPropertySetDefinitions& sets) {
    Random random;
    std::vector<std::string> questions;
    vMembersVisit(sets, [&](const def::xml::SetDef& set, const def::xml::Def& member) {
        questions.push_back(mixedCase(set.getName(), random) + '.' + member.getName());
    });
    return shuffled(std::move(questions));
}

std::vector<std::string> setQuestions(const def::SchemaPropertySetDefinitions& sets) {
    Random random;
    std::vector<std::string> questions;
    for (const auto* const set : sets.getXmlSets())
        questions.push_back(mixedCase(set->getName(), random));
    return shuffled(std::move(questions));
}

std::vector<Guid> guidQuestions(const def::SchemaPropertySetDefinitions& sets) {
    std::vector<Guid> questions;
    vMembersVisit(sets, [&](const def::xml::SetDef&, const def::xml::Def& member) {
        if (!member.getIfdGuid().isNull())
            questions.push_back(member.getIfdGuid());
    });
    return shuffled(std::move(questions));
}

std::size_t namesAsk(const def::schema::Schema& schema, std::span<const std::string> questions) {
    std::size_t found = 0;
    for (const auto& name : questions)
        found += schema.pObjectFromName(name) ? 1 : 0;
    return found;
}

std::size_t attributesAsk(std::span<const AttributeQuestion> questions) {
    std::size_t found = 0;
    for (const auto& [entity, name] : questions)
        found += entity->pAttributeFromName(def::schema::AttributeName(name), true) ? 1 : 0;
    return found;
}

std::size_t setsAsk(const def::SchemaPropertySetDefinitions& sets, std::span<const std::string> questions) {
    std::size_t found = 0;
    for (const auto& name : questions)
        found += sets.getXmlSetFromName(name) ? 1 : 0;
    return found;
}

std::size_t guidsAsk(const def::SchemaPropertySetDefinitions& sets, std::span<const Guid> questions) {
    std::size_t found = 0;
    for (const auto& guid : questions)
        found += sets.getXmlDefFromIfd(guid) ? 1 : 0;
    return found;
}

std::size_t entitiesAsk(const def::SchemaPset& schema, std::span<const Entity* const> questions) {
    std::size_t found = 0;
    for (const auto* const entity : questions)
        found += schema.getXmlSetsAllToEntity(*entity, true, {}).size();
    return found;
}

std::size_t entitiesAsk(const def::SchemaPropertySetDefinitions& sets,
                        std::span<const Entity* const> questions) {
    std::size_t found = 0;
    for (const auto* const entity : questions)
        found += sets.getXmlSetsAllToEntity(*entity, false).size();
    return found;
}

std::size_t membersAsk(const def::SchemaPset& schema, std::span<const std::string> questions) {
    std::size_t found = 0;
    for (const auto& name : questions)
        found += ifc::findPropertyTypeName(name, schema).has_value() ? 1 : 0;
    return found;
}

} // namespace kiv::bench
