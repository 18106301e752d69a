/// `kivifc config`: what an IFC-XML configuration says.
#pragma once

#include "kivifc/Command.h"

#include <string>

namespace kiv::kivifc {

class ConfigCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    std::string configPath_;
    bool jsonAsked_ = false;
};

} // namespace kiv::kivifc
