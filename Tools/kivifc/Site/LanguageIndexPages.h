/// @file
/// The index of languages: how much is translated into each, and the translated names with what they mean.
///
///     vLanguageIndexPagesWrite(model, folder);
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vLanguageIndexPagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
