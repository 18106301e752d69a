#include "kivifc/Commands/CheckFindings.h"
#include "kivifc/Commands/CheckListing.h"
#include "kivifc/Commands/CheckOptions.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Documents/SetPaths.h"
#include "kivifc/Findings/FindingWriter.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

// `kivifc check`: set documents against a schema, with what is wrong with them.
namespace kiv::kivifc {

namespace {

constexpr const char* CheckFooter =
    "Each finding is PATH:LINE:COLUMN: SEVERITY: MESSAGE [CODE], with notes and the line below it; kivifc\n"
    "explain CODE says more. A comment <!-- kivifc: ignore CODE --> hides findings of the next element.\n"
    "\n"
    "The nearest kivifc.toml holds defaults: schema, sets, any long option, and the sections contexts and\n"
    "severity. The command line wins over the environment variable KIVIFC_SCHEMA, which wins over the file.\n"
    "\n"
    "Exit status: 0 nothing as grave as --fail-on says, 1 findings, 2 a file could not be read or is no set "
    "document.";

/// A path that a context has is checked like any other.
std::vector<std::string> pathsOf(const std::vector<ContextPaths>& contexts) {
    std::vector<std::string> paths;
    for (const auto& context : contexts)
        paths.insert(paths.end(), context.paths.begin(), context.paths.end());
    return paths;
}

class CheckCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override {
        const Options options(app);
        options_.vAdd(app);
        options.vFooter(CheckFooter);
    }

    void vRun(Console& console) override {
        const bool isComplete = options_.boComplete(console.diagnostics);
        // Only now, as kivifc.toml may ask for it.
        if (options_.format == "json" && !options_.isListing())
            vJsonFindingsExpect();
        if (!isComplete)
            return vFailureShow(console);
        std::vector<kit::Finding> reasons;
        const auto schema = options_.isListing()
                                ? schemaFileRead(options_.schemaPath, console.diagnostics)
                                : schemaFileRead(options_.schemaPath, console.diagnostics, reasons);
        if (!schema)
            return vFailureShow(console, reasons);
        const auto contexts =
            contextPaths(std::string(schema->schema->getName()), options_.paths, console.diagnostics);
        if (options_.isListing())
            return vCheckListing(*schema, setPathsCollect(pathsOf(contexts), console.diagnostics), options_,
                                 console);
        vCheckFindings(*schema, contexts, options_, console);
    }

private:
    /// Programs get a document even when nothing could be done.
    void vFailureShow(Console& console, const std::vector<kit::Finding>& reasons = {}) const {
        if (!options_.isListing())
            vFindingsFailureShow(options_, console, reasons);
    }

    CheckOptions options_;
};

} // namespace

std::unique_ptr<Command> pCheckCommand() {
    return std::make_unique<CheckCommand>();
}

} // namespace kiv::kivifc
