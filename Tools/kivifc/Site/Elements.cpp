#include "kivifc/Site/Elements.h"

#include "kivifc/Program/AsciiText.h"
#include "kivifc/Program/CodePoints.h"

#include <cstddef>
#include <string>

namespace kiv::kivifc::site {

std::string sShort(std::string_view text, std::size_t whole) {
    if (text.size() <= whole)
        return std::string(text);
    const auto end = characterBegin(text, whole - whole / 5);
    return std::string(text.substr(0, end)) + "...";
}

std::string sLinkText(std::string_view name) {
    return ascii::trimmed(name, " \t\r\n").empty() ? "(no name)" : sShort(name);
}

void vSectionBegin(Html& html, Markup id, Markup title) {
    html << "<section" << attribute("id", id.getView()) << ">\n<h2>" << title << "</h2>\n";
}

void vSectionBegin(Html& html, Markup id, Markup title, std::size_t count) {
    html << "<section" << attribute("id", id.getView()) << ">\n<h2>" << title << " <span class=\"count\">"
         << count << "</span></h2>\n";
}

void vSectionEnd(Html& html) {
    html << "</section>\n";
}

void vTableBegin(Html& html, std::string_view label, std::initializer_list<Markup> columns) {
    html << "<table class=\"rows\"";
    if (!label.empty())
        html << attribute("aria-label", sShort(label));
    html << ">\n<thead><tr>";
    // In a row of headings alone, each is that of its column without saying so.
    for (const auto& column : columns)
        html << "<th>" << column << "</th>";
    html << "</tr></thead>\n<tbody>\n";
}

void vTableEnd(Html& html) {
    html << "</tbody></table>\n";
}

void vRowLinkWrite(Html& html, std::string_view name) {
    html << "<a class=\"anchor\"" << rowHref(name) << attribute("aria-label", "Link to " + sShort(name))
         << ">#</a>";
}

void vRowLinkWrite(Html& html, const RowId& id, std::string_view name) {
    vIdLinkWrite(html, id.getText(), name);
}

void vIdLinkWrite(Html& html, std::string_view id, std::string_view name) {
    html << "<a class=\"anchor\"" << idHref(id) << attribute("aria-label", "Link to " + sShort(name))
         << ">#</a>";
}

void vNameLinkWrite(Html& html, const Address& address, std::string_view name) {
    html << "<a" << href(address) << "><code>" << escaped(sLinkText(name)) << "</code></a>";
}

void vBareLinkWrite(Html& html, const Address& address, std::string_view name) {
    html << "<a" << href(address) << ">" << escaped(sLinkText(name)) << "</a>";
}

} // namespace kiv::kivifc::site
