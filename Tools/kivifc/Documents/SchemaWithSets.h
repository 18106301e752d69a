/// @file
/// Room Documents: the files that kivifc reads and writes, and the terms that they use.
///
/// A schema together with the sets of a command line, each under its context.
///
///     if (const auto loaded = schemaWithSetsRead("IFC4.exp", {"Sets", "office=Office"}, diagnostics))
///         use(*loaded->schema.schema);
///
/// Ownership: the sets belong to the registry of the process and stay until its end.
/// Threads:   one thread at a time.
/// Errors:    what cannot be read, is refused or has a name that is taken is reported; the rest is used.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"
#include "kivifc/Documents/SchemaFile.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc {

/// How help texts explain SETS.
inline constexpr const char* SetsDescription =
    "Set documents and folders of *.xml, which become the standard sets of the schema; - is standard input, "
    "NAME=PATH makes them the sets of the context NAME";

/// A set that was read but left out: refused, or with a name that is taken.
struct UnusedSet {
    ifc::def::SchemaPset::Context context;
    std::string path;
    std::string reason;
    /// The bytes of the document, which cannot be read again when they came from a pipe.
    std::string text;
};

struct SchemaWithSets {
    SchemaFile schema;
    /// The document of each set.
    std::unordered_map<const ifc::def::xml::SetDef*, std::string> paths;
    /// In the order of contexts and documents.
    std::vector<UnusedSet> unusedSets;
    /// What a document is called where its place on the disk is of no use: the last part of the path that was
    /// given and what comes below it, "Sets/Pset_Wall.xml" of "/home/ann/Sets" or "Sets"; of a document that
    /// was given itself, its file name.
    std::unordered_map<std::string, std::string> documentNames = {};
};

/// The paths of the sets of one context.
struct ContextPaths {
    ifc::def::SchemaPset::Context context;
    std::vector<std::string> paths;
};

/// The contexts that are meant by arguments such as "Sets" and "office=Sets", in their order.
std::vector<ContextPaths> contextPaths(const std::string& schemaName, const std::vector<std::string>& sets,
                                       Diagnostics& diagnostics);

/// Whether an argument means sets: a path that exists, or NAME=PATH.
bool isSetsArgument(const std::string& argument);

/// Reads the schema and the sets, checks the sets and registers them. Absent when there is no schema.
std::optional<SchemaWithSets> schemaWithSetsRead(const std::string& schemaPath,
                                                 const std::vector<std::string>& sets,
                                                 Diagnostics& diagnostics);

/// "IFC4 (standard)" or "office (host)".
std::string sContext(const ifc::def::SchemaPset::Context& context);

} // namespace kiv::kivifc
