/// A schema together with the sets of a command line, each under its context.
///
///     if (const auto store = storeRead("IFC4.exp", {"Sets", "office=Office"}, diagnostics))
///         use(*store->schema.schema);
///
/// Ownership: the sets belong to the registry of the process and stay until its end.
/// Threads:   one thread at a time.
/// Errors:    what cannot be read, is refused or is there already is told, and the rest is used.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kivifc/Json.h"
#include "kivifc/SchemaFile.h"

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc {

/// How help texts explain SETS.
inline constexpr const char* SetsDescription =
    "Set documents and folders of *.xml, which become the standard sets of the schema; NAME=PATH makes them "
    "the sets of the context NAME";

struct Store {
    SchemaFile schema;
    /// The document of each set.
    std::unordered_map<const ifc::def::xml::SetDef*, std::string> paths;
    /// How many sets were read and not taken: they were refused, or others of their names came first.
    std::size_t setsUnused = 0;
};

/// Whether an argument stands for sets: a path that exists, or NAME=PATH.
bool isSetsArgument(const std::string& argument);

/// Reads the schema and the sets, checks the sets and registers them. Absent when there is no schema.
std::optional<Store> storeRead(const std::string& schemaPath, const std::vector<std::string>& sets,
                               Diagnostics& diagnostics);

/// "IFC4 (standard)" or "office (host)".
std::string sContext(const ifc::def::SchemaPset::Context& context);

/// Name and whether it is standard.
Json contextJson(const ifc::def::SchemaPset::Context& context);

} // namespace kiv::kivifc
