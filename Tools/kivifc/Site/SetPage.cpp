#include "kivifc/Site/SetPage.h"

#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Kit/Findings/Rule.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/GuidNotations.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RowIds.h"
#include "kivifc/Site/SetClasses.h"
#include "kivifc/Site/SetFindings.h"
#include "kivifc/Site/SetMembers.h"
#include "kivifc/Site/Translations.h"
#include "kivifc/Site/WrittenGuids.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using ifc::def::xml::SetDef;

/// Messages name what is wrong, which may be as long as a document.
constexpr std::size_t MessageMax = 2000;

/// The sets that each set hides.
using HiddenSets = std::unordered_map<const SetDef*, std::vector<const SiteSet*>>;

HiddenSets hiddenSets(const SiteModel& model) {
    HiddenSets hidden;
    for (const auto& set : model.getSets()) {
        if (set.hiddenBy)
            hidden[set.hiddenBy].push_back(&set);
    }
    return hidden;
}

/// The document is read again when a check finds a GUID in it that is none.
WrittenGuids writtenGuids(const SiteSet& set, const std::vector<const kit::Finding*>& findings) {
    const bool isAny =
        std::ranges::any_of(findings, [](const auto* finding) { return finding->code == "G001"; });
    return isAny ? WrittenGuids(set.path) : WrittenGuids();
}

/// The first of a code, the second and so on: lines are others as soon as the document is written again.
std::string sFindingAnchor(const RowId& code) {
    return "finding-" + code.getText();
}

Markup severityWord(kit::Severity severity) {
    switch (severity) {
    case kit::Severity::Error:
        return "error";
    case kit::Severity::Warning:
        return "warning";
    case kit::Severity::Note:
        break;
    }
    return "note";
}

/// The readers of a site need not know what a host is.
std::string sContextText(const ifc::def::SchemaPset::Context& context) {
    return sShort(context.name) + (context.isStandard ? " (standard)" : " (your own)");
}

Markup setKind(const SetDef& set) {
    return dynamic_cast<const ifc::def::qto::QuantitySetDef*>(&set) ? Markup("Quantity set")
                                                                    : Markup("Property set");
}

/// What all pages of sets look things up in.
struct SetPages {
    const SiteModel& model;
    HiddenSets hidden;
    SetFindings findings;
};

/// Writes the page of one set.
class SetPage {
public:
    SetPage(const SetPages& pages, const SiteSet& site) :
        pages_(pages),
        model_(pages.model),
        site_(site),
        set_(*site.set),
        members_(memberList(set_).size()),
        findings_(pages.findings.of(site)),
        written_(writtenGuids(site, findings_)),
        page_(model_.getTitle(), {.title = set_.getName(),
                                  .kind = setKind(set_),
                                  .crumbs = {{"Sets", SetsPage}},
                                  .isBelowTop = true}),
        html_(page_.body()) {}

    std::string sText() {
        vLeadWrite();
        vContentsWrite();
        vFactsWrite();
        vClassesWrite();
        vMembersWrite();
        vFindingsWrite();
        return page_.takeText();
    }

private:
    void vLeadWrite() {
        html_ << "<p class=\"lead definition\">";
        vTranslatedWrite(set_.getDefinition(), set_.getDefinitionAliases(), html_);
        html_ << "</p>\n";
        if (!site_.isUsed())
            vNotUsedWrite();
    }

    /// The document of the set that is used instead leads to its page.
    void vNotUsedWrite() {
        const std::string_view reason = site_.unusedReason;
        const auto* other = model_.pSet(site_.usedInstead);
        const auto place = other ? reason.rfind(other->documentName) : std::string_view::npos;
        html_ << "<p><span class=\"badge error\">not used</span> "
              << escaped(sShort(reason.substr(0, place), MessageMax));
        if (place != std::string_view::npos)
            html_ << "<a" << href(model_.getAddresses().of(*other->set)) << ">"
                  << isolated(sShort(other->documentName)) << "</a>"
                  << escaped(sShort(reason.substr(place + other->documentName.size()), MessageMax));
        html_ << "</p>\n";
    }

    void vContentsWrite() {
        html_
            << "<nav class=\"toc\" aria-label=\"On this page\"><ul>\n"
               "<li><a href=\"#facts\">About</a></li>\n<li><a href=\"#classes\">Applicable classes</a></li>\n"
               "<li><a href=\"#members\">Members <span class=\"count\">"
            << members_ << "</span></a></li>\n<li><a href=\"#findings\">Findings <span class=\"count\">"
            << findings_.size() << "</span></a></li>\n</ul></nav>\n";
    }

    void vFactsWrite() {
        vSectionBegin(html_, "facts", "About");
        html_ << "<dl class=\"facts\">\n";
        vFactWrite("Context", sContextText(site_.context));
        vFactWrite("Document", site_.documentName);
        vFactWrite("IFC version", set_.getIfcVersion());
        vFactWrite("Template type", ifc::def::xml::sTemplateTypeText(set_.getTemplateType()));
        vFactWrite("Applicable type value", set_.getApplicableTypeValue());
        vHiddenWrite();
        vNoGuidFactWrite();
        html_ << "</dl>\n";
        if (!set_.getIfdGuid().isNull())
            vGuidNotationsWrite(set_.getIfdGuid(), html_);
        vSectionEnd(html_);
    }

    void vFactWrite(Markup name, std::string_view value) {
        if (!value.empty())
            html_ << "<div><dt>" << name << "</dt><dd>" << isolated(value) << "</dd></div>\n";
    }

    void vNoGuidFactWrite() {
        const auto text = written_.of(set_);
        if (text.empty())
            return;
        html_ << "<div><dt>GUID</dt><dd>";
        vNoGuidWrite(text, html_);
        html_ << "</dd></div>\n";
    }

    void vHiddenWrite() {
        if (site_.hiddenBy)
            vSetFactWrite("Hidden by", *model_.pSet(site_.hiddenBy));
        const auto hidden = pages_.hidden.find(&set_);
        if (hidden == pages_.hidden.end())
            return;
        for (const auto* each : hidden->second)
            vSetFactWrite("Hides", *each);
    }

    void vSetFactWrite(Markup name, const SiteSet& other) {
        html_ << "<div><dt>" << name << "</dt><dd>";
        vNameLinkWrite(html_, model_.getAddresses().of(*other.set), other.set->getName());
        html_ << " of " << isolated(sContextText(other.context)) << "</dd></div>\n";
    }

    void vClassesWrite() {
        vSectionBegin(html_, "classes", "Applicable classes");
        if (set_.getApplicableClasses().empty())
            html_ << "<p>Every class: the document names none.</p>\n";
        else
            vSetClassesWrite(model_, set_, html_);
        vSectionEnd(html_);
    }

    void vMembersWrite() {
        vSectionBegin(html_, "members", "Members", members_);
        if (members_ == 0)
            html_ << "<p>None.</p>\n";
        else
            vFullMembersWrite(model_, site_, written_, html_);
        vSectionEnd(html_);
    }

    void vFindingsWrite() {
        vSectionBegin(html_, "findings", "Findings", findings_.size());
        if (findings_.empty())
            html_ << "<p>None: <code>kivifc check</code> finds nothing in the document.</p>\n";
        else
            html_ << "<ul class=\"findings\">\n";
        RowIds ids;
        for (const auto* finding : findings_)
            vFindingWrite(*finding, sFindingAnchor(ids.take(finding->code)));
        if (!findings_.empty())
            html_ << "</ul>\n<p><code>kivifc explain CODE</code> says what a rule finds, and why.</p>\n";
        vSectionEnd(html_);
    }

    void vFindingWrite(const kit::Finding& finding, const std::string& id) {
        const auto severity = severityWord(finding.severity);
        html_ << "<li" << attribute("id", id)
              << attribute("class", "found-" + std::string(severity.getView())) << "><span"
              << attribute("class", "badge " + std::string(severity.getView())) << ">" << severity
              << "</span> ";
        if (finding.place.position.line != 0)
            html_ << "line " << finding.place.position.line << ": ";
        html_ << isolated(sShort(finding.message, MessageMax)) << " <span class=\"note\"><code>"
              << escaped(finding.code) << "</code>";
        if (const auto* rule = kit::pRuleFind(finding.code))
            html_ << " " << escaped(rule->name);
        html_ << "</span>";
        vIdLinkWrite(html_, id, finding.code);
        html_ << "</li>\n";
    }

    const SetPages& pages_;
    const SiteModel& model_;
    const SiteSet& site_;
    const SetDef& set_;
    std::size_t members_;
    const std::vector<const kit::Finding*>& findings_;
    WrittenGuids written_;
    Page page_;
    Html& html_;
};

} // namespace

void vSetPagesWrite(const SiteModel& model, SiteFolder& folder) {
    const SetPages pages{model, hiddenSets(model), SetFindings(model)};
    for (const auto& set : model.getSets())
        folder.vWrite(model.getAddresses().of(*set.set), SetPage(pages, set).sText());
}

} // namespace kiv::kivifc::site
