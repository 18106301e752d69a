/// @file
/// The schema and the set documents of a command that need not be given, as kivifc.toml can name them.
///
///     ProjectInput input;
///     if (boProjectRead(path, diagnostics, [&](const ProjectFile& project, const ProjectEntry& entry) {
///             return ProjectInput::isNamedBy(entry) ? input.sEntryTake(project, entry) : "";
///         }))
///         input.vComplete(schemaPath, setPaths);
///
/// Ownership: values.
/// Threads:   one thread at a time.
/// Errors:    the reason in words, or a failure.
#pragma once

#include "kivifc/Documents/ProjectFile.h"
#include "kivifc/Program/Diagnostics.h"

#include <functional>
#include <string>
#include <vector>

namespace kiv::kivifc {

class ProjectInput {
public:
    /// Whether it names the schema, set documents or those of a context.
    static bool isNamedBy(const ProjectEntry& entry);

    /// Keeps what such an entry names. Why that cannot be used; empty when it can.
    std::string sEntryTake(const ProjectFile& project, const ProjectEntry& entry);

    /// Adds what the command line leaves out. KIVIFC_SCHEMA comes before the schema of the file; the first
    /// argument is the schema when it ends in .exp or there is no other.
    void vComplete(std::string& schemaPath, std::vector<std::string>& setPaths) const;

private:
    void vSchemaChoose(std::string& schemaPath, std::vector<std::string>& setPaths) const;

    std::string schemaPath_;
    std::vector<std::string> setPaths_;
};

/// Why an entry that is to name a path, or several, names none; empty when it does.
std::string sPathFailure(const ProjectEntry& entry);

/// Reads the file at `path`, or when that is empty the nearest kivifc.toml, if there is one, and hands its
/// entries on until one of them cannot be used, for the reason that is returned. Whether all can be used.
bool boProjectRead(
    const std::string& path, Diagnostics& diagnostics,
    const std::function<std::string(const ProjectFile& project, const ProjectEntry& entry)>& sEntryTake);

} // namespace kiv::kivifc
