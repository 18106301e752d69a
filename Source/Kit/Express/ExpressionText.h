/// @file
/// Expression trees written back as EXPRESS text.
///
///     sExpression(*rule.expression) // "SIZEOF(QUERY(u <* Units | u.Factor <= 0.0)) = 0"
///
/// Parentheses are written where the tree needs them and nowhere else, so that the text reads to the same
/// tree. OR and || are one operator in the tree and written as OR.
///
/// Ownership: values.
/// Threads:   any number of threads.
/// Errors:    std::bad_alloc. Chains may be of any length; the stack that other nesting takes is limited by
///            the nesting that the parser of rules allows.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"

#include <string>

namespace kiv::kit {

KIV_EXPORT std::string sExpression(const ifc::def::schema::Expression& expression);

} // namespace kiv::kit
