/// @file
/// Family D: what a document does not explain.
///
/// Private to the kit.
///
///     vDocumentationCheck(run);
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads, each with its own run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Findings/Rule.h"

#include <span>

namespace kiv::kit {

class RuleRun;

std::span<const Rule> getDocumentationRules();
void vDocumentationCheck(RuleRun& run);

} // namespace kiv::kit
