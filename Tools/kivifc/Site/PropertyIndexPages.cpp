#include "kivifc/Site/PropertyIndexPages.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/MemberType.h"
#include "kivifc/Site/Page.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

constexpr PageName PartPrefix("properties");
/// More names than that are on pages of their own, a letter each.
constexpr std::size_t NamesMax = 500;

/// The members of one name that have one type.
struct TypedMembers {
    Markup kind;
    /// As it is shown.
    Html type;
    /// The sets, and the row of the member on the page of each.
    std::vector<std::pair<const SiteSet*, Address>> places;
};

/// The members of one name.
struct NamedMembers {
    std::string_view name;
    std::vector<TypedMembers> types;

    bool hasDifferences() const { return types.size() > 1; }
};

std::string_view nameOf(const NamedMembers* named) {
    return named->name;
}

/// All members by name and type.
class MemberTable {
public:
    explicit MemberTable(const SiteModel& model) : model_(model) {
        for (const auto& set : model.getSets()) {
            for (const auto& member : memberList(*set.set))
                vAdd(set, member);
        }
    }

    std::vector<const NamedMembers*> getNames() const {
        std::vector<const NamedMembers*> names;
        for (const auto& named : names_)
            names.push_back(&named);
        return names;
    }

private:
    void vAdd(const SiteSet& set, const ListedMember& member) {
        const std::string_view name = member.def->getName();
        const auto [found, isNew] = numbers_.try_emplace(name, names_.size());
        if (isNew)
            names_.push_back({name, {}});
        auto& typed = typedOf(found->second, *member.def);
        typed.places.emplace_back(&set, model_.getAddresses().of(*set.set).row(member.row));
    }

    /// Types are the same when what is shown of them is.
    TypedMembers& typedOf(std::size_t number, const ifc::def::xml::Def& def) {
        auto& types = names_[number].types;
        const auto kind = memberKind(def);
        Html type("");
        vMemberTypeWrite(model_, def, {}, type);
        const auto key = std::string(kind.getView()) + type.getText();
        const auto [found, isNew] = typeNumbers_[number].try_emplace(key, types.size());
        if (isNew)
            types.push_back({kind, std::move(type), {}});
        return types[found->second];
    }

    const SiteModel& model_;
    std::vector<NamedMembers> names_;
    std::unordered_map<std::string_view, std::size_t> numbers_;
    std::unordered_map<std::size_t, std::unordered_map<std::string, std::size_t>> typeNumbers_;
};

void vPlacesWrite(const TypedMembers& typed, Html& html) {
    html << "<ul class=\"links\">\n";
    for (const auto& [set, address] : typed.places) {
        html << "<li><a" << href(address) << ">" << escaped(sShort(set->set->getName())) << "</a>";
        vContextBadgeWrite(*set, html);
        html << "</li>\n";
    }
    html << "</ul>";
}

void vNameWrite(const NamedMembers& named, Html& html) {
    bool isFirst = true;
    for (const auto& typed : named.types) {
        html << "<tr";
        if (isFirst) {
            html << attribute("id", sAnchor(named.name)) << "><th scope=\"row\"";
            if (named.hasDifferences())
                html << attribute("rowspan", static_cast<long long>(named.types.size()));
            html << ">";
            vRowLinkWrite(html, named.name);
            html << "<code>" << escaped(sShort(named.name)) << "</code>";
            if (named.hasDifferences())
                html << " <span class=\"badge differs\">types differ</span>";
            html << "</th";
        }
        html << "><td";
        if (named.hasDifferences())
            html << attribute("class", "differs");
        html << ">" << typed.kind << "</td><td";
        if (named.hasDifferences())
            html << attribute("class", "differs");
        html << ">" << typed.type << "</td><td>";
        vPlacesWrite(typed, html);
        html << "</td></tr>\n";
        isFirst = false;
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
        groups_(letterGroups(names_, nameOf)) {
        for (const auto& [letter, names] : groups_)
            parts_.vAdd(PartPrefix, letterPart(letter));
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
             << " names of properties and quantities, each with what it is in the sets that have it.</p>\n";
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
            vPartLinkWrite(html, parts_.of(PartPrefix, letterPart(letter)), letter, letter == here);
        html << "</nav>\n";
    }

    void vPartWrite(const std::string& letter, const std::vector<const NamedMembers*>& names) {
        const auto title = "Properties: " + letter;
        Page page(model_.getTitle(),
                  {.title = title, .kind = "", .crumbs = {{"Properties by name", PropertiesPage}}});
        vPartLinksWrite(letter, page.body());
        vTableWrite(letter, names, page.body());
        folder_.vWrite(parts_.of(PartPrefix, letterPart(letter)), page.takeText());
    }

    /// What one looks for across letters.
    void vDifferencesWrite(Html& html) const {
        vSectionBegin(html, "differences", "Names with different types");
        html << "<ul class=\"names\">\n";
        for (const auto& [letter, names] : groups_) {
            for (const auto* named : names) {
                if (!named->hasDifferences())
                    continue;
                html << "<li>";
                vNameLinkWrite(html, parts_.of(PartPrefix, letterPart(letter)).row(named->name), named->name);
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
    PropertyIndex(model, folder).vWrite();
}

} // namespace kiv::kivifc::site
