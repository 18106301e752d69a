#include "Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include "Format/Ifc/Def/IfcDefErrors.h"
#include "Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace kiv::ifc::def {

namespace {

/// Most answers for an entity and all above it are no longer than that.
constexpr std::size_t TypicalAnswer = 16;

/// The properties or quantities of a set.
std::vector<const xml::Def*> defsOf(const xml::SetDef& set) {
    std::vector<const xml::Def*> result;
    const auto take = [&result](const auto& defs) {
        result.reserve(defs.size());
        for (const auto& def : defs)
            result.push_back(&def);
    };
    if (const auto* const properties = dynamic_cast<const pset::PropertySetDef*>(&set))
        take(properties->getProperties());
    else if (const auto* const quantities = dynamic_cast<const qto::QuantitySetDef*>(&set))
        take(quantities->getQuantities());
    return result;
}

} // namespace

SchemaPropertySetDefinitions::SchemaPropertySetDefinitions() = default;
SchemaPropertySetDefinitions::SchemaPropertySetDefinitions(SchemaPropertySetDefinitions&&) noexcept = default;
SchemaPropertySetDefinitions&
SchemaPropertySetDefinitions::operator=(SchemaPropertySetDefinitions&&) noexcept = default;
SchemaPropertySetDefinitions::~SchemaPropertySetDefinitions() = default;

bool SchemaPropertySetDefinitions::xmlSetAdd(const schema::Schema& schema, std::unique_ptr<xml::SetDef>&& set,
                                             xml::XmlSetErrors& errors) {
    if (!set->checkForErrors(schema, errors))
        return false;
    auto upperName = schema::sUpper(set->getName());
    const auto place = sets_.lower_bound(upperName);
    if (place != sets_.end() && place->first == upperName) {
        set.reset();
        return true;
    }
    // What can fail is made beside the collection, so that it takes the set as a whole or not at all.
    decltype(sets_) sets;
    const std::string_view name = sets.try_emplace(std::move(upperName), nullptr).first->first;
    const auto defs = defsOf(*set);
    auto classes = SetsByClass::classesOf(name, *set);
    SetsByName unrestricted;
    if (classes.empty())
        unrestricted.emplace(name, set.get());
    setsByClass_.vReserve(classes.size());
    setsByName_.vReserve(1);
    defsByIfd_.vReserve(defs.size());

    setsByName_.vAdd(name, *set);
    for (const auto* const def : defs)
        defsByIfd_.vAdd(def->getIfdGuid(), *def);
    sets.begin()->second = std::move(set);
    // With places reserved, nodes only change hands.
    sets_.insert(place, sets.extract(sets.begin()));
    setsByClass_.vMerge(std::move(classes));
    unrestrictedSets_.merge(unrestricted);
    return true;
}

const xml::SetDef* SchemaPropertySetDefinitions::getXmlSetFromName(std::string_view name) const {
    return getXmlSetFromNameUpper(schema::UpperCopy(name).getView());
}

const xml::SetDef* SchemaPropertySetDefinitions::getXmlSetFromNameUpper(std::string_view upperName) const {
    return setsByName_.pFind(upperName);
}

const xml::Def* SchemaPropertySetDefinitions::getXmlDefFromIfd(const kiv::Guid& guid) const {
    return defsByIfd_.pFind(guid);
}

std::vector<const xml::SetDef*> SchemaPropertySetDefinitions::getXmlSets() const {
    std::vector<const xml::SetDef*> sets;
    sets.reserve(sets_.size());
    for (const auto& entry : sets_)
        sets.push_back(entry.second.get());
    return sets;
}

void SchemaPropertySetDefinitions::vSetsToEntityAppend(const schema::Entity& entity, bool includeUnrestricted,
                                                       std::vector<const xml::SetDef*>& sets) const {
    static const SetsByName none;
    const auto* const named = setsByClass_.pFind(entity.getNameHash(), entity.getName());
    const auto& restricted = named ? *named : none;
    const auto& unrestricted = includeUnrestricted ? unrestrictedSets_ : none;
    // Both are ordered by name, and no set is in both: one merge gives the order of the names.
    auto first = restricted.begin();
    auto second = unrestricted.begin();
    while (first != restricted.end() || second != unrestricted.end()) {
        const bool takeFirst =
            second == unrestricted.end() || (first != restricted.end() && first->first < second->first);
        sets.push_back(takeFirst ? (first++)->second : (second++)->second);
    }
}

std::vector<const xml::SetDef*>
SchemaPropertySetDefinitions::getXmlSetsToEntity(const schema::Entity& entity,
                                                 bool includeUnrestricted) const {
    std::vector<const xml::SetDef*> sets;
    vSetsToEntityAppend(entity, includeUnrestricted, sets);
    return sets;
}

std::vector<const xml::SetDef*>
SchemaPropertySetDefinitions::getXmlSetsAllToEntity(const schema::Entity& entity,
                                                    bool includeUnrestricted) const {
    // The line is followed upwards and the sets of each entity are put down in reverse, to be turned round as a whole.
    std::vector<const xml::SetDef*> sets;
    sets.reserve(TypicalAnswer);
    for (const auto* level = &entity; level; level = level->pSupertype()) {
        const auto below = static_cast<std::ptrdiff_t>(sets.size());
        vSetsToEntityAppend(*level, includeUnrestricted && !level->pSupertype(), sets);
        std::reverse(sets.begin() + below, sets.end());
    }
    std::reverse(sets.begin(), sets.end());
    return sets;
}

} // namespace kiv::ifc::def
