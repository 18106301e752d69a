#include "kivifc/Site/UsesHtml.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// A list under its heading; nothing for an empty one.
template <typename Items, typename WriteItem>
void vListWrite(Html& html, Markup title, const Items& items, const WriteItem& vItemWrite) {
    if (items.empty())
        return;
    html << "<h3>" << title << " <span class=\"count\">" << items.size()
         << "</span></h3>\n<ul class=\"links\">\n";
    for (const auto& item : items) {
        html << "<li>";
        vItemWrite(item);
        html << "</li>\n";
    }
    html << "</ul>\n";
}

void vRuleWrite(const SiteModel& model, const RuleUse& use, Html& html) {
    if (use.label.empty())
        return vObjectLinkWrite(model, *use.owner, html);
    html << "<a" << href(model.getAddresses().of(*use.owner).row(use.label)) << "><code>"
         << escaped(sShort(use.owner->getName())) << "." << escaped(sShort(use.label)) << "</code></a>";
}

void vMembersWrite(const SiteModel& model, const std::vector<MemberUse>& uses, Html& html) {
    // A type such as a label is that of hundreds.
    constexpr std::size_t MembersMax = 100;
    if (uses.empty())
        return;
    html << "<h3>Properties and quantities <span class=\"count\">" << uses.size()
         << "</span></h3>\n<ul class=\"links\">\n";
    for (const auto& use : std::span(uses).first(std::min(uses.size(), MembersMax))) {
        html << "<li><a" << href(model.getAddresses().of(*use.set).row(use.row)) << "><code>"
             << escaped(sShort(use.set->getName())) << "." << escaped(sShort(use.member->getName()))
             << "</code></a></li>\n";
    }
    if (uses.size() > MembersMax)
        html << "<li><a" << href(Address(PropertiesPage)) << ">and " << uses.size() - MembersMax
             << " more</a></li>\n";
    html << "</ul>\n";
}

} // namespace

void vUsesWrite(const SiteModel& model, const ObjectBase& object, Html& html) {
    const auto& uses = model.usesOf(object);
    const auto& members = model.memberUsesOf(object);
    if (uses.isEmpty() && members.empty())
        return;
    vSectionBegin(html, "uses", "Used by");
    const auto vAttribute = [&](const AttributeBase* attribute) {
        vAttributeLinkWrite(model, *attribute, html);
    };
    vListWrite(html, "Attributes", uses.attributes, vAttribute);
    vListWrite(html, "Inverse attributes", uses.inverses, vAttribute);
    vListWrite(html, "Types", uses.types, [&](const auto* type) { vObjectLinkWrite(model, *type, html); });
    vListWrite(html, "Rules, redeclarations and functions", uses.rules,
               [&](const RuleUse& use) { vRuleWrite(model, use, html); });
    vMembersWrite(model, members, html);
    vSectionEnd(html);
}

} // namespace kiv::kivifc::site
