/// @file
/// Room Program: what every run of a command-line program needs, whatever it does.
///
/// A run from its beginning to its exit status:
///
///     int main() {
///         const auto status = programRun([](Console& console) { console.output.vWrite("hello\n"); });
///         return static_cast<int>(status);
///     }
///
/// Threads: one program a process, as it takes over signals, the lack of memory and std::terminate.
/// Errors:  reported on standard error, one line each, and by the status, a closed pipe by the status alone;
///          nothing is thrown.
#pragma once

#include "kivifc/Program/Diagnostics.h"
#include "kivifc/Program/ExitStatus.h"
#include "kivifc/Program/Output.h"

#include <functional>
#include <string_view>

namespace kiv::kivifc {

/// Where a run writes to.
struct Console {
    Output& output;
    Diagnostics& diagnostics;
};

/// What standard output gets when a lack of memory ends the program, for those who expect a document there.
/// The text lives as long as the process; empty for nothing.
void vLastWordsSet(std::string_view text) noexcept;

/// Runs the job once. Of exceptions it may let out std::bad_alloc only.
ExitStatus programRun(const std::function<void(Console&)>& job);

} // namespace kiv::kivifc
