#include "kivifc/Site/UsesHtml.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"

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

} // namespace

void vUsesWrite(const SiteModel& model, const ObjectBase& object, Html& html) {
    const auto& uses = model.usesOf(object);
    if (uses.isEmpty())
        return;
    vSectionBegin(html, "uses", "Used by");
    const auto vAttribute = [&](const AttributeBase* attribute) {
        vAttributeLinkWrite(model, *attribute, html);
    };
    vListWrite(html, "Attributes", uses.attributes, vAttribute);
    vListWrite(html, "Inverse attributes", uses.inverses, vAttribute);
    vListWrite(html, "Types", uses.types, [&](const auto* type) { vObjectLinkWrite(model, *type, html); });
    vListWrite(html, "Rules and functions", uses.rules,
               [&](const RuleUse& use) { vRuleWrite(model, use, html); });
    vSectionEnd(html);
}

} // namespace kiv::kivifc::site
