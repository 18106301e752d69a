/// @file
/// What is in a set, whichever kind of set it is.
///
///     for (const auto* def : setMembers(set))
///         use(def->getName());
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

/// The properties or quantities in document order.
std::vector<const ifc::def::xml::Def*> setMembers(const ifc::def::xml::SetDef& set);

/// "property set" or "quantity set".
const char* pSetKind(const ifc::def::xml::SetDef& set);

/// The classes that it applies to as the document writes them, separated by commas; "every class" for none.
std::string sSetClasses(const ifc::def::xml::SetDef& set);

} // namespace kiv::kivifc
