/// @file
/// What `kivifc check` finds: looked for, chosen, mended when asked, and written in the form that was asked
/// for.
///
///     vCheckFindings(schema, contexts, options, console);
///
/// Threads: makes as many as its options say.
/// Errors:  reported.
#pragma once

#include "kivifc/Commands/CheckOptions.h"
#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Program/Program.h"

#include <vector>

namespace kiv::kivifc {

void vCheckFindings(const SchemaFile& schema, const std::vector<ContextPaths>& contexts,
                    const CheckOptions& options, Console& console);

/// A document without findings, for forms that are one; what failed is in it.
void vFindingsFailureShow(const CheckOptions& options, Console& console);

} // namespace kiv::kivifc
