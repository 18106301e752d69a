/// @file
/// Schema files: opened and read, with the reason when that is not possible.
///
///     if (const auto file = schemaFileRead("IFC4.exp", diagnostics))
///         vShow(*file->schema, file->assertions);
///
/// Ownership: the file owns its schema.
/// Threads:   any number of threads may read files at once, each with diagnostics of its own.
/// Errors:    what cannot be read is a failure in `diagnostics`; std::bad_alloc passes.
#pragma once

#include "kiv/Kit/Documents/SchemaFile.h"
#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Program/Diagnostics.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace kiv::kivifc {

/// A schema that was read.
struct SchemaFile : kit::SchemaFile {
    /// From the opening of the file to the last name resolved.
    std::chrono::nanoseconds time{};
};

/// Reads a schema file. Of several schemas in one file the last is taken, and a note says so. Absent when the
/// file has none; the reason goes to `diagnostics`.
std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics);

/// The same, but `reasons` gets what is wrong with a text that has no schema, for the caller to show.
std::optional<SchemaFile> schemaFileRead(const std::string& path, Diagnostics& diagnostics,
                                         std::vector<kit::Finding>& reasons);

} // namespace kiv::kivifc
