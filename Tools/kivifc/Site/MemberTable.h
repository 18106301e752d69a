/// @file
/// The members of all sets by name and type, so that what differs between sets can be shown side by side.
///
///     const MemberTable table(model);
///     for (const auto* named : table.getNames())
///         write(named->name, named->types.size());
///
/// Ownership: refers to the model, which must outlive it.
/// Threads:   read-only once made.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/MemberList.h"
#include "kivifc/Site/SiteModel.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv::kivifc::site {

/// The members of one name that have one type.
struct TypedMembers {
    Markup kind;
    /// As it is shown.
    Html type;
    /// The sets, and the row of the member on the page of each.
    std::vector<std::pair<const SiteSet*, Address>> places;
};

/// The members of one name.
struct NamedMembers {
    std::string_view name;
    /// At least one.
    std::vector<TypedMembers> types;

    bool hasDifferences() const { return types.size() > 1; }
};

class MemberTable {
public:
    explicit MemberTable(const SiteModel& model);

    /// In the order in which the sets have them first.
    std::vector<const NamedMembers*> getNames() const;

private:
    void vAdd(const SiteSet& set, const ListedMember& member);
    TypedMembers& typedOf(std::size_t number, const ifc::def::xml::Def& def);

    const SiteModel& model_;
    std::vector<NamedMembers> names_;
    std::unordered_map<std::string_view, std::size_t> numbers_;
    // Of each name, the number of a type by what is shown of it.
    std::vector<std::unordered_map<std::string, std::size_t>> typeNumbers_;
};

} // namespace kiv::kivifc::site
