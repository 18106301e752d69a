#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/ConfigFile.h"
#include "kivifc/Documents/SchemaFile.h"
#include "kivifc/Json/Json.h"
#include "kivifc/Pictures/TextTable.h"
#include "kivifc/Program/OneLine.h"

#include <cstddef>
#include <fmt/format.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// `kivifc config`: what an IFC-XML configuration says.
namespace kiv::kivifc {

namespace {

using ifc::def::SchemaPset;
using ifc::def::schema::Entity;
using ifc::def::xmlschema::Config;

constexpr const char* ConfigFooter =
    "Attributes are listed with the entity that declares them; of several records for one, the last\n"
    "counts.\n"
    "\n"
    "Exit status: 0 nothing was reported, 1 reports were made, 2 a file could not be read or is no "
    "well-formed\nXML.";

/// An attribute that the configuration says something of.
struct Configured {
    std::string name;
    std::string text;
    bool isInverse = false;
};

template <class Attributes, class Take>
void vConfiguredGive(const Attributes& attributes, bool isInverse, const Take& take) {
    for (const auto& attribute : attributes) {
        auto text = sConfigured(attribute);
        if (!text.empty())
            take(Configured{fmt::format("{}.{}", attribute.getEntity().getName(), attribute.getName()),
                            std::move(text), isInverse});
    }
}

/// Hands over those of all entities, in the order of the schema's text, one by one: each is named with its
/// entity, whose name may be as long as the schema.
template <class Take>
void vConfiguredGive(const SchemaPset& schema, const Take& take) {
    for (const auto* object : schema.getObjects()) {
        if (const auto* entity = Entity::pFrom(object)) {
            vConfiguredGive(entity->getAttributes(), false, take);
            vConfiguredGive(entity->getAttributesInverse(), true, take);
        }
    }
}

/// A text as a line shows it.
std::string sGiven(const std::string& text) {
    return text.empty() ? std::string(sRepresentation(ifc::def::xmlschema::ExpAttribute::NotGiven))
                        : sOneLine(text);
}

void vConfigWrite(const SchemaPset& schema, const std::vector<assert::AssertRecord>& reports,
                  Output& output) {
    const auto& config = *schema.pXmlSchemaConfig();
    auto text = sTableLine("target namespace", sGiven(config.getSchema().getTargetNamespace()));
    text += sTableLine("prefix", sGiven(config.getNamespace().getPrefix()));
    text += sTableLine("alias", sGiven(config.getNamespace().getAlias()));
    text += sTableLine("concrete", sRepresentation(config.getOption().getConcreteAttribute()));
    text += sTableLine("entity", sRepresentation(config.getOption().getEntityAttribute()));
    text += sTableLine("uos element", sGiven(config.getUosElement().getName()));
    text +=
        sTableLine("records", fmt::format("{} of attributes, {} of inverses", config.getAttributes().size(),
                                          config.getAttributesInverse().size()));
    std::size_t count = 0;
    vConfiguredGive(schema, [&](const Configured&) { ++count; });
    output.vWrite(text + sTableLine("attributes", fmt::format("{}", count)));
    vConfiguredGive(schema, [&](const Configured& attribute) {
        output.vWrite(fmt::format("  {}  {}{}\n", sOneLine(attribute.name), attribute.text,
                                  attribute.isInverse ? " (inverse)" : ""));
    });
    output.vWrite(sTableLine("reports", fmt::format("{}", reports.size())));
    for (const auto& report : reports)
        output.vWrite(fmt::format("  {} ({})\n", sOneLine(report.message), sOneLine(report.function)));
}

void vConfigWrite(const SchemaPset& schema, const std::vector<assert::AssertRecord>& reports,
                  JsonWriter& writer) {
    const auto& config = *schema.pXmlSchemaConfig();
    writer.vObjectBegin();
    writer.vMember("targetNamespace", config.getSchema().getTargetNamespace());
    writer.vMember("prefix", config.getNamespace().getPrefix());
    writer.vMember("alias", config.getNamespace().getAlias());
    writer.vMember("concreteAttribute", sRepresentation(config.getOption().getConcreteAttribute()));
    writer.vMember("entityAttribute", sRepresentation(config.getOption().getEntityAttribute()));
    writer.vMember("uosElement", config.getUosElement().getName());
    writer.vMember("attributeRecords", config.getAttributes().size());
    writer.vMember("inverseRecords", config.getAttributesInverse().size());
    writer.vKey("attributes");
    writer.vArrayBegin();
    vConfiguredGive(schema, [&](Configured&& attribute) {
        vJsonWrite({{"attribute", std::move(attribute.name)},
                    {"inverse", attribute.isInverse},
                    {"representation", std::move(attribute.text)}},
                   writer);
    });
    writer.vArrayEnd();
    writer.vObjects("reports", reports, [&](const auto& report) {
        vAssertionMembersWrite({report.code, report.message, report.function, report.file, report.line},
                               writer);
    });
    writer.vObjectEnd();
}

class ConfigCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    std::string configPath_;
    bool jsonAsked_ = false;
};

} // namespace

void ConfigCommand::vOptionsAdd(CLI::App& app) {
    const Options options(app);
    options.text("FILE", schemaPath_, "The schema file").required();
    options.text("CONFIG", configPath_, "The configuration (ISO 10303-28)").required();
    options.flag("--json", jsonAsked_, "Write what it says as JSON");
    options.vFooter(ConfigFooter);
}

void ConfigCommand::vRun(Console& console) {
    const auto file = schemaFileRead(schemaPath_, console.diagnostics);
    if (!file)
        return;
    const auto reports = configFileRead(configPath_, *file->schema, console.diagnostics);
    if (!reports)
        return;
    if (!reports->empty())
        console.diagnostics.vFinding();
    if (jsonAsked_)
        vJsonWrite(console.output,
                   [&](JsonWriter& writer) { vConfigWrite(*file->schema, *reports, writer); });
    else
        vConfigWrite(*file->schema, *reports, console.output);
}

std::unique_ptr<Command> pConfigCommand() {
    return std::make_unique<ConfigCommand>();
}

} // namespace kiv::kivifc
