/// @file
/// The JSON of an expression as a value, to be looked at.
///
///     EXPECT_EQ(expressionJson(tree).dump(), R"({"node":"IntegerValueExpression","value":7})");
#pragma once

#include "kivifc/Json/ExpressionJson.h"
#include "kivifc/Json/Json.h"

#include <string>
#include <string_view>

namespace kiv::kivifc {

/// What `vExpressionWrite` writes.
inline Json expressionJson(const ifc::def::schema::Expression& expression) {
    std::string text;
    JsonWriter writer([&](std::string_view block) { text += block; });
    vExpressionWrite(expression, writer);
    writer.vEnd();
    return Json::parse(text);
}

} // namespace kiv::kivifc
