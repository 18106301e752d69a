#include "Format/Ifc/Def/Schema/IfcSchema.h"

#include "Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "Format/Ifc/Def/Schema/IfcSchemaText.h"
#include "Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <algorithm>
#include <istream>
#include <stdexcept>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

constexpr std::string_view SchemaKeyword = "SCHEMA";

template <class Object>
std::unique_ptr<ObjectBase> pRead(Schema& schema, ReadLineHelper& line, std::size_t pos,
                                  std::istream& stream) {
    return std::make_unique<Object>(schema, line, pos, stream);
}

struct Statement {
    std::string_view keyword;
    std::unique_ptr<ObjectBase> (*read)(Schema&, ReadLineHelper&, std::size_t, std::istream&);
};

/// The first keyword in this order that a line contains decides, wherever it stands.
constexpr Statement Statements[] = {{"TYPE", &pRead<Type>},
                                    {"ENTITY", &pRead<Entity>},
                                    {"FUNCTION", &pRead<Function>},
                                    {"RULE", &pRead<Rule>}};

} // namespace

Schema::Schema(std::istream& stream, const std::string& headerLine, std::size_t schemaPos) {
    vHeaderRead(headerLine, schemaPos);
    vStatementsRead(stream);
    vResolve();
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
    ReadLineHelper line;
    while (line.boNextLine(stream)) {
        if (auto object = pStatementRead(line, stream)) {
            objectsAsRead_.push_back(object.get());
            table_.push_back({object->getNameUpperHash(), object->getNameUpper(), std::move(object)});
            continue;
        }
        if (line.getLine().find("END_SCHEMA") != std::string::npos)
            return;
    }
}

std::unique_ptr<ObjectBase> Schema::pStatementRead(ReadLineHelper& line, std::istream& stream) {
    if (line.getLine().empty())
        return nullptr;
    for (const auto& statement : Statements) {
        const auto pos = line.getLine().find(statement.keyword);
        if (pos != std::string::npos)
            return statement.read(*this, line, pos, stream);
    }
    return nullptr;
}

void Schema::vResolve() {
    vObjectsByNameBuild();
    vTableSort();
    // Resolving one may make further ones, which are resolved at once.
    const auto dataTypeCount = dataTypes_.size();
    for (std::size_t index = 0; index < dataTypeCount; ++index)
        dataTypes_[index]->vUpdate(*this);
    for (const auto& entry : table_)
        entry.object->vUpdate(*this);
    vAttributesSort();
    vInverseAndNumbersResolve();
}

void Schema::vObjectsByNameBuild() {
    objectsByName_ = objectsAsRead_;
    std::stable_sort(objectsByName_.begin(), objectsByName_.end(), [](const auto* left, const auto* right) {
        return left->getNameUpper() < right->getNameUpper();
    });
    const auto isSameName = [](const auto* left, const auto* right) {
        return left->getNameUpper() == right->getNameUpper();
    };
    objectsByName_.erase(std::unique(objectsByName_.begin(), objectsByName_.end(), isSameName),
                         objectsByName_.end());
}

bool Schema::boTableLess(std::uint32_t hash, std::string_view name, std::uint32_t otherHash,
                         std::string_view otherName) {
    if (hash != otherHash)
        return hash < otherHash;
    if (name.size() != otherName.size())
        return name.size() < otherName.size();
    return name < otherName;
}

void Schema::vTableSort() {
    std::stable_sort(table_.begin(), table_.end(), [](const TableEntry& left, const TableEntry& right) {
        return boTableLess(left.hash, left.upperName, right.hash, right.upperName);
    });
}

void Schema::vAttributesSort() {
    std::stable_sort(attributes_.begin(), attributes_.end(), AttributeNameLess());
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

ObjectBase* Schema::pObjectFind(const ObjectName& name) const {
    const auto found = std::lower_bound(
        table_.begin(), table_.end(), name, [](const TableEntry& entry, const ObjectName& wanted) {
            return boTableLess(entry.hash, entry.upperName, wanted.getHash(), wanted.getView());
        });
    const bool equal =
        found != table_.end() && found->hash == name.getHash() && found->upperName == name.getView();
    return equal ? found->object.get() : nullptr;
}

ObjectBase* Schema::pObjectFind(std::string_view name) const {
    const UpperCopy upper(name);
    return pObjectFind(ObjectName(upper.getView()));
}

const ObjectBase* Schema::pObjectFromName(std::string_view name) const {
    return pObjectFind(name);
}

const ObjectBase* Schema::pObjectFromName(const ObjectName& name) const {
    return pObjectFind(name);
}

std::span<const Schema::AttributeEntry> Schema::attributeRange(std::string_view upperName) const {
    const auto [first, last] = std::equal_range(attributes_.begin(), attributes_.end(),
                                                AttributeEntry{upperName, nullptr}, AttributeNameLess());
    return {first, last};
}

const Attribute* Schema::pAttributeGet(const std::string& entityName,
                                       const std::string& attributeName) const {
    const UpperCopy upperEntity(entityName);
    const UpperCopy upperAttribute(attributeName);
    for (const auto& entry : attributeRange(upperAttribute.getView())) {
        if (entry.attribute->getEntity().getNameUpper() == upperEntity.getView())
            return entry.attribute;
    }
    return nullptr;
}

std::vector<std::reference_wrapper<const Attribute>>
Schema::attributesGet(const std::string& attributeName) const {
    const UpperCopy upper(attributeName);
    const auto range = attributeRange(upper.getView());
    std::vector<std::reference_wrapper<const Attribute>> attributes;
    attributes.reserve(range.size());
    for (const auto& entry : range)
        attributes.emplace_back(*entry.attribute);
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
    for (const auto& entry : attributes_)
        attributes.emplace_back(*entry.attribute);
    return attributes;
}

void Schema::vAttributeAdd(const Attribute& attribute) {
    vBuildingCheck();
    attributes_.push_back({attribute.getNameUpper(), &attribute});
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
        const std::string& text = line.getLine();
        // Comments are recognised at the start of a line only; one that opens and closes on its line is not
        // skipped.
        if (!inComment && text.starts_with("(*"))
            inComment = text.find("*)") == std::string::npos;
        else if (text.starts_with("*)"))
            inComment = false;
        const auto pos = inComment ? std::string::npos : text.find(SchemaKeyword);
        if (pos != std::string::npos)
            result = factory(stream, text, pos);
    }
    return result;
}

} // namespace kiv::ifc::def::schema
