/// @file
/// What `kivifc check` finds: looked for, chosen, mended when asked, and written in the form that was asked
/// for.
///
///     vCheckFindings(schema, contexts, options, console);
///
/// Threads: makes as many as its options say.
/// Errors:  reported.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Commands/CheckOptions.h"
#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Program/Program.h"

#include <vector>

namespace kiv::kivifc {

void vCheckFindings(const SchemaFile& schema, const std::vector<ContextPaths>& contexts,
                    const CheckOptions& options, Console& console);

/// The reasons why a text has no schema, and what failed, for forms that are a document.
void vFindingsFailureShow(const CheckOptions& options, Console& console,
                          const std::vector<kit::Finding>& reasons = {});

} // namespace kiv::kivifc
