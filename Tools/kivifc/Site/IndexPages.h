/// @file
/// The index pages that every site has, as they are listed.
///
///     for (const auto& index : IndexPages)
///         html << "<a" << href(index.page) << ">" << index.title << "</a>";
#pragma once

#include "kivifc/Site/Addresses.h"
#include "kivifc/Site/Html.h"

#include <array>

namespace kiv::kivifc::site {

struct IndexPage {
    PageName page;
    Markup title;
};

inline constexpr std::array IndexPages{IndexPage{EntitiesPage, "Entities as a tree"},
                                       IndexPage{EntitiesByLetterPage, "Entities by letter"},
                                       IndexPage{TypesPage, "Types"},
                                       IndexPage{FunctionsPage, "Functions"},
                                       IndexPage{RulesPage, "Rules"},
                                       IndexPage{SetsPage, "Sets by class and by prefix"},
                                       IndexPage{PropertiesPage, "Properties by name"},
                                       IndexPage{LanguagesPage, "Languages"},
                                       IndexPage{GuidsPage, "GUIDs"}};

} // namespace kiv::kivifc::site
