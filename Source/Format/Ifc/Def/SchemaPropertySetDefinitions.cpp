#include "Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include "Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

namespace kiv::ifc::def {

SchemaPropertySetDefinitions::SchemaPropertySetDefinitions() = default;
SchemaPropertySetDefinitions::SchemaPropertySetDefinitions(SchemaPropertySetDefinitions&&) noexcept = default;
SchemaPropertySetDefinitions&
SchemaPropertySetDefinitions::operator=(SchemaPropertySetDefinitions&&) noexcept = default;
SchemaPropertySetDefinitions::~SchemaPropertySetDefinitions() = default;

bool SchemaPropertySetDefinitions::xmlSetAdd(const schema::Schema& schema, std::unique_ptr<xml::SetDef>&& set,
                                             xml::XmlSetErrors& errors) {
    if (!set->checkForErrors(schema, errors))
        return false;
    const auto [entry, isNew] = sets_.try_emplace(schema::sUpper(set->getName()), nullptr);
    if (!isNew) {
        set.reset();
        return true;
    }
    entry->second = std::move(set);
    vDefsIndex(*entry->second);
    vClassesIndex(entry->first, *entry->second);
    return true;
}

void SchemaPropertySetDefinitions::vDefsIndex(const xml::SetDef& set) {
    const auto index = [this](const auto& defs) {
        for (const auto& def : defs)
            defsByIfd_.try_emplace(def.getIfdGuid(), &def);
    };
    if (const auto* const properties = dynamic_cast<const pset::PropertySetDef*>(&set))
        index(properties->getProperties());
    else if (const auto* const quantities = dynamic_cast<const qto::QuantitySetDef*>(&set))
        index(quantities->getQuantities());
}

void SchemaPropertySetDefinitions::vClassesIndex(std::string_view upperName, const xml::SetDef& set) {
    if (set.getApplicableClasses().empty())
        unrestrictedSets_.emplace(upperName, &set);
    for (const auto& applicable : set.getApplicableClasses())
        setsByClass_[{applicable.getClassNameHash(), applicable.getClassName()}].emplace(upperName, &set);
}

const xml::SetDef* SchemaPropertySetDefinitions::getXmlSetFromName(const std::string& name) const {
    return getXmlSetFromNameUpper(schema::UpperCopy(name).getView());
}

const xml::SetDef* SchemaPropertySetDefinitions::getXmlSetFromNameUpper(std::string_view upperName) const {
    const auto found = sets_.find(upperName);
    return found == sets_.end() ? nullptr : found->second.get();
}

const xml::Def* SchemaPropertySetDefinitions::getXmlDefFromIfd(const kiv::Guid& guid) const {
    const auto found = defsByIfd_.find(guid);
    return found == defsByIfd_.end() ? nullptr : found->second;
}

std::vector<const xml::SetDef*> SchemaPropertySetDefinitions::getXmlSets() const {
    std::vector<const xml::SetDef*> sets;
    sets.reserve(sets_.size());
    for (const auto& entry : sets_)
        sets.push_back(entry.second.get());
    return sets;
}

const SchemaPropertySetDefinitions::SetsByName*
SchemaPropertySetDefinitions::pSetsToEntity(const schema::Entity& entity) const {
    const auto found = setsByClass_.find({entity.getNameHash(), entity.getName()});
    return found == setsByClass_.end() ? nullptr : &found->second;
}

void SchemaPropertySetDefinitions::vSetsToEntityAppend(const schema::Entity& entity, bool includeUnrestricted,
                                                       std::vector<const xml::SetDef*>& sets) const {
    static const SetsByName none;
    const auto* const named = pSetsToEntity(entity);
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
    std::vector<const schema::Entity*> line;
    for (const auto* above = &entity; above; above = above->pSupertype())
        line.push_back(above);
    std::vector<const xml::SetDef*> sets;
    for (auto level = line.rbegin(); level != line.rend(); ++level)
        vSetsToEntityAppend(**level, includeUnrestricted && level == line.rbegin(), sets);
    return sets;
}

} // namespace kiv::ifc::def
