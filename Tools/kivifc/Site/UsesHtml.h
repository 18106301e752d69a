/// @file
/// What refers to an object, as a section of its page.
///
///     vUsesWrite(model, label, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

/// Says so when nothing refers to it, unless nothing ever can: else a reader cannot know whether uses were
/// looked for.
void vUsesWrite(const SiteModel& model, const ifc::def::schema::ObjectBase& object, Html& html);

} // namespace kiv::kivifc::site
