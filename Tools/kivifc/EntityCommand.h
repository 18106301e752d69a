/// `kivifc entity`: everything that a schema, sets and a configuration say of one entity.
#pragma once

#include "kivifc/Command.h"
#include "kivifc/LookUpArguments.h"

#include <string>

namespace kiv::kivifc {

class EntityCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    /// Sets, and the name of the entity at the end.
    LookUpArguments arguments_;
    std::string configPath_;
};

} // namespace kiv::kivifc
