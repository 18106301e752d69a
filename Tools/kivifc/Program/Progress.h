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
#include <functional>

namespace kiv::kivifc {

class Progress {
public:
    using Clock = std::chrono::steady_clock;

    /// A job that is done within half a second shows nothing. `now` answers the time; tests have one of their
    /// own.
    Progress(std::FILE* stream, std::size_t total, std::function<Clock::time_point()> now = Clock::now);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    /// Leaves a clean line.
    ~Progress();

    /// Shows how many are done; at most ten times a second.
    void vShow(std::size_t done);

    /// Takes away what is shown.
    void vHide();

private:
    std::FILE* stream_;
    std::size_t total_;
    bool isTerminal_;
    bool isShown_ = false;
    std::function<Clock::time_point()> now_;
    Clock::time_point next_;
};

} // namespace kiv::kivifc
