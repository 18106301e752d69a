/// @file
/// The command line of kivifc, from the arguments to the exit status.
///
///     int main(int argc, char** argv) {
///         return static_cast<int>(kiv::kivifc::commandLineRun(argc, argv));
///     }
///
/// Threads: one program a process, see `programRun`.
/// Errors:  reported on standard error, one line each, and by the status; nothing is thrown.
#pragma once

#include "kivifc/Commands/Command.h"

#include <memory>
#include <vector>

namespace kiv::kivifc {

/// A command together with the parser that knows whether it was asked for.
struct ParsedCommand {
    CLI::App* parser;
    std::unique_ptr<Command> command;
};

/// Gives the parser the options and all commands of kivifc. What is returned must outlive the parsing.
std::vector<ParsedCommand> commandLineSetUp(CLI::App& app);

ExitStatus commandLineRun(int argc, char** argv);

} // namespace kiv::kivifc
