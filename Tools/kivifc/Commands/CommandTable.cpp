#include "kivifc/Commands/CommandTable.h"

#include <array>

namespace kiv::kivifc {

namespace {

constexpr std::array Commands{
    CommandEntry{"schema", "Read an EXPRESS schema and summarise it", pSchemaCommand},
    CommandEntry{"check", "Check property-set and quantity-set documents against a schema", pCheckCommand},
    CommandEntry{"explain", "Say what a rule of check finds, why, and how to mend it", pExplainCommand,
                 false},
    CommandEntry{"type", "Find the type of the value of a property, quantity or attribute", pTypeCommand},
    CommandEntry{"sets", "List the sets that apply to an entity", pSetsCommand},
    CommandEntry{"find", "Find a set by its name, or a property or quantity by its GUID", pFindCommand},
    CommandEntry{"config", "Show what an IFC-XML configuration says", pConfigCommand},
    CommandEntry{"entity", "Show all that is known of an entity: its own and what it inherits",
                 pEntityCommand},
    CommandEntry{"export", "Write sets as documents, one file a set", pExportCommand},
    CommandEntry{"site", "Write a schema and its sets as pages for a web browser", pSiteCommand},
};

} // namespace

std::span<const CommandEntry> getCommands() {
    return Commands;
}

} // namespace kiv::kivifc
