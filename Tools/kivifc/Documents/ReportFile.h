/// @file
/// Writes the report of a check to a file.
///
/// Threads:   free function without state.
/// Errors:    the reason as a text; a report is written whole or not at all, except to a pipe or a device.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefErrors.h"

#include <string>

namespace kiv::kivifc {

/// Writes the report in place of what the file held. Returns the reason when it could not be written whole,
/// and an empty text when it could.
std::string sReportWrite(const ifc::def::xml::XmlSetsErrors& errors, const std::string& path);

} // namespace kiv::kivifc
