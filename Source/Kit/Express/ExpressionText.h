/// @file
/// Expression trees written back as EXPRESS text.
///
///     sExpression(*rule.expression) // "SIZEOF(QUERY(u <* Units | u.Factor <= 0.0)) = 0"
///
/// Parentheses are written where the tree needs them and nowhere else, so that the text reads to the same
/// tree. OR and || are one operator in the tree and written as OR.
///
///     sExpressionAs(*rule.expression, {.pSchema = &schema}) // "SELF <> A() || B()"
///
/// writes || where it joins what only || can join.
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc. Chains may be of any length; the stack that other nesting takes is limited by
///            the nesting that the parser of rules allows.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include <string>

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::kit {

KIV_EXPORT std::string sExpression(const ifc::def::schema::Expression& expression);

struct ExpressionStyle {
    /// Knows which calls make an instance of an entity; null for none.
    const ifc::def::schema::Schema* pSchema = nullptr;
    /// Writes parentheses around AND within OR and XOR too, for people who do not know which comes first.
    bool groupsAnd = false;
};

KIV_EXPORT std::string sExpressionAs(const ifc::def::schema::Expression& expression,
                                     const ExpressionStyle& style);

/// Whether it is ||, which makes one instance of several: an operand is a call that makes an instance of an
/// entity, and no instance is an operand of OR.
KIV_EXPORT bool isInstanceJoin(const ifc::def::schema::BinaryExpression& expression,
                               const ifc::def::schema::Schema& schema);

} // namespace kiv::kit
