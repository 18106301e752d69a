/// What look-ups are asked for: everything there is to find, in an order that looks random and is always the
/// same.
///
/// The functions that ask count what they find, so that each answer is looked at.
///
/// Ownership: questions refer to the schema they were made for.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Host/Id/KivId.h"

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace kiv::bench {

/// The names of all objects, each letter in a case of its own.
std::vector<std::string> nameQuestions(const ifc::def::schema::Schema& schema);

struct AttributeQuestion {
    const ifc::def::schema::Entity* entity;
    /// The name of an attribute that a supertype declares.
    std::string name;
};

/// All entities with each attribute that they inherit.
std::vector<AttributeQuestion> attributeQuestions(const ifc::def::schema::Schema& schema);

std::vector<const ifc::def::schema::Entity*> entityQuestions(const ifc::def::schema::Schema& schema);

/// Calls `use` with each property and quantity and its set, the sets by name.
void vMembersVisit(const ifc::def::SchemaPropertySetDefinitions& sets,
                   const std::function<void(const ifc::def::xml::SetDef&, const ifc::def::xml::Def&)>& use);

/// "Set.Member" for each property and quantity; the set's name in mixed case.
std::vector<std::string> memberQuestions(const ifc::def::SchemaPropertySetDefinitions& sets);

/// The names of all sets in mixed case.
std::vector<std::string> setQuestions(const ifc::def::SchemaPropertySetDefinitions& sets);

/// The GUIDs of all properties and quantities that have one.
std::vector<Guid> guidQuestions(const ifc::def::SchemaPropertySetDefinitions& sets);

/// How many objects are found.
std::size_t namesAsk(const ifc::def::schema::Schema& schema, std::span<const std::string> questions);
/// How many attributes are found.
std::size_t attributesAsk(std::span<const AttributeQuestion> questions);
/// How many sets are found.
std::size_t setsAsk(const ifc::def::SchemaPropertySetDefinitions& sets,
                    std::span<const std::string> questions);
/// How many members are found.
std::size_t guidsAsk(const ifc::def::SchemaPropertySetDefinitions& sets, std::span<const Guid> questions);
/// How many sets the answers hold together.
std::size_t entitiesAsk(const ifc::def::SchemaPset& schema,
                        std::span<const ifc::def::schema::Entity* const> questions);
/// The same of one collection, without those that apply to everything.
std::size_t entitiesAsk(const ifc::def::SchemaPropertySetDefinitions& sets,
                        std::span<const ifc::def::schema::Entity* const> questions);
/// How many members have a type name.
std::size_t membersAsk(const ifc::def::SchemaPset& schema, std::span<const std::string> questions);

} // namespace kiv::bench
