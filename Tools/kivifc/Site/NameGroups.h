/// @file
/// Names in groups by letter, as indexes show them. Names of a schema begin alike, as in "IfcWall" and
/// "IfcDoor", so what most of them begin with is not looked at.
///
///     const auto prefix = sCommonWord(names);              // "Ifc"
///     const auto letter = sLetterOf("IfcWall", prefix);    // "W"
///
/// Ownership: what is returned is a value or refers to the names.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc::site {

/// Whether a name comes before another one in an index: by its bytes, but for the case of ASCII letters.
bool isBeforeInIndex(std::string_view left, std::string_view right);

/// Sorts what is in an index by its names.
template <typename Items, typename NameOf>
void vIndexSort(Items& items, NameOf nameOf) {
    std::ranges::stable_sort(items, [&](const auto& left, const auto& right) {
        return isBeforeInIndex(nameOf(left), nameOf(right));
    });
}

/// The word that at least half of the names begin with and go on after, in letters of one case after the
/// first; empty when there is none.
std::string sCommonWord(const std::vector<std::string_view>& names);

/// The letter in upper case that a name is found under; "0-9" for digits, "Other" for anything else.
std::string sLetterOf(std::string_view name, std::string_view commonWord);

/// What a name begins with up to its first "_", as in "Pset_"; empty when there is none, or it is longer than
/// a prefix.
std::string_view prefixOf(std::string_view name);

} // namespace kiv::kivifc::site
