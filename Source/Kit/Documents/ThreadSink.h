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
/// Errors:    std::bad_alloc from `vCheck`.
#pragma once

#include "kiv/Host/Assert/KivAssert.h"

#include <new>
#include <string>
#include <thread>
#include <utility>

namespace kiv::kit {

template <class Take>
class ThreadSink final : public assert::Sink {
public:
    explicit ThreadSink(Take take) : take_(std::move(take)), thread_(std::this_thread::get_id()) {}

    void vReport(const assert::AssertInfo& info) override {
        if (std::this_thread::get_id() != thread_)
            return;
        try {
            take_(info);
        } catch (const std::bad_alloc&) {
            isIncomplete_ = true;
        }
    }

    /// The service drops what a sink throws, so that a report which there was no memory to keep is thrown
    /// afterwards.
    void vCheck() const {
        if (isIncomplete_)
            throw std::bad_alloc();
    }

private:
    Take take_;
    std::thread::id thread_;
    bool isIncomplete_ = false;
};

/// The report with texts of its own.
inline assert::AssertRecord assertRecord(const assert::AssertInfo& info) {
    return {info.code, std::string(info.message), std::string(info.function), std::string(info.file),
            info.line};
}

} // namespace kiv::kit
