/// @file
/// The attributes of one element: those that it does not know, and those without which it says nothing.
///
/// Private to the kit.
///
///     vAttributesCheck(run, element, *run.vocabulary.pRuleOf(element));
///
/// Ownership: keeps nothing.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Positions/XmlPositions.h"

namespace kiv::kit {

class RuleRun;
struct ElementRule;

/// Unknown, misspelt and prefixed attributes.
void vAttributesCheck(RuleRun& run, XmlIndex element, const ElementRule& rule);

/// Attributes that are missing, after what is there in a wrong way is found.
void vMissingAttributesCheck(RuleRun& run, XmlIndex element, const ElementRule& rule);

} // namespace kiv::kit
