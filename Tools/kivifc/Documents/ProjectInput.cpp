#include "kivifc/Documents/ProjectInput.h"

#include "kivifc/Program/AsciiText.h"
#include "kivifc/Program/Environment.h"

#include <algorithm>
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

} // namespace

bool ProjectInput::isNamedBy(const ProjectEntry& entry) {
    return entry.section == "contexts" ||
           (entry.section.empty() && (entry.key == "schema" || entry.key == "sets"));
}

std::string ProjectInput::sEntryTake(const ProjectFile& project, const ProjectEntry& entry) {
    if (auto failure = sPathFailure(entry); !failure.empty())
        return failure;
    std::vector<std::string> paths;
    std::ranges::transform(entry.values, std::back_inserter(paths),
                           [&](const auto& value) { return project.sPath(value); });
    if (entry.section == "contexts") {
        for (const auto& path : paths)
            setPaths_.push_back(entry.key + '=' + path);
    } else if (entry.key == "schema") {
        schemaPath_ = paths.front();
    } else {
        setPaths_.insert(setPaths_.begin(), paths.begin(), paths.end());
    }
    return {};
}

void ProjectInput::vComplete(std::string& schemaPath, std::vector<std::string>& setPaths) const {
    vSchemaChoose(schemaPath, setPaths);
    if (setPaths.empty())
        setPaths = setPaths_;
}

void ProjectInput::vSchemaChoose(std::string& schemaPath, std::vector<std::string>& setPaths) const {
    auto other = sEnvironment("KIVIFC_SCHEMA");
    if (other.empty())
        other = schemaPath_;
    if (other.empty() || isSchemaName(schemaPath))
        return;
    if (!schemaPath.empty())
        setPaths.insert(setPaths.begin(), schemaPath);
    schemaPath = other;
}

std::string sPathFailure(const ProjectEntry& entry) {
    const bool isList = entry.key == "sets" || entry.key == "also" || entry.section == "contexts";
    const bool isMissing = entry.values.empty() && !isList;
    if (isMissing || std::ranges::any_of(entry.values, &std::string::empty))
        return fmt::format("\"{}\" is empty, where a path is expected", entry.key);
    return {};
}

bool boProjectRead(
    const std::string& path, Diagnostics& diagnostics,
    const std::function<std::string(const ProjectFile& project, const ProjectEntry& entry)>& sEntryTake) {
    const auto found = path.empty() ? sProjectFileFind() : path;
    if (found.empty())
        return true;
    const auto vFail = [&](std::size_t line, const std::string& reason) {
        diagnostics.vFail(line == 0 ? found : fmt::format("{}:{}", found, line), reason);
    };
    ProjectFailure failure;
    const auto project = projectFileRead(found, failure);
    if (!project) {
        vFail(failure.line, failure.reason);
        return false;
    }
    return std::ranges::all_of(project->entries, [&](const ProjectEntry& entry) {
        const auto reason = sEntryTake(*project, entry);
        if (reason.empty())
            return true;
        vFail(entry.line, reason);
        return false;
    });
}

} // namespace kiv::kivifc
