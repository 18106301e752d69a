/// `kivifc type`: which type the value of a property, quantity or attribute has.
#pragma once

#include "kivifc/Command.h"
#include "kivifc/LookUpArguments.h"

namespace kiv::kivifc {

class TypeCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    /// Sets and questions.
    LookUpArguments arguments_;
};

} // namespace kiv::kivifc
