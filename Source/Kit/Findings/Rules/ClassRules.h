/// @file
/// Family C: the classes that a set applies to.
///
/// Private to the kit.
///
///     vClassesCheck(run);
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads, each with its own run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Findings/Rule.h"

#include <span>

namespace kiv::kit {

class RuleRun;

std::span<const Rule> getClassRules();
void vClassesCheck(RuleRun& run);

} // namespace kiv::kit
