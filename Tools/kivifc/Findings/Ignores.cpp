#include "kivifc/Findings/Ignores.h"

#include <algorithm>
#include <fmt/format.h>
#include <string_view>
#include <tuple>
#include <utility>

namespace kiv::kivifc {

namespace {

bool isBefore(const kit::TextPosition& left, const kit::TextPosition& right) {
    return std::tie(left.line, left.column) < std::tie(right.line, right.column);
}

} // namespace

DocumentIgnores::DocumentIgnores(std::string path, const kit::XmlPositions& positions) :
    path_(std::move(path)) {
    for (const auto& comment : positions.getIgnores())
        vCommentAdd(comment, positions);
}

void DocumentIgnores::vCommentAdd(const kit::XmlIgnore& comment, const kit::XmlPositions& positions) {
    constexpr std::string_view Separators = ", \t\r\n";
    for (auto rest = comment.codes; !rest.empty();) {
        const auto word = rest.substr(0, rest.find_first_of(Separators));
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
        if (word.empty())
            continue;
        Code code;
        code.code = sCodeOf(word, code.failure);
        code.comment = comment.position;
        if (comment.element != kit::NoXmlElement) {
            const auto& element = positions.getElement(comment.element);
            code.begin = element.tagPosition;
            code.end = element.end;
            code.isRoot = comment.element == 0;
        }
        codes_.push_back(std::move(code));
    }
}

bool DocumentIgnores::boHide(const kit::Finding& finding) {
    if (isUnreadable(finding) || finding.place.path != path_)
        return false;
    const auto& position = finding.place.position;
    bool isHidden = false;
    for (auto& code : codes_) {
        // What is about the whole document is inside its root.
        const bool isInside = position.line == 0 ? code.isRoot
                                                 : !isBefore(position, code.begin) && isBefore(position, code.end);
        if (!isInside || !code.failure.empty() || !finding.code.starts_with(code.code))
            continue;
        code.isUsed = true;
        isHidden = true;
    }
    return isHidden;
}

kit::Finding DocumentIgnores::unusedFinding(const Code& code) const {
    kit::Finding finding;
    finding.code = UnusedIgnoreCode;
    finding.severity = kit::Severity::Note;
    finding.message = fmt::format("the comment that ignores {} hides nothing", code.code);
    finding.place = {path_, code.comment};
    finding.subject = "ignore " + code.code;
    if (!code.failure.empty())
        finding.notes.push_back({code.failure, {}});
    else if (code.end.line == 0)
        finding.notes.push_back({"no element follows it", {}});
    return finding;
}

void DocumentIgnores::vUnusedAdd(std::vector<kit::Finding>& findings, const Selection& selection) const {
    for (const auto& code : codes_) {
        if (!code.isUsed && (!code.failure.empty() || isSelected(selection, code.code)))
            findings.push_back(unusedFinding(code));
    }
}

} // namespace kiv::kivifc
