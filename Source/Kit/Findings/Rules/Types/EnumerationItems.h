/// @file
/// The items of enumerations, and the constants that describe them.
///
/// Private to the kit.
///
///     EnumerationItems items(run);
///     items.vItemsCheck(member);     // the enumeration has the item "NEW" twice
///     items.vConstantsCheck(member); // the constant "NEWER" is no item of the enumeration
///
/// Ownership: refers to the run.
/// Threads:   one thread for each run.
/// Errors:    std::bad_alloc.
#pragma once

#include "Kit/Findings/RuleRun.h"
#include "Kit/Text/NameKeys.h"

#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kit {

class EnumerationItems {
public:
    explicit EnumerationItems(RuleRun& run) : run_(run), xml_(run.xml) {}

    void vItemsCheck(const MemberOutline& member);
    void vConstantsCheck(const MemberOutline& member);

private:
    /// The items of an enumeration by their names, whatever their letter case is.
    using KnownItems =
        std::pmr::unordered_map<std::string_view, XmlIndex, HashIgnoringCase, SameIgnoringCase>;
    /// The same without characters that are found in names as such, in upper case.
    using ItemsByName = std::pmr::unordered_map<std::string, std::string_view>;
    /// The first "Name" of each constant, by its text.
    using NamesOfConstants = std::pmr::unordered_map<std::string_view, XmlIndex>;

    void vItemCheck(XmlIndex child, KnownItems& known);
    bool boHasLostItem(const std::vector<XmlIndex>& lists) const;
    std::vector<XmlIndex> strangeConstants(const std::vector<XmlIndex>& lists, const ItemsByName& items);
    bool boIsStrange(XmlIndex child, const ItemsByName& items, NamesOfConstants& known);
    void vStrangerAdd(XmlIndex nameElement, const ItemsByName& items);

    RuleRun& run_;
    const XmlPositions& xml_;
};

} // namespace kiv::kit
