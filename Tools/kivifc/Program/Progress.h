/// @file
/// Shows on a terminal how far a long job has come; elsewhere it shows nothing.
///
///     Progress progress(stderr, paths.size());
///     for (...) {
///         progress.vShow(done);
///         ...
///         progress.vHide(); // before a line is written
///     }
///
/// Ownership: refers to the stream, which must outlive it.
/// Threads:   one thread at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>

namespace kiv::kivifc {

class Progress {
public:
    /// A job that is done within `delay` shows nothing.
    Progress(std::FILE* stream, std::size_t total,
             std::chrono::milliseconds delay = std::chrono::milliseconds(500));
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /// Leaves a clean line.
    ~Progress();

    /// Shows how many are done; at most ten times a second.
    void vShow(std::size_t done);

    /// Takes away what is shown.
    void vHide();

private:
    using Clock = std::chrono::steady_clock;

    std::FILE* stream_;
    std::size_t total_;
    bool isTerminal_;
    bool isShown_ = false;
    Clock::time_point next_;
};

} // namespace kiv::kivifc
