/// `kivifc schema`: what is in a schema, in numbers, as its inheritance tree or whole as JSON.
#pragma once

#include "kivifc/Command.h"
#include "kivifc/SchemaFile.h"

#include <string>

namespace kiv::kivifc {

class SchemaCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    void vTreeShow(const SchemaFile& file, Console& console) const;
    void vSummaryShow(const SchemaFile& file, Console& console) const;

    std::string path_;
    bool assertionsAsked_ = false;
    bool jsonAsked_ = false;
    bool treeAsked_ = false;
    // Empty for all trees.
    std::string treeTop_;
};

} // namespace kiv::kivifc
