/// @file
/// What `site` is asked for: the command line, then kivifc.toml, for what the former does not say.
///
///     SiteOptions options;
///     options.vAdd(app);
///     app.parse(argc, argv);
///     if (options.boComplete(diagnostics))
///         use(options.schemaPath, options.sets, options.folder);
///
/// Ownership: values; the parser refers to them until the parsing is done.
/// Threads:   one thread.
/// Errors:    what is wrong with the file, or missing, is a failure.
#pragma once

#include "kivifc/Documents/ProjectInput.h"
#include "kivifc/Program/Diagnostics.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kiv::kivifc {

class SiteOptions {
public:
    void vAdd(CLI::App& app);

    /// Adds what the environment and kivifc.toml say, where the command line says nothing.
    bool boComplete(Diagnostics& diagnostics);

    /// What --config-file names; empty when kivifc.toml is looked for, from the current folder upwards.
    const std::string& getProjectPath() const { return projectPath_; }

    std::string schemaPath;
    /// Set documents and folders, and NAME=PATH.
    std::vector<std::string> sets;
    std::string folder;
    /// Empty for the name of the schema.
    std::string title;
    bool isForced = false;

private:
    /// Why the entry cannot be used; empty when it was, or is for another command.
    std::string sEntryTake(const ProjectFile& project, const ProjectEntry& entry);
    std::string sSiteEntryTake(const ProjectFile& project, const ProjectEntry& entry);

    std::string projectPath_;
    ProjectInput input_;
};

} // namespace kiv::kivifc
