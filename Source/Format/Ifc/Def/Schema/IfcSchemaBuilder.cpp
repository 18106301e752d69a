#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"

#include "Base/HashSort.h"
#include "Base/Size32.h"
#include "Base/Words8.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "Format/Ifc/Def/Schema/IfcSchemaLimits.h"
#include "Format/Ifc/Def/Schema/ResolutionOrder.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaFunction.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <istream>
#include <stdexcept>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

template <class Object>
ArenaPtr<ObjectBase> pRead(Schema& schema, ReadLineHelper& line, std::size_t pos, std::istream& stream) {
    return line.getArena().pMakeOwned<Object>(schema, line, pos, stream);
}

struct Statement {
    Keyword keyword;
    ArenaPtr<ObjectBase> (*read)(Schema&, ReadLineHelper&, std::size_t, std::istream&);
};

/// The first keyword in this order that a line contains decides, wherever it is in the line.
constexpr Statement Statements[] = {{{"TYPE", 1}, &pRead<Type>},
                                    {{"ENTITY", 5}, &pRead<Entity>},
                                    {{"FUNCTION", 1}, &pRead<Function>},
                                    {{"RULE", 1}, &pRead<Rule>}};

/// Leaves a stream after the line that was read last, also when reading is broken off.
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

/// An object and the beginning of its upper-cased name, by which most are put in order: the objects
/// themselves lie all over the memory of the schema.
class NamedObject {
public:
    explicit NamedObject(ObjectBase* object) : begin_(beginOf(object->getNameUpper())), object_(object) {}

    ObjectBase* pObject() const { return object_; }

    /// By name, byte by byte.
    friend bool operator<(const NamedObject& left, const NamedObject& right) {
        if (left.begin_ != right.begin_)
            return left.begin_ < right.begin_;
        return left.object_->getNameUpper() < right.object_->getNameUpper();
    }
    bool isSameName(const NamedObject& other) const {
        return begin_ == other.begin_ && isSameText(object_->getNameUpper(), other.object_->getNameUpper());
    }

private:
    using Begin = std::array<std::uint64_t, 4>;

    static Begin beginOf(std::string_view name) {
        std::array<char, sizeof(Begin)> bytes{};
        if (name.size() >= bytes.size())
            std::memcpy(bytes.data(), name.data(), bytes.size());
        else
            name.copy(bytes.data(), name.size());
        Begin begin{};
        for (std::size_t index = 0; index < begin.size(); ++index)
            begin[index] = getOrdered8(getBytes8(bytes.data() + index * LongText));
        return begin;
    }

    Begin begin_;
    ObjectBase* object_;
};

/// Lets memory bring what will be looked at soon, into the caches. Any address will do.
void vMemoryFetch(const void* begin, std::size_t size = 1) {
    constexpr std::size_t CacheLine = 64;
    const auto* const bytes = static_cast<const char*>(begin);
    __builtin_prefetch(bytes);
    for (std::size_t at = CacheLine; at < size; at += CacheLine)
        __builtin_prefetch(bytes + at);
}

} // namespace

SchemaBuilder::SchemaBuilder(Schema& schema, WorkMeter* meter) :
    schema_(schema), model_(*schema.model_), meter_(meter), attributeSearch_(AttributeStepsMax, meter) {
    schema.pBuilder_ = this;
    model_.arena.vMeterSet(meter);
}

SchemaBuilder::~SchemaBuilder() {
    schema_.pBuilder_ = nullptr;
    model_.arena.vMeterSet(nullptr);
    if (meter_)
        meter_->vMemoryGiveBack(objectsByHash_.capacity() * sizeof(ObjectHash));
}

void SchemaBuilder::vReport(const Schema& schema, Report report) {
    vReport(schema, report, placeOf(report).message);
}

void SchemaBuilder::vReport(const Schema& schema, Report report, std::string_view message) {
    auto* const meter = pMeter(schema);
    if (meter && assert::Assert::isEnabled())
        meter->vTake(WorkMeter::Unit::Reports, 1);
    def::vReport(report, message);
}

void SchemaBuilder::vBuild(std::istream& stream, const std::string& headerLine, std::size_t schemaPos) {
    vHeaderRead(headerLine, schemaPos);
    vStatementsRead(stream);
    vResolve();
}

SchemaBuilder& SchemaBuilder::of(Schema& schema) {
    if (!schema.pBuilder_)
        throw std::logic_error("a schema that is built cannot be changed");
    return *schema.pBuilder_;
}

const Attribute* SchemaBuilder::pAttribute(Schema& schema, const Entity& entity, const AttributeName& key) {
    // An entity that a host resolves on a built schema asks only a few questions.
    return schema.pBuilder_ ? schema.pBuilder_->attributeSearch_.pFind(entity, key)
                            : entity.pAttributeFromName(key, true);
}

DataTypeBase& SchemaBuilder::sharedType(Schema& schema, std::size_t index, std::string_view keyword,
                                        TypeMaker make) {
    auto& slot = schema.model_->sharedTypes[index];
    if (!slot) {
        auto& builder = of(schema);
        vObjectTake(builder.meter_);
        auto& arena = builder.model_.arena;
        slot = make(arena);
        slot->vNameSet(keyword, arena);
    }
    return *slot;
}

DataTypeBase& SchemaBuilder::typeAdd(std::string_view keyword, ArenaPtr<DataTypeBase> type) {
    vObjectTake(meter_);
    type->vNameSet(keyword, model_.arena);
    vRoomForOne(model_.dataTypes, meter_);
    return *model_.dataTypes.emplace_back(std::move(type));
}

bool SchemaBuilder::AggregateNesting::isTooDeep() const {
    return depth_ > AggregateNestingMax;
}

void SchemaBuilder::vHeaderRead(const std::string& headerLine, std::size_t schemaPos) {
    constexpr std::string_view keyword = "SCHEMA";
    const std::string_view header = headerLine;
    const auto start = header.find_first_not_of(' ', schemaPos + keyword.size());
    if (start == std::string_view::npos)
        return;
    vTextSet(model_.name, header.substr(start, header.substr(start).find(';')), meter_);
}

void SchemaBuilder::vStatementsRead(std::istream& stream) {
    constexpr Keyword end("END_SCHEMA", 3);
    ReadLineHelper line(model_.arena, meter_);
    const AheadGuard guard(line, stream);
    while (line.boNextLine(stream)) {
        if (auto object = pStatementRead(line, stream)) {
            vObjectTake(meter_);
            vRoomForOne(model_.objectsAsRead, meter_);
            vRoomForOne(objectsByHash_, meter_);
            vPieceBegin();
            objectsByHash_.push_back({object->getNameUpperHash(), size32(objectsByHash_.size())});
            model_.objectsAsRead.push_back(object.get());
            static_cast<void>(object.release());
            continue;
        }
        if (end.isIn(line.getLine()))
            return;
        vPieceBegin();
    }
}

void SchemaBuilder::vPieceBegin() {
    if (meter_)
        meter_->vPieceBegin();
}

ArenaPtr<ObjectBase> SchemaBuilder::pStatementRead(ReadLineHelper& line, std::istream& stream) {
    if (line.getLine().empty())
        return nullptr;
    for (const auto& statement : Statements) {
        const auto pos = statement.keyword.findIn(line.getLine());
        if (pos != std::string::npos)
            return statement.read(schema_, line, pos, stream);
    }
    return nullptr;
}

void SchemaBuilder::vResolve() {
    vObjectsByNameBuild();
    vObjectTableBuild();
    // Resolving one may make further ones, which are resolved at once.
    const auto dataTypeCount = model_.dataTypes.size();
    for (std::size_t index = 0; index < dataTypeCount; ++index) {
        vLook(meter_);
        model_.dataTypes[index]->vUpdate(schema_);
    }
    vObjectsResolve();
    model_.attributesDirectory.vBuild(meter_);
    vInverseAndNumbersResolve();
    vTrim();
}

/// Objects are resolved in an order in which each lies somewhere else: while some are resolved, memory brings
/// those whose turn comes next, and what they refer to.
void SchemaBuilder::vObjectsResolve() {
    constexpr std::size_t ObjectAhead = 12;
    constexpr std::size_t PartsAhead = 6;
    vHashesSort();
    const auto objectAt = [this](std::size_t index) {
        return model_.objectsAsRead[objectsByHash_[index].index];
    };
    const auto count = objectsByHash_.size();
    for (std::size_t index = 0; index < count; ++index) {
        vLook(meter_);
        if (index + ObjectAhead < count)
            vMemoryFetch(objectAt(index + ObjectAhead), sizeof(Entity));
        if (index + PartsAhead < count)
            vPartsFetch(Entity::pFrom(objectAt(index + PartsAhead)));
        objectAt(index)->vUpdate(schema_);
    }
}

/// Lets memory bring what resolving an entity looks at; null for none.
void SchemaBuilder::vPartsFetch(const Entity* entity) {
    if (!entity)
        return;
    vMemoryFetch(entity->supertypeName_);
    vMemoryFetch(entity->attributes_, sizeof(Attribute));
    vMemoryFetch(entity->tree_);
    vMemoryFetch(entity->where_);
}

void SchemaBuilder::vObjectsByNameBuild() {
    MeteredScope held(meter_);
    held.vTake(model_.objectsAsRead.size() * sizeof(NamedObject));
    std::vector<NamedObject> objects;
    objects.reserve(model_.objectsAsRead.size());
    for (auto* const object : model_.objectsAsRead) {
        vLook(meter_);
        objects.emplace_back(object);
    }
    vSortRuns(objects, [this](const auto& left, const auto& right) {
        vLook(meter_);
        return left < right;
    });
    const auto isSameName = [this](const auto& left, const auto& right) {
        vLook(meter_);
        return left.isSameName(right);
    };
    objects.erase(std::unique(objects.begin(), objects.end(), isSameName), objects.end());
    vRoomFor(model_.objectsByName, objects.size(), meter_);
    for (const auto& object : objects)
        model_.objectsByName.push_back(object.pObject());
}

void SchemaBuilder::vObjectTableBuild() {
    model_.objectTable.vReserve(model_.objectsAsRead.size(), meter_);
    for (auto* const object : model_.objectsAsRead) {
        vLook(meter_);
        model_.objectTable.vAdd(object->getNameUpper(), *object);
    }
}

/// Makes the order in which objects are resolved. It is also that of attributes of one name, which
/// `Schema::pAttributeGet` relies on.
void SchemaBuilder::vHashesSort() {
    const auto isBefore = [this](const ObjectHash& left, const ObjectHash& right) {
        vLook(meter_);
        const auto keyOf = [this](const ObjectHash& place) {
            return ResolutionKey{place.hash, model_.objectsAsRead[place.index]->getNameUpper()};
        };
        return isResolvedBefore(keyOf(left), keyOf(right));
    };
    const auto room = objectsByHash_.capacity();
    const auto starts = sortedByHash(objectsByHash_, isBefore, meter_);
    if (meter_)
        meter_->vMemoryGiveBack(starts.capacity() * sizeof(starts.front()) +
                                (room - objectsByHash_.capacity()) * sizeof(ObjectHash));
}

/// Gives back the room that lists were left while they grew.
void SchemaBuilder::vTrim() {
    vRoomTrim(model_.objectsAsRead, meter_);
    vRoomTrim(model_.objectsByName, meter_);
    vRoomTrim(model_.dataTypes, meter_);
}

void SchemaBuilder::vInverseAndNumbersResolve() {
    for (auto* const object : model_.objectsByName) {
        vLook(meter_);
        if (object->getKind() != ObjectBase::Type::Entity)
            continue;
        auto& entity = static_cast<Entity&>(*object);
        entity.vUpdateInverse(schema_);
        if (!entity.pSupertype())
            vTreeNumber(entity);
    }
}

void SchemaBuilder::vTreeNumber(Entity& root) {
    struct Level {
        Entity& entity;
        std::size_t nextSubtype = 0;
    };
    std::vector<Level> levels;
    // Entities that were met before keep their numbers, so that subtype lists that form a circle or share an
    // entity end.
    const auto enter = [&](Entity& entity) {
        if (entity.numbered_)
            return;
        entity.numbered_ = true;
        entity.firstNumber_ = ++entityNumber_;
        vRoomForOne(levels, meter_);
        levels.push_back({entity});
    };
    enter(root);
    while (!levels.empty()) {
        vLook(meter_);
        auto& level = levels.back();
        if (level.nextSubtype < level.entity.getSubtypes().size()) {
            enter(*level.entity.tree_->subtypes[level.nextSubtype++]);
            continue;
        }
        level.entity.lastNumber_ = entityNumber_;
        levels.pop_back();
    }
    if (meter_)
        meter_->vMemoryGiveBack(levels.capacity() * sizeof(Level));
}

} // namespace kiv::ifc::def::schema
