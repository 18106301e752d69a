#include "kivifc/Site/IndexElements.h"

#include "kivifc/Site/Elements.h"

namespace kiv::kivifc::site {

void vLetterWrite(const std::string& letter, Html& html) {
    html << "<h2" << attribute("id", "letter-" + letter) << ">" << escaped(letter) << "</h2>\n";
}

void vPartLinkWrite(Html& html, const Address& address, std::string_view text, bool isHere) {
    html << "<a" << href(address);
    if (isHere)
        html << attribute("aria-current", "page");
    html << ">" << escaped(text) << "</a>\n";
}

void vContextBadgeWrite(const SiteSet& set, Html& html) {
    if (!set.isUsed())
        html << " <span class=\"badge error\">not used</span>";
    if (!set.context.isStandard)
        html << " <span class=\"badge\">" << escaped(sShort(set.context.name)) << "</span>";
    vHiddenBadgeWrite(set, html);
}

void vHiddenBadgeWrite(const SiteSet& set, Html& html) {
    if (set.hiddenBy)
        html << " <span class=\"badge\">hidden by " << escaped(sShort(set.hidingContext)) << "</span>";
}

std::string_view letterPart(std::string_view letter) {
    return letter == "0-9" ? "digits" : letter;
}

} // namespace kiv::kivifc::site
