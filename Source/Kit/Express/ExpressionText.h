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

#include <cstddef>
#include <string>
#include <vector>

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

/// What AND or OR joins, as places in the text of an expression. Chains are one join; || is none.
struct ExpressionJoin {
    ifc::def::schema::BinaryOperator op;
    /// Of the first operand.
    std::size_t begin;
    /// After the last one.
    std::size_t end;
    /// Where the word AND or OR is: once for each operand but the first.
    std::vector<std::size_t> words;
};

struct JoinedExpression {
    std::string text;
    /// In the order in which they begin; one around another comes before it.
    std::vector<ExpressionJoin> joins;
};

/// The same text, for those who show it on several lines.
KIV_EXPORT JoinedExpression joinedExpressionAs(const ifc::def::schema::Expression& expression,
                                               const ExpressionStyle& style);

/// Whether it is ||, which makes one instance of several: an operand is a call that makes an instance of an
/// entity, and no instance is an operand of OR.
KIV_EXPORT bool isInstanceJoin(const ifc::def::schema::BinaryExpression& expression,
                               const ifc::def::schema::Schema& schema);

} // namespace kiv::kit
