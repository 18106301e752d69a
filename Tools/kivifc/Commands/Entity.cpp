#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/LookUpArguments.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/ConfigFile.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Pictures/ApplicableSets.h"
#include "kivifc/Pictures/EntityPicture.h"
#include "kivifc/Pictures/MissingName.h"

#include <fmt/format.h>
#include <memory>
#include <string>

// `kivifc entity`: everything that a schema, sets and a configuration say of one entity.
namespace kiv::kivifc {

namespace {

constexpr const char* EntityFooter =
    "The last argument is the entity, in any letter case. Attributes (explicit, derived and inverse) and\n"
    "rules are listed under the entity that declares them, from the topmost supertype down. An attribute is\n"
    "followed by what its type resolves to and, in braces, by its representation in the configuration. The\n"
    "sets are those that name the entity or one of its supertypes, by context in the order of the search.\n"
    "\n"
    "Exit status: 0 the entity is shown, 1 there is no such entity, 2 a file could not be read.";

class EntityCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    /// Sets, and the name of the entity at the end.
    LookUpArguments arguments_;
    std::string configPath_;
};

} // namespace

void EntityCommand::vOptionsAdd(CLI::App& app) {
    const Options options(app);
    arguments_.vOptionsAdd(app, "SETS... NAME", "Write the entity as JSON");
    options.text("--config", configPath_, "An IFC-XML configuration, for the representations")
        .valueName("CONFIG");
    options.vFooter(EntityFooter);
}

void EntityCommand::vRun(Console& console) {
    const auto& name = arguments_.words.back();
    const auto loaded = schemaWithSetsRead(arguments_.schemaPath, arguments_.getSets(), console.diagnostics);
    if (!loaded)
        return;
    auto& schema = *loaded->schema.schema;
    const auto* entity = ifc::def::schema::Entity::pFrom(schema.pObjectFromName(name));
    if (!entity) {
        console.diagnostics.vFinding();
        return console.diagnostics.vNote(arguments_.schemaPath, sNoEntity(schema, name));
    }
    if (!configPath_.empty()) {
        const auto reports = configFileRead(configPath_, schema, console.diagnostics);
        if (reports && !reports->empty())
            console.diagnostics.vNote(
                configPath_, fmt::format("reports made while it was read: {} (kivifc config lists them)",
                                         reports->size()));
    }
    const auto groups = applicableSets(schema, *entity, {});
    if (arguments_.isJsonAsked) {
        return vJsonWrite(console.output, [&](JsonWriter& writer) {
            writer.vObjectBegin();
            vEntityPictureWrite(*entity, writer, {.pSchema = &schema});
            writer.vKey("sets");
            vApplicableSetsWrite(*loaded, groups, writer);
            writer.vObjectEnd();
        });
    }
    vEntityPictureWrite(*entity, console.output, {.pSchema = &schema});
    console.output.vWrite(groups.empty() ? "sets: none\n" : "sets\n" + sApplicableSets(schema, groups, "  "));
}

std::unique_ptr<Command> pEntityCommand() {
    return std::make_unique<EntityCommand>();
}

} // namespace kiv::kivifc
