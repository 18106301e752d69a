/// @file
/// Family T: the types that a set names, and the values, units, items and columns that go with them.
///
/// Private to the kit.
///
///     vTypesCheck(run);
///
/// Ownership: the table lives as long as the process.
/// Threads:   any number of threads, each with its own run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Findings/Rule.h"

#include <span>

namespace kiv::kit {

class RuleRun;

std::span<const Rule> getTypeRules();
void vTypesCheck(RuleRun& run);

} // namespace kiv::kit
