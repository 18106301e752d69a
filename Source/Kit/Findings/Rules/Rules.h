/// @file
/// The families of rules: for each the table of its rules, in the order of their codes, and what applies them
/// to a document.
///
/// Private to the kit. A family is a file of this folder; `getRules` joins the tables in the order of the
/// codes.
///
/// Ownership: tables live as long as the process.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Findings/Rule.h"

#include <span>

namespace kiv::kit {

class RuleRun;

std::span<const Rule> getStructureRules();
std::span<const Rule> getNameRules();
std::span<const Rule> getGuidRules();
std::span<const Rule> getLanguageRules();
/// Comments that ignore findings.
std::span<const Rule> getCommentRules();
/// What the library reports and no rule explains.
std::span<const Rule> getReportRules();

void vStructureCheck(RuleRun& run);
void vNamesCheck(RuleRun& run);
void vGuidsCheck(RuleRun& run);
void vLanguagesCheck(RuleRun& run);

} // namespace kiv::kit
