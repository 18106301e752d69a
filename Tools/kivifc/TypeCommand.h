/// `kivifc type`: which type the value of a property, quantity or attribute has.
#pragma once

#include "kivifc/Command.h"

#include <string>
#include <vector>

namespace kiv::kivifc {

class TypeCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::string schemaPath_;
    /// Sets and questions.
    std::vector<std::string> arguments_;
    bool jsonAsked_ = false;
};

} // namespace kiv::kivifc
