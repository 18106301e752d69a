/// @file
/// The index of GUIDs: which set or member has one, and which GUIDs are there more than once.
///
///     vGuidIndexPagesWrite(model, folder);
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vGuidIndexPagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
