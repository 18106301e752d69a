/// @file
/// The assertion service: where reports of broken promises and impossible states go.
///
///     kiv::assert::CollectingSink sink;
///     {
///         const kiv::assert::ScopedSink installed(sink); // from here on reports are made and collected
///         vReadSchema();
///     }
///     vShow(sink.getRecords());
///
/// Reports are made only while at least one sink is installed; without one, nobody even looks for what could
/// be reported.
///
/// Threads: installing, removing and reporting may happen at any time from any number of threads.
/// Errors:  a report never throws and never ends the process; what a sink throws is dropped with the report.
#pragma once

#include "kiv/Base/Export.h"

#include <cstdint>
#include <iosfwd>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::assert {

/// One report. Its texts are views that live only as long as the call that makes it.
struct AssertInfo {
    /// Always 0.
    std::int32_t code = 0;
    /// What is wrong, for example "Entity not found".
    std::string_view message;
    /// The full name of the operation that reports.
    std::string_view function;
    /// The module that reports, as a source path without extension.
    std::string_view file;
    /// The number of the check within that module. Hosts filter reports by function, module and this number,
    /// which never changes and is no position in today's sources. 0 when a check has none.
    std::int32_t line = 0;
};

/// The place to which reports are made.
class KIV_EXPORT Assert {
public:
    /// Whether any sink is installed, and so whether there is any use in checking.
    static bool isEnabled() noexcept;

    /// Hands the report to every installed sink, in the order of their installation, on the calling thread.
    /// A report made by a sink while it is handling one is dropped, because it could go on for ever.
    static void addAssert(const AssertInfo& info) noexcept;
};

/// Something that takes reports.
class KIV_EXPORT Sink {
public:
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink();

    /// Takes one report; copies what it keeps. May be called from several threads at once. May itself install
    /// sinks, which then see later reports only, and remove them, this one included; but two sinks that
    /// remove each other at the same time wait for each other for ever.
    virtual void vReport(const AssertInfo& info) = 0;

protected:
    Sink();
};

/// Keeps a sink installed for as long as it lives.
///
/// Ownership: refers to the sink, which must outlive it. Installed twice, a sink receives each report twice.
/// Threads:   may be destroyed on another thread than the one that made it. Its end waits until no report is
///            using the sink any more, except one by which the sink itself is ending it.
class KIV_EXPORT ScopedSink {
public:
    explicit ScopedSink(Sink& sink);
    ScopedSink(const ScopedSink&) = delete;
    ScopedSink& operator=(const ScopedSink&) = delete;
    ~ScopedSink();

private:
    std::uint64_t number_;
};

/// A report that is kept.
struct AssertRecord {
    std::int32_t code = 0;
    std::string message;
    std::string function;
    std::string file;
    std::int32_t line = 0;

    friend bool operator==(const AssertRecord&, const AssertRecord&) = default;
};

/// Keeps all reports, in the order in which they came.
///
/// Threads: every member may be called at any time from any number of threads.
class KIV_EXPORT CollectingSink : public Sink {
public:
    CollectingSink();
    ~CollectingSink() override;

    void vReport(const AssertInfo& info) override;

    /// A copy of the reports up to now.
    std::vector<AssertRecord> getRecords() const;
    /// The reports up to now, which are then no longer kept here.
    std::vector<AssertRecord> takeRecords();
    void vClear();

private:
    mutable std::mutex mutex_;
    std::vector<AssertRecord> records_;
};

/// Writes each report to a stream: "FILE:LINE: MESSAGE (FUNCTION)" and a line end.
///
/// Ownership: refers to the stream, which must outlive it.
/// Threads:   reports of several threads never mix; nobody else may write to the stream at the same time.
class KIV_EXPORT PrintingSink : public Sink {
public:
    explicit PrintingSink(std::ostream& stream);
    ~PrintingSink() override;

    void vReport(const AssertInfo& info) override;

private:
    std::mutex mutex_;
    std::ostream& stream_;
};

} // namespace kiv::assert
