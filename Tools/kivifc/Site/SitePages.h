/// @file
/// All pages of a site, one kind after the other.
///
///     vSitePagesWrite(model, folder);
///
/// To add a kind of page, write `NAME.cpp` with a function `void vNAMEWrite(const SiteModel&, SiteFolder&)`,
/// declare that function in `NAME.h`, and give it a row in SitePages.cpp.
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vSitePagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
