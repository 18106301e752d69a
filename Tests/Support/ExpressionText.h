/// Expression trees as text, for comparisons: every operator in parentheses, so that the text shows the tree.
///
///     sExpressionText(*rule.expression) // "((a + (b * c)) >= 1)"
///
/// What the text adds to the notation of EXPRESS: an enumeration value is Type::Value, to distinguish it from
/// an attribute a.b; a double always has a '.' or an exponent, to distinguish it from an integer.
///
/// Threads: a free function without state.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include <string>

namespace kiv::test {

/// Chains that grow to the left may be of any length; all other nesting costs stack.
std::string sExpressionText(const ifc::def::schema::Expression& expression);

} // namespace kiv::test
