#include "kivifc/Site/SiteModel.h"

#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/DistinctRules.h"
#include "kivifc/Site/ExpressWords.h"
#include "kivifc/Site/RedeclaredName.h"
#include "kivifc/Site/SetClasses.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;
using ifc::def::xml::SetDef;

template <typename Object>
void vSortByName(std::vector<const Object*>& objects) {
    std::ranges::stable_sort(objects, {}, [](const Object* object) { return object->getNameUpper(); });
}

/// What a set says of the entities that it names: the predefined types of each; none of one that it names
/// alone as well.
using NamedTypes = std::unordered_map<std::string_view, std::vector<std::string>>;

NamedTypes namedTypesOf(const Schema& schema, const SetDef& set) {
    NamedTypes types;
    for (const auto& named : namedClasses(schema, set)) {
        auto& ofClass = types[named.name];
        if (!named.isWhole)
            ofClass.assign(named.predefinedTypes.begin(), named.predefinedTypes.end());
    }
    return types;
}

/// The bytes of the folder that all paths begin with, "/" included.
std::size_t commonFolderSize(const std::set<std::string>& paths) {
    // What the first and the last in order have in common, those between them have too.
    const auto& first = *paths.begin();
    const auto common = std::ranges::mismatch(first, *paths.rbegin()).in1 - first.begin();
    return first.substr(0, static_cast<std::size_t>(common)).rfind('/') + 1;
}

/// How many supertypes are looked at; no schema that people write has as many above one another.
constexpr int NearMax = 100;

/// What the type of a derived attribute ends with: "LIST [3:3] OF IfcDirection".
const ObjectBase* pTypeOf(const Schema& schema, const DeriveValue& value) {
    std::string_view last;
    const auto type = value.getRest().substr(0, value.getRest().find(":="));
    for (ExpressWords words(type); words.boNext();) {
        if (words.getKind() == ExpressWords::Kind::Word)
            last = words.getText();
    }
    return last.empty() ? nullptr : schema.pObjectFromName(last);
}

std::size_t errorsOf(const SchemaFile& file) {
    const auto findings = kit::schemaFindingsOf(file.schema.get(), file.assertions, file.text, file.path);
    return static_cast<std::size_t>(
        std::ranges::count(findings, kit::Severity::Error, &kit::Finding::severity));
}

} // namespace

SiteModel::SiteModel(const SchemaWithSets& loaded, std::string title) :
    loaded_(loaded),
    title_(std::move(title)),
    schemaErrors_(errorsOf(loaded.schema)),
    declarations_(loaded.schema),
    declaredNames_(*loaded.schema.schema, declarations_),
    uses_(*loaded.schema.schema, declarations_, declaredNames_),
    tree_(*loaded.schema.schema) {
    vObjectsSort();
    vSetsCollect();
    vMemberUsesFind();
    vSetsApply();
    vUnrestrictedFind();
    vRedeclarationsFind();
    vAgainCount();
    vDerivedFind();
    vRulesFind();
    vPlacesFind();
}

void SiteModel::vObjectsSort() {
    for (const auto* object : getSchema().getObjects())
        addresses_.vExpect(*object);
    // Of objects of one name, the one that look-ups find is first.
    for (const auto* object : getSchema().getObjectsByName())
        addresses_.vAdd(*object);
    for (const auto* object : getSchema().getObjects()) {
        addresses_.vAdd(*object);
        if (const auto* entity = Entity::pFrom(object))
            entities_.push_back(entity);
        else if (const auto* type = Type::pFrom(object))
            types_.push_back(type);
        else if (const auto* function = dynamic_cast<const Function*>(object))
            functions_.push_back(function);
        else if (const auto* rule = dynamic_cast<const Rule*>(object))
            rules_.push_back(rule);
    }
    vSortByName(entities_);
    vSortByName(types_);
    vSortByName(functions_);
    vSortByName(rules_);
}

void SiteModel::vSetsCollect() {
    getSchema().forEachDefinition(
        [&](const auto& context, const auto& definitions) {
            for (const auto* set : definitions.getXmlSets()) {
                const auto* found = getSchema().pXmlSetFromName(set->getName(), {});
                sets_.push_back({set,
                                 context,
                                 loaded_.paths.at(set),
                                 {},
                                 nullptr,
                                 found == set ? nullptr : found,
                                 {},
                                 {}});
            }
        },
        {});
    vUnusedSetsRead();
    vDocumentsName();
    for (const auto& set : sets_)
        setsByDef_.emplace(set.set, &set);
    for (auto& set : sets_) {
        if (const auto* hiding = pSet(set.hiddenBy))
            set.hidingContext = hiding->context.name;
    }
    for (const auto& set : sets_)
        addresses_.vExpect(*set.set, set.context.isStandard);
    for (const auto& set : sets_) {
        if (set.isUsed())
            addresses_.vAdd(*set.set, set.context.isStandard, set.context.name);
    }
    for (const auto& set : sets_) {
        if (!set.isUsed())
            addresses_.vAdd(*set.set, set.context.isStandard, set.context.name + '\n' + set.documentName);
    }
}

/// They are gone from the collections, so they are made again of the text of their documents.
void SiteModel::vUnusedSetsRead() {
    unusedDocuments_.reserve(loaded_.unusedSets.size());
    for (const auto& unused : loaded_.unusedSets) {
        auto document = kit::setTextRead(unused.text, unused.path, readingOptions());
        if (!document.pSet())
            continue;
        sets_.push_back(
            {document.pSet(), unused.context, unused.path, unused.reason, nullptr, nullptr, {}, {}});
        unusedDocuments_.push_back(std::move(document));
    }
}

void SiteModel::vDocumentsName() {
    std::unordered_map<std::string, std::set<std::string>> paths;
    const auto fileName = [](const SiteSet& set) { return set.path.substr(set.path.rfind('/') + 1); };
    for (auto& set : sets_) {
        const auto found = loaded_.documentNames.find(set.path);
        set.documentName = found == loaded_.documentNames.end() ? fileName(set) : found->second;
        paths[fileName(set)].insert(set.documentName);
    }
    for (auto& set : sets_)
        set.documentName.erase(0, commonFolderSize(paths[fileName(set)]));
    vUsedInsteadFind();
}

/// Of a set that is left out, the reason names the document of the one that has its name.
void SiteModel::vUsedInsteadFind() {
    std::map<std::pair<std::string_view, std::string>, const SiteSet*> used;
    const auto key = [](const SiteSet& set) {
        return std::pair(std::string_view(set.context.name), ascii::sUpperCase(set.set->getName()));
    };
    for (const auto& set : sets_) {
        if (set.isUsed())
            used.emplace(key(set), &set);
    }
    for (auto& set : sets_) {
        const auto found = used.find(key(set));
        if (set.isUsed() || found == used.end())
            continue;
        // The name of the set comes before it, and may be anything.
        const auto& other = *found->second;
        const auto place = set.unusedReason.rfind(other.path);
        if (place == std::string::npos)
            continue;
        set.unusedReason.replace(place, other.path.size(), other.documentName);
        set.usedInstead = other.set;
    }
}

void SiteModel::vMemberUsesFind() {
    std::vector<const SetDef*> used;
    for (const auto& set : sets_) {
        if (set.isUsed())
            used.push_back(set.set);
    }
    memberUses_ = MemberUses(getSchema(), used);
}

/// A set may name all entities, and an entity may be named by all sets.
void SiteModel::vSetsApply() {
    std::unordered_map<const SetDef*, NamedTypes> named;
    for (const auto& set : sets_)
        named.emplace(set.set, namedTypesOf(getSchema(), *set.set));
    for (const auto* entity : entities_) {
        std::map<std::vector<std::string>, std::vector<const SiteSet*>> byTypes;
        std::unordered_set<const SetDef*> known;
        for (const auto* set : getSchema().getXmlSetsToEntity(*entity, false, {})) {
            if (pSet(set) && known.insert(set).second)
                byTypes[named.at(set)[entity->getName()]].push_back(pSet(set));
        }
        if (!known.empty())
            appliedCounts_.emplace(entity, known.size());
        std::vector<AppliedSets> groups;
        groups.reserve(byTypes.size());
        for (auto& [types, sets] : byTypes)
            groups.push_back({types, std::move(sets)});
        if (!groups.empty())
            applied_.emplace(entity, std::move(groups));
    }
}

void SiteModel::vUnrestrictedFind() {
    for (const auto& set : sets_) {
        if (set.isUsed() && set.set->getApplicableClasses().empty())
            unrestricted_.push_back(&set);
    }
}

void SiteModel::vRedeclarationsFind() {
    for (const auto* object : getSchema().getObjects()) {
        const auto* entity = Entity::pFrom(object);
        if (!entity)
            continue;
        for (const auto& attribute : entity->getAttributes()) {
            if (const auto* former = pRedeclared(attribute, getSchema()))
                vRedeclarationAdd(*former, {entity, false});
        }
        if (!entity->pDerive())
            continue;
        for (const auto& value : entity->pDerive()->getValues()) {
            if (value.pRedeclared())
                vRedeclarationAdd(*value.pRedeclared(), {entity, true});
        }
    }
}

void SiteModel::vRedeclarationAdd(const AttributeBase& former, const Redeclaration& again) {
    redeclarations_[&former].push_back(again);
    redeclaredBy_[again.entity].try_emplace(&former, again.isDerived);
}

void SiteModel::vAgainCount() {
    for (const auto& [entity, redeclared] : redeclaredBy_) {
        auto& again = again_[entity];
        for (const auto& [former, isDerived] : redeclared) {
            if (!isDerived)
                ++again.explicitly;
            else if (isDerivedAbove(*entity, *former))
                ++again.derived;
        }
    }
}

bool SiteModel::isDerivedAbove(const Entity& entity, const AttributeBase& attribute) const {
    const auto* each = entity.pSupertype();
    for (int length = 0; each && length < NearMax; ++length, each = each->pSupertype()) {
        const auto& redeclared = redeclaredBy(*each);
        const auto found = redeclared.find(&attribute);
        if (found != redeclared.end() && found->second)
            return true;
    }
    return false;
}

void SiteModel::vDerivedFind() {
    for (const auto* entity : entities_) {
        if (!entity->pDerive())
            continue;
        auto& known = derived_[entity];
        for (const auto& value : entity->pDerive()->getValues())
            known.try_emplace(ascii::sUpperCase(ownNameOf(value.getName())),
                              DerivedAttribute{entity, &value, pTypeOf(getSchema(), value)});
    }
}

void SiteModel::vRulesFind() {
    for (const auto* entity : entities_) {
        if (entity->pWhere())
            entityRules_.emplace(entity, distinctRules(entity->pWhere()));
    }
}

/// Level by level: a line of inheritance may be too long to recurse along.
void SiteModel::vPlacesFind() {
    auto all = tree_.getRoots();
    for (const auto* root : all)
        places_.emplace(root, Place{});
    for (std::size_t next = 0; next < all.size(); ++next) {
        for (const auto* child : tree_.getChildren(*all[next])) {
            places_.emplace(child, Place{places_.at(all[next]).depth + 1, 0});
            all.push_back(child);
        }
    }
    for (auto place = all.rbegin(); place != all.rend(); ++place) {
        if ((*place)->pSupertype())
            places_.at((*place)->pSupertype()).below += places_.at(*place).below + 1;
    }
    // None, unless supertypes go in a circle.
    for (const auto* entity : entities_)
        places_.try_emplace(entity);
}

const SiteSet* SiteModel::pSet(const SetDef* set) const {
    const auto found = setsByDef_.find(set);
    return found == setsByDef_.end() ? nullptr : found->second;
}

const std::vector<AppliedSets>& SiteModel::setsOf(const Entity& entity) const {
    static const std::vector<AppliedSets> None;
    const auto found = applied_.find(&entity);
    return found == applied_.end() ? None : found->second;
}

std::size_t SiteModel::setCountOf(const Entity& entity) const {
    const auto found = appliedCounts_.find(&entity);
    return found == appliedCounts_.end() ? 0 : found->second;
}

const SiteModel::Redeclared& SiteModel::redeclaredBy(const Entity& entity) const {
    static const Redeclared None;
    const auto found = redeclaredBy_.find(&entity);
    return found == redeclaredBy_.end() ? None : found->second;
}

DeclaredAgain SiteModel::declaredAgainIn(const Entity& entity) const {
    const auto found = again_.find(&entity);
    return found == again_.end() ? DeclaredAgain() : found->second;
}

DerivedAttribute SiteModel::derivedOf(const Entity& entity, const std::string& upperName) const {
    const auto* each = &entity;
    for (int length = 0; each && length < NearMax; ++length, each = each->pSupertype()) {
        const auto known = derived_.find(each);
        if (known == derived_.end())
            continue;
        if (const auto found = known->second.find(upperName); found != known->second.end())
            return found->second;
    }
    return {};
}

const std::vector<const ParsedRule*>& SiteModel::rulesOf(const Entity& entity) const {
    static const std::vector<const ParsedRule*> None;
    const auto found = entityRules_.find(&entity);
    return found == entityRules_.end() ? None : found->second;
}

const std::vector<Redeclaration>& SiteModel::redeclarationsOf(const AttributeBase& attribute) const {
    static const std::vector<Redeclaration> None;
    const auto found = redeclarations_.find(&attribute);
    return found == redeclarations_.end() ? None : found->second;
}

} // namespace kiv::kivifc::site
