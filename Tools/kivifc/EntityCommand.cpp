#include "kivifc/EntityCommand.h"

#include "kivifc/ApplicableSets.h"
#include "kivifc/ConfigFile.h"
#include "kivifc/EntityPicture.h"
#include "kivifc/MissingName.h"
#include "kivifc/Store.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace kiv::kivifc {

namespace {

constexpr const char* Footer =
    "The last argument is the entity, in any letter case. Attributes, explicit, derived and inverse, and "
    "rules\n"
    "stand under the entity that declares them, from the topmost supertype down. Behind an attribute stands "
    "what\n"
    "its type resolves to and, in braces, how the configuration has it written. The sets are those that name "
    "the\n"
    "entity or one of its supertypes, by context in the order of the search.\n"
    "\n"
    "Exit status: 0 the entity is told, 1 there is no such entity, 2 a file could not be read.";

} // namespace

void EntityCommand::vOptionsAdd(CLI::App& app) {
    arguments_.vOptionsAdd(app, "SETS... NAME", "Write the entity as JSON");
    app.add_option("--config", configPath_, "An IFC-XML configuration to tell representations from")
        ->type_name("CONFIG");
    app.footer(Footer);
}

void EntityCommand::vRun(Console& console) {
    const auto& name = arguments_.words.back();
    const auto store = storeRead(arguments_.schemaPath, arguments_.getSets(), console.diagnostics);
    if (!store)
        return;
    auto& schema = *store->schema.schema;
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
        auto json = entityPictureJson(*entity);
        json["sets"] = applicableSetsJson(*store, groups);
        return vJsonWrite(json, console.output);
    }
    console.output.vWrite(sEntityPicture(*entity));
    console.output.vWrite(groups.empty() ? "sets: none\n" : "sets\n" + sApplicableSets(schema, groups, "  "));
}

} // namespace kiv::kivifc
