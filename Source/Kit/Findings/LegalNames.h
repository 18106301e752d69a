/// @file
/// Comparing a name with those that are legal in its place.
///
///     const auto match = legalMatch("propertydef", {"PropertyDef", "Name"});
///     // match.name is "PropertyDef", and it differs in letter case alone
///
/// Private to the kit.
///
/// Ownership: results are views of what was passed in.
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace kiv::kit {

struct LegalMatch {
    /// The legal name that was probably meant; empty when there is none, or several would do.
    std::string_view name;
    bool isLetterCase = false;
    /// Near enough to be written without asking: in another letter case, or with a letter or two changed.
    bool isSure = false;
};

/// The text without white space at both ends, no-break and other wide spaces included.
std::string_view trimmedBlanks(std::string_view text);

/// The name in another letter case, with few letters changed, or a name that begins or ends with it: "Class"
/// for "ClassName". A name that ends with a legal one was meant to be that: "PropertyName" for "Name".
LegalMatch legalMatch(std::string_view name, std::span<const std::string_view> legal);

} // namespace kiv::kit
