/// @file
/// Ends the built program by a signal while it does its job.
///
///     const auto status = kivifcInterrupt({"check", "Building.exp", "-"}, SIGTERM, [] { return true; });
///     EXPECT_EQ(WTERMSIG(status), SIGTERM);
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kiv::kivifc::test {

/// Starts the program in the folder of the sample data, sends it a signal once `isReady`, and gives its
/// status as waitpid says it. What it prints is not kept.
int kivifcInterrupt(const std::vector<std::string>& arguments, int signal,
                    const std::function<bool()>& isReady);

} // namespace kiv::kivifc::test
