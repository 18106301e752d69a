#include "kivifc/Documents/SchemaWithSets.h"

#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Documents/SetPaths.h"
#include "kivifc/Program/OneLine.h"

#include <filesystem>
#include <fmt/format.h>
#include <map>
#include <memory>
#include <system_error>
#include <utility>

namespace kiv::kivifc {

namespace {

using Context = ifc::def::SchemaPset::Context;
using ifc::def::xml::SetDef;

bool isPath(const std::string& argument) {
    std::error_code error;
    return argument == StandardInputPath || std::filesystem::exists(argument, error);
}

/// Where the name before "=" ends; npos when the argument is a path alone.
std::size_t contextNameEnd(const std::string& argument) {
    const auto end = isPath(argument) ? std::string::npos : argument.find('=');
    return end == 0 ? std::string::npos : end;
}

std::unique_ptr<SetDef> pSetTake(SetDocument& document) {
    if (document.propertySet)
        return std::move(document.propertySet);
    return std::move(document.quantitySet);
}

/// Why a set was refused: the record that decided it is the last one.
std::string sRefusal(const SetDef& set, const ifc::def::xml::XmlSetErrors& errors) {
    const auto& record = errors.getRecords().back();
    return fmt::format("the set \"{}\" is refused: {}: {}", set.getName(), record.item, record.message);
}

/// Fills one collection.
class Collection {
public:
    Collection(SchemaWithSets& loaded, Diagnostics& diagnostics) :
        loaded_(loaded), diagnostics_(diagnostics) {}

    void vDocumentAdd(const std::string& path) {
        auto document = setDocumentRead(path);
        if (document.failure)
            return diagnostics_.vFail(document.failure->subject, document.failure->reason);
        vSetAdd(pSetTake(document), document);
    }

    ifc::def::SchemaPropertySetDefinitions&& takeDefinitions() { return std::move(definitions_); }

private:
    void vSetAdd(std::unique_ptr<SetDef> set, SetDocument& document) {
        if (const auto* present = definitions_.getXmlSetFromName(set->getName())) {
            return vUnusedTell(document, fmt::format("the set \"{}\" is left out: {} has one of that name",
                                                     set->getName(), loaded_.paths.at(present)));
        }
        const auto* const added = set.get();
        if (definitions_.xmlSetAdd(*loaded_.schema.schema, std::move(set), document.errors))
            loaded_.paths.emplace(added, document.path);
        else
            vUnusedTell(document, sRefusal(*added, document.errors));
    }

    void vUnusedTell(const SetDocument& document, const std::string& reason) {
        ++loaded_.setsUnused;
        diagnostics_.vNote(document.path, reason);
    }

    SchemaWithSets& loaded_;
    Diagnostics& diagnostics_;
    ifc::def::SchemaPropertySetDefinitions definitions_;
};

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
    SchemaWithSets loaded{std::move(*schema), {}, 0};
    auto& registry = ifc::def::SchemaContextAndPropertySetDefinitions::instance();
    for (auto& [context, paths] :
         pathsByContext(std::string(loaded.schema.schema->getName()), sets, diagnostics)) {
        Collection collection(loaded, diagnostics);
        for (const auto& path : setPathsCollect(paths, diagnostics))
            collection.vDocumentAdd(path);
        registry.addPropertySets(Context(context), collection.takeDefinitions());
    }
    return loaded;
}

std::string sContext(const Context& context) {
    return fmt::format("{} ({})", sOneLine(context.name), context.isStandard ? "standard" : "host");
}

} // namespace kiv::kivifc
