#include "kivifc/Site/EntityPage.h"

#include "kivifc/Site/Diagram.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EntityAttributes.h"
#include "kivifc/Site/EntitySets.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RuleHtml.h"
#include "kivifc/Site/UsesHtml.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// Writes the page of one entity.
class EntityPage {
public:
    EntityPage(const SiteModel& model, const Entity& entity, EntitySetParts& parts) :
        model_(model),
        entity_(entity),
        parts_(parts),
        page_(model.getTitle(),
              {.title = entity.getName(), .kind = "Entity", .crumbs = {{"Entities", EntitiesPage}}}),
        html_(page_.body()) {}

    std::string sText() {
        vTreeWrite();
        EntityAttributes attributes(model_, entity_, ids_, html_);
        const auto ruleIds = ruleIdsTake(entity_.pWhere(), ids_);
        attributes.vWrite();
        vWhereWrite(model_, {.pSelf = &entity_}, entity_.pWhere(), ruleIds, html_);
        vInheritedRulesWrite();
        vEntitySetsWrite(model_, entity_, parts_, html_);
        vUsesWrite(model_, entity_, html_);
        return page_.takeText();
    }

private:
    void vTreeWrite() {
        html_ << "<p class=\"lead\">";
        if (entity_.isAbstract())
            html_ << "<span class=\"badge abstract\">abstract</span> ";
        vLineWrite();
        html_ << "</p>\n";
        vFarthestWrite();
        vSectionBegin(html_, "tree", "Place in the tree");
        vDiagramWrite(model_, entity_, html_);
        vSectionEnd(html_);
    }

    /// Where what is inherited goes on, of a line that is too long for one page.
    void vFarthestWrite() {
        const auto& farthest = *nearestOf(entity_).back();
        if (!farthest.pSupertype())
            return;
        html_ << "<p>Attributes, sets and rules are listed up to ";
        vObjectLinkWrite(model_, farthest, html_);
        html_ << ", whose page has what it inherits.</p>\n";
    }

    /// The supertypes as a line of text.
    void vLineWrite() {
        const auto line = nearestOf(entity_);
        if (line.back()->pSupertype())
            html_ << "... &gt; ";
        for (auto each = line.rbegin(); each != line.rend(); ++each) {
            if (*each == &entity_)
                html_ << "<code>" << escaped(sShort(entity_.getName())) << "</code>";
            else
                vObjectLinkWrite(model_, **each, html_);
            if (*each != &entity_)
                html_ << " &gt; ";
        }
    }

    /// Their text is on the pages of the supertypes.
    void vInheritedRulesWrite() {
        constexpr std::size_t RulesMax = 100;
        std::size_t count = 0;
        Markup separator = "<p>Inherited rules: ";
        for (const auto* each : nearestOf(entity_)) {
            if (each == &entity_)
                continue;
            const auto& rules = model_.rulesOf(*each);
            const auto room = RulesMax - std::min(count, RulesMax);
            for (const auto* rule : std::span(rules).first(std::min(rules.size(), room))) {
                html_ << separator;
                vRuleLinkWrite(*each, *rule);
                separator = ", ";
            }
            count += rules.size();
        }
        if (count > RulesMax)
            html_ << " and " << count - RulesMax << " more on the pages of the supertypes";
        if (count > 0)
            html_ << "</p>\n";
    }

    void vRuleLinkWrite(const Entity& entity, const ParsedRule& rule) {
        html_ << "<a" << href(model_.getAddresses().of(entity).row(rule.label)) << "><code>"
              << escaped(sShort(entity.getName())) << "." << escaped(sShort(rule.label)) << "</code></a>";
    }

    const SiteModel& model_;
    const Entity& entity_;
    EntitySetParts& parts_;
    Page page_;
    Html& html_;
    RowIds ids_;
};

} // namespace

void vEntityPagesWrite(const SiteModel& model, SiteFolder& folder) {
    EntitySetParts parts(model);
    for (const auto* entity : model.getEntities())
        folder.vWrite(model.getAddresses().of(*entity), EntityPage(model, *entity, parts).sText());
}

} // namespace kiv::kivifc::site
