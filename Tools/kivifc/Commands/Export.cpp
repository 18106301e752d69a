#include "kiv/Host/Xml/KivXml.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/ExportFile.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Json/BytesJson.h"
#include "kivifc/Json/SetJson.h"
#include "kivifc/Program/OneLine.h"

#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// `kivifc export`: writes sets as documents, one file a set.
namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;
namespace defs = ifc::def::xml;

constexpr const char* ExportFooter =
    "A set is written to DIR/SET.xml; a set of the context NAME of a host is written to DIR/NAME/SET.xml.\n"
    "In file names each control character, each of / \\ : * ? \" < > | % and a dot at the beginning become\n"
    "%XX, its number in hexadecimal digits; an empty name becomes %. A name of more than 200 bytes is cut,\n"
    "and ends in %~ and a checksum.\n"
    "\n"
    "A file is replaced only when an export wrote it and nobody has changed it since, as the comment at its\n"
    "end shows; any other file stays, unless --force is given. A file is written whole or not at all, also\n"
    "when SIGINT, SIGTERM or SIGHUP end the export; what is left of an export that was killed is removed by\n"
    "the next one. A file that is replaced keeps its mode and, where the system permits it, its owner. DIR\n"
    "may be a symbolic link. A link below it is neither followed nor replaced, not even with --force: each\n"
    "set that would be written there is a failure.\n"
    "\n"
    "The library does not write the GUID, template type and version of a set, so the files lack them. It\n"
    "writes the aliases of names as nameAliases, which it does not read again.\n"
    "\n"
    "Exit status: 0 all sets are written, 1 sets were refused or left out, or there is none, 2 a file could\n"
    "not be read, written or replaced.";

std::string sDocument(const defs::SetDef& set, defs::ExtraExportInfo& info) {
    xml::Document document;
    auto root = document.getNode().ElementNodeAppend(set.pXmlElementName());
    std::ostringstream stream;
    // Else a lack of memory would be a state of the stream only, and the text one that ends somewhere.
    stream.exceptions(std::ios::badbit);
    stream << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    // The element of the set is the root itself or one below it, as the kind of set has it.
    set.exportDef(root, &info).vWrite(stream, xml::WriteStyle::Indented);
    stream << '\n';
    return stream.str();
}

/// Writes the sets and remembers which.
class Exporter {
public:
    Exporter(Console& console, std::string folder, defs::ExtraExportInfo& info, bool isForced) :
        console_(console), folder_(std::move(folder)), info_(info), files_(folder_, isForced) {}

    void vContextExport(const ifc::def::SchemaPset::Context& context,
                        const ifc::def::SchemaPropertySetDefinitions& definitions) {
        const auto folder =
            context.isStandard ? fs::path(folder_) : fs::path(folder_) / sFileName(context.name);
        for (const auto* set : definitions.getXmlSets())
            vSetExport(context, folder / (sFileName(set->getName()) + ".xml"), *set);
    }

    const Json& getWritten() const { return written_; }

private:
    void vSetExport(const ifc::def::SchemaPset::Context& context, const fs::path& path,
                    const defs::SetDef& set) {
        if (const auto failure = files_.sWrite(path, sDocument(set, info_)); !failure.empty())
            return console_.diagnostics.vFail(path.string(), failure);
        written_.push_back(withBytes(
            {{"set", set.getName()}, {"context", contextJson(context)}, {"path", path.string()}}, "path"));
    }

    Console& console_;
    std::string folder_;
    defs::ExtraExportInfo& info_;
    ExportFiles files_;
    Json written_ = Json::array();
};

class ExportCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    std::vector<std::string> setPaths_;
    std::string folder_;
    bool guidsAsked_ = false;
    bool baseTypesAsked_ = false;
    bool isForced_ = false;
    bool jsonAsked_ = false;
};

} // namespace

void ExportCommand::vOptionsAdd(CLI::App& app) {
    const Options options(app);
    options.text("FILE", schemaPath_, "The schema file").required();
    options.texts("SETS", setPaths_, SetsDescription).required();
    options.text("--out", folder_, "The folder to write to; it is made if missing")
        .valueName("DIR")
        .required()
        .check([](const std::string& folder) {
            return std::string(folder.empty() ? "no folder is named" : "");
        });
    options.flag("--generate-guids", guidsAsked_, "Write a new GUID for each member that has none");
    options.flag("--basetype", baseTypesAsked_, "Add what the defined types of properties are made of");
    options.flag("--force", isForced_, "Replace files that no export wrote as well");
    options.flag("--json", jsonAsked_, "Write as JSON what was written");
    options.vFooter(ExportFooter);
}

void ExportCommand::vRun(Console& console) {
    const auto loaded = schemaWithSetsRead(schemaPath_, setPaths_, console.diagnostics);
    if (!loaded)
        return;
    defs::ExtraExportInfo info;
    info.generateGuids = guidsAsked_;
    info.schemaForBaseTypes = baseTypesAsked_ ? loaded->schema.schema.get() : nullptr;
    Exporter exporter(console, folder_, info, isForced_);
    loaded->schema.schema->forEachDefinition(
        [&](const auto& context, const auto& definitions) { exporter.vContextExport(context, definitions); },
        {});
    if (exporter.getWritten().empty() || !loaded->unusedSets.empty())
        console.diagnostics.vFinding();
    if (jsonAsked_)
        return vJsonWrite(exporter.getWritten(), console.output);
    for (const auto& file : exporter.getWritten())
        console.output.vWrite(sOneLine(file["path"].get<std::string>()) + '\n');
}

std::unique_ptr<Command> pExportCommand() {
    return std::make_unique<ExportCommand>();
}

} // namespace kiv::kivifc
