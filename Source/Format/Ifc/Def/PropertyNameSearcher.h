/// Answers which IFC type the value of a property has, from a name such as "Pset_WallCommon.IsExternal".
///
///     findPropertyTypeName("pset_wallcommon.IsExternal", schema); // IfcBoolean
///     findPropertyTypeName("IfcWall.Name", schema);               // IfcLabel
#pragma once

#include "Format/Ifc/Def/SchemaPset.h"
#include "Host/KivExport.h"

#include <optional>
#include <string>

namespace kiv::ifc {

/// The name of the type; no value when set, member or attribute do not exist and when the member's kind has no single
/// type (tables, lists, complex properties; references and members without a type are reported as assertions too).
///
/// What stands before the first "." is a set, in any letter case, a host's before a standard one; else an entity. What
/// stands behind it is a member or attribute, letter case included, attributes also of supertypes. Enumerated properties
/// are IfcLabel. For an attribute the answer is the first of its resolved types ("LIST" for a list). Names are those of
/// the definition; whether the schema knows them is not looked at.
///
/// Threads: as the searches of `SchemaPset`.
KIV_EXPORT std::optional<std::string> findPropertyTypeName(const std::string& name,
                                                           const def::SchemaPset& schema);

} // namespace kiv::ifc
