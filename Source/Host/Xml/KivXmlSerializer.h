/// From a tree to XML text.
///
/// Private to the XML library.
#pragma once

#include "kiv/Host/Xml/KivXml.h"

#include <iosfwd>

namespace kiv::xml {

/// Writes the node with all below it; a document with the XML declaration.
void vNodeWrite(std::ostream& stream, const NodeRecord& node, WriteStyle style);

} // namespace kiv::xml
