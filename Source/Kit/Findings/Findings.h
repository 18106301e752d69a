/// @file
/// What is wrong with a set document.
///
///     const auto document = setDocumentCheck("Pset_Wall.xml", schema);
///     for (const auto& finding : findingsOf(document, {schema}))
///         std::cout << finding.place.position.line << ": " << finding.message << '\n';
///
/// Ownership: findings are values.
/// Threads:   several documents may be looked at on several threads; documents and schemas are only read.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Findings/SetCheckContext.h"

#include <vector>

namespace kiv::kit {

struct SetDocument;

/// Sorted by line, column and code. Each record and assertion of the library is a note of the finding that
/// explains it, or else a finding of its own. At most 10,000 findings of one code and 100,000 in all are
/// kept.
KIV_EXPORT std::vector<Finding> findingsOf(const SetDocument& document, const SetCheckContext& context);

} // namespace kiv::kit
