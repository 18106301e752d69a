#include "kivifc/SetsCommand.h"

#include "kivifc/MissingName.h"

#include <CLI/CLI.hpp>

namespace kiv::kivifc {

namespace {

constexpr const char* Footer =
    "Contexts come in the order in which they are searched, those of hosts first; in each of them the sets "
    "of "
    "the\ntopmost supertype first. A set that names several of the entities is told once.\n"
    "\n"
    "Exit status: 0 sets apply, 1 there is none or no such entity, 2 a file could not be read.";

} // namespace

void SetsCommand::vOptionsAdd(CLI::App& app) {
    app.add_option("FILE", schemaPath_, "The schema file")->required();
    app.add_option("SETS", setPaths_, SetsDescription)->required();
    app.add_option("--entity", entityName_, "The entity, in any letter case")->type_name("NAME")->required();
    app.add_flag("--unrestricted", options_.isUnrestricted, "Add the sets that name no class");
    app.add_flag("--own", options_.isOwn, "Leave out those that apply to its supertypes only");
    app.add_flag("--json", jsonAsked_, "Write the sets as JSON");
    app.footer(Footer);
}

void SetsCommand::vRun(Console& console) {
    const auto store = storeRead(schemaPath_, setPaths_, console.diagnostics);
    if (!store)
        return;
    const auto& schema = *store->schema.schema;
    const auto* entity = ifc::def::schema::Entity::pFrom(schema.pObjectFromName(entityName_));
    if (!entity) {
        console.diagnostics.vFinding();
        return console.diagnostics.vNote(schemaPath_, sNoEntity(schema, entityName_));
    }
    const auto groups = applicableSets(schema, *entity, options_);
    if (jsonAsked_)
        vJsonWrite(applicableSetsJson(*store, groups), console.output);
    else
        console.output.vWrite(sApplicableSets(schema, groups, ""));
    if (groups.empty()) {
        console.diagnostics.vFinding();
        console.diagnostics.vNote(entity->getName(), "no set applies");
    }
}

} // namespace kiv::kivifc
