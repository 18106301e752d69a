/// @file
/// What can be mended without judgement, mended in the files or shown as a patch.
///
///     MendedTexts mended;
///     boTextsMend(findings, texts, mended);          // in memory, to be checked once more
///     const auto left = unwrittenOf(mended, console); // in the files
///
/// Threads: one thread at a time.
/// Errors:  a file that cannot be written is reported, and stays as it is.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Findings/CheckRun.h"
#include "kivifc/Program/Program.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kiv::kivifc {

/// A document that is mended, in one step or several.
struct MendedText {
    CheckedText before;
    std::string text;
    /// Of findings that were mended.
    std::size_t count = 0;
};

/// By path.
using MendedTexts = std::map<std::string, MendedText>;

/// Mends in memory what the findings offer, and says whether there was anything. The findings are in the
/// order of their paths; `texts` has the documents as they were checked. What was inside a misspelt element
/// is looked at only once that is mended, so that the documents are to be checked again.
bool boTextsMend(const std::vector<kit::Finding>& findings, const std::map<std::string, CheckedText>& texts,
                 MendedTexts& mended);

/// Writes the files, of which everything that is not mended stays byte for byte, and gives the paths of those
/// that could not be written.
std::vector<std::string> unwrittenOf(const MendedTexts& mended, Console& console);

/// Says of documents that have findings and cannot be mended why that is so.
void vUnmendableNote(const std::vector<kit::Finding>& findings, const std::set<std::string>& unmendable,
                     Console& console);

/// Whether there is anything to mend.
bool boDiffWrite(const MendedTexts& mended, Output& output);

} // namespace kiv::kivifc
