/// `kivifc find`: a set by its name, or a property or quantity by its GUID.
#pragma once

#include "kivifc/Command.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

class FindCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    /// Sets, and what is looked for at the end.
    std::vector<std::string> arguments_;
    bool jsonAsked_ = false;
};

} // namespace kiv::kivifc
