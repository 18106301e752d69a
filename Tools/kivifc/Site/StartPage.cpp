#include "kivifc/Site/StartPage.h"

#include "kivifc/Pictures/SchemaSummary.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/Page.h"

#include <array>
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

struct Card {
    PageName page;
    Markup title;
    Markup text;
};

void vCardWrite(const Card& card, Html& html) {
    html << "<li><a" << href(Address(card.page)) << "><strong>" << card.title << "</strong><span>"
         << card.text << "</span></a></li>\n";
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

constexpr std::array Cards{
    Card{EntitiesPage, "Entities as a tree", "Each entity below its supertype"},
    Card{EntitiesByLetterPage, "Entities by letter", "When the name is known"},
    Card{TypesPage, "Types", "Enumerations, selects, simple types and aggregates"},
    Card{FunctionsPage, "Functions", "The text of each, and who calls it"},
    Card{RulesPage, "Rules", "What holds for all instances of an entity together"},
    Card{SetsPage, "Sets", "Property and quantity sets by class and by prefix"},
    Card{PropertiesPage, "Properties by name", "One name in all sets that have it, side by side"},
    Card{LanguagesPage, "Languages", "What is translated, and what a translated name means"},
    Card{GuidsPage, "GUIDs", "Which set or member a GUID belongs to"}};

void vCardsWrite(Html& html) {
    html << "<ul class=\"cards\">\n";
    for (const auto& card : Cards)
        vCardWrite(card, html);
    html << "</ul>\n";
}

void vFactWrite(Markup name, std::size_t count, Html& html) {
    html << "<div><dt>" << name << "</dt><dd>" << count << "</dd></div>\n";
}

void vFactsWrite(const SchemaCounts& counts, Html& html) {
    html << "<dl class=\"facts\">\n";
    vFactWrite("Abstract entities", counts.entitiesAbstract, html);
    vFactWrite("Entities without a supertype", counts.roots, html);
    vFactWrite("Deepest inheritance", counts.depth, html);
    vFactWrite("Attributes", counts.attributes, html);
    vFactWrite("of which optional", counts.attributesOptional, html);
    vFactWrite("Inverse attributes", counts.attributesInverse, html);
    vFactWrite("Derived attributes", counts.attributesDerived, html);
    vFactWrite("UNIQUE rules", counts.uniqueRules, html);
    vFactWrite("WHERE rules", counts.whereRules, html);
    html << "</dl>\n";
}

} // namespace

void vStartPageWrite(const SiteModel& model, SiteFolder& folder) {
    Page page(model.getTitle(), {.title = model.getTitle(), .kind = "", .crumbs = {}});
    auto& html = page.body();
    const auto counts = schemaCounts(model.getSchemaFile(), model.getTree());
    html << "<p class=\"lead\">The schema <code>" << escaped(sShort(model.getSchema().getName())) << "</code>"
         << (model.getSets().empty() ? Markup("") : Markup(" with its property and quantity sets"))
         << ".</p>\n";
    vFiguresWrite(model, counts, html);
    vSectionBegin(html, "entries", "Where to begin");
    vCardsWrite(html);
    vSectionEnd(html);
    vSectionBegin(html, "schema", "The schema in figures");
    vFactsWrite(counts, html);
    vSectionEnd(html);
    folder.vWrite(StartPage, page.takeText());
}

} // namespace kiv::kivifc::site
