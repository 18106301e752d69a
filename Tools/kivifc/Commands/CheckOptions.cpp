#include "kivifc/Commands/CheckOptions.h"

#include "kiv/Kit/Names/NearestName.h"
#include "kiv/Kit/Names/SchemaRelease.h"
#include "kivifc/Commands/NumberText.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <limits>
#include <string_view>

namespace kiv::kivifc {

namespace {

/// Keys of kivifc.toml that are no options.
constexpr std::array<std::string_view, 2> InputKeys{"schema", "sets"};

/// Options whose values are paths, which are relative to the file that they are in.
constexpr std::array<std::string_view, 3> PathKeys{"also", "baseline", "report"};

/// Options that make no sense in a file.
constexpr std::array<std::string_view, 3> CommandLineKeys{"config-file", "help", "write-baseline"};

template <typename Names>
bool isAmong(const Names& names, std::string_view name) {
    return std::ranges::find(names, name) != std::ranges::end(names);
}

/// The description keeps the help of an option as it is.
CLI::Validator codeValidator() {
    return CLI::Validator(
        [](std::string& value) {
            std::string failure;
            value = sCodeOf(value, failure);
            return failure;
        },
        "", "code");
}

/// "t001=Warning" becomes "T001=warning".
std::string sSeverityFailure(std::string& value) {
    const auto separator = value.find('=');
    if (separator == std::string::npos)
        return fmt::format("\"{}\" is not CODE=LEVEL", value);
    const auto level = value.substr(separator + 1);
    if (!severityFrom(level))
        return fmt::format("\"{}\" is none of error, warning, note", level);
    std::string failure;
    value = sCodeOf(value.substr(0, separator), failure) + '=' + level;
    return failure;
}

/// Editions that only their family is known of are releases too.
std::string sReleaseFailure(std::string& name) {
    const bool isKnown = kit::compareReleases(name, name) != kit::ReleaseMatch::Unknown;
    return isKnown ? "" : fmt::format("no release of IFC is named \"{}\"", name);
}

std::string sUnknownKey(const CLI::App& app, std::string_view key) {
    std::vector<std::string> names(InputKeys.begin(), InputKeys.end());
    for (const auto* option : app.get_options()) {
        for (const auto& name : option->get_lnames())
            names.push_back(name);
    }
    std::erase_if(names, [](const auto& name) { return isAmong(CommandLineKeys, name); });
    const std::vector<std::string_view> candidates(names.begin(), names.end());
    const auto nearest = kit::nearestName(key, candidates);
    return fmt::format("no key is named \"{}\"{}", key,
                       nearest ? fmt::format(", did you mean \"{}\"?", nearest->name) : "");
}

} // namespace

void CheckOptions::vAdd(CLI::App& app) {
    app_ = &app;
    vInputAdd(app);
    vOutputAdd(app);
    vChoiceAdd(app);
}

void CheckOptions::vInputAdd(CLI::App& app) {
    app.add_option(
        "FILE", schemaPath,
        "The schema file; left out when KIVIFC_SCHEMA or kivifc.toml names it, and then recognised "
        "by its extension .exp");
    app.add_option(
        "PATH", paths,
        "Set documents, and folders of *.xml to search; - is standard input, NAME=PATH are the sets "
        "of the context NAME");
    app.add_option("--also", otherSchemas,
                   "A schema of another release, to say which one knows what this one does not")
        ->allow_extra_args(false)
        ->type_name("FILE");
    app.add_option("--release", release,
                   "The release of the schema, IFC4_ADD2 for example; by default what its entities show")
        ->type_name("NAME")
        ->check(CLI::Validator(sReleaseFailure, "", "release"));
    app.add_option("--config-file", projectPath_, "Read the options from this file instead of kivifc.toml")
        ->type_name("FILE");
    app.add_option("--stdin-filename", standardInputName, "What to call standard input")->type_name("NAME");
    app.add_option("--jobs,-j", jobs,
                   "Read documents on this many threads; by default on all cores when they "
                   "are 200 or more")
        ->type_name("N")
        ->transform(CLI::Validator(numberCheck({1, 1024}), "", "number"));
}

void CheckOptions::vOutputAdd(CLI::App& app) {
    auto* formatOption =
        app.add_option(
               "--format", format,
               "text: lines with their places; report: the library's report text alone; the others are "
               "for programs")
            ->check(CLI::IsMember({"text", "report", "json", "sarif", "github", "junit"}))
            ->capture_default_str();
    app.add_flag("--json", isJson, "Write everything that was read, with records and assertions, as JSON")
        ->excludes(formatOption);
    app.add_option("--report", reportPath, "Write the library's report text to this file as well")
        ->type_name("FILE");
    app.add_flag(
        "--warnings", hasWarnings,
        "List the records and assertion reports as they were made, the numbers of what was read, and "
        "the time that took");
    app.add_option("--color", colour, "Colour the text; auto does so on a terminal unless NO_COLOR is set")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
    app.add_flag("-q,--quiet", isQuiet, "Leave out the summary");
    app.add_flag("--no-context", isWithoutContext, "Leave out the lines of the documents");
    app.add_flag("--verbose", isVerbose, "Show what the library reports of correct documents too");
    app.add_option("--max-findings", findingsMax,
                   "Show up to N findings of each code; by default 50 in text and all elsewhere; 0 shows all")
        ->type_name("N")
        ->transform(CLI::Validator(numberCheck({0, std::numeric_limits<int>::max()}), "", "number"));
}

void CheckOptions::vChoiceAdd(CLI::App& app) {
    app.add_option("--fail-on", failOn_,
                   "The least severity in documents that makes the exit status 1; in the schema errors do. "
                   "--format report does not look at it")
        ->check(CLI::IsMember({"error", "warning", "note", "never"}))
        ->capture_default_str();
    const auto vCodesAdd = [&](const char* name, std::vector<std::string>& codes, const char* description) {
        app.add_option(name, codes, description)
            ->delimiter(',')
            ->allow_extra_args(false)
            ->type_name("CODE,...")
            ->transform(codeValidator());
    };
    vCodesAdd("--ignore", ignored_, "Leave out findings of these codes; T means all that begin with T");
    vCodesAdd("--select", selected_, "Show findings of these codes only");
    app.add_option("--severity", severities_, "Give findings of a code this severity: error, warning or note")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("CODE=LEVEL")
        ->transform(CLI::Validator(sSeverityFailure, "", "severity"));
    app.add_option("--baseline", baselinePath, "Hide the findings that this file lists")->type_name("FILE");
    app.add_option("--write-baseline", writtenBaselinePath,
                   "Write the findings to this file, to hide them later")
        ->type_name("FILE");
    auto* fix = app.add_flag("--fix", isFix, "Mend what needs no judgement in the documents themselves");
    app.add_flag("--diff", isDiff, "Show as a patch what --fix would do")->excludes(fix);
}

Selection CheckOptions::selection() const {
    Selection selection{selected_, ignored_, {}};
    for (const auto& severity : severities_) {
        const auto separator = severity.find('=');
        selection.severities[severity.substr(0, separator)] =
            severityFrom(severity.substr(separator + 1)).value_or(kit::Severity::Error);
    }
    return selection;
}

std::optional<kit::Severity> CheckOptions::failingSeverity() const {
    return severityFrom(failOn_);
}

bool CheckOptions::boComplete(Diagnostics& diagnostics) {
    for (const auto* option : app_->get_options()) {
        if (option->count() > 0)
            given_.push_back(option->get_name());
    }
    const auto sTake = [&](const ProjectFile& project, const ProjectEntry& entry) {
        try {
            return sEntryTake(project, entry);
        } catch (const CLI::Error& error) {
            return std::string(error.what());
        }
    };
    if (!boProjectRead(projectPath_, diagnostics, sTake))
        return false;
    if (const auto conflict = sProjectConflict(); !conflict.empty()) {
        diagnostics.vFail(projectPath_.empty() ? "kivifc.toml" : projectPath_, conflict);
        return false;
    }
    input_.vComplete(schemaPath, paths);
    return boInputCheck(diagnostics);
}

std::string CheckOptions::sEntryTake(const ProjectFile& project, const ProjectEntry& entry) {
    if (ProjectInput::isNamedBy(entry))
        return input_.sEntryTake(project, entry);
    std::vector<std::string> values = entry.values;
    if (entry.section == "severity") {
        std::ranges::transform(values, values.begin(), [&](auto& value) { return entry.key + '=' + value; });
        vOptionTake("--severity", values);
        return {};
    }
    // Another command reads it.
    if (entry.section == "site")
        return {};
    if (!entry.section.empty())
        return fmt::format("no section is named \"{}\"; there are contexts, severity and site",
                           entry.section);
    if (isAmong(CommandLineKeys, entry.key) || !app_->get_option_no_throw("--" + entry.key))
        return sUnknownKey(*app_, entry.key);
    if (isAmong(PathKeys, entry.key)) {
        if (auto failure = sPathFailure(entry); !failure.empty())
            return failure;
        std::ranges::transform(values, values.begin(), [&](auto& value) { return project.sPath(value); });
    }
    vOptionTake("--" + entry.key, values);
    return {};
}

void CheckOptions::vOptionTake(const std::string& name, const std::vector<std::string>& values) {
    auto* const option = app_->get_option(name);
    const auto isGiven = [&](const CLI::Option* each) { return isAmong(given_, each->get_name()); };
    if (isGiven(option) || std::ranges::any_of(option->get_excludes(), isGiven))
        return;
    for (const auto& value : values)
        option->add_result(value);
    option->run_callback();
}

/// On the command line they are refused before, and it wins over the file: then both are in the file.
std::string CheckOptions::sProjectConflict() const {
    if (isFix && isDiff)
        return "\"fix\" and \"diff\" exclude each other";
    if (isJson && format != "text")
        return "\"json\" and \"format\" exclude each other";
    return {};
}

std::string CheckOptions::sConflict() const {
    if ((isFix || isDiff) && isListing())
        return fmt::format("--{} goes with findings, not with --json, --warnings or a report",
                           isFix ? "fix" : "diff");
    if (isDiff && format != "text")
        return fmt::format("--diff writes a patch, and does not go with --format {}", format);
    return {};
}

bool CheckOptions::boInputCheck(Diagnostics& diagnostics) const {
    auto failure = sConflict();
    if (schemaPath.empty())
        failure = "FILE, the schema, is required; see kivifc check --help";
    else if (paths.empty() && std::filesystem::path(schemaPath).extension() == ".xml")
        failure =
            fmt::format("FILE, the schema, is required before \"{}\"; see kivifc check --help", schemaPath);
    else if (paths.empty())
        failure = "PATH, a set document or folder, is required; see kivifc check --help";
    if (!failure.empty())
        diagnostics.vFail("command line", failure);
    return failure.empty();
}

} // namespace kiv::kivifc
