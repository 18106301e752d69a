/// @file
/// Set documents within the limits of the command line, with "-" for standard input.
///
///     const auto document = setDocumentCheck("Pset_Wall.xml", schema);
///     if (document.pSet())
///         use(*document.pSet());
///
/// Ownership: a document owns its text, its set and its records.
/// Threads:   any number of threads may read and check documents at once, by one schema too.
/// Errors:    a document that cannot be read, or is no set, has a failure in place of a set; std::bad_alloc
///            passes.
#pragma once

#include "kiv/Kit/Documents/SetDocument.h"
#include "kivifc/Program/Diagnostics.h"

#include <string>
#include <string_view>

namespace kiv::kivifc {

using kit::SetDocument;

/// The path that means standard input.
inline constexpr std::string_view StandardInputPath = "-";

/// How standard input is shown.
inline constexpr std::string_view StandardInputName = "<stdin>";

/// Reads the document at a path; its set is not checked.
SetDocument setDocumentRead(const std::string& path);

/// The same, and checks its set.
SetDocument setDocumentCheck(const std::string& path, const ifc::def::schema::Schema& schema);

} // namespace kiv::kivifc
