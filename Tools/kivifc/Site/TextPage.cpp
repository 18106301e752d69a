#include "kivifc/Site/TextPage.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/UsesHtml.h"

#include <string>

namespace kiv::kivifc::site {

namespace {

using namespace ifc::def::schema;

/// The lines that the library read, for what is not found in the file.
std::string sBody(const BodyObject& object) {
    std::string text;
    for (const auto line : object.getBodyLines())
        text.append(line).append("\n");
    return text;
}

void vPageWrite(const SiteModel& model, const BodyObject& object, const PageHead& head, SiteFolder& folder) {
    Page page(model.getTitle(), head);
    auto& html = page.body();
    vSectionBegin(html, "text", "Text");
    html << "<pre class=\"express\"><code>";
    const auto declared = model.getDeclarations().textOf(object);
    vExpressWrite(model, {.pDeclared = &object}, declared.empty() ? sBody(object) : std::string(declared),
                  html);
    html << "</code></pre>\n";
    vSectionEnd(html);
    vUsesWrite(model, object, html);
    folder.vWrite(model.getAddresses().of(object), page.takeText());
}

} // namespace

void vFunctionPagesWrite(const SiteModel& model, SiteFolder& folder) {
    for (const auto* function : model.getFunctions()) {
        const PageHead head{
            .title = function->getName(), .kind = "Function", .crumbs = {{"Functions", FunctionsPage}}};
        vPageWrite(model, *function, head, folder);
    }
}

void vRulePagesWrite(const SiteModel& model, SiteFolder& folder) {
    for (const auto* rule : model.getRules()) {
        const PageHead head{.title = rule->getName(), .kind = "Rule", .crumbs = {{"Rules", RulesPage}}};
        vPageWrite(model, *rule, head, folder);
    }
}

} // namespace kiv::kivifc::site
