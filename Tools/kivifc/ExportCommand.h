/// `kivifc export`: writes sets as documents, one file a set.
#pragma once

#include "kivifc/Command.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

class ExportCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    std::vector<std::string> setPaths_;
    std::string folder_;
    bool guidsAsked_ = false;
    bool baseTypesAsked_ = false;
    bool isForced_ = false;
    bool jsonAsked_ = false;
};

} // namespace kiv::kivifc
