#include "Kit/Findings/Rules/LookAlikeNotes.h"

#include "Kit/Findings/RuleRun.h"
#include "Kit/Names/LookAlikes.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace kiv::kit {

namespace {

/// What is unknown is the name of the element or the attribute.
constexpr std::string_view UnknownNames[] = {"S001", "S002", "S010"};
/// What is unknown is the text of the element or the value of the attribute.
constexpr std::string_view UnknownValues[] = {"C001", "C008", "C013", "G001", "L001", "S007",
                                              "S008", "S009", "T001", "T015", "V003"};

bool isOneOf(std::string_view code, std::span<const std::string_view> codes) {
    return std::ranges::find(codes, code) != codes.end();
}

/// What the finding says that nobody knows; empty for findings of another kind.
std::string_view unknownPartOf(const FindingDraft& draft, const RuleRun& run) {
    const auto& [element, attribute] = draft.subject;
    if (element == NoXmlElement)
        return {};
    if (isOneOf(draft.finding.code, UnknownNames))
        return attribute ? attribute->name : run.xml.getElement(element).name;
    if (isOneOf(draft.finding.code, UnknownValues))
        return attribute ? attribute->value : run.xml.getElement(element).trimmedText;
    return {};
}

} // namespace

void vLookAlikesExplain(RuleRun& run) {
    for (auto& draft : run.getDrafts()) {
        if (const auto found = lookAlikeIn(unknownPartOf(draft, run)))
            draft.vNote(sLookAlike(*found));
    }
}

} // namespace kiv::kit
