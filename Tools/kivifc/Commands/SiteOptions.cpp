#include "kivifc/Commands/SiteOptions.h"

#include "kivifc/Commands/Options.h"
#include "kivifc/Program/AsciiText.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <iterator>
#include <string_view>

namespace kiv::kivifc {

namespace {

bool isSchemaName(std::string_view path) {
    constexpr std::string_view Extension = ".exp";
    return path.size() > Extension.size() &&
           ascii::isEqualIgnoringCase(path.substr(path.size() - Extension.size()), Extension);
}

/// Empty when it is not set.
std::string sEnvironment(const char* name) {
    const auto* const value = std::getenv(name);
    return value ? value : "";
}

} // namespace

void SiteOptions::vAdd(CLI::App& app) {
    const Options options(app);
    options.text(
        "FILE", schemaPath,
        "The schema file; left out when KIVIFC_SCHEMA or kivifc.toml names it, and then recognised by its "
        "extension .exp");
    options.texts(
        "SETS", sets,
        "Set documents and folders of *.xml, which become the standard sets of the schema; NAME=PATH "
        "makes them the sets of the context NAME");
    options.text("--out", folder, "The folder to write to; it is made if missing").valueName("DIR");
    options.text("--title", title, "What the site is called; by default the schema's name").valueName("TEXT");
    options.flag("--force", isForced,
                 "Replace a folder that is no site of kivifc, or has other files in it, which are gone then");
    options.text("--config-file", projectPath_, "Read the options from this file instead of kivifc.toml")
        .valueName("FILE");
}

bool SiteOptions::boComplete(Diagnostics& diagnostics) {
    if (!boProjectRead(diagnostics))
        return false;
    vSchemaChoose();
    if (sets.empty())
        sets = projectSets_;
    if (schemaPath.empty())
        diagnostics.vFail("command line", "FILE, the schema, is required; see kivifc site --help");
    else if (folder.empty())
        diagnostics.vFail("command line",
                          "--out DIR, the folder to write to, is required; see kivifc site --help");
    else
        return true;
    return false;
}

bool SiteOptions::boProjectRead(Diagnostics& diagnostics) {
    const auto path = projectPath_.empty() ? sProjectFileFind() : projectPath_;
    if (path.empty())
        return true;
    std::string failure;
    const auto project = projectFileRead(path, failure);
    if (!project) {
        diagnostics.vFail(path, failure);
        return false;
    }
    return std::ranges::all_of(project->entries, [&](const ProjectEntry& entry) {
        const auto reason = sEntryTake(*project, entry);
        if (reason.empty())
            return true;
        diagnostics.vFail(entry.line == 0 ? path : fmt::format("{}:{}", path, entry.line), reason);
        return false;
    });
}

std::string SiteOptions::sEntryTake(const ProjectFile& project, const ProjectEntry& entry) {
    if (entry.section == "site")
        return sSiteEntryTake(project, entry);
    if (entry.section == "contexts") {
        for (const auto& value : entry.values)
            projectSets_.push_back(entry.key + '=' + project.sPath(value));
    }
    if (!entry.section.empty())
        return {};
    if (entry.key == "schema" && !entry.values.empty())
        projectSchema_ = project.sPath(entry.values.front());
    if (entry.key == "sets") {
        std::vector<std::string> paths;
        std::ranges::transform(entry.values, std::back_inserter(paths),
                               [&](const auto& value) { return project.sPath(value); });
        projectSets_.insert(projectSets_.begin(), paths.begin(), paths.end());
    }
    return {};
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

void SiteOptions::vSchemaChoose() {
    auto other = sEnvironment("KIVIFC_SCHEMA");
    if (other.empty())
        other = projectSchema_;
    if (other.empty() || isSchemaName(schemaPath))
        return;
    if (!schemaPath.empty())
        sets.insert(sets.begin(), schemaPath);
    schemaPath = other;
}

} // namespace kiv::kivifc
