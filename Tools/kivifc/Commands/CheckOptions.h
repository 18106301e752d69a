/// @file
/// The options of `kivifc check`, from the command line, the environment and kivifc.toml.
///
///     CheckOptions options;
///     options.vAdd(app);
///     app.parse(argc, argv);
///     if (options.boComplete(diagnostics))
///         use(options.schemaPath, options.paths);
///
/// Ownership: refers to the parser, which outlives it.
/// Threads:   one thread at a time.
/// Errors:    reported; the options are then not complete.
#pragma once

#include "kivifc/Documents/ProjectInput.h"
#include "kivifc/Findings/Selection.h"
#include "kivifc/Program/Diagnostics.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace kiv::kivifc {

class CheckOptions {
public:
    void vAdd(CLI::App& app);

    /// Adds what the environment and kivifc.toml say, where the command line says nothing.
    bool boComplete(Diagnostics& diagnostics);

    /// What everything that was read is asked for, instead of findings.
    bool isListing() const { return isJson || hasWarnings || format == "report"; }

    /// Whether standard input is called something else than by default.
    bool isStandardInputNamed() const { return standardInputName != UnnamedInput; }

    Selection selection() const;

    /// The least severity that fails the check; absent for none.
    std::optional<kit::Severity> failingSeverity() const;

    std::string schemaPath;
    /// Set documents and folders, and NAME=PATH.
    std::vector<std::string> paths;
    std::vector<std::string> otherSchemas;
    /// The release of the schema; empty for what the schema shows.
    std::string release;
    std::string format = "text";
    std::string reportPath;
    std::string colour = "auto";
    std::string baselinePath;
    std::string writtenBaselinePath;
    std::string standardInputName = UnnamedInput;
    /// Absent for what suits the format; 0 for all.
    std::optional<std::size_t> findingsMax;
    /// 0 for what suits the number of documents.
    std::size_t jobs = 0;
    bool isJson = false;
    bool hasWarnings = false;
    bool isQuiet = false;
    bool isVerbose = false;
    bool isWithoutContext = false;
    bool isFix = false;
    bool isDiff = false;

private:
    static constexpr const char* UnnamedInput = "<stdin>";

    void vInputAdd(CLI::App& app);
    void vOutputAdd(CLI::App& app);
    void vChoiceAdd(CLI::App& app);
    /// Why the entry cannot be used; empty when it was, or when the command line says otherwise.
    std::string sEntryTake(const ProjectFile& project, const ProjectEntry& entry);
    void vOptionTake(const std::string& name, const std::vector<std::string>& values);
    /// Why what kivifc.toml says does not go together, or all options; empty when they do.
    std::string sProjectConflict() const;
    std::string sConflict() const;
    bool boInputCheck(Diagnostics& diagnostics) const;

    CLI::App* app_ = nullptr;
    std::string projectPath_;
    ProjectInput input_;
    /// Options that were on the command line, which the file does not change.
    std::vector<std::string> given_;
    std::string failOn_ = "error";
    std::vector<std::string> selected_;
    std::vector<std::string> ignored_;
    std::vector<std::string> severities_;
};

} // namespace kiv::kivifc
