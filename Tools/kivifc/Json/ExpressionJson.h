/// @file
/// Expression trees as JSON.
///
///     a - b - c       {"node": "BinaryExpression", "operands": [a, b, c], "operators": ["-", "-"]}
///     SELF\X.y[1]     {"node": "GetExpression", "base": SELF,
///                      "qualifiers": [{"group": "X"}, {"attribute": "y"}, {"index": 1}]}
///
/// Each node is an object whose "node" is the name of its class. Chains that grow to the left are written
/// flat, so that the JSON nests as deep as the text does, however long its chains are. The operators of a
/// BinaryExpression are applied from left to right, ((a - b) - c), whatever they are: a * b - c is [a, b, c]
/// with ["*", "-"], and a - b * c is [a, b * c] with ["-"]. The qualifiers of a GetExpression follow one
/// another.
///
/// Threads:   one thread for each writer.
/// Errors:    std::bad_alloc; what cannot be written is known to the output.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/ExpressExpression.h"
#include "kivifc/Json/JsonWriter.h"

namespace kiv::kivifc {

void vExpressionWrite(const ifc::def::schema::Expression& expression, JsonWriter& writer);

} // namespace kiv::kivifc
