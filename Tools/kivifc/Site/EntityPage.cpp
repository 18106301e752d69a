#include "kivifc/Site/EntityPage.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RedeclaredName.h"

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
        vAttributesWrite();
        return page_.takeText();
    }

private:
    void vAttributesWrite() {
        const auto attributes = entity_.getAttributes();
        if (attributes.empty())
            return;
        vSectionBegin(html_, "attributes", "Attributes", attributes.size());
        vTableBegin(html_, "Attributes of " + sShort(entity_.getName()), {"Name", "Type"});
        for (const auto& attribute : attributes)
            vAttributeWrite(attribute);
        vTableEnd(html_);
        vSectionEnd(html_);
    }

    void vAttributeWrite(const Attribute& each) {
        const auto name = ownNameOf(each.getName());
        html_ << "<tr" << attribute("id", sAnchor(name)) << "><th scope=\"row\"><code>"
              << escaped(sShort(name)) << "</code>";
        vRowLinkWrite(html_, name);
        html_ << "</th><td><code>";
        vExpressWrite(model_, {}, each.getTypeText(), html_);
        html_ << "</code>";
        if (each.isOptional())
            html_ << " <span class=\"badge\">optional</span>";
        html_ << "</td></tr>\n";
    }

    const SiteModel& model_;
    const Entity& entity_;
    Page page_;
    Html& html_;
};

} // namespace

void vEntityPagesWrite(const SiteModel& model, SiteFolder& folder) {
    for (const auto* entity : model.getEntities())
        folder.vWrite(model.getAddresses().of(*entity), EntityPage(model, *entity).sText());
}

} // namespace kiv::kivifc::site
