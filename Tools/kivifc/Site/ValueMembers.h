/// @file
/// What a name after a point means, by the type of what is before it: an attribute or an item.
///
///     const auto member = memberOf(model, wall, "NAME");
///     if (member.owner)
///         vNameLinkWrite(html, model.getAddresses().of(*member.owner).row(member.name), member.name);
///
/// Ownership: refers to the schema.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc. A name whose meaning the types leave open has none.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"
#include "kivifc/Site/SiteModel.h"

#include <string>
#include <string_view>

namespace kiv::kivifc::site {

struct ValueMember {
    /// What declares it; null for none.
    const ifc::def::schema::ObjectBase* owner = nullptr;
    /// As the row of it is called.
    std::string_view name;
    /// Of its value; null where that has none, or one that has no members.
    const ifc::def::schema::ObjectBase* type = nullptr;
};

/// The select that a defined type is, be it by another name; null for none.
const ifc::def::schema::DataTypeSelect* pSelect(const ifc::def::schema::ObjectBase* object);

/// What the elements of a value are, and theirs: an entity, or a type that declares items or a select; null
/// for anything else.
const ifc::def::schema::ObjectBase* pElementType(const ifc::def::schema::ObjectBase* type);

/// An attribute of the entity or one above it, by its name in capitals.
ValueMember attributeOf(const SiteModel& model, const ifc::def::schema::Entity& entity,
                        const std::string& upper);

/// What a value of the type, or an element of it, has by that name, in capitals: the only attribute that is
/// declared in or above its entity, or in each of a select; or below one that does not know the name, which
/// rules ask for after they have looked at the type of the value.
ValueMember memberOf(const SiteModel& model, const ifc::def::schema::ObjectBase& type,
                     const std::string& upper);

} // namespace kiv::kivifc::site
