/// @file
/// A whole schema as JSON: every object in the order of the text with all its fields, references by name.
///
///     vJsonWrite(schemaJson(file), output);
///
/// What can be worked out from the rest is left out: the indexes over objects, attributes and items, the
/// upper-cased names and hashes of data types. So is the time, so that equal files make equal texts.
#pragma once

#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Json/Json.h"

namespace kiv::kivifc {

Json schemaJson(const SchemaFile& file);

} // namespace kiv::kivifc
