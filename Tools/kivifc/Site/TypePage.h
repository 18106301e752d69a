/// @file
/// The pages of defined types: enumerations, selects, aggregates and simple types.
///
///     vTypePagesWrite(model, folder); // IfcLabel.html and so on
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vTypePagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
