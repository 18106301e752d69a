/// @file
/// What indexes are made of: letters to go to, and the groups of names under them.
///
///     const auto groups = letterGroups(entities, [](const auto* entity) { return entity->getName(); });
///     vLettersWrite(groups, html);
///     for (const auto& [letter, entitiesOfLetter] : groups)
///         vLetterWrite(letter, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/NameGroups.h"
#include "kivifc/Site/SiteModel.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

/// What is under each letter.
template <typename Item>
using LetterGroups = std::map<std::string, std::vector<Item>>;

/// The items by the letters of their names, sorted.
template <typename Item, typename NameOf>
LetterGroups<Item> letterGroups(std::vector<Item> items, NameOf nameOf) {
    std::vector<std::string_view> names;
    names.reserve(items.size());
    for (const auto& item : items)
        names.emplace_back(nameOf(item));
    const auto word = sCommonWord(names);
    vIndexSort(items, nameOf);
    LetterGroups<Item> groups;
    for (auto& item : items)
        groups[sLetterOf(nameOf(item), word)].push_back(std::move(item));
    return groups;
}

/// The links to the letters of the same page.
template <typename Item>
void vLettersWrite(const LetterGroups<Item>& groups, Html& html) {
    html << "<nav class=\"letters\" aria-label=\"Letters\">\n";
    for (const auto& [letter, items] : groups)
        html << "<a" << idHref("letter-" + letter) << ">" << escaped(letter) << "</a>\n";
    html << "</nav>\n";
}

/// The heading that the link to a letter leads to; no row has an id with a hyphen.
void vLetterWrite(const std::string& letter, Html& html);

/// The link to a part of an index, on the page of the index or of any part.
void vPartLinkWrite(Html& html, const Address& address, std::string_view text, bool isHere);

/// After the name of a set: that it is not used, and its context, unless that is the standard one. Sets of
/// two contexts may have one name.
void vContextBadgeWrite(const SiteSet& set, Html& html);

/// After the name of a set that a search by name does not find: the context whose set it finds instead.
void vHiddenBadgeWrite(const SiteSet& set, Html& html);

/// A part of a file name: that of the letter.
std::string_view letterPart(std::string_view letter);

} // namespace kiv::kivifc::site
