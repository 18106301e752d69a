/// @file
/// Reads and resolves a schema; lives while the constructor of the schema runs.
///
///     SchemaBuilder(*this, nullptr).vBuild(stream, headerLine, schemaPos);
///
/// Objects resolve themselves in `vUpdate(Schema&)`. What they need of a schema beyond its look-ups they take
/// from the static functions here, which find the builder through the schema.
///
/// Ownership: refers to the schema, which owns all that is built.
/// Threads:   not thread-safe.
/// Errors:    `of` throws std::logic_error when the schema is built: nothing is added to it any more. Streams
///            and rules as described at `Schema`.
#pragma once

#include "Base/Metered.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaAttributeSearch.h"
#include "Format/Ifc/Def/Schema/IfcSchemaModel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class SchemaBuilder {
public:
    /// A meter hears of all that is read and built; null for none.
    SchemaBuilder(Schema& schema, WorkMeter* meter);
    ~SchemaBuilder();
    SchemaBuilder(const SchemaBuilder&) = delete;
    SchemaBuilder& operator=(const SchemaBuilder&) = delete;

    void vBuild(std::istream& stream, const std::string& headerLine, std::size_t schemaPos);

    /// The builder of a schema that is being built.
    static SchemaBuilder& of(Schema& schema);

    /// The arena of a schema; also of one that is built, in which a host may resolve an entity of its own.
    static Arena& arenaOf(Schema& schema) { return schema.model_->arena; }

    /// The meter of a schema that is being built within a budget; null for every other.
    static WorkMeter* pMeter(const Schema& schema) {
        return schema.pBuilder_ ? schema.pBuilder_->meter_ : nullptr;
    }

    /// Reports a broken promise of the text, within the budget.
    static void vReport(const Schema& schema, Report report);
    static void vReport(const Schema& schema, Report report, std::string_view message);

    /// The same object as `Schema::pObjectFromName` finds, to be changed.
    static ObjectBase* pObject(Schema& schema, std::string_view name) {
        return schema.model_->objectTable.pFindUpper(name);
    }

    /// Finds an attribute in an entity and its supertypes; quick for many questions while the schema is
    /// built.
    static const Attribute* pAttribute(Schema& schema, const Entity& entity, const AttributeName& key);

    using TypeMaker = ArenaPtr<DataTypeBase> (*)(Arena&);

    /// How many data types a schema has one of each.
    static constexpr std::size_t SharedTypeCount = std::tuple_size_v<decltype(Schema::Model::sharedTypes)>;

    /// The data type that a schema has one of, which is made when it is asked for the first time.
    static DataTypeBase& sharedType(Schema& schema, std::size_t index, std::string_view keyword,
                                    TypeMaker make);

    /// Takes a data type that was made in the arena.
    DataTypeBase& typeAdd(std::string_view keyword, ArenaPtr<DataTypeBase> type);

    /// Makes an attribute findable by its name.
    void vAttributeAdd(const Attribute& attribute) { model_.attributesDirectory.vAdd(&attribute, meter_); }

    /// Counts how deep aggregates are being built inside each other.
    class AggregateNesting {
    public:
        explicit AggregateNesting(SchemaBuilder& builder) : depth_(builder.aggregateNesting_) { ++depth_; }
        ~AggregateNesting() { --depth_; }
        AggregateNesting(const AggregateNesting&) = delete;
        AggregateNesting& operator=(const AggregateNesting&) = delete;

        bool isTooDeep() const;

    private:
        std::size_t& depth_;
    };

private:
    void vHeaderRead(const std::string& headerLine, std::size_t schemaPos);
    void vStatementsRead(std::istream& stream);
    ArenaPtr<ObjectBase> pStatementRead(ReadLineHelper& line, std::istream& stream);
    void vPieceBegin();
    void vResolve();
    void vObjectsResolve();
    static void vPartsFetch(const Entity* entity);
    void vObjectsByNameBuild();
    void vObjectTableBuild();
    void vHashesSort();
    void vInverseAndNumbersResolve();
    void vTrim();
    void vTreeNumber(Entity& root);

    /// What `sortedByHash` sorts.
    struct ObjectHash {
        std::uint32_t hash;
        std::uint32_t index;
    };

    Schema& schema_;
    Schema::Model& model_;
    WorkMeter* meter_;
    // In the order of the text at first; made while the names are at hand.
    std::vector<ObjectHash> objectsByHash_;
    AttributeSearch<Attribute> attributeSearch_;
    std::size_t aggregateNesting_ = 0;
    // The number of the entity that was numbered last.
    std::uint16_t entityNumber_ = 0;
};

} // namespace kiv::ifc::def::schema
