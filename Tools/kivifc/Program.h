/// kivifc as a whole: from the arguments to the exit status.
///
///     int main(int argc, char** argv) {
///         return static_cast<int>(kiv::kivifc::programRun(argc, argv));
///     }
///
/// Threads: one program a process, as it decides what becomes of signals, of a lack of memory and of std::terminate.
/// Errors:  told on standard error, one line each, and by the status; nothing is thrown.
#pragma once

#include "kivifc/ExitStatus.h"

namespace kiv::kivifc {

ExitStatus programRun(int argc, char** argv);

} // namespace kiv::kivifc
