/// @file
/// Runs a command line in a shell and keeps what it writes to standard output.
///
///     shellRun("echo hello").out // "hello\n"
///
/// Errors: a shell that cannot be started is std::runtime_error, which fails the test.
#pragma once

#include <string>

namespace kiv::kivifc::test {

struct ShellResult {
    int status = -1;
    std::string out;
};

ShellResult shellRun(const std::string& command);

} // namespace kiv::kivifc::test
