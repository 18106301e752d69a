/// @file
/// What the environment says.
///
///     if (sEnvironment("NO_COLOR").empty())
///         vColour(text);
///
/// Threads: any; nothing in the program changes the environment.
#pragma once

#include <cstdlib>
#include <string>

namespace kiv::kivifc {

/// Empty when the variable is not set.
inline std::string sEnvironment(const char* name) {
    // NOLINTNEXTLINE(concurrency-mt-unsafe): nothing changes the environment
    const auto* const value = std::getenv(name);
    return value ? value : "";
}

} // namespace kiv::kivifc
