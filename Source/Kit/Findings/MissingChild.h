/// @file
/// Children that are missing because something else is in their place, which is the same mistake.
///
///     if (!boMissingExplained(run, 0, "Name"))
///         run.add("N001", 0, "the set has no name");
///
/// Private to the kit.
///
/// Ownership: names are views of the vocabulary.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Kit/Positions/XmlPositions.h"

#include <string_view>

namespace kiv::kit {

class RuleRun;

/// Whether a child that is missing is there in a wrong way: misspelt, without the element around its content,
/// as an attribute or as text. That is found as such, and to miss it would be the same mistake again.
bool boMissingExplained(const RuleRun& run, XmlIndex parent, std::string_view name);

/// The one child that is missing where one thing is there that does not belong, so that the one was probably
/// meant to be the other; otherwise empty.
std::string_view soleMissing(const RuleRun& run, XmlIndex parent);

} // namespace kiv::kit
