/// @file
/// WHERE rules, laid out for reading: what is joined by AND is a line each, names are links.
///
///     vWhereWrite(model, {.pSelf = &wall}, wall.pWhere(), ids, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"

namespace kiv::kivifc::site {

/// A section with a row for each rule; nothing for a clause without rules, or null.
void vWhereWrite(const SiteModel& model, const ExpressScope& scope, const ifc::def::schema::Where* where,
                 RowIds& ids, Html& html);

/// One expression.
void vExpressionWrite(const SiteModel& model, const ExpressScope& scope,
                      const ifc::def::schema::Expression& expression, Html& html);

} // namespace kiv::kivifc::site
