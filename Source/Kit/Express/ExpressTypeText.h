/// @file
/// What a type is made of, as EXPRESS text.
///
///     sTypeResolved(attribute.pFirstType()) // "BldName = BldLabel = STRING(80)"
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include <string>

namespace kiv::kit {

/// Each defined type and, after "=", what it is made of; aggregates are followed to their innermost
/// elements, after ";". An entity is its name; "?" for what the schema did not find.
KIV_EXPORT std::string sTypeResolved(const ifc::def::schema::ObjectBase* object);

} // namespace kiv::kit
