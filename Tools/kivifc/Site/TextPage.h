/// @file
/// The pages of functions and rules: their text as the schema has it, and who calls them.
///
///     vFunctionPagesWrite(model, folder); // IfcDotProduct.html and so on
///     vRulePagesWrite(model, folder);     // IfcSingleProjectInstance.html and so on
///
/// Ownership: nothing is kept.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what cannot be written is a failure of the folder.
#pragma once

#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"

namespace kiv::kivifc::site {

void vFunctionPagesWrite(const SiteModel& model, SiteFolder& folder);
void vRulePagesWrite(const SiteModel& model, SiteFolder& folder);

} // namespace kiv::kivifc::site
