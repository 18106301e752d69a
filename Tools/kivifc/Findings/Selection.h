/// @file
/// Which findings are shown, how grave they are, and which of them fail a check.
///
///     Selection selection;
///     selection.ignored = {"D", "T003"};
///     selection.severities["T001"] = kit::Severity::Warning;
///     vFindingsSelect(findings, selection);
///
/// Ownership: a value.
/// Threads:   any number of threads may use one.
/// Errors:    a code that no rule has is a message.
#pragma once

#include "kiv/Kit/Findings/Finding.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

struct Selection {
    /// Codes and beginnings of codes: "T" is the whole family. Empty for all.
    std::vector<std::string> selected;
    /// They win over those that are selected by a beginning that is not longer.
    std::vector<std::string> ignored;
    /// By code or beginning; the longest beginning counts.
    std::map<std::string, kit::Severity> severities;
};

/// Whether findings of that code are shown.
bool isSelected(const Selection& selection, std::string_view code);

/// Removes what is not shown, and gives the rest its severity. What says that a document cannot be read stays
/// as it is.
void vFindingsSelect(std::vector<kit::Finding>& findings, const Selection& selection);

/// The code as the rules write it, for one in any letter case; `failure` says what is wrong with one that
/// begins the code of no rule, and which rule may be meant.
std::string sCodeOf(std::string_view code, std::string& failure);

/// "error", "warning", "note" in any letter case; absent for anything else.
std::optional<kit::Severity> severityFrom(std::string_view text);

/// Whether it says that a file cannot be read at all, or is no set document: it is shown whatever is chosen.
bool isUnreadable(const kit::Finding& finding);

} // namespace kiv::kivifc
