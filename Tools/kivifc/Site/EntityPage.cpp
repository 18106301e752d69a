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
#include <string_view>
#include <utility>
#include <vector>

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
        const auto unreadIds = unreadRuleIdsTake(model_, entity_, ids_);
        attributes.vWrite();
        vWhereWrite(model_, {.pSelf = &entity_}, entity_.pWhere(), ruleIds, html_);
        vUnreadRulesWrite(model_, {.pSelf = &entity_}, entity_, unreadIds, html_);
        vInheritedRulesWrite();
        vEntitySetsWrite(model_, entity_, parts_, html_);
        vUsesWrite(model_, entity_, html_);
        return page_.takeText();
    }

private:
    void vTreeWrite() {
        html_ << "<p class=\"lead\">";
        vLineWrite();
        // After the name of the entity itself, which the line ends with.
        if (entity_.isAbstract())
            html_ << " <span class=\"badge abstract\">abstract</span>";
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

    static constexpr std::size_t RulesMax = 100;

    /// Those of them that there is room for beside the others.
    template <class Rule>
    static std::span<Rule* const> shown(const std::vector<Rule*>& rules, std::size_t count) {
        return std::span(rules).first(std::min(rules.size(), RulesMax - std::min(count, RulesMax)));
    }

    /// Their text is on the pages of the supertypes; those that could not be read are among them.
    void vInheritedRulesWrite() {
        std::size_t count = 0;
        Html links(html_.getRoot());
        Markup separator = "";
        for (const auto* each : nearestOf(entity_)) {
            if (each == &entity_)
                continue;
            const auto& rules = model_.rulesOf(*each);
            for (const auto* rule : shown(rules, count)) {
                links << std::exchange(separator, Markup(", "));
                vRuleLinkWrite(*each, rule->label, links);
            }
            count += rules.size();
            const auto& unread = model_.getDeclarations().unreadRulesOf(*each);
            for (const auto* rule : shown(unread, count)) {
                links << std::exchange(separator, Markup(", "));
                vRuleLinkWrite(*each, rule->name.text, links);
            }
            count += unread.size();
        }
        if (count == 0)
            return;
        vSectionBegin(html_, "inherited", "Inherited rules", count);
        html_ << "<p>" << links;
        if (count > RulesMax)
            html_ << " and " << count - RulesMax << " more on the pages of the supertypes";
        html_ << "</p>\n";
        vSectionEnd(html_);
    }

    void vRuleLinkWrite(const Entity& entity, std::string_view label, Html& html) const {
        html << "<a" << href(model_.getAddresses().of(entity).row(label)) << "><code>"
             << escaped(sShort(entity.getName())) << "." << escaped(sShort(label)) << "</code></a>";
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
