/// @file
/// XML documents that are not well-formed, reported with the place as editors and compilers write it.
///
///     parseFailure("walls.xml", error).subject // "walls.xml:3:7"
#pragma once

#include "kiv/Host/Xml/KivXml.h"
#include "kivifc/Program/Diagnostics.h"

#include <string>

namespace kiv::kivifc {

Failure parseFailure(const std::string& path, const xml::ParseError& error);

} // namespace kiv::kivifc
