/// `kivifc sets`: the sets that apply to an entity.
#pragma once

#include "kivifc/ApplicableSets.h"
#include "kivifc/Command.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

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

} // namespace kiv::kivifc
