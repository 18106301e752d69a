/// Sets as they are read, and what they are when they were written and read back.
///
///     vExpectReadBack(*readSet(exported.root(), errors), *original);
#pragma once

#include "Format/Ifc/Def/IfcDefBase.h"
#include "Host/Xml/KivXml.h"

#include <memory>

namespace kiv::test {

/// The set of a document, of the kind that its root tells.
std::unique_ptr<ifc::def::xml::SetDef> readSet(const kiv::xml::Element& root,
                                               ifc::def::xml::XmlSetErrors& errors);

/// Expects everything that writing keeps. It does not keep the GUID, template type and version of a set, units,
/// constants, expressions, values and what is inside complex properties; name aliases are written under a tag that
/// reading does not know, the data type of a reference where reading does not look, a bound that is not given as the
/// data type, and the item type of a list as one more value.
void vExpectReadBack(const ifc::def::xml::SetDef& read, const ifc::def::xml::SetDef& original);

} // namespace kiv::test
