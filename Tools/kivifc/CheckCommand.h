/// `kivifc check`: set documents against a schema, with what is wrong with them.
#pragma once

#include "kivifc/CheckReport.h"
#include "kivifc/Command.h"

#include <memory>
#include <string>
#include <vector>

namespace kiv::kivifc {

class CheckCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    std::unique_ptr<CheckReport> pReport(const CheckContext& context) const;

    std::string schemaPath_;
    std::vector<std::string> setPaths_;
    std::string format_ = "text";
    std::string reportPath_;
    bool jsonAsked_ = false;
    bool warningsAsked_ = false;
};

} // namespace kiv::kivifc
