#include "kivifc/Commands/CommandLine.h"

#include "kivifc/Commands/CheckFindings.h"
#include "kivifc/Commands/CheckOptions.h"
#include "kivifc/Commands/CommandTable.h"
#include "kivifc/Commands/NumberText.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Findings/FindingWriter.h"
#include "kivifc/Program/Version.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <exception>
#include <fmt/format.h>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::kivifc {

namespace {

constexpr const char* Description =
    "kivifc reads IFC schemas and the property and quantity sets defined for them.";

constexpr const char* StatusHelp =
    "Exit status: 0 all is fine, 1 something is wrong with what was looked at,\n"
    "2 the job could not be done, for one input at least.\n"
    "\n"
    "In JSON, a path that is not UTF-8 has a second member, pathBytes, in which each byte but letters,\n"
    "digits and - . _ ~ / is %XX, its number in hexadecimal digits. The name of a context has nameBytes.";

void vLimitsAdd(CLI::App& app) {
    for (const auto& limit : getLimitOptions()) {
        auto* const option = app.add_option(limit.name, readingBudget().*limit.value, limit.description);
        option->group("Limits")->type_name(limit.isSize ? "SIZE" : "NUMBER");
        option->transform(CLI::Validator(limit.isSize ? sizeCheck() : numberCheck({}), "", "number"));
    }
}

/// Begins what is no option and no command, whatever it looks like.
constexpr char PlainMark = '\x01';

/// The argument without that mark.
std::string sUnmarked(std::string argument) {
    if (argument.starts_with(PlainMark))
        argument.erase(0, 1);
    return argument;
}

/// The arguments as the parser wants them: the last one first. It accepts "--" only while arguments are
/// missing, so those after it are marked instead. One in brackets, "[a,b]", would be taken for a list; as
/// only paths look like that, it is written as one.
std::vector<std::string> argumentsOf(int argc, char** argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    const auto end = std::ranges::find(arguments, "--");
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (argument > end || argument->starts_with(PlainMark))
            argument->insert(argument->begin(), PlainMark);
        else if (argument->starts_with('[') && argument->ends_with(']'))
            argument->insert(0, "./");
    }
    if (end != arguments.end())
        arguments.erase(end);
    std::ranges::reverse(arguments);
    return arguments;
}

/// Has the marks taken off the arguments of a command.
void vUnmark(CLI::App& command) {
    for (auto* const option : command.get_options()) {
        if (option->get_positional())
            option->transform(sUnmarked);
    }
}

/// The commands of which `isAsked` says so of their names are made, with their options.
template <typename IsAsked>
std::vector<ParsedCommand> commandsAdd(CLI::App& app, IsAsked isAsked) {
    app.description(Description);
    app.name("kivifc");
    app.set_version_flag("--version", sVersion());
    app.add_flag_callback(
        "--limits", [] { throw CLI::CallForVersion(sLimits(), 0); },
        "Show the limits of what is read, with their defaults, and exit");
    // None is accepted here, so that a command that does not exist is reported by its name instead of as
    // missing.
    app.require_subcommand(0, 1);
    app.get_formatter()->column_width(36);
    app.footer(StatusHelp);
    std::vector<ParsedCommand> commands;
    for (const auto& entry : getCommands()) {
        auto* parser = app.add_subcommand(entry.name, entry.description);
        commands.push_back({parser, isAsked(entry.name) ? entry.pCreate() : nullptr});
        if (!commands.back().command)
            continue;
        commands.back().command->vOptionsAdd(*parser);
        vUnmark(*parser);
        if (entry.isReader)
            vLimitsAdd(*parser);
    }
    return commands;
}

/// The format in which the arguments ask for findings; empty for none. Needs no memory.
std::string_view askedFormat(int argc, char** argv) {
    constexpr std::string_view Option = "--format";
    for (int index = 1; index < argc; ++index) {
        const std::string_view argument = argv[index];
        if (argument == Option && index + 1 < argc)
            return argv[index + 1];
        if (argument.starts_with(Option) && argument.substr(Option.size()).starts_with('='))
            return argument.substr(Option.size() + 1);
    }
    return {};
}

/// Programs get their document even when nothing could be done.
void vFailureDocumentWrite(std::string_view format, Console& console) {
    constexpr std::array<std::string_view, 4> Formats{"json", "sarif", "github", "junit"};
    if (std::ranges::find(Formats, format) == Formats.end())
        return;
    CheckOptions options;
    options.format = format;
    vFindingsFailureShow(options, console);
}

void vRun(Command& command, std::string_view format, Console& console) {
    try {
        command.vRun(console);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        console.diagnostics.vFail("this job", error.what());
        // It is written whole or not at all; of the others there may be a part.
        if (format == "json")
            vFailureDocumentWrite(format, console);
    }
}

void vParseAndRun(std::vector<std::string>&& arguments, std::string_view format, Console& console) {
    CLI::App app;
    // A command that is not among the arguments is not run, whatever else they are.
    const auto commands = commandsAdd(
        app, [&](const char* name) { return std::ranges::find(arguments, name) != arguments.end(); });
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::Success& request) {
        // --help, --version and --limits. Written here, so that a full disk is reported for them too.
        std::ostringstream text;
        app.exit(request, text, text);
        return console.output.vWrite(text.str());
    } catch (const CLI::ParseError& error) {
        std::string reason = error.what();
        std::erase(reason, PlainMark);
        console.diagnostics.vFail("command line", fmt::format("{}; see kivifc --help", reason));
        return vFailureDocumentWrite(format, console);
    }
    const auto chosen = std::ranges::find_if(commands, [](auto& each) { return each.parser->parsed(); });
    if (chosen == commands.end())
        return console.diagnostics.vFail("command line", "a command is missing; see kivifc --help");
    vRun(*chosen->command, format, console);
}

} // namespace

std::vector<ParsedCommand> commandLineSetUp(CLI::App& app) {
    return commandsAdd(app, [](const char*) { return true; });
}

ExitStatus commandLineRun(int argc, char** argv) {
    const auto format = askedFormat(argc, argv);
    if (format == "json")
        vJsonFindingsExpect();
    return programRun([&](Console& console) { vParseAndRun(argumentsOf(argc, argv), format, console); });
}

} // namespace kiv::kivifc
