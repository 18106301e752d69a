/// @file
/// Runs the built program as a user would, and keeps what came of it.
///
///     const auto run = kivifcRun({"schema", "Building.exp"});
///     EXPECT_EQ(run.status, 0);
///
/// Errors: a program that cannot be started, or that a signal ends, is std::runtime_error, which fails the
/// test.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

struct Run {
    int status = -1;
    std::string out;
    std::string err;
};

/// For GoogleTest, which finds it by its name.
void PrintTo(const Run& run, std::ostream* stream);

struct RunOptions {
    /// What the program finds on standard input.
    std::string input = {};
    /// Where its standard output goes; a file that can be read back when empty.
    std::string outputPath = {};
    /// Its standard output is a pipe that nobody reads.
    bool isOutputClosed = false;
    /// Another program, run in its place.
    std::string program = {};
    /// Where it runs, instead of in the folder of the sample data.
    std::string folder = {};
    /// What is set for it, "NAME=VALUE".
    std::vector<std::string> environment = {};
};

/// The program runs in the folder of the sample data, so that paths in its output are short.
Run kivifcRun(const std::vector<std::string>& arguments, const RunOptions& options = {});

/// The lines of a text, without their ends.
std::vector<std::string> linesOf(const std::string& text);

} // namespace kiv::kivifc::test
