/// @file
/// How a run of kivifc ended, for scripts to read.
#pragma once

namespace kiv::kivifc {

/// The numbers are part of the interface; of two that hold, the higher one wins.
enum class ExitStatus : int {
    Fine = 0,
    /// The job was done and something is wrong with what was looked at.
    Findings = 1,
    /// The job could not be done, for one input at least.
    Failed = 2
};

} // namespace kiv::kivifc
