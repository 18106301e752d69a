/// @file
/// Expression trees written back as EXPRESS text.
///
///     sExpression(*rule.expression) // "SIZEOF(QUERY(u <* Units | u.Factor <= 0.0)) = 0"
///
/// Parentheses are written where the tree needs them and nowhere else, so that the text reads to the same
/// tree. OR and || are one operator in the tree and written as OR.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include <string>

namespace kiv::kivifc {

std::string sExpression(const ifc::def::schema::Expression& expression);

} // namespace kiv::kivifc
