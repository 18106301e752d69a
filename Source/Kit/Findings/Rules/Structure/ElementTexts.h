/// @file
/// The text of one element: where elements or nothing belong, and where readers see a part of it only.
///
/// Private to the kit.
///
///     vTextCheck(run, element, *run.vocabulary.pRuleOf(element));
///
/// Ownership: keeps nothing.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Positions/XmlPositions.h"

namespace kiv::kit {

class RuleRun;
struct ElementRule;

void vTextCheck(RuleRun& run, XmlIndex element, const ElementRule& rule);

} // namespace kiv::kit
