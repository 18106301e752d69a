/// @file
/// What a rule finds, why, and examples, as text for a terminal and as Markdown for Docs/Rules.md.
///
///     output.vWrite(sRuleText(*kit::pRuleFind("T001")));
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Findings/Rule.h"

#include <span>
#include <string>

namespace kiv::kivifc {

/// All about one rule.
std::string sRuleText(const kit::Rule& rule);

/// A line for each rule.
std::string sRuleList(std::span<const kit::Rule> rules);

/// The whole page, with a table of the rules and a section for each.
std::string sRulePage(std::span<const kit::Rule> rules);

} // namespace kiv::kivifc
