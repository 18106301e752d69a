/// A subcommand of kivifc: its options and its work.
///
/// To add one, write a pair of files with a class derived from `Command`, and give it a line in the table of
/// Commands.cpp.
#pragma once

#include "kivifc/Diagnostics.h"
#include "kivifc/Output.h"

#include <memory>
#include <span>

namespace CLI {
class App;
}

namespace kiv::kivifc {

/// Where a command writes to.
struct Console {
    Output& output;
    Diagnostics& diagnostics;
};

class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command();

    /// Tells the command line parser the options and arguments, which it fills in before `vRun`.
    virtual void vOptionsAdd(CLI::App& app) = 0;

    /// Does the work. How it went is for `console.diagnostics` to tell.
    virtual void vRun(Console& console) = 0;
};

/// One line of the table of commands.
struct CommandEntry {
    const char* name;
    const char* description;
    std::unique_ptr<Command> (*pCreate)();
};

/// All commands, in the order in which the help shows them.
std::span<const CommandEntry> getCommands();

} // namespace kiv::kivifc
