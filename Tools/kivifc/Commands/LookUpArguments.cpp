#include "kivifc/Commands/LookUpArguments.h"

#include "kivifc/Documents/SchemaWithSets.h"

#include <CLI/CLI.hpp>

namespace kiv::kivifc {

void LookUpArguments::vOptionsAdd(CLI::App& app, const char* wordsName, const char* jsonDescription) {
    app.add_option("FILE", schemaPath, "The schema file")->required();
    app.add_option(wordsName, words, SetsDescription)->required();
    app.add_flag("--json", isJsonAsked, jsonDescription);
}

} // namespace kiv::kivifc
