/// @file
/// Types as pages show them: as written, with what a name means one step further.
///
///     vTypeTextWrite(model, attribute, 40, html); // IfcLabel = STRING(255)
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Site/Html.h"
#include "kivifc/Site/SiteModel.h"

#include <cstddef>

namespace kiv::kivifc::site {

/// How many items or members of a type are shown where the type is not what is asked for.
inline constexpr std::size_t FewNames = 8;
/// The same where it is: nearly all enumerations have less.
inline constexpr std::size_t MostNames = 40;

/// The type of an attribute, and what the type that it names, or is an aggregate of, is made of; of a list
/// that is longer than `namesMax` the beginning, and how many more there are.
void vTypeTextWrite(const SiteModel& model, const ifc::def::schema::AttributeBase& attribute,
                    std::size_t namesMax, Html& html);

/// What a defined type is made of, one step.
void vUnderlyingWrite(const SiteModel& model, const ifc::def::schema::Type& type, std::size_t namesMax,
                      Html& html);

} // namespace kiv::kivifc::site
