/// @file
/// Family V: the release that a document is written for.
///
/// Private to the kit.
///
///     vReleaseCheck(run);
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads, each with its own run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Findings/Rule.h"

#include <span>

namespace kiv::kit {

class RuleRun;

std::span<const Rule> getReleaseRules();
void vReleaseCheck(RuleRun& run);

} // namespace kiv::kit
