/// @file
/// From a tree to XML text.
///
/// Private to the XML library.
///
/// Ownership: refers to the nodes and the stream during the call only.
/// Threads:   one at a time for a stream.
/// Errors:    how the writing went is the stream's to say; std::bad_alloc.
#pragma once

#include "kiv/Host/Xml/KivXml.h"

#include <iosfwd>

namespace kiv::xml {

/// Writes the node with all below it; a document with the XML declaration.
void vNodeWrite(std::ostream& stream, const NodeRecord& node, WriteStyle style);

} // namespace kiv::xml
