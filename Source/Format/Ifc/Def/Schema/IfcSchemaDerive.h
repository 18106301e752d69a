/// @file
/// The DERIVE clause of an entity.
///
///     for (const auto& value : entity.pDerive()->getValues()) ...
///
/// Ownership: belongs to its entity; the attributes it points at belong to theirs.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    a redeclared attribute that is not found is an assertion report; the pointer stays null.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"

#include <optional>
#include <string_view>
#include <vector>

namespace kiv::ifc::def::schema {

class Entity;
class Schema;

/// One derived attribute.
class KIV_EXPORT DeriveValue {
public:
    /// The texts outlive the value.
    DeriveValue(std::string_view name, std::string_view rest);

    /// Finds the attribute that a name such as SELF\IfcNamedUnit.Dimensions redeclares, in the entity and
    /// above.
    void update(const Entity& entity);

    /// The name as written.
    std::string_view getName() const { return name_; }

    /// Everything after the colon: the type, ":=" and the expression, with the ';'.
    std::string_view getRest() const { return rest_; }

    /// The redeclared attribute; null for a plain derived attribute and when it was not found.
    const Attribute* pRedeclared() const { return redeclared_; }

private:
    friend class Derive;

    void update(const Entity& entity, Schema& schema);
    std::optional<AttributeName> redeclaredName() const;
    bool boRedeclaredSet(const Attribute* attribute);

    std::string_view name_;
    std::string_view rest_;
    const Attribute* redeclared_ = nullptr;
};

class KIV_EXPORT Derive {
public:
    /// The texts outlive the clause.
    void vDeriveAdd(std::string_view name, std::string_view rest, WorkMeter* meter = nullptr);

    /// True when a value has the name of a redeclaration, for which attributes are searched.
    bool boRedeclares() const;

    /// The derived attributes in the order of the declaration.
    const std::vector<DeriveValue>& getValues() const { return values_; }

private:
    friend class Entity;

    /// Resolves every value, in order.
    void vUpdate(const Entity& entity, Schema& schema);

    std::vector<DeriveValue> values_;
};

} // namespace kiv::ifc::def::schema
