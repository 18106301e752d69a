#include "kivifc/Site/LanguageIndexPages.h"

#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/NameGroups.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/RowIds.h"
#include "kivifc/Site/Translations.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

namespace {

namespace pset = ifc::def::pset;
using ifc::def::xml::Aliases;

constexpr PageName LanguagePages("languages");
/// A language with fewer names is on the page of all languages, so that there are no more pages than names
/// are worth.
constexpr std::size_t NamesOfPage = 50;

/// A name in another language.
struct TranslatedName {
    std::string_view text;
    /// What it means: the name of a member, or an item of it.
    std::string_view name;
    const SiteSet* set;
    /// That of the member.
    Address address;
};

struct Language {
    /// As the first document that has it writes it.
    std::string tag;
    std::vector<TranslatedName> names;
    std::size_t definitions = 0;

    bool hasPage() const { return names.size() >= NamesOfPage; }
};

/// A part of a file name; the tags of two languages differ in more than "-" and "_".
std::string sPart(const Language& language) {
    auto part = language.tag;
    std::ranges::replace(part, '-', '_');
    return part;
}

/// All translations by language, whatever the case of its letters.
class LanguageTable {
public:
    explicit LanguageTable(const SiteModel& model) : model_(model) {
        for (const auto& set : model.getSets())
            vSetAdd(set);
        for (auto& [key, language] : languages_)
            vSort(language.names);
    }

    const std::map<std::string, Language>& get() const { return languages_; }

private:
    /// By what they mean, and then by themselves.
    static void vSort(std::vector<TranslatedName>& names) {
        vIndexSort(names, [](const TranslatedName& each) { return each.name; });
        vIndexSort(names, [](const TranslatedName& each) { return each.text; });
    }

    void vSetAdd(const SiteSet& set) {
        vDefinitionsAdd(set.set->getDefinitionAliases());
        const auto page = model_.getAddresses().of(*set.set);
        for (const auto& member : memberList(*set.set)) {
            const auto& def = *member.def;
            const auto address = page.row(member.row);
            vNamesAdd(def.getNameAliases(), {{}, def.getName(), &set, address});
            vDefinitionsAdd(def.getDefinitionAliases());
            const auto* property = dynamic_cast<const pset::PropertyDef*>(&def);
            const auto* items =
                property ? dynamic_cast<const pset::TypePropertyEnumeratedValue*>(property->pType())
                         : nullptr;
            if (items)
                vItemsAdd(*items, {{}, {}, &set, address});
        }
    }

    void vItemsAdd(const pset::TypePropertyEnumeratedValue& type, TranslatedName name) {
        for (const auto& constant : type.getConstants()) {
            name.name = constant.getName();
            vNamesAdd(constant.getNameAliases(), name);
            vDefinitionsAdd(constant.getDefinitionAliases());
        }
    }

    void vNamesAdd(const Aliases& aliases, TranslatedName name) {
        for (const auto& entry : aliases.getEntries()) {
            name.text = entry.text;
            languageOf(entry).names.push_back(name);
        }
    }

    void vDefinitionsAdd(const Aliases& aliases) {
        for (const auto& entry : aliases.getEntries())
            ++languageOf(entry).definitions;
    }

    Language& languageOf(const Aliases::Entry& entry) {
        auto tag = entry.locale.getCombined();
        auto& language = languages_[ascii::sLowerCase(tag)];
        if (language.tag.empty())
            language.tag = std::move(tag);
        return language;
    }

    const SiteModel& model_;
    std::map<std::string, Language> languages_;
};

void vTagWrite(const Language& language, Html& html) {
    html << "<code>" << escaped(sShort(language.tag)) << "</code>";
}

/// What distinguishes a row from all others of its page, whatever else is there: a name may have several
/// meanings, and languages with few names are on one page.
std::string sRow(const Language& language, const TranslatedName& name) {
    std::string row = language.hasPage() ? std::string() : language.tag + '/';
    return row.append(name.text).append("/").append(name.name);
}

/// A set with a member of that name.
void vSetItemWrite(const TranslatedName& name, Html& html) {
    html << "<li><a" << href(name.address) << ">" << escaped(sLinkText(name.set->set->getName())) << "</a>";
    vContextBadgeWrite(*name.set, html);
    html << "</li>\n";
}

/// One name and what it means, with the members that have it.
void vNameWrite(std::span<const TranslatedName> same, const RowId& id, const std::string& tag, Html& html) {
    const auto& name = same.front();
    html << "<tr" << attribute("id", id.getText()) << "><th scope=\"row\"";
    if (!tag.empty())
        html << attribute("lang", tag);
    html << ">";
    vRowLinkWrite(html, id, name.text);
    html << escaped(sShort(name.text)) << "</th><td><code>" << escaped(sShort(name.name))
         << "</code></td><td><ul class=\"links\">\n";
    for (const auto& each : same)
        vSetItemWrite(each, html);
    html << "</ul></td></tr>\n";
}

void vNamesWrite(const Language& language, RowIds& ids, Html& html) {
    vTableBegin(html, "Names in " + sShort(language.tag), {"Name", "Means", "Sets"});
    const auto tag = sLanguageTag(language.tag);
    for (auto rest = std::span(language.names); !rest.empty();) {
        const auto end = std::ranges::find_if(rest, [&](const TranslatedName& each) {
            return each.text != rest.front().text || each.name != rest.front().name;
        });
        const auto count = static_cast<std::size_t>(std::distance(rest.begin(), end));
        vNameWrite(rest.first(count), ids.take(sRow(language, rest.front())), tag, html);
        rest = rest.subspan(count);
    }
    vTableEnd(html);
}

class LanguageIndex {
public:
    LanguageIndex(const SiteModel& model, SiteFolder& folder) :
        model_(model), folder_(folder), table_(model) {
        for (const auto& [key, language] : table_.get()) {
            if (language.hasPage())
                parts_.vAdd(LanguagePages, sPart(language));
        }
    }

    void vWrite() {
        Page page(model_.getTitle(), {.title = "Languages", .kind = "", .crumbs = {}});
        auto& html = page.body();
        if (table_.get().empty())
            html << "<p>No set is translated.</p>\n";
        else
            vLanguagesWrite(html);
        folder_.vWrite(LanguagesPage, page.takeText());
    }

private:
    void vLanguagesWrite(Html& html) {
        html << "<p class=\"lead\">" << table_.get().size()
             << (table_.get().size() == 1 ? Markup(" language") : Markup(" languages"))
             << " besides that of the documents.</p>\n";
        vTableBegin(html, "Languages", {"Language", "Names", "Definitions"});
        for (const auto& [key, language] : table_.get())
            vLanguageWrite(language, html);
        vTableEnd(html);
        for (const auto& [key, language] : table_.get()) {
            if (language.hasPage())
                vPageWrite(language);
            else if (!language.names.empty())
                vSectionWrite(language, html);
        }
    }

    void vLanguageWrite(const Language& language, Html& html) {
        const auto id = ids_.take(language.tag);
        html << "<tr" << attribute("id", id.getText()) << "><th scope=\"row\">";
        vRowLinkWrite(html, id, language.tag);
        if (language.hasPage())
            html << "<a" << href(parts_.of(LanguagePages, sPart(language))) << ">";
        else if (!language.names.empty())
            html << "<a" << idHref(sSectionId(language)) << ">";
        vTagWrite(language, html);
        html << (language.names.empty() ? Markup("") : Markup("</a>")) << "</th><td>" << language.names.size()
             << "</td><td>" << language.definitions << "</td></tr>\n";
    }

    /// Unlike that of any row.
    static std::string sSectionId(const Language& language) { return "names-" + sAnchor(language.tag); }

    void vSectionWrite(const Language& language, Html& html) {
        const auto id = sSectionId(language);
        html << "<section" << attribute("id", id) << ">\n<h2>Names in ";
        vTagWrite(language, html);
        html << " <span class=\"count\">" << language.names.size() << "</span></h2>\n";
        vNamesWrite(language, ids_, html);
        vSectionEnd(html);
    }

    void vPageWrite(const Language& language) {
        const auto title = "Names in " + sShort(language.tag);
        Page page(model_.getTitle(), {.title = title, .kind = "", .crumbs = {{"Languages", LanguagesPage}}});
        RowIds ids;
        vNamesWrite(language, ids, page.body());
        folder_.vWrite(parts_.of(LanguagePages, sPart(language)), page.takeText());
    }

    const SiteModel& model_;
    SiteFolder& folder_;
    LanguageTable table_;
    Addresses parts_;
    // Of the page of all languages.
    RowIds ids_;
};

} // namespace

void vLanguageIndexPagesWrite(const SiteModel& model, SiteFolder& folder) {
    if (!model.getSets().empty())
        LanguageIndex(model, folder).vWrite();
}

} // namespace kiv::kivifc::site
