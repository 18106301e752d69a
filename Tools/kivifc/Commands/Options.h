/// @file
/// The options and arguments of a command, declared without the parser's own header, which takes ten times
/// as long to compile as the command.
///
///     Options options(app);
///     options.text("FILE", schemaPath_, "The schema file").required();
///     options.flag("--json", isJson_, "Write the answer as JSON");
///     options.vFooter("Exit status: 0 found, 1 not found.");
///
/// Ownership: refers to the parser, and the parser to the values, which must outlive the parsing.
/// Threads:   one thread.
/// Errors:    none; a name that is declared twice is a mistake of ours and ends the program.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace kiv::kivifc {

/// What is said of one option once it is declared.
class DeclaredOption {
public:
    explicit DeclaredOption(CLI::Option* option) : option_(option) {}

    const DeclaredOption& required() const;
    /// What help texts call the value.
    const DeclaredOption& valueName(const char* name) const;
    const DeclaredOption& excludes(const DeclaredOption& other) const;
    /// `sFailure` gives what is wrong with a value; empty for nothing.
    const DeclaredOption& check(const std::function<std::string(const std::string&)>& sFailure) const;

private:
    CLI::Option* option_;
};

class Options {
public:
    explicit Options(CLI::App& app) : app_(app) {}

    DeclaredOption text(const char* name, std::string& value, const char* description) const;
    /// One or more of them.
    DeclaredOption texts(const char* name, std::vector<std::string>& values, const char* description) const;
    DeclaredOption flag(const char* name, bool& isGiven, const char* description) const;
    /// With a value or without; `vTake` then gets an empty one.
    DeclaredOption textOrFlag(const char* name, const std::function<void(const std::string&)>& vTake,
                              const char* description) const;
    /// The paragraphs below the list of options.
    void vFooter(const char* text) const;

private:
    CLI::App& app_;
};

} // namespace kiv::kivifc
