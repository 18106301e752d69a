#include "Kit/Findings/RuleRun.h"

#include "Kit/Findings/LegalNames.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/Rule.h"

#include <algorithm>
#include <utility>

namespace kiv::kit {

FindingDraft& FindingDraft::vNote(std::string message) {
    finding.notes.push_back({std::move(message), std::nullopt});
    return *this;
}

FindingDraft& FindingDraft::vNoteAt(std::string message, TextPosition position) {
    finding.notes.push_back({std::move(message), Place{finding.place.path, position}});
    return *this;
}

FindingDraft& FindingDraft::vEdit(const ByteRange& bytes, std::string_view text) {
    isMendable = isMendable && bytes.isKnown();
    if (isMendable)
        finding.edits.push_back({bytes.offset, bytes.length, std::string(text)});
    else
        finding.edits.clear();
    return *this;
}

FindingDraft& FindingDraft::vSubject(std::string subjectText) {
    finding.subject = std::move(subjectText);
    return *this;
}

FindingDraft& FindingDraft::vSeverity(Severity severity) {
    finding.severity = severity;
    return *this;
}

RuleRun::RuleRun(const SetDocument& checked, const SetOutline& parts, const SetCheckContext& against) :
    document(checked),
    outline(parts),
    xml(*parts.xml),
    context(against),
    schema(against.schema),
    vocabulary(*parts.xml, parts.kind) {}

FindingDraft& RuleRun::add(std::string_view code, XmlIndex element, std::string message) {
    return draftAdd(code, {element, nullptr}, xml.positionOf(xml.getElement(element)), std::move(message));
}

FindingDraft& RuleRun::addAtText(std::string_view code, XmlIndex element, std::string message) {
    const auto& parts = xml.getElement(element);
    if (parts.trimmedText.empty())
        return add(code, element, std::move(message));
    return draftAdd(code, {element, nullptr}, xml.textPositionOf(parts), std::move(message));
}

FindingDraft& RuleRun::addAtValue(std::string_view code, XmlIndex element, const XmlAttribute& attribute,
                                  std::string message) {
    const auto position = xml.valuePositionOf(attribute);
    if (position.length == 0)
        return addAtAttribute(code, element, attribute, std::move(message));
    return draftAdd(code, {element, &attribute}, position, std::move(message));
}

FindingDraft& RuleRun::addAtAttribute(std::string_view code, XmlIndex element, const XmlAttribute& attribute,
                                      std::string message) {
    return draftAdd(code, {element, &attribute}, xml.positionOf(attribute), std::move(message));
}

FindingDraft& RuleRun::draftAdd(std::string_view code, FindingSubject subject, TextPosition position,
                                std::string message) {
    const auto* rule = pRuleFind(code);
    FindingDraft draft;
    draft.finding.code = rule ? rule->code : std::string_view();
    draft.finding.severity = rule ? rule->severity : Severity::Error;
    draft.finding.message = std::move(message);
    draft.finding.place = {document.path, position};
    draft.subject = subject;
    return draftTake(std::move(draft));
}

FindingDraft& RuleRun::draftTake(FindingDraft draft) {
    auto& count = counts_[draft.finding.code];
    if (count == maxFindingsPerCode || drafts_.size() == maxFindings)
        return surplus_ = std::move(draft);
    ++count;
    return drafts_.emplace_back(std::move(draft));
}

FindingSubject RuleRun::joinedWith(const FindingSubject& subject) const {
    const auto found = joined_.find(subject.element);
    return found == joined_.end() ? subject : FindingSubject{found->second, nullptr};
}

FindingDraft* RuleRun::pLastOf(XmlIndex element) {
    const bool isThere = !drafts_.empty() && drafts_.back().subject.element == element;
    return isThere ? &drafts_.back() : nullptr;
}

std::string_view cut(std::string_view text, std::size_t size) {
    if (text.size() <= size)
        return text;
    while (size != 0 && isContinuation(text[size]))
        --size;
    return text.substr(0, size);
}

std::string sQuoted(std::string_view value) {
    const auto shown = cut(value, RuleRun::maxQuotedSize);
    std::string quoted(1, '"');
    quoted.append(shown);
    if (shown.size() != value.size())
        quoted.append("...");
    return quoted.append(1, '"');
}

std::string sNameQuoted(const XmlElement& element) {
    return sQuoted(element.name);
}

std::string sMeant(const LegalMatch& match) {
    return match.isLetterCase ? "write it as " + sQuoted(match.name)
                              : "did you mean " + sQuoted(match.name) + "?";
}

std::string sQuotedList(const std::vector<std::string_view>& values, std::size_t limit) {
    return sQuotedFirst(std::span(values).first(std::min(values.size(), limit)), values.size());
}

std::string sQuotedFirst(std::span<const std::string_view> first, std::size_t count) {
    std::string list;
    for (std::size_t i = 0; i != first.size(); ++i) {
        if (i != 0)
            list.append(i + 1 == count ? " and " : ", ");
        list.append(sQuoted(first[i]));
    }
    if (first.size() != count)
        list.append(" and ").append(std::to_string(count - first.size())).append(" more");
    return list;
}

} // namespace kiv::kit
