/// @file
/// The members of a set, those within complex properties too, each with the id of its row on the page of the
/// set.
///
///     for (const auto& member : memberList(set))
///         write(addresses.of(set).row(member.row), member.def->getName());
///
/// Ownership: the members belong to the set.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kivifc/Site/Address.h"

#include <vector>

namespace kiv::kivifc::site {

struct ListedMember {
    const ifc::def::xml::Def* def = nullptr;
    RowId row;
    /// The property that it is a part of; null for a member of the set itself.
    const ifc::def::xml::Def* whole = nullptr;
};

/// In document order, the parts of a complex property after it.
std::vector<ListedMember> memberList(const ifc::def::xml::SetDef& set);

} // namespace kiv::kivifc::site
