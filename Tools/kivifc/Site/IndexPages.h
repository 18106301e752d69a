/// @file
/// The index pages of a site, as they are listed.
///
///     for (const auto& index : IndexPages) {
///         if (isOffered(model, index))
///             html << "<a" << href(index.page) << ">" << index.title << "</a> " << index.text;
///     }
#pragma once

#include "kivifc/Site/Addresses.h"
#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

#include <array>
#include <string_view>

namespace kiv::kivifc::site {

struct IndexPage {
    PageName page;
    /// Beside the other index pages.
    Markup title;
    /// What one finds there.
    Markup text;
    /// Among names of all kinds, where the title alone would say too little; empty where it says enough.
    Markup fullTitle = "";

    /// Whether it lists what sets have, so that a site without sets does not have it.
    bool isOfSets = false;

    constexpr std::string_view getFullTitle() const {
        return fullTitle.getView().empty() ? title.getView() : fullTitle.getView();
    }
};

inline constexpr std::array IndexPages{
    IndexPage{EntitiesPage, "Entities as a tree", "Each entity below its supertype"},
    IndexPage{EntitiesByLetterPage, "Entities by letter", "When the name is known"},
    IndexPage{TypesPage, "Types", "Enumerations, selects, simple types and aggregates"},
    IndexPage{FunctionsPage, "Functions", "The text of each, and who calls it"},
    IndexPage{RulesPage, "Rules", "What holds for all instances of an entity together"},
    IndexPage{SetsPage, "Sets", "Property and quantity sets by class and by prefix",
              "Sets by class and by prefix", true},
    IndexPage{PropertiesPage, "Properties by name", "One name in all sets that have it, side by side", "",
              true},
    IndexPage{LanguagesPage, "Languages", "What is translated, and what a translated name means", "", true},
    IndexPage{GuidsPage, "GUIDs", "Which set or member a GUID belongs to", "", true}};

/// Whether the site has that index.
inline bool isOffered(const SiteModel& model, const IndexPage& index) {
    return !index.isOfSets || !model.getSets().empty();
}

} // namespace kiv::kivifc::site
