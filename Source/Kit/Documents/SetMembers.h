/// @file
/// What is in a set, whichever kind of set it is.
///
///     for (const auto* def : setMembers(set))
///         vUse(def->getName());
///
/// Ownership: the members belong to the set.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <string>
#include <vector>

namespace kiv::kit {

/// The properties or quantities in document order.
KIV_EXPORT std::vector<const ifc::def::xml::Def*> setMembers(const ifc::def::xml::SetDef& set);

/// "property set" or "quantity set".
KIV_EXPORT const char* pSetKind(const ifc::def::xml::SetDef& set);

/// The classes that it applies to as the document writes them, separated by commas; "every class" for none.
KIV_EXPORT std::string sSetClasses(const ifc::def::xml::SetDef& set);

} // namespace kiv::kit
