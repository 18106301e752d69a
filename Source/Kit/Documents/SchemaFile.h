/// @file
/// Schema files: read, with the reason when that is not possible, and with what was reported on the way.
///
///     const auto file = schemaFileRead("IFC4.exp");
///     if (file.schema)
///         vUse(*file.schema);
///     else
///         vShow(file.path, file.failure->reason);
///
/// Ownership: owns the schema, its text and the texts of `assertions`, which are views: copy them where they
///            have to outlive it.
/// Threads:   several files may be read on several threads; each has the assertions of its own reading alone.
/// Errors:    a file that cannot be read has a failure. std::bad_alloc is thrown only when there is no memory
///            left for the failure either.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kiv/Kit/Documents/Assertion.h"
#include "kiv/Kit/Documents/ReadFailure.h"
#include "kiv/Kit/Documents/ReadOptions.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kiv::kit {

struct SchemaFile {
    /// As it is to be shown.
    std::string path;
    /// The bytes of the file; empty when it could not be read.
    std::string text;
    /// Why there is no schema; absent when there is one.
    std::optional<ReadFailure> failure;
    /// The last one in the file; null when there is none.
    std::unique_ptr<ifc::def::SchemaPset> schema;
    /// The names of all schemas in the file, of which the last one counts.
    std::vector<std::string> names;
    /// What was reported while `schema` was read, in order.
    std::vector<Assertion> assertions;
    /// Owns their texts.
    AssertionTexts assertionTexts;
};

/// Reads the schema file at a path.
KIV_EXPORT SchemaFile schemaFileRead(const std::string& path, const ReadOptions& options = {});

/// Reads a schema whose bytes are in memory; `path` is what the file is called.
KIV_EXPORT SchemaFile schemaTextRead(std::string text, std::string path, const ReadOptions& options = {});

} // namespace kiv::kit
