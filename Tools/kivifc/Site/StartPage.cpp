#include "kivifc/Site/StartPage.h"

#include "kivifc/Pictures/SchemaSummary.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/Page.h"

#include <cstddef>

namespace kiv::kivifc::site {

namespace {

void vFigureWrite(Html& html, Markup name, std::size_t count) {
    html << "<li><span><strong>" << count << "</strong> " << name << "</span></li>\n";
}

void vFigureWrite(Html& html, Markup name, std::size_t count, PageName page) {
    html << "<li><a" << href(Address(page)) << "><strong>" << count << "</strong> " << name << "</a></li>\n";
}

void vSchemaWrite(const SiteModel& model, Html& html) {
    const auto counts = schemaCounts(model.getSchemaFile(), model.getTree());
    vSectionBegin(html, "schema", "Schema");
    html << "<p>The schema <code>" << escaped(sShort(model.getSchema().getName())) << "</code>.</p>\n"
         << "<ul class=\"figures\">\n";
    vFigureWrite(html, "entities", counts.entities, EntitiesPage);
    vFigureWrite(html, "types", counts.types, TypesPage);
    vFigureWrite(html, "functions", counts.functions, FunctionsPage);
    vFigureWrite(html, "rules", counts.rules, RulesPage);
    vFigureWrite(html, "attributes", counts.attributes);
    vFigureWrite(html, "inverse attributes", counts.attributesInverse);
    vFigureWrite(html, "derived attributes", counts.attributesDerived);
    vFigureWrite(html, "WHERE rules", counts.whereRules);
    html << "</ul>\n<p><a" << href(Address(EntitiesPage)) << ">Entities as a tree</a>, <a"
         << href(Address(EntitiesByLetterPage)) << ">entities by letter</a></p>\n";
    vSectionEnd(html);
}

void vSetsWrite(const SiteModel& model, Html& html) {
    if (model.getSets().empty())
        return;
    vSectionBegin(html, "sets", "Sets");
    html << "<ul class=\"figures\">\n";
    vFigureWrite(html, "sets, by class and by prefix", model.getSets().size(), SetsPage);
    html << "</ul>\n<p><a" << href(Address(PropertiesPage)) << ">Properties by name</a>, <a"
         << href(Address(LanguagesPage)) << ">languages</a>, <a" << href(Address(GuidsPage))
         << ">GUIDs</a></p>\n";
    vSectionEnd(html);
}

} // namespace

void vStartPageWrite(const SiteModel& model, SiteFolder& folder) {
    Page page(model.getTitle(), {.title = model.getTitle(), .kind = "", .crumbs = {}});
    vSchemaWrite(model, page.body());
    vSetsWrite(model, page.body());
    folder.vWrite(StartPage, page.takeText());
}

} // namespace kiv::kivifc::site
