/// Trees as short texts, for tests to compare.
#pragma once

#include "kiv/Host/Xml/KivXml.h"

#include <string>
#include <string_view>

namespace kiv::xml::test {

/// The node with all below it: an element as its tag, its attributes in brackets and its children in
/// parentheses, a text in apostrophes with its line ends and tabs escaped, other nodes by their names.
///
///     <a b="1">x<c/><!-- y --></a>      a[b='1']('x' c #comment)
std::string sDump(const const_Node& node);

/// What is read from `text`, dumped; for a text that cannot be read "! " and the reason.
std::string sDumpRead(std::string_view text);

/// The node as it is written.
std::string sWritten(const const_Node& node, WriteStyle style = WriteStyle::Compact);

} // namespace kiv::xml::test
