/// @file
/// Writes the report of a check to a file.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefErrors.h"

#include <string>

namespace kiv::kivifc {

/// Writes the report in place of what the file held. Returns the reason when it could not be written whole,
/// and an empty text when it could.
std::string sReportWrite(const ifc::def::xml::XmlSetsErrors& errors, const std::string& path);

} // namespace kiv::kivifc
