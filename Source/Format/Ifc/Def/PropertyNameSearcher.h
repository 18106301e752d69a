/// @file
/// Answers which IFC type the value of a property has, from a name such as "Pset_WallCommon.IsExternal".
///
///     findPropertyTypeName("pset_wallcommon.IsExternal", schema); // IfcBoolean
///     findPropertyTypeName("IfcWall.Name", schema);               // IfcLabel
///
/// Ownership: the answer is a copy.
/// Threads:   as the searches of `SchemaPset`.
/// Errors:    what is not found is no value.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <optional>
#include <string>

namespace kiv::ifc {

/// The name of the type; no value when set, member or attribute do not exist, when the member's kind has no
/// single type (tables, lists, complex properties; references and members without a type are reported as
/// assertions too) and when the attribute's type resolves to nothing.
///
/// The text before the first "." names a set, in any letter case, a host's before a standard one; else an
/// entity. The text after it names a member or attribute, letter case included, attributes also of
/// supertypes. Enumerated properties are IfcLabel. For an attribute the answer is the first of its resolved
/// types ("LIST" for a list). Names from a set are returned verbatim; the schema is not consulted.
KIV_EXPORT std::optional<std::string> findPropertyTypeName(const std::string& name,
                                                           const def::SchemaPset& schema);

} // namespace kiv::ifc
