#include "kivifc/Site/EntityPage.h"

#include "kivifc/Site/Diagram.h"
#include "kivifc/Site/DistinctRules.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EntityAttributes.h"
#include "kivifc/Site/EntitySets.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RuleHtml.h"
#include "kivifc/Site/UsesHtml.h"

#include <cstddef>
#include <string>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// Writes the page of one entity.
class EntityPage {
public:
    EntityPage(const SiteModel& model, const Entity& entity) :
        model_(model),
        entity_(entity),
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
        vEntitySetsWrite(model_, entity_, html_);
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
        for (const auto* each : nearestOf(entity_)) {
            if (each == &entity_)
                continue;
            for (const auto* rule : distinctRules(each->pWhere())) {
                if (++count > RulesMax)
                    continue;
                html_ << (count == 1 ? Markup("<p>Inherited rules: ") : Markup(", ")) << "<a"
                      << href(model_.getAddresses().of(*each).row(rule->label)) << "><code>"
                      << escaped(sShort(each->getName())) << "." << escaped(sShort(rule->label))
                      << "</code></a>";
            }
        }
        if (count > RulesMax)
            html_ << " and " << count - RulesMax << " more on the pages of the supertypes";
        if (count > 0)
            html_ << "</p>\n";
    }

    const SiteModel& model_;
    const Entity& entity_;
    Page page_;
    Html& html_;
    RowIds ids_;
};

} // namespace

void vEntityPagesWrite(const SiteModel& model, SiteFolder& folder) {
    for (const auto* entity : model.getEntities())
        folder.vWrite(model.getAddresses().of(*entity), EntityPage(model, *entity).sText());
}

} // namespace kiv::kivifc::site
