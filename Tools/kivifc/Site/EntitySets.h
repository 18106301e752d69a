/// @file
/// The sets that apply to an entity, with their members, as a section of its page: those that name the
/// entity, then those of its supertypes, each by predefined type.
///
///     vEntitySetsWrite(model, wall, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

/// Nothing when no set applies.
void vEntitySetsWrite(const SiteModel& model, const ifc::def::schema::Entity& entity, Html& html);

} // namespace kiv::kivifc::site
