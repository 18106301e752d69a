/// @file
/// WHERE rules, laid out for reading: what is joined by AND is a line each, wherever it is, names are links.
///
///     const auto ruleIds = ruleIdsTake(wall.pWhere(), ids);
///     vWhereWrite(model, {.pSelf = &wall}, wall.pWhere(), ruleIds, html);
///
/// Ownership: nothing is kept.
/// Threads:   any number of threads, each with its own page.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"
#include "kivifc/Site/Elements.h"
#include "kivifc/Site/ExpressHtml.h"
#include "kivifc/Site/RowIds.h"

#include <vector>

namespace kiv::kivifc::site {

/// An id for each rule of a clause, which null has none of. A page asks for them before those of what it
/// shows of others, so that links from elsewhere find the rules.
std::vector<RowId> ruleIdsTake(const ifc::def::schema::Where* where, RowIds& ids);

/// A section with a row for each rule; nothing for a clause without rules, or null.
void vWhereWrite(const SiteModel& model, const ExpressScope& scope, const ifc::def::schema::Where* where,
                 const std::vector<RowId>& ids, Html& html);

/// Of the rules of an entity or a type that could not be read; they come after those that could.
std::vector<RowId> unreadRuleIdsTake(const SiteModel& model, const ifc::def::schema::ObjectBase& owner,
                                     RowIds& ids);

/// The rules of an entity or a type that could not be read, as their text; nothing when there are none.
void vUnreadRulesWrite(const SiteModel& model, const ExpressScope& scope,
                       const ifc::def::schema::ObjectBase& owner, const std::vector<RowId>& ids, Html& html);

/// One expression.
void vExpressionWrite(const SiteModel& model, const ExpressScope& scope,
                      const ifc::def::schema::Expression& expression, Html& html);

} // namespace kiv::kivifc::site
