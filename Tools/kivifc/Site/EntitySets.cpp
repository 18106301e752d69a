#include "kivifc/Site/EntitySets.h"

#include "kiv/Kit/Documents/SetMembers.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/EntityAttributes.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/SetMembers.h"

#include <cstddef>
#include <span>

namespace kiv::kivifc::site {

namespace {

using ifc::def::schema::Entity;

/// Sets with their members on one page; more are named alone, up to a number as well.
constexpr std::size_t SetsWithMembersMax = 100;
constexpr std::size_t SetsMax = 400;

class EntitySets {
public:
    EntitySets(const SiteModel& model, const Entity& entity, Html& html) :
        model_(model), entity_(entity), html_(html), line_(nearestOf(entity)) {}

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
        for (const auto* each : line_) {
            for (const auto& group : model_.setsOf(*each))
                count += group.sets.size();
        }
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
        for (const auto& group : model_.setsOf(each)) {
            vPredefinedTypesWrite(group);
            vSetsWrite(group.sets);
        }
    }

    void vPredefinedTypesWrite(const AppliedSets& group) {
        if (group.predefinedTypes.empty())
            return;
        html_ << "<h4>Predefined type ";
        Markup separator = "";
        for (const auto& type : group.predefinedTypes) {
            html_ << separator << "<code>" << escaped(sShort(type)) << "</code>";
            separator = ", ";
        }
        html_ << "</h4>\n";
    }

    void vUnrestrictedWrite() {
        if (model_.getUnrestrictedSets().empty())
            return;
        html_ << "<h3>Of every entity</h3>\n";
        vSetsWrite(model_.getUnrestrictedSets());
    }

    void vSetsWrite(std::span<const SiteSet* const> sets) {
        for (const auto* set : sets) {
            if (written_ >= SetsMax)
                return;
            vSetWrite(*set, written_++ < SetsWithMembersMax);
        }
    }

    void vSetWrite(const SiteSet& set, bool hasMembers) {
        const auto& name = set.set->getName();
        const auto address = model_.getAddresses().of(*set.set);
        if (!hasMembers) {
            html_ << "<p>";
            vNameLinkWrite(html_, address, name);
            html_ << "</p>\n";
            return;
        }
        html_ << "<details class=\"set\"><summary><bdi>" << escaped(sShort(name))
              << "</bdi> <span class=\"count\">" << kit::setMembers(*set.set).size() << "</span>";
        if (!set.context.isStandard)
            html_ << " <span class=\"badge\">" << escaped(sShort(set.context.name)) << "</span>";
        html_ << "</summary>\n<p><a" << href(address) << ">Page of the set</a> <bdi>"
              << escaped(sShort(set.set->getDefinition())) << "</bdi></p>\n";
        vSetMembersWrite(model_, set, MembersDetail::Short, html_);
        html_ << "</details>\n";
    }

    const SiteModel& model_;
    const Entity& entity_;
    Html& html_;
    std::vector<const Entity*> line_;
    std::size_t written_ = 0;
};

} // namespace

void vEntitySetsWrite(const SiteModel& model, const Entity& entity, Html& html) {
    EntitySets(model, entity, html).vWrite();
}

} // namespace kiv::kivifc::site
