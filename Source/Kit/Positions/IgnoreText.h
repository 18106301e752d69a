/// @file
/// What a comment says about findings: `kivifc: ignore T001, N`, also where that is misspelt.
///
///     ignoreTextOf(" kivifc: ignore T001 ")->codes;   // "T001"
///     ignoreTextOf("kivifc ignor T001")->misspelt;    // "kivifc ignor"
///     ignoreTextOf("Written for kivifc.").has_value(); // false
///
/// Private to the kit.
///
/// Ownership: views of the comment.
/// Threads:   free functions without state.
/// Errors:    std::bad_alloc; a comment that speaks to nobody is absent.
#pragma once

#include <optional>
#include <string_view>

namespace kiv::kit {

struct IgnoreText {
    /// What follows "ignore", without the white space around it.
    std::string_view codes;
    /// What stands in the place of "kivifc: ignore"; empty when it is that.
    std::string_view misspelt = {};
};

/// Words that merely look like the right ones are taken for them when nothing but codes comes after them, or
/// when a code comes after words that only this program knows.
std::optional<IgnoreText> ignoreTextOf(std::string_view comment);

} // namespace kiv::kit
