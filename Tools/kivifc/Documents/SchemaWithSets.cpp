#include "kivifc/Documents/SchemaWithSets.h"

#include "kiv/Kit/Documents/SetCollection.h"
#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Documents/SetPaths.h"
#include "kivifc/Documents/ShownFailure.h"
#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <string_view>
#include <system_error>
#include <utility>

namespace kiv::kivifc {

namespace {

using Context = ifc::def::SchemaPset::Context;

bool isPath(const std::string& argument) {
    std::error_code error;
    return argument == StandardInputPath || std::filesystem::exists(argument, error);
}

/// Where the name before "=" ends; npos when the argument is a path alone.
std::size_t contextNameEnd(const std::string& argument) {
    const auto end = isPath(argument) ? std::string::npos : argument.find('=');
    return end == 0 ? std::string::npos : end;
}

/// The sets of some documents, and of each problem the bytes of its document.
struct ReadSets {
    kit::SetCollection sets;
    std::vector<std::string> problemTexts;
};

/// Says what was not used, and registers the rest.
void vSetsRegister(ReadSets&& read, const Context& context, SchemaWithSets& loaded,
                   Diagnostics& diagnostics) {
    auto& sets = read.sets;
    for (std::size_t index = 0; index < sets.problems.size(); ++index) {
        const auto& problem = sets.problems[index];
        if (problem.failure) {
            diagnostics.vFail(shownFailure(problem.path, *problem.failure));
        } else {
            loaded.unusedSets.push_back(
                {context, problem.path, problem.reason, std::move(read.problemTexts[index])});
            diagnostics.vNote(problem.path, problem.reason);
        }
    }
    loaded.paths.merge(sets.paths);
    ifc::def::SchemaContextAndPropertySetDefinitions::instance().addPropertySets(Context(context),
                                                                                 std::move(sets.definitions));
}

/// Of "../Sets/" it is "Sets"; of "." nothing.
std::string_view lastPart(std::string_view path) {
    path = path.substr(0, path.find_last_not_of('/') + 1);
    path.remove_prefix(path.rfind('/') + 1);
    return path == "." || path == ".." ? std::string_view() : path;
}

/// What of a document's path is below the path that was given; empty when it is not below it.
std::string_view partBelow(std::string_view document, std::string_view given) {
    if (!document.starts_with(given))
        return {};
    document.remove_prefix(given.size());
    const bool isBelow = document.starts_with('/') || given.ends_with('/');
    return isBelow ? document.substr(std::min(document.find_first_not_of('/'), document.size()))
                   : std::string_view();
}

std::string sDocumentName(const std::string& document, const std::vector<std::string>& given) {
    for (const auto& path : given) {
        const auto below = partBelow(document, path);
        if (below.empty())
            continue;
        const auto folder = lastPart(path);
        return folder.empty() ? std::string(below) : fmt::format("{}/{}", folder, below);
    }
    return document.substr(document.rfind('/') + 1);
}

ReadSets documentsRead(const SchemaWithSets& loaded, const std::vector<std::string>& documents) {
    ReadSets read;
    for (const auto& path : documents) {
        auto document = setDocumentRead(path);
        // A copy, as what was found in the document may refer to its text.
        auto text = document.text;
        kit::vSetAdd(read.sets, *loaded.schema.schema, std::move(document));
        if (read.sets.problems.size() > read.problemTexts.size())
            read.problemTexts.push_back(std::move(text));
    }
    return read;
}

std::map<Context, std::vector<std::string>> pathsByContext(const std::string& schemaName,
                                                           const std::vector<std::string>& sets,
                                                           Diagnostics& diagnostics) {
    std::map<Context, std::vector<std::string>> paths;
    for (const auto& argument : sets) {
        const auto end = contextNameEnd(argument);
        if (end != std::string::npos && end + 1 == argument.size()) {
            diagnostics.vFail(argument, "no path behind the name of the context");
            continue;
        }
        const auto name = end == std::string::npos ? schemaName : argument.substr(0, end);
        paths[{name, name == schemaName}].push_back(end == std::string::npos ? argument
                                                                             : argument.substr(end + 1));
    }
    return paths;
}

} // namespace

std::vector<ContextPaths> contextPaths(const std::string& schemaName, const std::vector<std::string>& sets,
                                       Diagnostics& diagnostics) {
    std::vector<ContextPaths> contexts;
    for (auto& [context, paths] : pathsByContext(schemaName, sets, diagnostics))
        contexts.push_back({context, std::move(paths)});
    return contexts;
}

bool isSetsArgument(const std::string& argument) {
    return isPath(argument) || contextNameEnd(argument) != std::string::npos;
}

std::optional<SchemaWithSets> schemaWithSetsRead(const std::string& schemaPath,
                                                 const std::vector<std::string>& sets,
                                                 Diagnostics& diagnostics) {
    auto schema = schemaFileRead(schemaPath, diagnostics);
    if (!schema)
        return std::nullopt;
    SchemaWithSets loaded{std::move(*schema), {}, {}, {}};
    for (auto& [context, paths] :
         pathsByContext(std::string(loaded.schema.schema->getName()), sets, diagnostics)) {
        const auto documents = setPathsCollect(paths, diagnostics);
        for (const auto& document : documents)
            loaded.documentNames.try_emplace(document, sDocumentName(document, paths));
        vSetsRegister(documentsRead(loaded, documents), context, loaded, diagnostics);
    }
    return loaded;
}

std::string sContext(const Context& context) {
    return fmt::format("{} ({})", sOneLine(context.name), context.isStandard ? "standard" : "host");
}

} // namespace kiv::kivifc
