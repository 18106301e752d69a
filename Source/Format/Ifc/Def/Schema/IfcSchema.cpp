#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"

#include "Base/Arena.h"
#include "Base/HashSort.h"
#include "Base/Words8.h"
#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <algorithm>
#include <istream>
#include <stdexcept>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

constexpr std::string_view SchemaKeyword = "SCHEMA";

/// Little, as a text may hold thousands of schemas of a line each.
constexpr std::size_t FirstBlockSize = 1024;

template <class Object>
ArenaPtr<ObjectBase> pRead(Schema& schema, ReadLineHelper& line, std::size_t pos, std::istream& stream) {
    return line.getArena().pMakeOwned<Object>(schema, line, pos, stream);
}

struct Statement {
    Keyword keyword;
    ArenaPtr<ObjectBase> (*read)(Schema&, ReadLineHelper&, std::size_t, std::istream&);
};

/// The first keyword in this order that a line contains decides, wherever it stands.
constexpr Statement Statements[] = {{{"TYPE", 1}, &pRead<Type>},
                                    {{"ENTITY", 5}, &pRead<Entity>},
                                    {{"FUNCTION", 1}, &pRead<Function>},
                                    {{"RULE", 1}, &pRead<Rule>}};

/// Leaves a stream behind the line that was read last, also when reading is broken off.
class AheadGuard {
public:
    AheadGuard(ReadLineHelper& line, std::istream& stream) : line_(line), stream_(stream) {}
    ~AheadGuard() { line_.vAheadGiveBack(stream_); }
    AheadGuard(const AheadGuard&) = delete;
    AheadGuard& operator=(const AheadGuard&) = delete;

private:
    ReadLineHelper& line_;
    std::istream& stream_;
};

/// A stable sort for what is in long runs sorted already, as the declarations of a schema are.
template <class Value, class Less>
void vSortRuns(std::vector<Value>& values, Less less) {
    std::vector<std::size_t> starts;
    for (std::size_t index = 0; index < values.size(); ++index) {
        if (index == 0 || less(values[index], values[index - 1]))
            starts.push_back(index);
    }
    const auto at = [&](std::size_t run) {
        return values.begin() +
               static_cast<std::ptrdiff_t>(run < starts.size() ? starts[run] : values.size());
    };
    // Neighbours are merged until one run is left.
    for (std::size_t width = 1; width < starts.size(); width *= 2) {
        for (std::size_t run = 0; run + width < starts.size(); run += 2 * width)
            std::inplace_merge(at(run), at(run + width), at(run + 2 * width), less);
    }
}

} // namespace

Schema::Schema(std::istream& stream, const std::string& headerLine, std::size_t schemaPos) :
    arena_(std::make_unique<Arena>(FirstBlockSize)),
    attributeSearch_(std::make_unique<AttributeSearch<Attribute>>()) {
    vHeaderRead(headerLine, schemaPos);
    vStatementsRead(stream);
    vResolve();
    attributeSearch_.reset();
    built_ = true;
}

Schema::~Schema() = default;

void Schema::vHeaderRead(const std::string& headerLine, std::size_t schemaPos) {
    const std::string_view header = headerLine;
    const auto start = header.find_first_not_of(' ', schemaPos + SchemaKeyword.size());
    if (start == std::string_view::npos)
        return;
    name_ = header.substr(start, header.substr(start).find(';'));
}

void Schema::vStatementsRead(std::istream& stream) {
    constexpr Keyword end("END_SCHEMA", 3);
    ReadLineHelper line(*arena_);
    const AheadGuard guard(line, stream);
    while (line.boNextLine(stream)) {
        if (auto object = pStatementRead(line, stream)) {
            objectsAsRead_.push_back(object.get());
            objects_.push_back(std::move(object));
            continue;
        }
        if (end.isIn(line.getLine()))
            return;
    }
}

ArenaPtr<ObjectBase> Schema::pStatementRead(ReadLineHelper& line, std::istream& stream) {
    if (line.getLine().empty())
        return nullptr;
    for (const auto& statement : Statements) {
        const auto pos = statement.keyword.findIn(line.getLine());
        if (pos != std::string::npos)
            return statement.read(*this, line, pos, stream);
    }
    return nullptr;
}

void Schema::vResolve() {
    vObjectsByNameBuild();
    vObjectTableBuild();
    // Resolving one may make further ones, which are resolved at once.
    const auto dataTypeCount = dataTypes_.size();
    for (std::size_t index = 0; index < dataTypeCount; ++index)
        dataTypes_[index]->vUpdate(*this);
    for (auto* const object : objectsByHash())
        object->vUpdate(*this);
    vAttributesDirectoryBuild();
    vInverseAndNumbersResolve();
}

void Schema::vObjectsByNameBuild() {
    objectsByName_ = objectsAsRead_;
    vSortRuns(objectsByName_, [](const auto* left, const auto* right) {
        return boLessText(left->getNameUpper(), right->getNameUpper());
    });
    const auto isSameName = [](const auto* left, const auto* right) {
        return isSameText(left->getNameUpper(), right->getNameUpper());
    };
    objectsByName_.erase(std::unique(objectsByName_.begin(), objectsByName_.end(), isSameName),
                         objectsByName_.end());
}

void Schema::vObjectTableBuild() {
    objectTable_.vReserve(objects_.size());
    for (const auto& object : objects_)
        objectTable_.vAdd(object->getNameUpper(), *object);
}

/// The order in which objects are resolved, and so the order of the reports about them: by the hash of the upper-cased
/// name, its length, and its bytes.
std::vector<ObjectBase*> Schema::objectsByHash() const {
    struct Key {
        std::uint32_t hash;
        std::uint32_t index;
    };
    std::vector<Key> keys;
    keys.reserve(objects_.size());
    for (const auto& object : objects_)
        keys.push_back({object->getNameUpperHash(), static_cast<std::uint32_t>(keys.size())});
    sortedByHash(keys, [this](const Key& left, const Key& right) {
        if (left.hash != right.hash)
            return left.hash < right.hash;
        const auto leftName = objects_[left.index]->getNameUpper();
        const auto rightName = objects_[right.index]->getNameUpper();
        if (leftName.size() != rightName.size())
            return leftName.size() < rightName.size();
        return leftName != rightName ? leftName < rightName : left.index < right.index;
    });
    std::vector<ObjectBase*> objects;
    objects.reserve(keys.size());
    for (const auto& key : keys)
        objects.push_back(objects_[key.index].get());
    return objects;
}

void Schema::vAttributesDirectoryBuild() {
    attributesDirectory_.vReserve(attributes_.size());
    for (const auto* const attribute : attributes_)
        attributesDirectory_.vAdd(attribute);
    attributesDirectory_.vBuild();
}

void Schema::vInverseAndNumbersResolve() {
    std::uint16_t counter = 0;
    for (const auto* const object : objectsByName_) {
        if (object->getKind() != ObjectBase::Type::Entity)
            continue;
        // The schema owns its objects as changeable ones; the lists hand them out as const.
        auto& entity = *static_cast<Entity*>(const_cast<ObjectBase*>(object));
        entity.vUpdateInverse(*this);
        if (!entity.pSupertype())
            vTreeNumber(entity, counter);
    }
}

void Schema::vTreeNumber(Entity& root, std::uint16_t& counter) {
    struct Level {
        Entity& entity;
        std::size_t nextSubtype = 0;
    };
    std::vector<Level> levels;
    // Entities that were met before keep their numbers, so that subtype lists that form a circle or share an
    // entity end.
    const auto enter = [&](Entity& entity) {
        if (std::exchange(entity.numbered_, true))
            return;
        entity.firstNumber_ = ++counter;
        levels.push_back({entity});
    };
    enter(root);
    while (!levels.empty()) {
        auto& level = levels.back();
        if (level.nextSubtype < level.entity.subtypes_.size()) {
            enter(const_cast<Entity&>(*level.entity.subtypes_[level.nextSubtype++]));
            continue;
        }
        level.entity.lastNumber_ = counter;
        levels.pop_back();
    }
}

const ObjectBase* Schema::pObjectFromName(std::string_view name) const {
    return pObjectFind(name);
}

const ObjectBase* Schema::pObjectFromName(const ObjectName& name) const {
    return objectTable_.pFind(name.getView());
}

const Attribute* Schema::pAttributeGet(const std::string& entityName,
                                       const std::string& attributeName) const {
    for (const auto& entry : attributesDirectory_.find(attributeName)) {
        if (isUpperOf(entityName, entry.value->getEntity().getNameUpper()))
            return entry.value;
    }
    return nullptr;
}

std::vector<std::reference_wrapper<const Attribute>>
Schema::attributesGet(const std::string& attributeName) const {
    const auto found = attributesDirectory_.find(attributeName);
    std::vector<std::reference_wrapper<const Attribute>> attributes;
    attributes.reserve(found.size());
    for (const auto& entry : found)
        attributes.emplace_back(*entry.value);
    return attributes;
}

std::vector<const DataTypeBase*> Schema::getDataTypes() const {
    std::vector<const DataTypeBase*> types;
    types.reserve(dataTypes_.size());
    for (const auto& type : dataTypes_)
        types.push_back(type.get());
    return types;
}

std::vector<const DataTypeBase*> Schema::getSharedDataTypes() const {
    std::vector<const DataTypeBase*> types;
    for (const auto& type : sharedTypes_) {
        if (type)
            types.push_back(type.get());
    }
    return types;
}

std::vector<std::reference_wrapper<const Attribute>> Schema::getAttributesByName() const {
    std::vector<std::reference_wrapper<const Attribute>> attributes;
    attributes.reserve(attributes_.size());
    for (const auto* const attribute : attributes_)
        attributes.emplace_back(*attribute);
    std::stable_sort(attributes.begin(), attributes.end(), [](const Attribute& left, const Attribute& right) {
        return left.getNameUpper() < right.getNameUpper();
    });
    return attributes;
}

void Schema::vAttributeAdd(const Attribute& attribute) {
    vBuildingCheck();
    attributes_.push_back(&attribute);
}

const Attribute* Schema::pAttributeSearch(const Entity& entity, const AttributeName& key) {
    return attributeSearch_ ? attributeSearch_->pFind(entity, key) : entity.pAttributeFromName(key, true);
}

void Schema::vBuildingCheck() const {
    if (built_)
        throw std::logic_error("a schema that is built cannot be changed");
}

Schema* pStepStreamRead(std::istream& stream,
                        std::function<Schema*(std::istream&, const std::string&, std::size_t)> factory) {
    Schema* result = nullptr;
    ReadLineHelper line;
    bool inComment = false;
    for (bool first = true; line.boNextLine(stream); first = false) {
        if (first)
            line.vByteOrderMarkRemove();
        const auto text = line.getLine();
        // Comments are recognised at the start of a line only; one that opens and closes on its line is not
        // skipped.
        if (!inComment && text.starts_with("(*"))
            inComment = text.find("*)") == std::string::npos;
        else if (text.starts_with("*)"))
            inComment = false;
        const auto pos = inComment ? std::string::npos : text.find(SchemaKeyword);
        if (pos != std::string::npos)
            result = factory(stream, std::string(text), pos);
    }
    return result;
}

} // namespace kiv::ifc::def::schema
