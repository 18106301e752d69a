/// @file
/// The commands of kivifc, one row each.
///
///     for (const auto& entry : getCommands())
///         app.add_subcommand(entry.name, entry.description);
///
/// To add a command, write `NAME.cpp` beside this file with a class derived from `Command` and the function
/// that makes one, declare that function here, and give it a row in CommandTable.cpp.
///
/// Ownership: the table is constant; a command is the caller's.
/// Threads:   the table may be read from any number of threads.
/// Errors:    std::bad_alloc from those that make a command.
#pragma once

#include "kivifc/Commands/Command.h"

#include <memory>
#include <span>

namespace kiv::kivifc {

// Each is defined in the file of its name: `Check.cpp` and so on.
std::unique_ptr<Command> pCheckCommand();
std::unique_ptr<Command> pConfigCommand();
std::unique_ptr<Command> pEntityCommand();
std::unique_ptr<Command> pExplainCommand();
std::unique_ptr<Command> pExportCommand();
std::unique_ptr<Command> pFindCommand();
std::unique_ptr<Command> pSchemaCommand();
std::unique_ptr<Command> pSetsCommand();
std::unique_ptr<Command> pSiteCommand();
std::unique_ptr<Command> pTypeCommand();

/// One row of the table.
struct CommandEntry {
    const char* name;
    const char* description;
    std::unique_ptr<Command> (*pCreate)();
    /// Whether it has the options that limit what is read.
    bool isReader = true;
};

/// All commands, in the order in which the help shows them.
std::span<const CommandEntry> getCommands();

} // namespace kiv::kivifc
