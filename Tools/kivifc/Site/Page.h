/// @file
/// What all pages of a site have in common: head, search box, breadcrumb, title and end.
///
///     Page page(model.getTitle(),
///               {.title = wall.getName(), .kind = "Entity", .crumbs = {{"Entities", EntitiesPage}}});
///     page.body() << "<p>" << escaped(text) << "</p>";
///     folder.vWrite(addresses.of(wall), page.takeText());
///
/// Ownership: refers to nothing.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

/// A step of the way from the start page to a page.
struct Crumb {
    std::string_view label;
    Address address;
};

struct PageHead {
    std::string_view title;
    /// "Entity" and so on; empty for an index.
    Markup kind = "";
    /// Without the start page and the page itself.
    std::vector<Crumb> crumbs;
    /// Whether the page is in a folder below the top, as those of sets are.
    bool isBelowTop = false;
};

class Page {
public:
    Page(std::string_view siteTitle, const PageHead& head);

    Html& body() { return html_; }

    /// The whole page; there is nothing to be added after it.
    std::string takeText();

private:
    void vHeadWrite(std::string_view siteTitle, const PageHead& head);
    void vBarWrite(std::string_view siteTitle);
    void vCrumbsWrite(std::string_view siteTitle, const PageHead& head);

    Html html_;
};

} // namespace kiv::kivifc::site
