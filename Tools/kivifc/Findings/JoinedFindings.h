/// @file
/// One mistake, one finding, where several documents or the schema and a document show the same one.
///
///     vFindingsJoin(findings);
///
/// Of a schema that cannot be read no name is known, so that documents have no findings about unknown names.
/// What uses the name of a declaration that is lost is counted in a note of the finding about the loss. What
/// the schema lacks for a kind of property is said at the first document that has one.
///
/// Threads: any number of threads, each with its own findings.
#pragma once

#include "kiv/Kit/Findings/Finding.h"

#include <vector>

namespace kiv::kivifc {

/// Those of the schema and of all documents, in the order in which they are shown.
void vFindingsJoin(std::vector<kit::Finding>& findings);

} // namespace kiv::kivifc
