/// @file
/// Room Manual: the man pages and completions of kivifc, generated from the options that it really has.
///
/// The commands as texts, read from the parser of the program itself:
///
///     const auto texts = programTexts();
///     for (const auto& command : texts.commands)
///         use(sCommandManPage(texts, command));
///
/// Ownership: values, which refer to nothing.
/// Threads:   one thread: the parser is made anew for each call.
/// Errors:    std::bad_alloc.
#pragma once

#include <string>
#include <vector>

namespace kiv::kivifc {

/// What a shell offers for a value.
enum class Completion { None, Files, Folders, Choices };

/// An option, or a positional argument when it has no names.
struct OptionText {
    /// "-h", "--help".
    std::vector<std::string> names;
    /// What the help calls its value; empty for a flag.
    std::string value;
    /// The values that are allowed; empty for any.
    std::vector<std::string> choices;
    std::string description;
    Completion completion = Completion::None;
    bool isRequired = false;
    /// The option may be given without its value.
    bool isValueOptional = false;
    /// The argument may be repeated.
    bool isRepeated = false;
};

/// An example, run in the folder of the sample data.
struct ExampleText {
    std::string command;
    std::string description;
};

struct CommandText {
    /// "check"; "kivifc" for the program.
    std::string name;
    std::string description;
    /// Paragraphs, without those of the exit status.
    std::vector<std::string> notes;
    /// What the numbers 0, 1 and 2 mean, in this order.
    std::vector<std::string> exitStatus;
    std::vector<OptionText> positionals;
    std::vector<OptionText> options;
    std::vector<ExampleText> examples;
};

struct ProgramTexts {
    std::string version;
    CommandText program;
    std::vector<CommandText> commands;
};

ProgramTexts programTexts();

} // namespace kiv::kivifc
