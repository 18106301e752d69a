/// @file
/// Room Commands: what kivifc can be asked to do, one file a command, on top of all other rooms.
///
/// A command is a subcommand of the command line: its options and its work.
///
///     const auto command = pCheckCommand();
///     command->vOptionsAdd(*app.add_subcommand("check"));
///     app.parse(argc, argv);
///     command->vRun(console);
///
/// Threads: one command a process at a time.
#pragma once

#include "kivifc/Program/Program.h"

namespace CLI {
class App;
}

namespace kiv::kivifc {

class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    /// Declares the options and arguments, which the parser stores in the command before `vRun`: the command
    /// must outlive the parsing.
    virtual void vOptionsAdd(CLI::App& app) = 0;

    /// Does the work. Its outcome is the status of `console.diagnostics`.
    virtual void vRun(Console& console) = 0;
};

} // namespace kiv::kivifc
