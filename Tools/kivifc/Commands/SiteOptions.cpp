#include "kivifc/Commands/SiteOptions.h"

#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/SchemaWithSets.h"

#include <fmt/format.h>

namespace kiv::kivifc {

void SiteOptions::vAdd(CLI::App& app) {
    const Options options(app);
    options.text(
        "FILE", schemaPath,
        "The schema file; left out when KIVIFC_SCHEMA or kivifc.toml names it, and then recognised by its "
        "extension .exp");
    options.texts("SETS", sets, SetsDescription);
    options.text("--out", folder, "The folder to write to; it is made if missing").valueName("DIR");
    options.text("--title", title, "What the site is called; by default the schema's name").valueName("TEXT");
    options.flag("--force", isForced,
                 "Replace a folder that is no site of kivifc, or has other files in it, which are gone then");
    options.text("--config-file", projectPath_, "Read the options from this file instead of kivifc.toml")
        .valueName("FILE");
}

bool SiteOptions::boComplete(Diagnostics& diagnostics) {
    if (!boProjectRead(projectPath_, diagnostics, [&](const ProjectFile& project, const ProjectEntry& entry) {
            return sEntryTake(project, entry);
        }))
        return false;
    input_.vComplete(schemaPath, sets);
    if (schemaPath.empty())
        diagnostics.vFail("command line", "FILE, the schema, is required; see kivifc site --help");
    else if (folder.empty())
        diagnostics.vFail("command line",
                          "--out DIR, the folder to write to, is required; see kivifc site --help");
    else
        return true;
    return false;
}

std::string SiteOptions::sEntryTake(const ProjectFile& project, const ProjectEntry& entry) {
    if (entry.section == "site")
        return sSiteEntryTake(project, entry);
    // What is neither is for `check`, which refuses what it does not know.
    return ProjectInput::isNamedBy(entry) ? input_.sEntryTake(project, entry) : "";
}

std::string SiteOptions::sSiteEntryTake(const ProjectFile& project, const ProjectEntry& entry) {
    if (entry.values.size() != 1)
        return fmt::format("\"{}\" needs one value", entry.key);
    const auto& value = entry.values.front();
    if (entry.key == "out")
        folder = folder.empty() ? project.sPath(value) : folder;
    else if (entry.key == "title")
        title = title.empty() ? value : title;
    else
        return fmt::format("no key of [site] is named \"{}\"; there are out and title", entry.key);
    return {};
}

} // namespace kiv::kivifc
