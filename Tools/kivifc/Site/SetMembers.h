/// @file
/// The members of a set as a table, as the pages of sets and of entities show them.
///
///     vSetMembersWrite(model, *set, MembersDetail::Short, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"
#include "kivifc/Site/WrittenGuids.h"

#include <cstddef>
#include <cstdint>

namespace kiv::kivifc::site {

enum class MembersDetail : std::uint8_t {
    /// Name, type, unit and values: for the pages of what is below the entity that the set names, which are
    /// most of what a site takes on disk.
    Brief,
    /// The same with definitions: what is asked on the page of that entity. Both have `ShortMembersMax` rows
    /// at most, beyond which the page of the set is referred to.
    Short,
    /// All that the document says, with the rows to be pointed at.
    Full,
};

/// Sets have some ten members; what is longer is an exception, or made to fill disks.
inline constexpr std::size_t ShortMembersMax = 200;
/// Of a definition, in bytes, where it is not full; the page of the set has all of it.
inline constexpr std::size_t ShortDefinitionMax = 200;

void vSetMembersWrite(const SiteModel& model, const SiteSet& set, MembersDetail detail, Html& html);

/// All of them, with what the document has where a GUID should be.
void vFullMembersWrite(const SiteModel& model, const SiteSet& set, const WrittenGuids& written, Html& html);

} // namespace kiv::kivifc::site
