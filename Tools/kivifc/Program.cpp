#include "kivifc/Program.h"

#include "kivifc/Command.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fmt/format.h>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace kiv::kivifc {

namespace {

constexpr const char* Description =
    "kivifc reads IFC schemas and the property and quantity sets defined for them.";

constexpr const char* StatusHelp =
    "Exit status: 0 all is fine, 1 something is wrong with what was looked at,\n"
    "2 the job could not be done, for one input at least.";

void vSetUp(CLI::App& app) {
    app.name("kivifc");
    app.set_version_flag("--version", "kivifc " KIVIFC_VERSION);
    // None is let pass here, so that a command that does not exist is called by its name instead of missing.
    app.require_subcommand(0, 1);
    app.get_formatter()->column_width(36);
    app.footer(StatusHelp);
}

/// A command together with the parser that knows whether it was asked for.
struct Candidate {
    CLI::App* parser;
    std::unique_ptr<Command> command;
};

std::vector<Candidate> commandsAdd(CLI::App& app) {
    std::vector<Candidate> candidates;
    for (const auto& entry : getCommands()) {
        candidates.push_back({app.add_subcommand(entry.name, entry.description), entry.pCreate()});
        candidates.back().command->vOptionsAdd(*candidates.back().parser);
    }
    return candidates;
}

void vRun(Command& command, Console& console) {
    try {
        command.vRun(console);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        console.diagnostics.vFail("this job", error.what());
    }
}

/// The arguments as the parser wants them: the last one first. One in brackets, "[a,b]", would be taken for a list;
/// as only paths look like that, it is written as one.
std::vector<std::string> argumentsOf(int argc, char** argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    for (auto& argument : arguments) {
        if (argument.starts_with('[') && argument.ends_with(']'))
            argument.insert(0, "./");
    }
    std::ranges::reverse(arguments);
    return arguments;
}

void vParseAndRun(std::vector<std::string>&& arguments, Console& console) {
    CLI::App app(Description);
    vSetUp(app);
    const auto candidates = commandsAdd(app);
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::Success& request) {
        // --help and --version. They are written here, as a full disk is to be told of them too.
        std::ostringstream text;
        app.exit(request, text, text);
        return console.output.vWrite(text.str());
    } catch (const CLI::ParseError& error) {
        console.diagnostics.vFail("command line", fmt::format("{}; see kivifc --help", error.what()));
        return;
    }
    const auto chosen = std::ranges::find_if(candidates, [](auto& each) { return each.parser->parsed(); });
    if (chosen == candidates.end())
        return console.diagnostics.vFail("command line", "a command is missing; see kivifc --help");
    vRun(*chosen->command, console);
}

ExitStatus allRun(int argc, char** argv) {
    Output output(stdout);
    Diagnostics diagnostics(output, stderr);
    Console console{output, diagnostics};
    vParseAndRun(argumentsOf(argc, argv), console);
    if (const auto failure = output.sFinish(); !failure.empty())
        diagnostics.vFail("standard output", failure);
    return diagnostics.getStatus();
}

/// Without any memory, as there is none.
ExitStatus memoryFailureTell() {
    std::fputs("kivifc: this job: not enough memory\n", stderr);
    return ExitStatus::Failed;
}

/// Whether an allocation ever failed. Streams keep that to themselves, and what they are to hold then ends somewhere.
bool wasMemoryShort = false;

void onMemoryShort() {
    wasMemoryShort = true;
    throw std::bad_alloc();
}

std::terminate_handler onOtherEnd = nullptr;

/// Taking a JSON value apart needs memory, in a destructor, from which no exception can come; and so may an exception.
[[noreturn]] void onEnd() {
    if (wasMemoryShort)
        std::_Exit(static_cast<int>(memoryFailureTell()));
    onOtherEnd();
    std::abort();
}

} // namespace

ExitStatus programRun(int argc, char** argv) {
    // A reader that goes away is met as a failing write, which is told, instead of a silent end.
    std::signal(SIGPIPE, SIG_IGN);
    std::set_new_handler(onMemoryShort);
    onOtherEnd = std::set_terminate(onEnd);
    try {
        const auto status = allRun(argc, argv);
        return wasMemoryShort && status != ExitStatus::Failed ? memoryFailureTell() : status;
    } catch (const std::bad_alloc&) {
        return memoryFailureTell();
    }
}

} // namespace kiv::kivifc
