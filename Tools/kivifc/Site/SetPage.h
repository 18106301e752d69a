/// @file
/// The page of a set: what it applies to, its members with all that the document says, where it comes from
/// and what is wrong with it.
///
///     vSetPagesWrite(model, folder);
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vSetPagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
