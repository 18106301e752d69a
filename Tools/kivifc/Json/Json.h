/// @file
/// Room Json: schemas, sets and expressions written for programs to read.
///
/// The JSON that kivifc writes: members in the order in which they were added, laid out to be read.
///
///     Json json = {{"name", "IFC4"}, {"entities", 776}};
///     vJsonWrite(json, output);
///
/// Ownership: values; a writer refers to its output.
/// Threads:   one thread for each output.
/// Errors:    std::bad_alloc; what cannot be written is known to the output.
#pragma once

#include "kiv/Kit/Documents/Assertion.h"
#include "kivifc/Json/JsonWriter.h"
#include "kivifc/Program/Output.h"

#include <functional>
#include <nlohmann/json.hpp>

namespace kiv::kivifc {

using Json = nlohmann::ordered_json;

/// Writes the value and a line end. Objects and arrays that fit on a line are on one; of larger ones each
/// member has its own. Bytes that are not UTF-8 are replaced by U+FFFD.
void vJsonWrite(const Json& value, Output& output);

/// The value as part of what is being written: for values of which there may be many, one after another.
void vJsonWrite(const Json& value, JsonWriter& writer);

/// Writes what `write` writes, laid out in the same way, as it goes.
void vJsonWrite(Output& output, const std::function<void(JsonWriter&)>& write);

/// The members of an assertion report.
void vAssertionMembersWrite(const kit::Assertion& record, JsonWriter& writer);

} // namespace kiv::kivifc
