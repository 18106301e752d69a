#include "kivifc/Site/SetMembers.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/GuidNotations.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/MemberType.h"
#include "kivifc/Site/Translations.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using ifc::def::xml::Def;

constexpr std::size_t ShortItemsMax = 40;

using Rows = std::unordered_map<const Def*, const RowId*>;

/// One row of the page of an entity. Most of what a site takes on disk are such rows, so they are sparing: no
/// translations, and nothing around a text that is alone in its cell, for which the style sheet knows its
/// place.
class ShortRow {
public:
    ShortRow(const SiteModel& model, const SiteSet& set, bool hasDefinitions, Html& html) :
        model_(model),
        address_(model.getAddresses().of(*set.set)),
        hasDefinitions_(hasDefinitions),
        html_(html) {}

    void vWrite(const ListedMember& member) {
        const auto& def = *member.def;
        // Beside cells and below headings alone, it is the heading of its row without saying so.
        html_ << "<tr><th>";
        vBareLinkWrite(html_, address_.row(member.row), def.getName());
        if (member.whole)
            html_ << " <span class=\"note\">part of " << isolated(sShort(member.whole->getName()))
                  << "</span>";
        html_ << "</th><td>";
        vMemberTypeWrite(model_, def, {.itemsMax = ShortItemsMax, .withKind = true}, html_);
        if (hasDefinitions_)
            html_ << "</td><td>" << escaped(sShort(def.getDefinition(), ShortDefinitionMax));
        html_ << "</td></tr>\n";
    }

private:
    const SiteModel& model_;
    Address address_;
    bool hasDefinitions_;
    Html& html_;
};

/// One row of the page of the set itself.
class FullRow {
public:
    FullRow(const SiteModel& model, const Rows& rows, const WrittenGuids& written, Html& html) :
        model_(model), rows_(rows), written_(written), html_(html) {}

    void vWrite(const ListedMember& member) {
        const auto& def = *member.def;
        html_ << "<tr" << attribute("id", member.row.getText()) << "><th scope=\"row\">";
        vRowLinkWrite(html_, member.row, def.getName());
        html_ << "<code>" << escaped(sShort(def.getName())) << "</code>";
        vNameTranslationsWrite(def.getNameAliases(), html_);
        vWholeWrite(member);
        html_ << "</th><td>" << memberKind(def) << "</td><td>";
        vMemberTypeWrite(model_, def, {.hasDefinitions = true}, html_);
        html_ << "</td><td class=\"definition\">";
        vTranslatedWrite(def.getDefinition(), def.getDefinitionAliases(), html_);
        vGuidWrite(member);
        html_ << "</td></tr>\n";
    }

private:
    void vWholeWrite(const ListedMember& member) {
        if (!member.whole)
            return;
        html_ << " <span class=\"note\">part of <a" << idHref(rows_.at(member.whole)->getText()) << ">"
              << isolated(sShort(member.whole->getName())) << "</a></span>";
    }

    /// Rarely looked for, so that it is opened when it is.
    void vGuidWrite(const ListedMember& member) {
        const auto& guid = member.def->getIfdGuid();
        const auto written = written_.of(*member.def);
        if (guid.isNull() && written.empty())
            return;
        html_ << "<details><summary>GUID</summary>";
        if (guid.isNull())
            vNoGuidWrite(written, html_);
        else
            vGuidRowWrite(guid, sGuidAnchor(member.row), html_);
        html_ << "</details>";
    }

    const SiteModel& model_;
    const Rows& rows_;
    const WrittenGuids& written_;
    Html& html_;
};

std::string sLabel(const SiteSet& set) {
    return "Members of " + sShort(set.set->getName());
}

void vShortWrite(const SiteModel& model, const SiteSet& set, const std::vector<ListedMember>& members,
                 bool hasDefinitions, Html& html) {
    const auto count = std::min(members.size(), ShortMembersMax);
    // The element around it has the name of the set.
    if (hasDefinitions)
        vTableBegin(html, {}, {"Name", "Type and values", "Definition"});
    else
        vTableBegin(html, {}, {"Name", "Type and values"});
    ShortRow row(model, set, hasDefinitions, html);
    for (const auto& member : std::span(members).first(count))
        row.vWrite(member);
    vTableEnd(html);
    if (count < members.size())
        html << "<p><a class=\"more\"" << href(model.getAddresses().of(*set.set)) << ">and "
             << members.size() - count << " more</a></p>\n";
}

} // namespace

void vFullMembersWrite(const SiteModel& model, const SiteSet& set, const WrittenGuids& written, Html& html) {
    const auto members = memberList(*set.set);
    Rows rows;
    for (const auto& member : members)
        rows.emplace(member.def, &member.row);
    vTableBegin(html, sLabel(set), {"Name", "Kind", "Type and values", "Definition"});
    FullRow row(model, rows, written, html);
    for (const auto& member : members)
        row.vWrite(member);
    vTableEnd(html);
}

void vSetMembersWrite(const SiteModel& model, const SiteSet& set, MembersDetail detail, Html& html) {
    if (detail == MembersDetail::Full)
        vFullMembersWrite(model, set, {}, html);
    else
        vShortWrite(model, set, memberList(*set.set), detail == MembersDetail::Short, html);
}

} // namespace kiv::kivifc::site
