/// @file
/// Where an entity is in the tree of entities, as an SVG drawing whose boxes are links: its line of
/// supertypes, one below the other, the entity itself, and the entities below it.
///
///     vDiagramWrite(model, wall, html);
///
/// A row for each entity, indented by its depth, so that a wide tree grows downwards, where pages have room.
/// Levels below are shown as long as they fit; how many there are more is said beside the box.
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vDiagramWrite(const SiteModel& model, const ifc::def::schema::Entity& entity, Html& html);

} // namespace kiv::kivifc::site
