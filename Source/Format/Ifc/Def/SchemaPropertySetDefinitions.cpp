#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include "Base/UpperCase.h"
#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

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
    auto upperName = sUpper(set->getName());
    const auto place = sets_.lower_bound(upperName);
    if (place != sets_.end() && place->first == upperName) {
        set.reset();
        return true;
    }
    // What can fail is made beside the collection, so that it takes the set as a whole or not at all.
    decltype(sets_) sets;
    const std::string_view name = sets.try_emplace(std::move(upperName), nullptr).first->first;
    const auto defs = defsOf(*set);
    const bool isUnrestricted = set->getApplicableClasses().empty();
    const auto classes = SetsByClass::classesOf(*set);
    setsByClass_.vReserve(name, classes);
    if (isUnrestricted)
        unrestrictedSets_.vReserve(name);
    setsByName_.vReserve(1);
    defsByIfd_.vReserve(defs.size());

    setsByName_.vAdd(name, *set);
    for (const auto* const def : defs)
        defsByIfd_.vAdd(def->getIfdGuid(), *def);
    setsByClass_.vAdd(name, *set, classes);
    if (isUnrestricted)
        unrestrictedSets_.vAdd(name, *set);
    sets.begin()->second = std::move(set);
    // The node only changes hands.
    sets_.insert(place, sets.extract(sets.begin()));
    return true;
}

const xml::SetDef* SchemaPropertySetDefinitions::getXmlSetFromName(std::string_view name) const {
    return setsByName_.pFindUpper(name);
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
    static const OrderedSets none;
    const auto* const named = setsByClass_.pFind(entity.getNameHash(), entity.getName());
    // No set is in both.
    if (named || includeUnrestricted)
        OrderedSets::vMergedAppend(named ? *named : none, includeUnrestricted ? unrestrictedSets_ : none,
                                   sets);
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
