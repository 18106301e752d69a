/// @file
/// The indexes of a schema: entities as a tree and by letter, types by kind, functions and rules.
///
///     vObjectIndexPagesWrite(model, folder);
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vObjectIndexPagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
