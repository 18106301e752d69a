#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"

#include "Base/NameTable.h"
#include "Base/UpperCase.h"
#include "Format/Ifc/Def/Store/GuidTable.h"
#include "Format/Ifc/Def/Store/OrderedSets.h"
#include "Format/Ifc/Def/Store/SetsByClass.h"
#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <string>
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

/// The sets and all that they are found by.
struct SchemaPropertySetDefinitions::Index {
    /// Takes a set that passed its check, unless its name is there already; then the set is destroyed.
    void vTake(std::unique_ptr<xml::SetDef>& set);

    /// Appends the sets of the entity alone, in the order of their names.
    void vAppend(const schema::Entity& entity, bool includeUnrestricted,
                 std::vector<const xml::SetDef*>& found) const;

    // In the order in which they are listed; looked up by `byName`, whose keys are its keys.
    std::map<std::string, std::unique_ptr<xml::SetDef>, std::less<>> sets;
    NameTable<const xml::SetDef> byName;
    GuidTable<const xml::Def> defsByIfd;
    SetsByClass byClass;
    OrderedSets unrestricted;
};

void SchemaPropertySetDefinitions::Index::vTake(std::unique_ptr<xml::SetDef>& set) {
    auto upperName = sUpper(set->getName());
    const auto place = sets.lower_bound(upperName);
    if (place != sets.end() && place->first == upperName)
        return set.reset();
    // What can fail is made beside the collection, so that it takes the set as a whole or not at all.
    decltype(sets) added;
    const std::string_view name = added.try_emplace(std::move(upperName), nullptr).first->first;
    const auto defs = defsOf(*set);
    const bool isUnrestricted = set->getApplicableClasses().empty();
    const auto classes = SetsByClass::classesOf(*set);
    byClass.vReserve(name, classes);
    if (isUnrestricted)
        unrestricted.vReserve(name);
    byName.vReserve(1);
    defsByIfd.vReserve(defs.size());

    byName.vAdd(name, *set);
    for (const auto* const def : defs)
        defsByIfd.vAdd(def->getIfdGuid(), *def);
    byClass.vAdd(name, *set, classes);
    if (isUnrestricted)
        unrestricted.vAdd(name, *set);
    added.begin()->second = std::move(set);
    // The node only changes hands.
    sets.insert(place, added.extract(added.begin()));
}

void SchemaPropertySetDefinitions::Index::vAppend(const schema::Entity& entity, bool includeUnrestricted,
                                                  std::vector<const xml::SetDef*>& found) const {
    const auto* const named = byClass.pFind(entity.getNameHash(), entity.getName());
    // No set is in both.
    if (named && includeUnrestricted)
        OrderedSets::vMergedAppend(*named, unrestricted, found);
    else if (named || includeUnrestricted)
        (named ? *named : unrestricted).vAppend(found);
}

SchemaPropertySetDefinitions::SchemaPropertySetDefinitions() = default;
SchemaPropertySetDefinitions::SchemaPropertySetDefinitions(SchemaPropertySetDefinitions&&) noexcept = default;
SchemaPropertySetDefinitions&
SchemaPropertySetDefinitions::operator=(SchemaPropertySetDefinitions&&) noexcept = default;
SchemaPropertySetDefinitions::~SchemaPropertySetDefinitions() = default;

bool SchemaPropertySetDefinitions::xmlSetAdd(const schema::Schema& schema, std::unique_ptr<xml::SetDef>&& set,
                                             xml::XmlSetErrors& errors) {
    if (!set->checkForErrors(schema, errors))
        return false;
    if (!index_)
        index_ = std::make_unique<Index>();
    index_->vTake(set);
    return true;
}

const xml::SetDef* SchemaPropertySetDefinitions::getXmlSetFromName(std::string_view name) const {
    return index_ ? index_->byName.pFindUpper(name) : nullptr;
}

const xml::SetDef* SchemaPropertySetDefinitions::getXmlSetFromNameUpper(std::string_view upperName) const {
    return index_ ? index_->byName.pFind(upperName) : nullptr;
}

const xml::Def* SchemaPropertySetDefinitions::getXmlDefFromIfd(const kiv::Guid& guid) const {
    return index_ ? index_->defsByIfd.pFind(guid) : nullptr;
}

std::vector<const xml::SetDef*> SchemaPropertySetDefinitions::getXmlSets() const {
    std::vector<const xml::SetDef*> sets;
    if (!index_)
        return sets;
    sets.reserve(index_->sets.size());
    for (const auto& entry : index_->sets)
        sets.push_back(entry.second.get());
    return sets;
}

std::vector<const xml::SetDef*>
SchemaPropertySetDefinitions::getXmlSetsToEntity(const schema::Entity& entity,
                                                 bool includeUnrestricted) const {
    std::vector<const xml::SetDef*> sets;
    if (index_)
        index_->vAppend(entity, includeUnrestricted, sets);
    return sets;
}

std::vector<const xml::SetDef*>
SchemaPropertySetDefinitions::getXmlSetsAllToEntity(const schema::Entity& entity,
                                                    bool includeUnrestricted) const {
    // From the entity upwards, the sets of each level put down in reverse; in the end all is turned round.
    std::vector<const xml::SetDef*> sets;
    if (!index_)
        return sets;
    sets.reserve(TypicalAnswer);
    for (const auto* level = &entity; level; level = level->pSupertype()) {
        const auto below = static_cast<std::ptrdiff_t>(sets.size());
        index_->vAppend(*level, includeUnrestricted && !level->pSupertype(), sets);
        std::reverse(sets.begin() + below, sets.end());
    }
    std::reverse(sets.begin(), sets.end());
    return sets;
}

} // namespace kiv::ifc::def
