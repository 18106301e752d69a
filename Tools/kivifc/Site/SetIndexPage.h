/// @file
/// The index of sets: by the class that they apply to, and by what their names begin with.
///
///     vSetIndexPageWrite(model, folder);
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vSetIndexPageWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
