#include "kivifc/Site/StartPage.h"

#include "kivifc/Pictures/SchemaSummary.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/IndexPages.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/Page.h"

#include <cstddef>

namespace kiv::kivifc::site {

namespace {

/// How much there is of something, and where it is listed.
struct Figure {
    std::size_t count;
    Markup one;
    Markup many;
    PageName page;
};

void vFigureWrite(const Figure& figure, Html& html) {
    html << "<li><a" << href(Address(figure.page)) << "><strong>" << figure.count << "</strong> "
         << (figure.count == 1 ? figure.one : figure.many) << "</a></li>\n";
}

void vCardWrite(const IndexPage& index, Html& html) {
    html << "<li><a" << href(Address(index.page)) << "><strong>" << index.title << "</strong><span>"
         << index.text << "</span></a></li>\n";
}

void vFiguresWrite(const SiteModel& model, const SchemaCounts& counts, Html& html) {
    html << "<ul class=\"figures\">\n";
    vFigureWrite({counts.entities, "entity", "entities", EntitiesPage}, html);
    vFigureWrite({counts.types, "type", "types", TypesPage}, html);
    vFigureWrite({counts.functions, "function", "functions", FunctionsPage}, html);
    vFigureWrite({counts.rules, "rule", "rules", RulesPage}, html);
    if (!model.getSets().empty()) {
        std::size_t members = 0;
        for (const auto& set : model.getSets())
            members += memberList(*set.set).size();
        vFigureWrite({model.getSets().size(), "set", "sets", SetsPage}, html);
        vFigureWrite({members, "property or quantity", "properties and quantities", PropertiesPage}, html);
    }
    html << "</ul>\n";
}

void vCardsWrite(const SiteModel& model, Html& html) {
    html << "<ul class=\"cards\">\n";
    for (const auto& index : IndexPages) {
        if (isOffered(model, index))
            vCardWrite(index, html);
    }
    html << "</ul>\n";
}

void vFactWrite(Markup name, std::size_t count, Html& html) {
    html << "<div><dt>" << name << "</dt><dd>" << count << "</dd></div>\n";
}

void vFactsWrite(const SchemaCounts& counts, std::size_t unreadRules, Html& html) {
    html << "<dl class=\"facts\">\n";
    vFactWrite("Abstract entities", counts.entitiesAbstract, html);
    vFactWrite("Entities without a supertype", counts.roots, html);
    vFactWrite("Deepest inheritance", counts.depth, html);
    vFactWrite("Attributes", counts.attributes, html);
    vFactWrite("of which optional", counts.attributesOptional, html);
    vFactWrite("Inverse attributes", counts.attributesInverse, html);
    vFactWrite("Derived attributes", counts.attributesDerived, html);
    vFactWrite("UNIQUE rules", counts.uniqueRules, html);
    vFactWrite("WHERE rules", counts.whereRules + unreadRules, html);
    if (unreadRules > 0)
        vFactWrite("of which could not be read", unreadRules, html);
    html << "</dl>\n";
}

/// What could not be read is on no page, so that a site without a word of it would look complete.
void vErrorsWrite(const SiteModel& model, Html& html) {
    const auto count = model.countSchemaErrors();
    if (count == 0)
        return;
    html << "<p><span class=\"badge error\">incomplete</span> The schema has " << count
         << (count == 1 ? Markup(" error") : Markup(" errors"))
         << ", so pages may lack what its file declares. <code>kivifc schema</code> lists "
         << (count == 1 ? Markup("it") : Markup("them")) << ".</p>\n";
}

} // namespace

void vStartPageWrite(const SiteModel& model, SiteFolder& folder) {
    Page page(model.getTitle(), {.title = model.getTitle(), .kind = "", .crumbs = {}});
    auto& html = page.body();
    const auto counts = schemaCounts(model.getSchemaFile(), model.getTree());
    html << "<p class=\"lead\">The schema <code>" << escaped(sShort(model.getSchema().getName())) << "</code>"
         << (model.getSets().empty() ? Markup("") : Markup(" with its property and quantity sets"))
         << ".</p>\n";
    vErrorsWrite(model, html);
    vFiguresWrite(model, counts, html);
    vSectionBegin(html, "entries", "Where to begin");
    vCardsWrite(model, html);
    vSectionEnd(html);
    vSectionBegin(html, "schema", "The schema in figures");
    vFactsWrite(counts, model.getDeclarations().countUnreadRules(), html);
    vSectionEnd(html);
    folder.vWrite(StartPage, page.takeText());
}

} // namespace kiv::kivifc::site
