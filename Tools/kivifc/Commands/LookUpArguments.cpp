#include "kivifc/Commands/LookUpArguments.h"

#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/SchemaWithSets.h"

namespace kiv::kivifc {

void LookUpArguments::vOptionsAdd(CLI::App& app, const char* wordsName, const char* jsonDescription) {
    const Options options(app);
    options.text("FILE", schemaPath, "The schema file").required();
    options.texts(wordsName, words, SetsDescription).required();
    options.flag("--json", isJsonAsked, jsonDescription);
}

} // namespace kiv::kivifc
