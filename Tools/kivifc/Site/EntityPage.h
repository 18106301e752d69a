/// @file
/// The pages of entities: place in the tree, attributes, rules, sets that apply, who refers to it.
///
///     vEntityPagesWrite(model, folder); // IfcWall.html and so on
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vEntityPagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
