/// @file
/// Attributes that are declared again: `SELF\IfcRoot.Name : IfcLabel` in an entity below IfcRoot.
///
///     ownNameOf("SELF\\IfcRoot.Name"); // "Name"
///
/// Ownership: parts of the name that is given; attributes belong to the schema.
/// Threads:   any number of threads.
/// Errors:    none.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAttribute.h"

#include <string_view>

namespace kiv::kivifc::site {

/// The name alone, without the entity that it was declared in first.
std::string_view ownNameOf(std::string_view name);

/// The entity that a name such as SELF\\IfcRoot.Name refers to, by its name; empty for a name alone.
std::string_view qualifierOf(std::string_view name);

/// The attribute that this one declares again; null for none.
const ifc::def::schema::Attribute* pRedeclared(const ifc::def::schema::Attribute& attribute,
                                               const ifc::def::schema::Schema& schema);

} // namespace kiv::kivifc::site
