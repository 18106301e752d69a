#include "kiv/Kit/Documents/SetMembers.h"
#include "kiv/Kit/Names/KnownNames.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/LookUpArguments.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Json/BytesJson.h"
#include "kivifc/Json/SetJson.h"
#include "kivifc/Pictures/MissingName.h"
#include "kivifc/Pictures/TextTable.h"
#include "kivifc/Program/OneLine.h"

#include <fmt/format.h>
#include <memory>
#include <optional>

// `kivifc find`: a set by its name, or a property or quantity by its GUID.
namespace kiv::kivifc {

namespace {

using ifc::def::SchemaPset;
using ifc::def::xml::Def;
using ifc::def::xml::SetDef;

constexpr const char* FindFooter =
    "The last argument is looked up first as the name of a set (in any letter case), then as the GUID of a\n"
    "property or quantity: 32 hexadecimal digits, with or without hyphens and braces, or the 22 characters\n"
    "of a GlobalId. The search begins with the contexts of hosts.\n"
    "\n"
    "Exit status: 0 found, 1 not found, 2 a file could not be read.";

/// What was found: a set, or a definition in it.
struct Finding {
    const SetDef* set = nullptr;
    const Def* def = nullptr;
};

Finding find(const SchemaPset& schema, const std::string& text) {
    if (const auto* set = schema.pXmlSetFromName(text, {}))
        return {set, nullptr};
    kiv::Guid guid;
    const auto* def = guid.boSet(text) ? schema.pXmlDefFromIfd(guid) : nullptr;
    return def ? Finding{def->pOwner(), def} : Finding{};
}

SchemaPset::Context contextOf(const SchemaPset& schema, const SetDef& set) {
    SchemaPset::Context found;
    schema.forEachDefinition(
        [&](const auto& context, const auto& definitions) {
            if (definitions.getXmlSetFromName(set.getName()) == &set)
                found = context;
        },
        {});
    return found;
}

/// Texts that are not given have no line.
std::string sLine(std::string_view label, std::string_view text) {
    return text.empty() ? std::string() : sTableLine(label, sOneLine(text));
}

std::string sGuid(const kiv::Guid& guid) {
    return guid.isNull() ? std::string() : guid.toString(false);
}

std::string sMember(const Def& def) {
    return fmt::format("  {}  {}\n", sOneLine(def.getName()),
                       sOneLine(def.getEntityName().empty() ? "no type" : def.getEntityName()));
}

std::string sSet(const SetDef& set) {
    auto text = sLine("guid", sGuid(set.getIfdGuid()));
    text += sLine("definition", set.getDefinition());
    text += sLine("template type", ifc::def::xml::sTemplateTypeText(set.getTemplateType()));
    text += sLine("version", set.getIfcVersion());
    text += sLine("applies to", kit::sSetClasses(set));
    const auto members = kit::setMembers(set);
    text += sLine("members", fmt::format("{}", members.size()));
    for (const auto* member : members)
        text += sMember(*member);
    return text;
}

std::string sDef(const Def& def) {
    auto text = sLine("member", def.getName());
    text += sLine("guid", sGuid(def.getIfdGuid()));
    text += sLine("definition", def.getDefinition());
    text += sLine("becomes", def.getEntityName());
    return text;
}

std::string sFinding(const SchemaWithSets& loaded, const Finding& finding) {
    auto text = sLine("set", finding.set->getName());
    text += sLine("context", sContext(contextOf(*loaded.schema.schema, *finding.set)));
    text += sLine("document", loaded.paths.at(finding.set));
    text += sLine("kind", kit::pSetKind(*finding.set));
    return text + (finding.def ? sDef(*finding.def) : sSet(*finding.set));
}

void vFindingWrite(const SchemaWithSets& loaded, const Finding& finding, JsonWriter& writer) {
    if (!finding.set)
        return writer.vValue(nullptr);
    const auto& path = loaded.paths.at(finding.set);
    writer.vObjectBegin();
    writer.vMember("set", finding.set->getName());
    writer.vKey("context");
    vJsonWrite(contextJson(contextOf(*loaded.schema.schema, *finding.set)), writer);
    writer.vMember("path", path);
    writer.vMember("kind", finding.set->pXmlElementName());
    writer.vKey("definition");
    if (finding.def)
        vDefWrite(*finding.def, writer);
    else
        vSetWrite(*finding.set, writer);
    vBytesWrite("path", path, writer);
    writer.vObjectEnd();
}

class FindCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    /// Sets, and what is looked for at the end.
    LookUpArguments arguments_;
};

} // namespace

void FindCommand::vOptionsAdd(CLI::App& app) {
    const Options options(app);
    arguments_.vOptionsAdd(app, "SETS... NAME-OR-GUID", "Write what is found as JSON");
    options.vFooter(FindFooter);
}

void FindCommand::vRun(Console& console) {
    const auto& text = arguments_.words.back();
    const auto loaded = schemaWithSetsRead(arguments_.schemaPath, arguments_.getSets(), console.diagnostics);
    if (!loaded)
        return;
    const auto finding = find(*loaded->schema.schema, text);
    if (!finding.set) {
        console.diagnostics.vFinding();
        console.diagnostics.vNote("not found",
                                  sNoName("set or GUID", text, kit::setNames(*loaded->schema.schema)));
    }
    if (arguments_.isJsonAsked)
        vJsonWrite(console.output, [&](JsonWriter& writer) { vFindingWrite(*loaded, finding, writer); });
    else if (finding.set)
        console.output.vWrite(sFinding(*loaded, finding));
}

std::unique_ptr<Command> pFindCommand() {
    return std::make_unique<FindCommand>();
}

} // namespace kiv::kivifc
