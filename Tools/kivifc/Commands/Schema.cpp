#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Kit/Findings/SchemaFindings.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Json/SchemaJson.h"
#include "kivifc/Pictures/InheritanceTree.h"
#include "kivifc/Pictures/MissingName.h"
#include "kivifc/Pictures/SchemaSummary.h"
#include "kivifc/Pictures/TreeDrawing.h"
#include "kivifc/Program/OneLine.h"

#include <algorithm>
#include <fmt/format.h>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// `kivifc schema`: what is in a schema, in numbers, as its inheritance tree or whole as JSON.
namespace kiv::kivifc {

namespace {

using ifc::def::schema::Entity;

constexpr const char* SchemaFooter =
    "Numbers: the data types are those that the schema does not share; a type that others are built on\n"
    "counts its WHERE rules once for each of them; the time differs from run to run. The tree includes\n"
    "entities that no SUPERTYPE list names.\n"
    "\n"
    "What is wrong with the schema is listed below the numbers, as kivifc check lists it.\n"
    "\n"
    "Exit status: 0 the schema loads, with warnings at most, 1 it loads with errors, 2 it does not load.";

/// A line of a rule's text. A tab becomes one blank, so that the columns in messages can be counted.
std::string sRuleLine(std::string line) {
    std::ranges::replace(line, '\t', ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return sOneLine(line);
}

/// The first line of the message as compilers write it; below it the others, which are the text of a rule.
std::string sWarning(const std::string& path, const kit::Assertion& record) {
    std::istringstream message{std::string(record.message)};
    std::string line;
    std::getline(message, line);
    auto text =
        fmt::format("{}: warning: {} ({})\n", sOneLine(path), sOneLine(line), sOneLine(record.function));
    while (std::getline(message, line)) {
        if (!line.empty())
            text += fmt::format("    {}\n", sRuleLine(line));
    }
    return text;
}

class SchemaCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    void vErrorsNote(const SchemaFile& file, Diagnostics& diagnostics) const;
    void vTreeShow(const SchemaFile& file, Console& console) const;
    void vFindingsShow(SourceLines& sources, Console& console) const;

    // What is wrong with the schema, or why the text has none.
    std::vector<kit::Finding> findings_;
    std::string path_;
    bool assertionsAsked_ = false;
    bool jsonAsked_ = false;
    bool treeAsked_ = false;
    // Empty for all trees.
    std::string treeTop_;
};

} // namespace

void SchemaCommand::vOptionsAdd(CLI::App& app) {
    const Options options(app);
    options.text("FILE", path_, "The schema file").required();
    const auto json = options.flag("--json", jsonAsked_, "Write the whole model as JSON");
    const auto assertions =
        options.flag("--assertions", assertionsAsked_,
                     "List the reports that were made while the schema was read, not the findings");
    options
        .textOrFlag(
            "--tree",
            [this](const std::string& top) {
                treeAsked_ = true;
                treeTop_ = top;
            },
            "Draw the inheritance tree, of all entities or of one and those below it")
        .valueName("[ENTITY]")
        .excludes(json)
        .excludes(assertions);
    options.vFooter(SchemaFooter);
}

void SchemaCommand::vRun(Console& console) {
    const bool areFindingsAsked = !treeAsked_ && !jsonAsked_ && !assertionsAsked_;
    const auto file = areFindingsAsked ? schemaFileRead(path_, console.diagnostics, findings_)
                                       : schemaFileRead(path_, console.diagnostics);
    SourceLines sources;
    if (!file)
        return vFindingsShow(sources, console);
    if (treeAsked_ || jsonAsked_) {
        vErrorsNote(*file, console.diagnostics);
        return treeAsked_ ? vTreeShow(*file, console) : vSchemaJsonWrite(*file, console.output);
    }
    findings_ = kit::schemaFindingsOf(file->schema.get(), file->assertions, file->text, file->path);
    if (std::ranges::find(findings_, kit::Severity::Error, &kit::Finding::severity) != findings_.end())
        console.diagnostics.vFinding();
    console.output.vWrite(sSchemaSummary(*file, InheritanceTree(*file->schema), assertionsAsked_));
    if (!assertionsAsked_) {
        sources.vKeep(file->path, file->text);
        return vFindingsShow(sources, console);
    }
    for (const auto& record : file->assertions)
        console.output.vWrite(sWarning(file->path, record));
}

/// The tree and the JSON do not show why the exit status is not 0. What is wrong is not needed for that, only
/// whether there is an error.
void SchemaCommand::vErrorsNote(const SchemaFile& file, Diagnostics& diagnostics) const {
    if (!kit::hasSchemaErrors(file.schema.get(), file.assertions, file.text))
        return;
    diagnostics.vFinding();
    if (file.assertions.empty())
        diagnostics.vNote(file.path, "has errors (kivifc schema lists them)");
}

void SchemaCommand::vTreeShow(const SchemaFile& file, Console& console) const {
    const InheritanceTree tree(*file.schema);
    if (treeTop_.empty()) {
        for (const auto* root : tree.getRoots())
            vTreeDraw(tree, *root, console.output);
    } else if (const auto* top = Entity::pFrom(file.schema->pObjectFromName(treeTop_))) {
        vTreeDraw(tree, *top, console.output);
    } else {
        console.diagnostics.vFail(file.path, sNoEntity(*file.schema, treeTop_));
    }
    if (!file.assertions.empty())
        console.diagnostics.vNote(file.path,
                                  fmt::format("reports made while it was read: {} (--assertions lists "
                                              "them)",
                                              file.assertions.size()));
}

void SchemaCommand::vFindingsShow(SourceLines& sources, Console& console) const {
    const auto writer = pTextFindings(console.output, sources, {false, true, false});
    for (const auto& finding : findings_)
        writer->vFindingWrite(finding);
}

std::unique_ptr<Command> pSchemaCommand() {
    return std::make_unique<SchemaCommand>();
}

} // namespace kiv::kivifc
