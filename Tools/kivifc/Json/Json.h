/// @file
/// Room Json: schemas, sets and expressions written for programs to read.
///
/// The JSON that kivifc writes: members in the order in which they were added, laid out to be read.
///
///     Json json = {{"name", "IFC4"}, {"entities", 776}};
///     vJsonWrite(json, output);
#pragma once

#include "kiv/Host/Assert/KivAssert.h"
#include "kivifc/Json/JsonWriter.h"
#include "kivifc/Program/Output.h"

#include <nlohmann/json.hpp>
#include <vector>

namespace kiv::kivifc {

using Json = nlohmann::ordered_json;

/// Writes the value and a line end. Objects and arrays that fit on a line are on one; of larger ones each
/// member has its own. Bytes that are not UTF-8 are replaced by U+FFFD.
void vJsonWrite(const Json& value, Output& output);

/// Writes the value as the next one of a larger document.
void vJsonWrite(const Json& value, JsonWriter& writer);

/// Assertion reports, in order.
Json assertionsJson(const std::vector<assert::AssertRecord>& records);

} // namespace kiv::kivifc
