/// @file
/// Types as pages show them: as written, with what a name means one step further.
///
///     vTypeTextWrite(model, attribute, html); // IfcLabel = STRING(255)
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

/// The type of an attribute, and what the type that it names, or is an aggregate of, is made of.
void vTypeTextWrite(const SiteModel& model, const ifc::def::schema::AttributeBase& attribute, Html& html);

/// What a defined type is made of, one step: all items or members, unless there are more than any real type
/// has; then the beginning, and a link to the page of the type that says how many more there are.
void vUnderlyingWrite(const SiteModel& model, const ifc::def::schema::Type& type, Html& html);

} // namespace kiv::kivifc::site
