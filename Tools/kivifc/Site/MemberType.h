/// @file
/// What the values of a member are: kind, data type as a link, unit, bounds, items of an enumeration.
///
///     vMemberTypeWrite(model, def, {.itemsMax = 40}, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc. A member without a type has none written.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefBase.h"
#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

#include <cstddef>
#include <limits>

namespace kiv::kivifc::site {

/// "Single value", "Area" and so on; "No known type" for a member without a type, or with one of a kind that
/// is not known.
Markup memberKind(const ifc::def::xml::Def& def);

struct MemberTypeDetail {
    /// How many items of an enumeration are shown before it is said how many more there are.
    std::size_t itemsMax = std::numeric_limits<std::size_t>::max();
    /// Whether the items have their definitions and translations.
    bool hasDefinitions = false;
    /// Whether the kind comes before the type unless the type says it, and a word is there in place of none:
    /// for rows that have no column for the kind. Their links are bare.
    bool withKind = false;
};

void vMemberTypeWrite(const SiteModel& model, const ifc::def::xml::Def& def, const MemberTypeDetail& detail,
                      Html& html);

} // namespace kiv::kivifc::site
