#include "kivifc/Site/SetIndexPage.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/NameGroups.h"
#include "kivifc/Site/Page.h"
#include "kivifc/Site/SetClasses.h"

#include <map>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

namespace {

struct IndexOrder {
    bool operator()(std::string_view left, std::string_view right) const {
        return isBeforeInIndex(left, right);
    }
};

/// A class and the sets that name it.
struct ClassSets {
    NamedClass named;
    std::vector<const SiteSet*> sets;
};

std::string_view setNameOf(const SiteSet* set) {
    return set->set->getName();
}

class SetIndex {
public:
    explicit SetIndex(const SiteModel& model) : model_(model) {
        for (const auto& set : model.getSets()) {
            vClassesAdd(set);
            byPrefix_[prefixOf(set.set->getName())].push_back(&set);
        }
        for (auto& [prefix, sets] : byPrefix_)
            vIndexSort(sets, setNameOf);
    }

    void vWrite(Html& html) {
        html << "<p class=\"lead\">" << model_.getSets().size()
             << " sets of properties and quantities, <a href=\"#classes\">by class</a> and <a "
                "href=\"#prefixes\">by prefix</a>.</p>\n";
        vSectionBegin(html, "classes", "By class", byClass_.size());
        vTableBegin(html, "Sets by class", {"Class", "Sets"});
        vUnrestrictedWrite(html);
        for (auto& [name, sets] : byClass_)
            vClassRowWrite(name, sets, html);
        vTableEnd(html);
        vSectionEnd(html);
        vSectionBegin(html, "prefixes", "By prefix", byPrefix_.size());
        for (const auto& [prefix, sets] : byPrefix_)
            vPrefixWrite(prefix, sets, html);
        vSectionEnd(html);
    }

private:
    void vClassesAdd(const SiteSet& set) {
        for (auto& named : namedClasses(model_.getSchema(), *set.set)) {
            auto& sets = byClass_[named.entity ? std::string_view(named.entity->getName()) : named.name];
            sets.named = named;
            // Two ways to write one class are two classes of the document.
            if (sets.sets.empty() || sets.sets.back() != &set)
                sets.sets.push_back(&set);
        }
    }

    void vClassRowWrite(std::string_view name, ClassSets& sets, Html& html) const {
        html << "<tr" << attribute("id", sAnchor(name)) << "><th scope=\"row\">";
        vRowLinkWrite(html, name);
        vClassWrite(model_, sets.named, html);
        html << "</th><td>";
        vIndexSort(sets.sets, setNameOf);
        vLinksWrite(sets.sets, html);
        html << "</td></tr>\n";
    }

    void vUnrestrictedWrite(Html& html) const {
        if (model_.getUnrestrictedSets().empty())
            return;
        constexpr std::string_view Id = "every-class";
        html << "<tr" << attribute("id", Id) << "><th scope=\"row\">";
        vIdLinkWrite(html, Id, "every class");
        html << "Every class</th><td>";
        vLinksWrite(model_.getUnrestrictedSets(), html);
        html << "</td></tr>\n";
    }

    void vPrefixWrite(std::string_view prefix, const std::vector<const SiteSet*>& sets, Html& html) const {
        const auto id = "prefix-" + sAnchor(prefix);
        html << "<h3" << attribute("id", id) << ">";
        if (prefix.empty())
            html << "Without a prefix";
        else
            html << "<code>" << escaped(prefix) << "</code>";
        html << " <span class=\"count\">" << sets.size() << "</span>";
        vIdLinkWrite(html, id, prefix.empty() ? "sets without a prefix" : prefix);
        html << "</h3>\n<ul class=\"names\">\n";
        for (const auto* set : sets)
            vItemWrite(*set, html);
        html << "</ul>\n";
    }

    void vLinksWrite(const std::vector<const SiteSet*>& sets, Html& html) const {
        html << "<ul class=\"links\">\n";
        for (const auto* set : sets)
            vItemWrite(*set, html);
        html << "</ul>";
    }

    void vItemWrite(const SiteSet& set, Html& html) const {
        html << "<li>";
        vNameLinkWrite(html, model_.getAddresses().of(*set.set), set.set->getName());
        vContextBadgeWrite(set, html);
        html << "</li>\n";
    }

    const SiteModel& model_;
    std::map<std::string_view, ClassSets, IndexOrder> byClass_;
    std::map<std::string_view, std::vector<const SiteSet*>, IndexOrder> byPrefix_;
};

} // namespace

void vSetIndexPageWrite(const SiteModel& model, SiteFolder& folder) {
    if (model.getSets().empty())
        return;
    Page page(model.getTitle(), {.title = "Sets", .kind = "", .crumbs = {}});
    SetIndex(model).vWrite(page.body());
    folder.vWrite(SetsPage, page.takeText());
}

} // namespace kiv::kivifc::site
