#include "kiv/Kit/Findings/Findings.h"

#include "Kit/Findings/LegalNames.h"
#include "Kit/Findings/LibraryReports.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/ClassRules.h"
#include "Kit/Findings/Rules/DocumentationRules.h"
#include "Kit/Findings/Rules/LookAlikeNotes.h"
#include "Kit/Findings/Rules/ReleaseRules.h"
#include "Kit/Findings/Rules/Rules.h"
#include "Kit/Findings/Rules/TypeRules.h"
#include "Kit/Findings/SetOutline.h"
#include "Kit/Findings/XmlMistake.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

namespace kiv::kit {

namespace {

constexpr void (*Checks[])(RuleRun&) = {vStructureCheck, vNamesCheck,         vGuidsCheck,
                                        vLanguagesCheck, vTypesCheck,         vClassesCheck,
                                        vReleaseCheck,   vDocumentationCheck, vLookAlikesExplain};

std::string_view codeOf(FailureKind kind) {
    switch (kind) {
    case FailureKind::Unreadable:
        return "R040";
    case FailureKind::Empty:
        return "R041";
    case FailureKind::OverBudget:
        return "R042";
    case FailureKind::OutOfMemory:
        return "R043";
    case FailureKind::NotXml:
        return "R044";
    case FailureKind::NotASet:
        return "S014";
    case FailureKind::PrefixedRoot:
        return "S013";
    case FailureKind::NotASchema:
    case FailureKind::LiteralOutOfRange:
    case FailureKind::ListLeftOpen:
        break; // documents have no such failure
    }
    return "R040";
}

/// The parser counts a byte order mark as a column, which nobody sees.
TextPosition parserPosition(const SetDocument& document) {
    constexpr std::string_view Marks[] = {ByteOrderMark, "\xFE\xFF", "\xFF\xFE"};
    auto position = document.failure->position;
    const bool isMarked = std::ranges::any_of(
        Marks, [&](std::string_view mark) { return std::string_view(document.text).starts_with(mark); });
    if (isMarked && position.line == 1 && position.column > 1)
        --position.column;
    return position;
}

/// A root element that is refused has a place, and may be misspelt.
void vRootExplain(Finding& finding, const SetDocument& document) {
    constexpr std::string_view Roots[] = {"PropertySetDef", "QtoSetDef"};
    const XmlPositions xml(document.text);
    const auto* root = xml.pRoot();
    if (!root)
        return;
    finding.place.position = xml.positionOf(*root);
    const auto match = legalMatch(root->name, Roots);
    if (document.failure->kind != FailureKind::NotASet || match.name.empty())
        return;
    finding.notes.push_back({sMeant(match), std::nullopt});
}

Finding failureFinding(const SetDocument& document) {
    Finding finding;
    finding.code = pRuleFind(codeOf(document.failure->kind))->code;
    finding.severity = Severity::Error;
    finding.message = document.failure->reason;
    finding.place = {document.path, document.failure->kind == FailureKind::NotXml
                                        ? parserPosition(document)
                                        : document.failure->position};
    if (document.failure->kind == FailureKind::NotASet || document.failure->kind == FailureKind::PrefixedRoot)
        vRootExplain(finding, document);
    if (document.failure->kind == FailureKind::NotXml && document.positions)
        vXmlMistakeExplain(finding, *document.positions);
    else if (document.failure->kind == FailureKind::NotXml)
        vXmlMistakeExplain(finding, XmlPositions(document.text));
    return finding;
}

/// The findings about something, in the order in which they were added.
class Explanations {
public:
    explicit Explanations(std::vector<FindingDraft>& drafts) : drafts_(drafts) {
        for (std::size_t i = 0; i != drafts.size(); ++i)
            bySubject_.emplace(std::pair(drafts[i].subject.element, drafts[i].subject.attribute), i);
    }

    /// The most severe of those about the same thing; null when there is none.
    FindingDraft* pExplains(const FindingSubject& subject) {
        const auto [first, last] = bySubject_.equal_range({subject.element, subject.attribute});
        FindingDraft* found = nullptr;
        for (auto place = first; place != last; ++place) {
            auto& draft = drafts_[place->second];
            if (!found || found->finding.severity < draft.finding.severity)
                found = &draft;
        }
        return found;
    }

private:
    std::vector<FindingDraft>& drafts_;
    std::multimap<std::pair<XmlIndex, const XmlAttribute*>, std::size_t> bySubject_;
};

/// The reports that no rule explains become findings, the others notes.
class ReportTaker {
public:
    explicit ReportTaker(RuleRun& run) : run_(run), explanations_(run.getDrafts()) {}

    void vTake(const LibraryReport& report) {
        if (report.isHarmless) {
            if (run_.context.isVerbose)
                vFindingKeep(report);
            return;
        }
        const auto subject = run_.joinedWith(report.subject);
        auto* explanation =
            report.subject.element == NoXmlElement ? nullptr : explanations_.pExplains(subject);
        if (!explanation)
            vFindingKeep(report);
        else
            vNoteAdd(*explanation, report, subject != report.subject);
    }

    /// What became a finding of its own. Added at the end: explanations refer to the findings of the rules.
    void vFinish() {
        for (auto& draft : own_)
            run_.draftTake(std::move(draft));
    }

private:
    /// A finding about several elements says once what is reported of each.
    static void vNoteAdd(FindingDraft& draft, const LibraryReport& report, bool isJoined) {
        const auto message = "the library reports: " + report.message;
        const auto isSame = [&](const FindingNote& note) { return note.message == message; };
        if (!isJoined || std::ranges::none_of(draft.finding.notes, isSame))
            draft.vNote(message);
        // Every record of the library is an error, whatever the rule thinks of it.
        if (!report.origin)
            draft.vSeverity(Severity::Error);
        else if (!draft.finding.origin)
            draft.finding.origin = report.origin;
    }

    void vFindingKeep(const LibraryReport& report) {
        if (own_.size() == RuleRun::maxFindings)
            return;
        const auto* rule = pRuleFind(report.code);
        FindingDraft draft;
        draft.finding.code = rule->code;
        draft.finding.severity = rule->severity;
        draft.finding.message = report.message;
        if (!report.value.empty())
            draft.finding.message += ": " + sQuoted(report.value);
        draft.finding.place = {run_.document.path, report.position};
        draft.finding.origin = report.origin;
        draft.subject = report.subject;
        own_.push_back(std::move(draft));
    }

    RuleRun& run_;
    Explanations explanations_;
    std::vector<FindingDraft> own_;
};

/// The innermost member that contains the element; null when none does.
const MemberOutline* pMemberOf(const SetOutline& outline, XmlIndex element) {
    const auto& members = outline.members;
    auto next = std::ranges::upper_bound(members, element, {}, &MemberOutline::element);
    if (element == NoXmlElement || next == members.begin())
        return nullptr;
    const auto* member = &*std::prev(next);
    while (element >= outline.elementOf(member->element).descendantsEnd) {
        if (member->owner < 0)
            return nullptr;
        member = &members[static_cast<std::size_t>(member->owner)];
    }
    return member;
}

void vSubjectsSet(RuleRun& run) {
    for (auto& draft : run.getDrafts()) {
        auto& subject = draft.finding.subject;
        if (!subject.empty())
            continue;
        const auto* member = pMemberOf(run.outline, draft.subject.element);
        subject = member ? run.outline.subjectOf(*member) : run.outline.setSubject();
    }
}

bool isBefore(const Finding& left, const Finding& right) {
    return std::tie(left.place.position.line, left.place.position.column, left.code) <
           std::tie(right.place.position.line, right.place.position.column, right.code);
}

std::vector<Finding> findingsSorted(std::vector<FindingDraft>& drafts) {
    std::vector<Finding> findings;
    findings.reserve(drafts.size());
    for (auto& draft : drafts)
        findings.push_back(std::move(draft.finding));
    std::ranges::stable_sort(findings, isBefore);
    return findings;
}

std::vector<Finding> setFindings(const SetDocument& document, const XmlPositions& positions,
                                 const SetCheckContext& context) {
    const SetOutline outline(positions);
    RuleRun run(document, outline, context);
    for (const auto vCheck : Checks)
        vCheck(run);
    ReportTaker taker(run);
    for (const auto& report : libraryReportsOf(run))
        taker.vTake(report);
    taker.vFinish();
    vSubjectsSet(run);
    return findingsSorted(run.getDrafts());
}

} // namespace

std::vector<Finding> findingsOf(const SetDocument& document, const SetCheckContext& context) {
    if (document.failure)
        return {failureFinding(document)};
    if (document.positions)
        return setFindings(document, *document.positions, context);
    return setFindings(document, XmlPositions(document.text), context);
}

} // namespace kiv::kit
