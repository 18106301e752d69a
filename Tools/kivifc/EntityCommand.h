/// `kivifc entity`: everything that a schema, sets and a configuration say of one entity.
#pragma once

#include "kivifc/Command.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

class EntityCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    /// Sets, and the name of the entity at the end.
    std::vector<std::string> arguments_;
    std::string configPath_;
    bool jsonAsked_ = false;
};

} // namespace kiv::kivifc
