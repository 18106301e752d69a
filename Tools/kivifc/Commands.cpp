#include "kivifc/CheckCommand.h"
#include "kivifc/Command.h"
#include "kivifc/SchemaCommand.h"

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
};

} // namespace

Command::~Command() = default;

std::span<const CommandEntry> getCommands() {
    return Commands;
}

} // namespace kiv::kivifc
