#include "kivifc/Site/GuidIndexPages.h"

#include "kivifc/Site/Elements.h"
#include "kivifc/Site/GuidNotations.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/Page.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

constexpr PageName GuidPages("guids");
/// More than that are on pages of their own, one for each first digit.
constexpr std::size_t GuidsMax = 1000;

/// What has a GUID.
struct GuidOwner {
    Guid guid;
    const SiteSet* set;
    /// Null for the set itself.
    const ifc::def::xml::Def* member = nullptr;
    /// That of the member on the page of the set.
    std::optional<RowId> row = {};
};

using Owners = std::vector<GuidOwner>;

/// By GUID; those of one in the order of sets and members.
Owners ownersOf(const SiteModel& model) {
    Owners owners;
    for (const auto& set : model.getSets()) {
        if (!set.set->getIfdGuid().isNull())
            owners.push_back({set.set->getIfdGuid(), &set});
        for (auto& member : memberList(*set.set)) {
            const auto& guid = member.def->getIfdGuid();
            if (!guid.isNull())
                owners.push_back({guid, &set, member.def, std::move(member.row)});
        }
    }
    std::ranges::stable_sort(owners, {}, &GuidOwner::guid);
    return owners;
}

char firstDigitOf(const GuidOwner& owner) {
    return owner.guid.toString(false).front();
}

class GuidIndex {
public:
    GuidIndex(const SiteModel& model, SiteFolder& folder) :
        model_(model), folder_(folder), owners_(ownersOf(model)) {
        for (const auto& owner : owners_) {
            if (digits_.empty() || digits_.back() != firstDigitOf(owner))
                digits_ += firstDigitOf(owner);
        }
        for (const char& digit : digits_)
            parts_.vAdd(GuidPages, {&digit, 1});
    }

    void vWrite() {
        Page page(model_.getTitle(), {.title = "GUIDs", .kind = "", .crumbs = {}});
        auto& html = page.body();
        html << "<p class=\"lead\">" << owners_.size()
             << " sets, properties and quantities have a GUID, in the order of its 32 digits. The search "
                "takes it with hyphens and as 22 characters too.</p>\n";
        if (owners_.empty()) {
            html << "<p>No set has any.</p>\n";
        } else if (owners_.size() <= GuidsMax) {
            vTableWrite(owners_, html);
        } else {
            vPartsWrite(html);
            vRepeatedWrite(html);
        }
        folder_.vWrite(GuidsPage, page.takeText());
    }

private:
    /// Those that begin with one digit, as the owners are sorted.
    std::span<const GuidOwner> ownersWith(char digit) const {
        return {std::ranges::lower_bound(owners_, digit, {}, firstDigitOf),
                std::ranges::upper_bound(owners_, digit, {}, firstDigitOf)};
    }

    /// `here` is the digit of the page that they are on; empty for none.
    void vPartLinksWrite(std::string_view here, Html& html) const {
        html << "<nav class=\"letters\" aria-label=\"First digit\">\n";
        for (const char& each : digits_) {
            const std::string_view digit(&each, 1);
            vPartLinkWrite(html, parts_.of(GuidPages, digit), digit, digit == here);
        }
        html << "</nav>\n";
    }

    void vPartsWrite(Html& html) {
        vPartLinksWrite("", html);
        for (const char& digit : digits_)
            vPartWrite({&digit, 1}, ownersWith(digit));
    }

    void vPartWrite(std::string_view digit, std::span<const GuidOwner> owners) {
        const auto title = "GUIDs: " + std::string(digit);
        Page page(model_.getTitle(), {.title = title, .kind = "", .crumbs = {{"GUIDs", GuidsPage}}});
        vPartLinksWrite(digit, page.body());
        vTableWrite(owners, page.body());
        folder_.vWrite(parts_.of(GuidPages, digit), page.takeText());
    }

    /// Calls `write` with the owners of each GUID.
    template <typename Write>
    static void forEachGuid(std::span<const GuidOwner> owners, const Write& write) {
        while (!owners.empty()) {
            const auto end = std::ranges::find_if(
                owners, [&](const auto& owner) { return owner.guid != owners.front().guid; });
            const auto count = static_cast<std::size_t>(std::distance(owners.begin(), end));
            write(owners.first(count));
            owners = owners.subspan(count);
        }
    }

    void vTableWrite(std::span<const GuidOwner> owners, Html& html) const {
        vTableBegin(html, "GUIDs", {"22 characters", "With hyphens", "Set or member"});
        forEachGuid(owners, [&](std::span<const GuidOwner> same) { vRowWrite(same, html); });
        vTableEnd(html);
    }

    /// What is wrong in most cases, and otherwise lost in thousands of rows.
    void vRepeatedWrite(Html& html) const {
        Html rows("");
        forEachGuid(owners_, [&](std::span<const GuidOwner> same) {
            if (same.size() > 1)
                vRowWrite(same, rows);
        });
        if (rows.isEmpty())
            return;
        vSectionBegin(html, "repeated", "GUIDs used more than once");
        vTableBegin(html, "GUIDs used more than once", {"22 characters", "With hyphens", "Set or member"});
        html << rows;
        vTableEnd(html);
        vSectionEnd(html);
    }

    /// The 32 digits are its address, as they are safe in each.
    void vRowWrite(std::span<const GuidOwner> same, Html& html) const {
        const GuidNotations written(same.front().guid);
        html << "<tr" << attribute("id", sAnchor(written.digits)) << "><th scope=\"row\">";
        vRowLinkWrite(html, written.digits);
        html << "<code>" << escaped(written.globalId) << "</code></th><td><code>"
             << escaped(written.hyphenated) << "</code></td><td";
        if (same.size() > 1)
            html << attribute("class", "differs");
        html << ">";
        Markup separator = "";
        for (const auto& owner : same) {
            html << separator;
            vOwnerWrite(owner, html);
            separator = ", ";
        }
        html << "</td></tr>\n";
    }

    void vOwnerWrite(const GuidOwner& owner, Html& html) const {
        const auto page = model_.getAddresses().of(*owner.set->set);
        html << "<a" << href(owner.row ? page.guid(*owner.row) : page) << ">"
             << isolated(sShort(owner.set->set->getName()));
        if (owner.member)
            html << "." << isolated(sShort(owner.member->getName()));
        html << "</a>";
        vContextBadgeWrite(*owner.set, html);
    }

    const SiteModel& model_;
    SiteFolder& folder_;
    Owners owners_;
    std::string digits_;
    Addresses parts_;
};

} // namespace

void vGuidIndexPagesWrite(const SiteModel& model, SiteFolder& folder) {
    if (!model.getSets().empty())
        GuidIndex(model, folder).vWrite();
}

} // namespace kiv::kivifc::site
