#include "kivifc/CheckCommand.h"
#include "kivifc/Command.h"
#include "kivifc/ConfigCommand.h"
#include "kivifc/EntityCommand.h"
#include "kivifc/ExportCommand.h"
#include "kivifc/FindCommand.h"
#include "kivifc/SchemaCommand.h"
#include "kivifc/SetsCommand.h"
#include "kivifc/TypeCommand.h"

#include <array>

namespace kiv::kivifc {

namespace {

template <typename Class>
std::unique_ptr<Command> pNew() {
    return std::make_unique<Class>();
}

constexpr std::array Commands{
    CommandEntry{"schema", "Read an EXPRESS schema and tell what is in it", pNew<SchemaCommand>},
    CommandEntry{"check", "Check property-set and quantity-set documents against a schema",
                 pNew<CheckCommand>},
    CommandEntry{"type", "Tell which type the value of a property, quantity or attribute has",
                 pNew<TypeCommand>},
    CommandEntry{"sets", "List the sets that apply to an entity", pNew<SetsCommand>},
    CommandEntry{"find", "Find a set by its name, or a property or quantity by its GUID", pNew<FindCommand>},
    CommandEntry{"config", "Tell what an IFC-XML configuration says", pNew<ConfigCommand>},
    CommandEntry{"entity", "Show all that is known of an entity: its own and what it inherits",
                 pNew<EntityCommand>},
    CommandEntry{"export", "Write sets as documents, one file a set", pNew<ExportCommand>},
};

} // namespace

Command::~Command() = default;

std::span<const CommandEntry> getCommands() {
    return Commands;
}

} // namespace kiv::kivifc
