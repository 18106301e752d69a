/// @file
/// A whole schema as JSON: every object in the order of the text with all its fields, references by name.
///
///     vSchemaJsonWrite(file, output);
///
/// It is written object by object, so that it takes no memory worth counting beside the schema.
///
/// What can be worked out from the rest is left out: the indexes over objects, attributes and items, the
/// upper-cased names and hashes of data types. So is the time, so that equal files make equal texts.
///
/// Threads:   one thread for each output.
/// Errors:    std::bad_alloc; what cannot be written is known to the output.
#pragma once

#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Program/Output.h"

namespace kiv::kivifc {

void vSchemaJsonWrite(const SchemaFile& file, Output& output);

} // namespace kiv::kivifc
