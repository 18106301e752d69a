/// @file
/// The index of properties and quantities by name: what one name is in each set that has it, side by side.
///
///     vPropertyIndexPagesWrite(model, folder);
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vPropertyIndexPagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
