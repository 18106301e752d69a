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
    return draftAdd(code, {element, nullptr}, xml.getElement(element).position, std::move(message));
}

FindingDraft& RuleRun::addAtText(std::string_view code, XmlIndex element, std::string message) {
    const auto& text = xml.getElement(element).trimmedText;
    if (text.value.empty())
        return add(code, element, std::move(message));
    return draftAdd(code, {element, nullptr}, text.position, std::move(message));
}

FindingDraft& RuleRun::addAtValue(std::string_view code, XmlIndex element, const XmlAttribute& attribute,
                                  std::string message) {
    if (attribute.value.position.length == 0)
        return addAtAttribute(code, element, attribute, std::move(message));
    return draftAdd(code, {element, &attribute}, attribute.value.position, std::move(message));
}

FindingDraft& RuleRun::addAtAttribute(std::string_view code, XmlIndex element, const XmlAttribute& attribute,
                                      std::string message) {
    return draftAdd(code, {element, &attribute}, attribute.position, std::move(message));
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

namespace {

/// Whether readers do not know the element in its place.
bool isUnknown(const RuleRun& run, XmlIndex element) {
    const auto* rule = run.vocabulary.pRuleOf(element);
    return !rule || rule->name != run.xml.getElement(element).name;
}

/// Whether what is inside the unknown element, or the element itself, belongs in one of that rule.
bool isContentOf(const RuleRun& run, XmlIndex unknown, const ElementRule& rule) {
    if (SetVocabulary::boContains(rule, run.xml.getElement(unknown).name))
        return true;
    for (const auto child : XmlChildren(run.xml, unknown)) {
        if (SetVocabulary::pChild(rule, run.xml.getElement(child).name))
            return true;
    }
    return false;
}

bool isOtherElement(const RuleRun& run, std::string_view name) {
    const auto names = SetVocabulary::elementNames(run.outline.kind);
    return std::ranges::find(names, name) != names.end();
}

/// Whether an unknown element was probably meant to be one of that rule.
bool isMeantAs(const RuleRun& run, XmlIndex unknown, const ElementRule& rule) {
    if (isContentOf(run, unknown, rule))
        return true;
    const auto name = run.xml.getElement(unknown).localName();
    if (SetVocabulary::counterpart(name) == rule.name)
        return true;
    const bool isAlike = legalMatch(name, {&rule.name, 1}).name == rule.name;
    return isAlike && (name == rule.name || !isOtherElement(run, name));
}

/// As in <PropertyDef name="Width">, or with an attribute of the missing child.
bool isAttributeOf(const RuleRun& run, XmlIndex parent, const ElementRule& child) {
    const auto& own = run.vocabulary.pRuleOf(parent)->attributes;
    return std::ranges::any_of(
        run.xml.getAttributes(run.xml.getElement(parent)), [&](const XmlAttribute& attribute) {
            return isEqualIgnoringCase(attribute.name, child.name) ||
                   (std::ranges::find(child.attributes, attribute.name) != child.attributes.end() &&
                    std::ranges::find(own, attribute.name) == own.end());
        });
}

bool isThere(const RuleRun& run, XmlIndex parent, std::string_view name) {
    for (const auto child : XmlChildren(run.xml, parent)) {
        if (run.xml.getElement(child).name == name)
            return true;
    }
    return false;
}

/// Whether the unknown element may have been meant to be any: it is none that belongs elsewhere, and like
/// none of the other legal ones.
bool isFree(const RuleRun& run, XmlIndex unknown, const ElementRule& parent, std::string_view missing) {
    const auto name = run.xml.getElement(unknown).localName();
    if (isOtherElement(run, name) || !SetVocabulary::counterpart(name).empty())
        return false;
    const auto match = legalMatch(name, SetVocabulary::childNames(parent));
    return match.name.empty() || match.name == missing;
}

} // namespace

bool RuleRun::boMissingExplained(XmlIndex parent, std::string_view name) const {
    const auto* rule = vocabulary.pRuleOf(parent);
    const auto* missing = rule ? SetVocabulary::pChild(*rule, name) : nullptr;
    if (!missing)
        return false;
    for (const auto child : XmlChildren(xml, parent)) {
        if (isUnknown(*this, child) && isMeantAs(*this, child, *missing->rule))
            return true;
    }
    return isAttributeOf(*this, parent, *missing->rule) || soleMissing(parent) == name;
}

std::string_view RuleRun::soleMissing(XmlIndex parent) const {
    const auto* rule = vocabulary.pRuleOf(parent);
    if (!rule)
        return {};
    auto stray = NoXmlElement;
    for (const auto child : XmlChildren(xml, parent)) {
        if (!isUnknown(*this, child))
            continue;
        if (stray != NoXmlElement)
            return {};
        stray = child;
    }
    if ((stray == NoXmlElement) != boStrayText(parent))
        return {};
    std::string_view missing;
    for (const auto& child : rule->children) {
        if (!child.isNeeded || isThere(*this, parent, child.rule->name))
            continue;
        if (!missing.empty())
            return {};
        missing = child.rule->name;
    }
    if (missing.empty() || (stray != NoXmlElement && !isFree(*this, stray, *rule, missing)))
        return {};
    return missing;
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

std::string sQuotedList(const std::vector<std::string_view>& values, std::size_t limit) {
    const auto shown = std::min(values.size(), limit);
    std::string list;
    for (std::size_t i = 0; i != shown; ++i) {
        if (i != 0)
            list.append(i + 1 == values.size() ? " and " : ", ");
        list.append(sQuoted(values[i]));
    }
    if (shown != values.size())
        list.append(" and ").append(std::to_string(values.size() - shown)).append(" more");
    return list;
}

} // namespace kiv::kit
