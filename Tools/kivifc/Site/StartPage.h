/// @file
/// The start page: what a schema and its sets hold, in numbers, and the ways to it.
///
///     vStartPageWrite(model, folder); // index.html
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vStartPageWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
