/// @file
/// How often elements are there: those that are missing, empty, or repeated where only one counts.
///
/// Private to the kit.
///
///     vRepeatedChildrenCheck(run, element, *run.vocabulary.pRuleOf(element));
///
/// Ownership: keeps nothing.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Positions/XmlPositions.h"

namespace kiv::kit {

class RuleRun;
struct ElementRule;

/// Children without which the element has no type or no members, after what is there in a wrong way is found.
void vMissingChildrenCheck(RuleRun& run, XmlIndex element, const ElementRule& rule);

/// Children of which only the last one counts, and those that are joined.
void vRepeatedChildrenCheck(RuleRun& run, XmlIndex element, const ElementRule& rule);

/// The lists of the set: one of members that has none, and several that are joined.
void vMemberListsCheck(RuleRun& run);

} // namespace kiv::kit
