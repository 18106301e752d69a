#include "kivifc/Site/Page.h"

#include "kivifc/Site/Addresses.h"
#include "kivifc/Site/Elements.h"

namespace kiv::kivifc::site {

namespace {

constexpr PageName StyleSheet("assets/site.css");

/// Nothing on a page is obeyed that did not come with the site.
constexpr Markup Policy("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                        "style-src 'self'; script-src 'self'; "
                        "img-src 'self' data:; base-uri 'none'; form-action 'none'\">\n");

/// The icon is none, so that browsers ask for none.
constexpr Markup HeadEnd("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                         "<link rel=\"icon\" href=\"data:,\">\n");

bool isStart(std::string_view siteTitle, const PageHead& head) {
    return head.crumbs.empty() && head.title == siteTitle;
}

} // namespace

Page::Page(std::string_view siteTitle, const PageHead& head) :
    html_(head.isBelowTop ? Markup("../") : Markup("")) {
    constexpr std::size_t UsualSize = std::size_t{1} << 15U;
    html_.vReserve(UsualSize);
    vHeadWrite(siteTitle, head);
    vBarWrite(siteTitle);
    vCrumbsWrite(siteTitle, head);
    html_ << "<main id=\"content\" tabindex=\"-1\">\n<h1>";
    if (!head.kind.getView().empty())
        html_ << "<span class=\"kind\">" << head.kind << "</span> ";
    html_ << isolated(head.title) << "</h1>\n";
}

void Page::vHeadWrite(std::string_view siteTitle, const PageHead& head) {
    html_ << "<!DOCTYPE html>\n<html lang=\"en\"" << attribute("data-root", html_.getRoot().getView())
          << ">\n<head>\n<meta charset=\"utf-8\">\n"
          << Policy << HeadEnd << "<title>" << escaped(sShort(head.title));
    // An object may be called as the site is; the start page is.
    if (!isStart(siteTitle, head))
        html_ << " - " << escaped(sShort(siteTitle));
    html_ << "</title>\n<link rel=\"stylesheet\"" << href(Address(StyleSheet)) << ">\n";
    // The first is obeyed before the page is drawn, so that a remembered mode is there from the beginning.
    if (head.isBelowTop)
        html_ << "<script src=\"../assets/site.js\"></script>\n"
                 "<script defer src=\"../assets/search.js\"></script>\n";
    else
        html_ << "<script src=\"assets/site.js\"></script>\n"
                 "<script defer src=\"assets/search.js\"></script>\n";
    html_ << "</head>\n<body>\n";
}

/// Search, language and mode need scripts, so site.js adds them: without it nothing is there that does
/// nothing.
void Page::vBarWrite(std::string_view siteTitle) {
    html_
        << "<a class=\"skip\" href=\"#content\">Skip to content</a>\n<header class=\"bar\"><a class=\"home\""
        << href(Address(StartPage)) << ">" << escaped(sShort(siteTitle)) << "</a></header>\n";
}

void Page::vCrumbsWrite(std::string_view siteTitle, const PageHead& head) {
    if (isStart(siteTitle, head))
        return;
    html_ << "<nav class=\"crumbs\" aria-label=\"Breadcrumb\"><ol>";
    html_ << "<li><a" << href(Address(StartPage)) << ">" << escaped(sShort(siteTitle)) << "</a></li>";
    for (const auto& crumb : head.crumbs)
        html_ << "<li><a" << href(crumb.address) << ">" << escaped(sShort(crumb.label)) << "</a></li>";
    html_ << "<li aria-current=\"page\">" << isolated(sShort(head.title)) << "</li></ol></nav>\n";
}

std::string Page::takeText() {
    html_ << "</main>\n<footer><p>Written by <code>kivifc site</code>.</p></footer>\n</body>\n</html>\n";
    return html_.takeText();
}

} // namespace kiv::kivifc::site
