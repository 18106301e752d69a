/// @file
/// What can be mended without judgement, mended in the files or shown as a patch.
///
///     vFindingsMend(findings, texts, console); // the findings that are left are those to show
///
/// Threads: one thread at a time.
/// Errors:  a file that cannot be written is reported, and its findings stay.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Findings/CheckRun.h"
#include "kivifc/Program/Program.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace kiv::kivifc {

/// The findings are in the order of their paths; `texts` has the documents as they were read. Everything that
/// is not mended stays byte for byte. Findings that are mended are removed.
void vFindingsMend(std::vector<kit::Finding>& findings, const std::map<std::string, CheckedText>& texts,
                   Console& console);

/// Says of documents that have findings and cannot be mended why that is so.
void vUnmendableNote(const std::vector<kit::Finding>& findings, const std::set<std::string>& unmendable,
                     Console& console);

/// Whether there is anything to mend.
bool boDiffWrite(const std::vector<kit::Finding>& findings, const std::map<std::string, CheckedText>& texts,
                 Output& output);

} // namespace kiv::kivifc
