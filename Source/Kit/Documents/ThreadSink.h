/// @file
/// Takes the assertion reports of one thread: sinks hear of all threads of the process, and documents that
/// are read side by side are to have their own reports only.
///
///     ThreadSink sink([&](const assert::AssertInfo& info) { vKeep(info); });
///     {
///         const assert::ScopedSink installed(sink);
///         vRead();
///     }
///     sink.vCheck();
///
/// Private to the kit.
///
/// Ownership: what it calls outlives it.
/// Threads:   calls on the thread that made it, on which everything else is called too.
/// Errors:    from `vCheck`, what it calls throws; nothing is called after that.
#pragma once

#include "kiv/Host/Assert/KivAssert.h"

#include <exception>
#include <thread>
#include <utility>

namespace kiv::kit {

template <class Take>
class ThreadSink final : public assert::Sink {
public:
    explicit ThreadSink(Take take) : take_(std::move(take)), thread_(std::this_thread::get_id()) {}

    void vReport(const assert::AssertInfo& info) override {
        if (std::this_thread::get_id() != thread_ || exception_)
            return;
        try {
            take_(info);
        } catch (...) {
            exception_ = std::current_exception();
        }
    }

    /// The service drops what a sink throws. That a report could not be kept is thrown here, afterwards.
    void vCheck() const {
        if (exception_)
            std::rethrow_exception(exception_);
    }

private:
    Take take_;
    std::thread::id thread_;
    std::exception_ptr exception_;
};

} // namespace kiv::kit
