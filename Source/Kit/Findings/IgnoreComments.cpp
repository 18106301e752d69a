#include "kiv/Kit/Findings/IgnoreComments.h"

#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kiv::kit {

namespace {

bool isBefore(const TextPosition& left, const TextPosition& right) {
    return std::tie(left.line, left.column) < std::tie(right.line, right.column);
}

bool isCodeOfRules(std::string_view beginning) {
    return std::ranges::any_of(getRules(),
                               [&](const Rule& rule) { return rule.code.starts_with(beginning); });
}

} // namespace

IgnoreComments::IgnoreComments(std::string path, const XmlPositions& positions) : path_(std::move(path)) {
    for (const auto& comment : positions.getIgnores())
        vCommentAdd(comment, positions);
}

void IgnoreComments::vCommentAdd(const XmlIgnore& comment, const XmlPositions& positions) {
    constexpr std::string_view Separators = ", \t\r\n";
    if (comment.codes.find_first_not_of(Separators) == std::string_view::npos)
        emptyComments_.push_back(comment.position);
    for (auto rest = comment.codes; !rest.empty();) {
        const auto word = rest.substr(0, rest.find_first_of(Separators));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        if (word.empty())
            continue;
        Code code;
        code.code = sUpperCase(word);
        code.isKnown = isCodeOfRules(code.code);
        code.comment = comment.position;
        if (comment.element != NoXmlElement) {
            const auto& element = positions.getElement(comment.element);
            code.begin = element.tagPosition;
            code.end = element.end;
            code.isRoot = comment.element == 0;
        }
        codes_.push_back(std::move(code));
    }
}

bool IgnoreComments::boHide(const Finding& finding) {
    const auto& position = finding.place.position;
    bool isHidden = false;
    for (auto& code : codes_) {
        // What is about the whole document is inside its root.
        const bool isInside = position.line == 0
                                  ? code.isRoot
                                  : !isBefore(position, code.begin) && isBefore(position, code.end);
        if (!isInside || !code.isKnown || !finding.code.starts_with(code.code))
            continue;
        code.isUsed = true;
        isHidden = true;
    }
    return isHidden;
}

Finding IgnoreComments::unusedFinding(const Code& code) const {
    Finding finding;
    finding.code = unusedCode;
    finding.severity = Severity::Note;
    finding.message = "the comment that ignores " + code.code + " hides nothing";
    finding.place = {path_, code.comment};
    finding.subject = "ignore " + code.code;
    if (!code.isKnown)
        finding.notes.push_back({"no rule has this code", {}});
    else if (code.end.line == 0)
        finding.notes.push_back({"no element follows the comment", {}});
    return finding;
}

Finding IgnoreComments::emptyFinding(const TextPosition& position) const {
    Finding finding;
    finding.code = emptyCode;
    finding.severity = Severity::Note;
    finding.message = "the comment ignores nothing: it names no code";
    finding.place = {path_, position};
    finding.subject = "ignore";
    finding.notes.push_back({"a code is T001, or T for all that begin with it", {}});
    return finding;
}

std::vector<Finding>
IgnoreComments::unusedFindings(const std::function<bool(std::string_view)>& isLookedFor) const {
    std::vector<Finding> findings;
    for (const auto& position : emptyComments_)
        findings.push_back(emptyFinding(position));
    for (const auto& code : codes_) {
        if (!code.isUsed && (!code.isKnown || !isLookedFor || isLookedFor(code.code)))
            findings.push_back(unusedFinding(code));
    }
    return findings;
}

} // namespace kiv::kit
