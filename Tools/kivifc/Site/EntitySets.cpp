#include "kivifc/Site/EntitySets.h"

#include "kiv/Kit/Documents/SetMembers.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EntityAttributes.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/IndexElements.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/SetClasses.h"

#include <algorithm>
#include <cstddef>
#include <span>
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
/// In bytes; the page of the set has all of it.
constexpr std::size_t DefinitionMax = 300;

/// What can still be written.
struct Room {
    MembersDetail detail;
    std::size_t members;
    std::size_t sets;
};

class EntitySets {
public:
    EntitySets(const SiteModel& model, const Entity& entity, EntitySetParts& parts, Html& html) :
        model_(model), entity_(entity), parts_(parts), html_(html), line_(nearestOf(entity)) {}

    void vWrite() {
        const auto count = countOf();
        if (count == 0)
            return;
        vSectionBegin(html_, "sets", "Property and quantity sets", count);
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
        html_ << "<h4>Predefined type ";
        const auto& types = group.predefinedTypes;
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
            html_ << "<p>";
            vNameLinkWrite(html_, model_.getAddresses().of(*set.set), set.set->getName());
            vHiddenBadgeWrite(set, html_);
            html_ << "</p>\n";
            return;
        }
        room.members -= part.rows;
        html_ << part.html;
    }

    const SiteModel& model_;
    const Entity& entity_;
    EntitySetParts& parts_;
    Html& html_;
    std::vector<const Entity*> line_;
    std::size_t written_ = 0;
    Room own_{MembersDetail::Short, MembersMax, SetsMax};
    Room inherited_{MembersDetail::Brief, InheritedMembersMax, InheritedSetsMax};
};

/// Closed until it is asked for.
Html setHtml(const SiteModel& model, const SiteSet& set, MembersDetail detail) {
    Html html("");
    html << "<details class=\"set\"><summary><bdi>" << escaped(sShort(set.set->getName()))
         << "</bdi> <span class=\"count\">" << kit::setMembers(*set.set).size() << "</span>";
    vContextBadgeWrite(set, html);
    html << "</summary>\n<p><a" << href(model.getAddresses().of(*set.set)) << ">Page of the set</a> <bdi>"
         << escaped(sShort(set.set->getDefinition(), DefinitionMax)) << "</bdi></p>\n";
    vSetMembersWrite(model, set, detail, html);
    html << "</details>\n";
    return html;
}

} // namespace

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
