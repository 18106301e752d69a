#include "kivifc/Findings/Selection.h"
#include "kiv/Kit/Names/NearestName.h"

#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Names/NearestName.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace kiv::kivifc {

namespace {

using kit::Severity;

/// From a file that the system refuses to a root element that is that of no set.
constexpr std::array<std::string_view, 7> UnreadableCodes{"R040", "R041", "R042", "R043",
                                                          "R044", "S013", "S014"};

/// The length of the longest beginning of the code among those; absent when none of them begins it.
std::optional<std::size_t> beginningOf(const std::vector<std::string>& beginnings, std::string_view code) {
    std::optional<std::size_t> longest;
    for (const auto& beginning : beginnings) {
        if (code.starts_with(beginning))
            longest = std::max(longest.value_or(0), beginning.size());
    }
    return longest;
}

void vSeveritySet(kit::Finding& finding, const Selection& selection) {
    std::size_t longest = 0;
    for (const auto& [beginning, severity] : selection.severities) {
        if (!finding.code.starts_with(beginning) || beginning.size() < longest)
            continue;
        longest = beginning.size();
        finding.severity = severity;
    }
}

std::string sUnknownCode(std::string_view code) {
    std::vector<std::string_view> codes;
    for (const auto& rule : kit::getRules())
        codes.push_back(rule.code);
    const auto nearest = kit::nearestName(code, codes);
    const auto hint = nearest ? fmt::format(", did you mean \"{}\"?", nearest->name) : std::string();
    return fmt::format("no rule has the code \"{}\"{}; kivifc explain lists all", code, hint);
}

} // namespace

bool isSelected(const Selection& selection, std::string_view code) {
    const auto ignored = beginningOf(selection.ignored, code);
    const auto selected = beginningOf(selection.selected, code);
    if (!selection.selected.empty() && !selected)
        return false;
    return !ignored || (selected && *selected > *ignored);
}

bool isUnreadable(const kit::Finding& finding) {
    return std::ranges::find(UnreadableCodes, finding.code) != UnreadableCodes.end();
}

void vFindingsSelect(std::vector<kit::Finding>& findings, const Selection& selection) {
    const auto isLeftOut = [&](const kit::Finding& finding) {
        return !isUnreadable(finding) && !isSelected(selection, finding.code);
    };
    std::erase_if(findings, isLeftOut);
    for (auto& finding : findings) {
        if (!isUnreadable(finding))
            vSeveritySet(finding, selection);
    }
}

std::string sCodeOf(std::string_view code, std::string& failure) {
    std::string upper(code);
    std::ranges::transform(upper, upper.begin(), ascii::getUpper);
    const auto isBegun = [&](const kit::Rule& rule) { return rule.code.starts_with(upper); };
    if (upper.empty() || std::ranges::none_of(kit::getRules(), isBegun))
        failure = sUnknownCode(code);
    return upper;
}

std::optional<Severity> severityFrom(std::string_view text) {
    for (const auto severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        if (ascii::isEqualIgnoringCase(text, severityText(severity)))
            return severity;
    }
    return std::nullopt;
}

} // namespace kiv::kivifc
