#include "kivifc/Site/PropertyIndexPages.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/MemberTable.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RowIds.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

namespace {

constexpr PageName PropertyPages("properties");
/// More names than that are on pages of their own, a letter each.
constexpr std::size_t NamesMax = 500;

std::string_view propertyNameOf(const NamedMembers* named) {
    return named->name;
}

void vPlacesWrite(const TypedMembers& typed, Html& html) {
    html << "<ul class=\"links\">\n";
    for (const auto& [set, address] : typed.places) {
        html << "<li><a" << href(address) << ">" << escaped(sLinkText(set->set->getName())) << "</a>";
        vContextBadgeWrite(*set, html);
        html << "</li>\n";
    }
    html << "</ul>";
}

/// Beside all types of the name.
void vNameCellWrite(const NamedMembers& named, Html& html) {
    html << "<th scope=\"row\"";
    if (named.hasDifferences())
        html << attribute("rowspan", static_cast<long long>(named.types.size()));
    html << ">";
    vRowLinkWrite(html, named.name);
    html << "<code>" << escaped(sShort(named.name)) << "</code>";
    if (named.hasDifferences())
        html << " <span class=\"badge differs\">types differ</span>";
    html << "</th>";
}

void vTypeCellBegin(bool isDifferent, Html& html) {
    html << "<td";
    if (isDifferent)
        html << attribute("class", "differs");
    html << ">";
}

void vTypeWrite(const TypedMembers& typed, bool isDifferent, Html& html) {
    html << typed.kind << "</td>";
    vTypeCellBegin(isDifferent, html);
    html << typed.type << "</td><td>";
    vPlacesWrite(typed, html);
    html << "</td></tr>\n";
}

/// Its row has no cell of the name, which is beside all types.
void vFurtherTypeBegin(const RowId& id, std::string_view name, Html& html) {
    html << "<tr" << attribute("id", id.getText()) << ">";
    vTypeCellBegin(true, html);
    vRowLinkWrite(html, id, name);
}

void vNameWrite(const NamedMembers& named, Html& html) {
    RowIds ids;
    html << "<tr" << attribute("id", ids.take(named.name).getText()) << ">";
    vNameCellWrite(named, html);
    vTypeCellBegin(named.hasDifferences(), html);
    vTypeWrite(named.types.front(), named.hasDifferences(), html);
    for (const auto& typed : std::span(named.types).subspan(1)) {
        vFurtherTypeBegin(ids.take(named.name), named.name, html);
        vTypeWrite(typed, true, html);
    }
}

void vTableWrite(const std::string& letter, const std::vector<const NamedMembers*>& names, Html& html) {
    vTableBegin(html, "Properties and quantities: " + letter, {"Name", "Kind", "Type and values", "Sets"});
    for (const auto* named : names)
        vNameWrite(*named, html);
    vTableEnd(html);
}

class PropertyIndex {
public:
    PropertyIndex(const SiteModel& model, SiteFolder& folder) :
        model_(model),
        folder_(folder),
        table_(model),
        names_(table_.getNames()),
        groups_(letterGroups(names_, propertyNameOf)) {
        for (const auto& [letter, names] : groups_)
            parts_.vAdd(PropertyPages, letterPart(letter));
    }

    void vWrite() {
        Page page(model_.getTitle(), {.title = "Properties by name", .kind = "", .crumbs = {}});
        vLeadWrite(page.body());
        if (names_.empty()) {
            page.body() << "<p>No set has any.</p>\n";
        } else if (names_.size() <= NamesMax) {
            vLettersWrite(groups_, page.body());
            vGroupsWrite(page.body());
        } else {
            vPartsWrite(page.body());
            vDifferencesWrite(page.body());
        }
        folder_.vWrite(PropertiesPage, page.takeText());
    }

private:
    void vLeadWrite(Html& html) const {
        html << "<p class=\"lead\">" << names_.size()
             << " names of properties and quantities, each with its types and the sets that have it.</p>\n";
    }

    void vGroupsWrite(Html& html) const {
        for (const auto& [letter, names] : groups_) {
            vLetterWrite(letter, html);
            vTableWrite(letter, names, html);
        }
    }

    /// Links to the pages of the letters, and these pages.
    void vPartsWrite(Html& html) {
        vPartLinksWrite("", html);
        for (const auto& [letter, names] : groups_)
            vPartWrite(letter, names);
    }

    /// `here` is the letter of the page that they are on; empty for none.
    void vPartLinksWrite(std::string_view here, Html& html) const {
        html << "<nav class=\"letters\" aria-label=\"Letters\">\n";
        for (const auto& [letter, names] : groups_)
            vPartLinkWrite(html, parts_.of(PropertyPages, letterPart(letter)), letter, letter == here);
        html << "</nav>\n";
    }

    void vPartWrite(const std::string& letter, const std::vector<const NamedMembers*>& names) {
        const auto title = "Properties: " + letter;
        Page page(model_.getTitle(),
                  {.title = title, .kind = "", .crumbs = {{"Properties by name", PropertiesPage}}});
        vPartLinksWrite(letter, page.body());
        vTableWrite(letter, names, page.body());
        folder_.vWrite(parts_.of(PropertyPages, letterPart(letter)), page.takeText());
    }

    /// What one looks for across letters.
    void vDifferencesWrite(Html& html) const {
        vSectionBegin(html, "differences", "Names with different types");
        html << "<p class=\"note\">Each with the number of its types.</p>\n<ul class=\"names\">\n";
        for (const auto& [letter, names] : groups_) {
            for (const auto* named : names) {
                if (!named->hasDifferences())
                    continue;
                html << "<li>";
                vNameLinkWrite(html, parts_.of(PropertyPages, letterPart(letter)).row(named->name),
                               named->name);
                html << " <span class=\"count\">" << named->types.size() << "</span></li>\n";
            }
        }
        html << "</ul>\n";
        vSectionEnd(html);
    }

    const SiteModel& model_;
    SiteFolder& folder_;
    MemberTable table_;
    std::vector<const NamedMembers*> names_;
    LetterGroups<const NamedMembers*> groups_;
    Addresses parts_;
};

} // namespace

void vPropertyIndexPagesWrite(const SiteModel& model, SiteFolder& folder) {
    if (!model.getSets().empty())
        PropertyIndex(model, folder).vWrite();
}

} // namespace kiv::kivifc::site
