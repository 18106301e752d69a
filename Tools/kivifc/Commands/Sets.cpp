#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Pictures/ApplicableSets.h"
#include "kivifc/Pictures/MissingName.h"

#include <memory>
#include <string>
#include <vector>

// `kivifc sets`: the sets that apply to an entity.
namespace kiv::kivifc {

namespace {

constexpr const char* SetsFooter =
    "Contexts come in the order in which they are searched, those of hosts first; in each, the sets of the\n"
    "topmost supertype come first. A set that names several of the entities is listed once.\n"
    "\n"
    "Exit status: 0 sets apply, 1 there is none or no such entity, 2 a file could not be read.";

class SetsCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    std::vector<std::string> setPaths_;
    std::string entityName_;
    ApplicableOptions options_;
    bool jsonAsked_ = false;
};

} // namespace

void SetsCommand::vOptionsAdd(CLI::App& app) {
    const Options options(app);
    options.text("FILE", schemaPath_, "The schema file").required();
    options.texts("SETS", setPaths_, SetsDescription).required();
    options.text("--entity", entityName_, "The entity, in any letter case").valueName("NAME").required();
    options.flag("--unrestricted", options_.isUnrestricted, "Add the sets that name no class");
    options.flag("--own", options_.isOwn, "Leave out those that apply to its supertypes only");
    options.flag("--json", jsonAsked_, "Write the sets as JSON");
    options.vFooter(SetsFooter);
}

void SetsCommand::vRun(Console& console) {
    const auto store = schemaWithSetsRead(schemaPath_, setPaths_, console.diagnostics);
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
        vJsonWrite(console.output, [&](JsonWriter& writer) { vApplicableSetsWrite(*store, groups, writer); });
    else
        console.output.vWrite(sApplicableSets(schema, groups, ""));
    if (groups.empty()) {
        console.diagnostics.vFinding();
        console.diagnostics.vNote(entity->getName(), "no set applies");
    }
}

std::unique_ptr<Command> pSetsCommand() {
    return std::make_unique<SetsCommand>();
}

} // namespace kiv::kivifc
