/// @file
/// What refers to each object of a schema: attributes, types, rules and functions.
///
///     const UseTable uses(schema, declarations, names);
///     for (const auto* attribute : uses.of(*label).attributes)
///         ...
///
/// Ownership: refers to the schema, which must outlive it.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc. What nothing refers to has empty lists.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kivifc/Site/Declarations.h"
#include "kivifc/Site/DeclaredNames.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

/// A rule, by its owner.
struct RuleUse {
    /// An entity or a type; or a function, a rule.
    const ifc::def::schema::ObjectBase* owner;
    /// Of a WHERE or UNIQUE rule its label, of an attribute that is derived or declared again its name; empty
    /// for a function or a rule.
    std::string_view label;
};

/// In the order of the schema's text.
struct Uses {
    std::vector<const ifc::def::schema::Attribute*> attributes;
    std::vector<const ifc::def::schema::AttributeInverse*> inverses;
    /// Types made of it: of the type, of aggregates of it, or selects with it as a member.
    std::vector<const ifc::def::schema::Type*> types;
    std::vector<RuleUse> rules;

    bool isEmpty() const { return attributes.empty() && inverses.empty() && types.empty() && rules.empty(); }
};

class UseTable {
public:
    /// An item that stands without its type uses the type; the names are needed while the table is made.
    UseTable(const ifc::def::schema::Schema& schema, const Declarations& declarations,
             const DeclaredNames& names);

    const Uses& of(const ifc::def::schema::ObjectBase& object) const;

private:
    class Builder;

    std::unordered_map<const ifc::def::schema::ObjectBase*, Uses> uses_;
    Uses none_;
};

} // namespace kiv::kivifc::site
