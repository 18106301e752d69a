/// `kivifc find`: a set by its name, or a property or quantity by its GUID.
#pragma once

#include "kivifc/Command.h"
#include "kivifc/LookUpArguments.h"

namespace kiv::kivifc {

class FindCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    /// Sets, and what is looked for at the end.
    LookUpArguments arguments_;
};

} // namespace kiv::kivifc
