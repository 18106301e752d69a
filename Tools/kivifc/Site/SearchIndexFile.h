/// @file
/// The index of the search as a file of a site: all that people may look for, and where it is.
///
///     vSearchIndexWrite(model, folder); // assets/search-index.js
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vSearchIndexWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
