#include "kivifc/Site/UsesHtml.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/IndexElements.h"

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

void vMemberLinksWrite(const SiteModel& model, std::span<const MemberUse> uses, Html& html) {
    html << "<ul class=\"links\">\n";
    for (const auto& use : uses) {
        html << "<li><a" << href(model.getAddresses().of(*use.set).row(use.row)) << "><code>"
             << escaped(sShort(use.set->getName())) << "." << escaped(sShort(use.member->getName()))
             << "</code></a>";
        if (const auto* set = model.pSet(use.set))
            vContextBadgeWrite(*set, html);
        html << "</li>\n";
    }
    html << "</ul>\n";
}

void vMembersWrite(const SiteModel& model, const std::vector<MemberUse>& uses, Html& html) {
    // A type such as a label is that of hundreds.
    constexpr std::size_t MembersMax = 100;
    if (uses.empty())
        return;
    html << "<h3>Properties and quantities <span class=\"count\">" << uses.size() << "</span></h3>\n";
    const auto shown = std::min(uses.size(), MembersMax);
    vMemberLinksWrite(model, std::span(uses).first(shown), html);
    if (shown == uses.size())
        return;
    html << "<details class=\"rest\"><summary>and " << uses.size() - shown << " more</summary>\n";
    vMemberLinksWrite(model, std::span(uses).subspan(shown), html);
    html << "</details>\n";
}

} // namespace

void vUsesWrite(const SiteModel& model, const ObjectBase& object, Html& html) {
    const auto& uses = model.usesOf(object);
    const auto& members = model.memberUsesOf(object);
    const bool isUnused = uses.isEmpty() && members.empty();
    // Nothing ever refers to a rule.
    if (isUnused && dynamic_cast<const Rule*>(&object))
        return;
    vSectionBegin(html, "uses", "Used by");
    if (isUnused)
        html << "<p>Nothing in the schema or the sets refers to it.</p>\n";
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
