#include "kivifc/Program/Program.h"

#include "kivifc/Program/UnfinishedFile.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

namespace kiv::kivifc {

namespace {

ExitStatus jobRun(const std::function<void(Console&)>& job) {
    Output output(stdout);
    Diagnostics diagnostics(output, stderr);
    Console console{output, diagnostics};
    job(console);
    const auto failure = output.sFinish();
    if (output.isPipeClosed())
        diagnostics.vFailureShown();
    else if (!failure.empty())
        diagnostics.vFail("standard output", failure);
    return diagnostics.getStatus();
}

std::string_view lastWords;

/// Without any memory, as there is none.
ExitStatus memoryFailureReport() {
    if (!lastWords.empty()) // an empty view may have no address, which fwrite does not permit
        std::fwrite(lastWords.data(), 1, lastWords.size(), stdout);
    std::fflush(stdout);
    lastWords = {};
    std::fputs("kivifc: this job: not enough memory\n", stderr);
    return ExitStatus::Failed;
}

/// Whether an allocation ever failed, on whatever thread. A stream does not say so, and the text that it
/// holds is then cut short.
std::atomic<bool> wasMemoryShort = false;

void onMemoryShort() {
    wasMemoryShort = true;
    throw std::bad_alloc();
}

std::terminate_handler onOtherEnd = nullptr;

/// The destructor of a JSON value needs memory, and no exception can leave it; making an exception may need
/// memory too.
[[noreturn]] void onEnd() {
    vUnfinishedRemove();
    if (wasMemoryShort)
        std::_Exit(static_cast<int>(memoryFailureReport()));
    onOtherEnd();
    std::abort();
}

/// Comes before the constructors of all objects that libraries have outside functions: those ask for memory
/// too, and nobody catches what they throw.
[[gnu::constructor(101)]] void vMemoryWatch() {
    std::set_new_handler(onMemoryShort);
    onOtherEnd = std::set_terminate(onEnd);
}

} // namespace

void vLastWordsSet(std::string_view text) noexcept {
    lastWords = text;
}

ExitStatus programRun(const std::function<void(Console&)>& job) {
    // When the reader of a pipe ends, the next write fails and the job ends as it should: files that were
    // begun are removed. The signal would end us on the spot.
    std::signal(SIGPIPE, SIG_IGN);
    vEndSignalsCatch();
    try {
        const auto status = jobRun(job);
        return wasMemoryShort && status != ExitStatus::Failed ? memoryFailureReport() : status;
    } catch (const std::bad_alloc&) {
        return memoryFailureReport();
    }
}

} // namespace kiv::kivifc
