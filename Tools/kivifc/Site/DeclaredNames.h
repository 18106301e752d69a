/// @file
/// What a schema declares, by the names that its texts use without saying where: items of enumerations,
/// attributes of subtypes, results of functions.
///
///     const DeclaredNames names(schema, declarations);
///     names.onlyItem("METRE").type; // the enumeration
///
/// Ownership: refers to the schema and its declarations, which must outlive it.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc. What is not there is null or empty.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kivifc/Site/Declarations.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

class DeclaredNames {
public:
    using Entity = ifc::def::schema::Entity;
    using ObjectBase = ifc::def::schema::ObjectBase;
    using Type = ifc::def::schema::Type;

    struct Item {
        /// That which declares the items; null for none.
        const Type* type = nullptr;
        /// As declared.
        std::string_view name;
    };

    DeclaredNames(const ifc::def::schema::Schema& schema, const Declarations& declarations);

    /// The item of an enumeration, by its name in capitals.
    Item itemOf(const Type& type, const std::string& upper) const;
    /// The item of the only enumeration that has one of that name, in capitals: EXPRESS has items of several
    /// written with their type.
    Item onlyItem(const std::string& upper) const;

    /// The entities that declare an explicit, inverse or derived attribute of that name, in capitals; in the
    /// order of the text, with those that declare it again.
    const std::vector<const Entity*>& declaring(const std::string& upper) const;

    /// What the type of a function's result ends with; null for no function, and for a simple type.
    const ObjectBase* pResultOf(const ObjectBase& function) const;

private:
    void vEntityAdd(const Entity& entity);
    void vItemsAdd(const Type& type, const ifc::def::schema::DataTypeEnum& items);

    std::unordered_map<const Type*, std::unordered_map<std::string, std::string_view>> items_;
    // Of a name that several enumerations have, with a type that is null.
    std::unordered_map<std::string, Item> onlyItems_;
    std::unordered_map<std::string, std::vector<const Entity*>> declaring_;
    std::unordered_map<const ObjectBase*, const ObjectBase*> results_;
};

} // namespace kiv::kivifc::site
