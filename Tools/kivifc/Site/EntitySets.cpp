#include "kivifc/Site/EntitySets.h"

#include "kiv/Kit/Documents/SetMembers.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EntityAttributes.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/SetClasses.h"
#include "kivifc/Site/Translations.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <set>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

namespace {

using ifc::def::schema::Entity;

/// Rows of members on one page; further sets are named alone, up to a number as well. What applies to an
/// entity is there again on the page of each one below it.
constexpr std::size_t MembersMax = 1500;
constexpr std::size_t SetsMax = 400;
/// The same of what is inherited: the sets of one entity are on the pages of thousands of others.
constexpr std::size_t InheritedMembersMax = 500;
constexpr std::size_t InheritedSetsMax = 100;
constexpr std::size_t PredefinedTypesMax = 20;

/// What can still be written.
struct Room {
    MembersDetail detail;
    std::size_t members;
    std::size_t sets;
};

/// The address of a set on the pages of entities: the name of its file, which two contexts do not share. Rows
/// have no hyphen.
std::string sSetId(const SiteModel& model, const SiteSet& set) {
    auto name = model.getAddresses().of(*set.set).getPath();
    name.remove_prefix(name.rfind('/') + 1);
    return "set-" + std::string(name.substr(0, name.rfind('.')));
}

class EntitySets {
public:
    EntitySets(const SiteModel& model, const Entity& entity, EntitySetParts& parts, Html& html) :
        model_(model), entity_(entity), parts_(parts), html_(html), line_(nearestOf(entity)) {}

    void vWrite() {
        const auto count = countOf();
        if (count == 0)
            return;
        vBegin(count);
        for (const auto* each : line_) {
            if (!model_.setsOf(*each).empty())
                vEntityWrite(*each);
        }
        vUnrestrictedWrite();
        if (written_ < count)
            html_ << "<p>" << count - written_ << " more: <a" << href(Address(SetsPage))
                  << ">all sets</a>.</p>\n";
        vSectionEnd(html_);
    }

private:
    std::size_t countOf() const {
        auto count = model_.getUnrestrictedSets().size();
        for (const auto* each : line_)
            count += model_.setCountOf(*each);
        return count;
    }

    /// Rows have no translations, which would be there on page after page: a script takes names from the
    /// index of the search and definitions from a file of them when a reader has chosen a language.
    void vBegin(std::size_t count) {
        html_ << "<section id=\"sets\"";
        if (!parts_.getLanguages().empty())
            html_ << attribute("data-languages", parts_.getLanguages());
        html_ << ">\n<h2>Property and quantity sets <span class=\"count\">" << count << "</span></h2>\n";
    }

    void vEntityWrite(const Entity& each) {
        if (&each != &entity_) {
            html_ << "<h3>From ";
            vObjectLinkWrite(model_, each, html_);
            html_ << "</h3>\n";
        } else {
            html_ << "<h3>Of this entity</h3>\n";
        }
        auto& room = &each == &entity_ ? own_ : inherited_;
        for (const auto& group : model_.setsOf(each)) {
            // There may be as many groups as sets.
            if (room.sets == 0)
                return;
            vPredefinedTypesWrite(each, group);
            vSetsWrite(group.sets, room);
        }
    }

    void vPredefinedTypesWrite(const Entity& each, const AppliedSets& group) {
        if (group.predefinedTypes.empty())
            return;
        const auto& types = group.predefinedTypes;
        html_ << (types.size() == 1 ? Markup("<h4>Predefined type ") : Markup("<h4>Predefined types "));
        for (std::size_t index = 0; index < std::min(types.size(), PredefinedTypesMax); ++index) {
            html_ << (index == 0 ? Markup("") : Markup(", "));
            vPredefinedTypeWrite(model_, each, types[index], html_);
        }
        if (types.size() > PredefinedTypesMax)
            html_ << " and " << types.size() - PredefinedTypesMax << " more";
        html_ << "</h4>\n";
    }

    void vUnrestrictedWrite() {
        if (model_.getUnrestrictedSets().empty())
            return;
        html_ << "<h3>Of every entity</h3>\n";
        vSetsWrite(model_.getUnrestrictedSets(), inherited_);
    }

    void vSetsWrite(std::span<const SiteSet* const> sets, Room& room) {
        for (const auto* set : sets) {
            if (room.sets == 0)
                return;
            --room.sets;
            ++written_;
            vSetWrite(*set, room);
        }
    }

    void vSetWrite(const SiteSet& set, Room& room) {
        const auto& part = parts_.of(set, room.detail);
        if (part.rows > room.members) {
            html_ << "<p";
            vIdWrite(set);
            html_ << ">";
            vNameLinkWrite(html_, model_.getAddresses().of(*set.set), set.set->getName());
            vHiddenBadgeWrite(set, html_);
            html_ << "</p>\n";
            return;
        }
        room.members -= part.rows;
        html_ << "<details class=\"set\"";
        vIdWrite(set);
        html_ << ">" << part.html;
    }

    /// A set that names the entity and a supertype of it is there twice, and the first has the address.
    void vIdWrite(const SiteSet& set) {
        if (addressed_.insert(&set).second)
            html_ << attribute("id", sSetId(model_, set));
    }

    const SiteModel& model_;
    const Entity& entity_;
    EntitySetParts& parts_;
    Html& html_;
    std::vector<const Entity*> line_;
    std::size_t written_ = 0;
    std::unordered_set<const SiteSet*> addressed_;
    Room own_{MembersDetail::Short, MembersMax, SetsMax};
    Room inherited_{MembersDetail::Brief, InheritedMembersMax, InheritedSetsMax};
};

/// What is within the `details` of a set, which is closed until it is asked for.
Html setHtml(const SiteModel& model, const SiteSet& set, MembersDetail detail) {
    Html html("");
    html << "<summary><bdi>" << escaped(sShort(set.set->getName())) << "</bdi> <span class=\"count\">"
         << kit::setMembers(*set.set).size() << "</span>";
    vContextBadgeWrite(set, html);
    html << "</summary>\n<p><a" << href(model.getAddresses().of(*set.set)) << ">Page of the set</a>";
    vIdLinkWrite(html, sSetId(model, set), set.set->getName());
    html << " <bdi>" << escaped(sShort(set.set->getDefinition(), SetDefinitionMax)) << "</bdi></p>\n";
    vSetMembersWrite(model, set, detail, html);
    html << "</details>\n";
    return html;
}

/// What names and definitions are translated into. A language with a tag that browsers do not know is on the
/// pages of its sets.
std::string sLanguages(const SiteModel& model) {
    constexpr std::size_t LanguagesMax = 40;
    std::set<std::string> tags;
    const auto add = [&](const ifc::def::xml::Aliases& aliases) {
        for (const auto& entry : aliases.getEntries()) {
            if (auto tag = sLanguageTag(entry.locale.getCombined());
                !tag.empty() && tags.size() < LanguagesMax)
                tags.insert(std::move(tag));
        }
    };
    for (const auto& set : model.getSets()) {
        add(set.set->getDefinitionAliases());
        for (const auto& member : memberList(*set.set)) {
            add(member.def->getNameAliases());
            add(member.def->getDefinitionAliases());
        }
    }
    return fmt::format("{}", fmt::join(tags, " "));
}

} // namespace

EntitySetParts::EntitySetParts(const SiteModel& model) : model_(model), languages_(sLanguages(model)) {}

const EntitySetParts::Part& EntitySetParts::of(const SiteSet& set, MembersDetail detail) {
    const std::pair key(&set, detail);
    const auto found = parts_.find(key);
    if (found != parts_.end())
        return found->second;
    const auto rows = std::min(memberList(*set.set).size(), ShortMembersMax);
    return parts_.emplace(key, Part{setHtml(model_, set, detail), rows}).first->second;
}

void vEntitySetsWrite(const SiteModel& model, const Entity& entity, EntitySetParts& parts, Html& html) {
    EntitySets(model, entity, parts, html).vWrite();
}

} // namespace kiv::kivifc::site
