#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/Options.h"
#include "kivifc/Commands/SiteOptions.h"
#include "kivifc/Documents/SchemaWithSets.h"
#include "kivifc/Program/AsciiText.h"
#include "kivifc/Program/Environment.h"
#include "kivifc/Program/OneLine.h"
#include "kivifc/Site/SiteFolder.h"
#include "kivifc/Site/SiteModel.h"
#include "kivifc/Site/SitePages.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fmt/format.h>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

// `kivifc site`: a schema and its sets as pages for a web browser.
namespace kiv::kivifc {

namespace {

namespace fs = std::filesystem;

constexpr const char* SiteFooter =
    "Open DIR/index.html in a browser; no server is needed, and no page asks for anything outside of DIR.\n"
    "\n"
    "The site is written beside DIR and takes its place when it is complete; when anything fails, a "
    "document\n"
    "that cannot be read included, the former one stays. DIR is only replaced when it is empty, or a site "
    "of\n"
    "kivifc with no other files in it, unless --force is given; a DIR that is or contains the current "
    "folder,\n"
    "the home folder, kivifc.toml or anything that is read is refused in any case. Equal input gives equal\n"
    "files.\n"
    "\n"
    "In kivifc.toml, out and title of the section [site] are the options of these names; schema, sets\n"
    "and [contexts] are those of kivifc check.\n"
    "\n"
    "Exit status: 0 the site is written with all that was read, 1 the schema has errors, so that pages may "
    "lack\n"
    "what it declares, or sets were refused or have a name that is taken, 2 a file could not be read or the\n"
    "site could not be written.";

/// Whether a path leads to a folder or into it.
bool isWithin(const fs::path& path, const fs::path& folder) {
    std::error_code error;
    const auto inner = fs::weakly_canonical(fs::absolute(path, error), error);
    auto outer = fs::weakly_canonical(fs::absolute(folder, error), error);
    // With a slash at its end.
    if (!outer.has_filename())
        outer = outer.parent_path();
    return !error && std::ranges::mismatch(outer, inner).in1 == outer.end();
}

/// What is read that would be gone with the folder when this is replaced; empty for nothing.
std::string sReadFrom(const SiteOptions& options) {
    std::vector<std::string> paths = options.sets;
    paths.push_back(options.schemaPath);
    if (!options.getProjectPath().empty())
        paths.push_back(options.getProjectPath());
    for (const auto& path : paths) {
        std::error_code error;
        const auto name = path.find('=');
        const bool isNamed = name != std::string::npos && !fs::exists(path, error);
        if (isWithin(isNamed ? path.substr(name + 1) : path, options.folder))
            return path;
    }
    return {};
}

/// Why a folder is never replaced, whatever it has; empty when it may be.
std::string sKeptReason(const SiteOptions& options) {
    if (const auto path = sReadFrom(options); !path.empty())
        return fmt::format("is replaced whole, and \"{}\" is in it", path);
    // Most likely "." or "~" where a folder in it was meant, and all work is in it.
    if (isWithin(".", options.folder))
        return "is replaced whole, and the current folder is it or in it";
    if (const auto home = sEnvironment("HOME"); !home.empty() && isWithin(home, options.folder))
        return "is replaced whole, and the home folder is it or in it";
    return {};
}

void vErrorsNote(const std::string& path, std::size_t count, Diagnostics& diagnostics) {
    diagnostics.vFinding();
    diagnostics.vNote(path,
                      fmt::format("the schema has {} error{}, so pages may lack what it declares (kivifc "
                                  "schema and kivifc check list {})",
                                  count, count == 1 ? "" : "s", count == 1 ? "it" : "them"));
}

class SiteCommand final : public Command {
public:
    void vOptionsAdd(CLI::App& app) override;
    void vRun(Console& console) override;

private:
    SiteOptions options_;
};

} // namespace

void SiteCommand::vOptionsAdd(CLI::App& app) {
    options_.vAdd(app);
    Options(app).vFooter(SiteFooter);
}

void SiteCommand::vRun(Console& console) {
    auto& diagnostics = console.diagnostics;
    if (!options_.boComplete(diagnostics))
        return;
    if (const auto reason = sKeptReason(options_); !reason.empty())
        return diagnostics.vFail(options_.folder, reason);
    // First, so that nobody waits for a site that is then refused.
    site::SiteFolder folder(options_.folder, options_.isForced);
    if (!folder.getFailure().empty())
        return diagnostics.vFail(options_.folder, folder.getFailure());
    const auto loaded = schemaWithSetsRead(options_.schemaPath, options_.sets, diagnostics);
    if (!loaded)
        return;
    // A site without them would look complete.
    if (!diagnostics.getFailures().empty())
        return diagnostics.vNote(options_.folder, "no site is written, as not everything could be read");
    // A title of blanks would be a link that nobody sees.
    const bool hasTitle = !ascii::trimmed(options_.title, " \t\r\n").empty();
    const auto title = hasTitle ? options_.title : std::string(loaded->schema.schema->getName());
    const site::SiteModel model(*loaded, title);
    site::vSitePagesWrite(model, folder);
    const auto failure = folder.sFinish();
    if (!failure.empty())
        return diagnostics.vFail(options_.folder, failure);
    if (!loaded->unusedSets.empty())
        diagnostics.vFinding();
    if (model.countSchemaErrors() > 0)
        vErrorsNote(loaded->schema.path, model.countSchemaErrors(), diagnostics);
    console.output.vWrite(fmt::format("{}/index.html: {} files, {} KiB\n", sOneLine(options_.folder),
                                      folder.getCount(), folder.getBytes() / 1024));
}

std::unique_ptr<Command> pSiteCommand() {
    return std::make_unique<SiteCommand>();
}

} // namespace kiv::kivifc
