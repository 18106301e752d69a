#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <ostream>
#include <utility>

namespace kiv::assert {

namespace {

/// One installation of a sink. Each has a number of its own, and later ones have higher numbers.
struct Installation {
    std::uint64_t number = 0;
    Sink* sink = nullptr;
    /// The reports that are in the hands of the sink now.
    std::size_t reportsInSink = 0;
    /// Set while its end waits for those reports; no new ones are handed to the sink.
    bool isEnding = false;
};

/// Apart from the registry, so that asking needs no lock and is safe even while the process ends.
constinit std::atomic<std::size_t> installedCount{0};

/// The installation whose sink is handling a report on this thread; 0 when there is none.
thread_local std::uint64_t reportingNumber = 0;
/// Whether this thread is handing out a report. Stays set when the sink ends its own installation.
thread_local bool isReporting = false;

class Registry {
public:
    std::uint64_t install(Sink& sink);
    void vEnd(std::uint64_t number);
    void vReport(const AssertInfo& info);

private:
    /// Takes hold of the first installation with a number in [from, until); null when there is none left. Its
    /// sink stays in place until `vRelease`.
    Sink* pAcquire(std::uint64_t from, std::uint64_t until);
    void vRelease();
    std::vector<Installation>::iterator find(std::uint64_t number);

    std::mutex mutex_;
    std::condition_variable released_;
    std::vector<Installation> installations_;
    std::uint64_t nextNumber_ = 1;
};

/// Never destroyed, because destructors of static objects may still report, and end installations, when
/// everything made after those objects is gone.
Registry& getRegistry() {
    alignas(Registry) static std::byte place[sizeof(Registry)];
    static Registry& registry = *std::construct_at(reinterpret_cast<Registry*>(place));
    return registry;
}

std::vector<Installation>::iterator Registry::find(std::uint64_t number) {
    return std::ranges::lower_bound(installations_, number, {}, &Installation::number);
}

std::uint64_t Registry::install(Sink& sink) {
    const std::lock_guard lock(mutex_);
    installations_.push_back({nextNumber_, &sink});
    ++installedCount;
    return nextNumber_++;
}

void Registry::vEnd(std::uint64_t number) {
    std::unique_lock lock(mutex_);
    find(number)->isEnding = true;
    --installedCount;
    // A sink that ends itself while it handles a report cannot wait for that report.
    const bool isOwnReport = reportingNumber == number;
    released_.wait(lock, [&] { return find(number)->reportsInSink == (isOwnReport ? 1U : 0U); });
    if (isOwnReport)
        reportingNumber = 0;
    installations_.erase(find(number));
}

Sink* Registry::pAcquire(std::uint64_t from, std::uint64_t until) {
    const std::lock_guard lock(mutex_);
    const auto installation = std::find_if(find(from), installations_.end(),
                                           [](const Installation& candidate) { return !candidate.isEnding; });
    if (installation == installations_.end() || installation->number >= until)
        return nullptr;
    ++installation->reportsInSink;
    reportingNumber = installation->number;
    return installation->sink;
}

void Registry::vRelease() {
    if (reportingNumber == 0)
        return;
    const std::lock_guard lock(mutex_);
    --find(std::exchange(reportingNumber, 0))->reportsInSink;
    released_.notify_all();
}

void Registry::vReport(const AssertInfo& info) {
    std::uint64_t until = 0;
    {
        const std::lock_guard lock(mutex_);
        until = nextNumber_;
    }
    std::uint64_t from = 1;
    while (Sink* const sink = pAcquire(from, until)) {
        from = reportingNumber + 1;
        try {
            sink->vReport(info);
        } catch (...) { // a sink that fails costs its own record only
        }
        vRelease();
    }
}

} // namespace

bool Assert::isEnabled() noexcept {
    return installedCount.load(std::memory_order_acquire) != 0;
}

void Assert::addAssert(const AssertInfo& info) noexcept {
    if (!isEnabled() || isReporting)
        return;
    isReporting = true;
    getRegistry().vReport(info);
    isReporting = false;
}

Sink::Sink() = default;
Sink::~Sink() = default;

ScopedSink::ScopedSink(Sink& sink) : number_(getRegistry().install(sink)) {}
ScopedSink::~ScopedSink() {
    getRegistry().vEnd(number_);
}

CollectingSink::CollectingSink() = default;
CollectingSink::~CollectingSink() = default;

void CollectingSink::vReport(const AssertInfo& info) {
    AssertRecord record{info.code, std::string(info.message), std::string(info.function),
                        std::string(info.file), info.line};
    const std::lock_guard lock(mutex_);
    records_.push_back(std::move(record));
}

std::vector<AssertRecord> CollectingSink::getRecords() const {
    const std::lock_guard lock(mutex_);
    return records_;
}

std::vector<AssertRecord> CollectingSink::takeRecords() {
    const std::lock_guard lock(mutex_);
    return std::exchange(records_, {});
}

void CollectingSink::vClear() {
    takeRecords();
}

PrintingSink::PrintingSink(std::ostream& stream) : stream_(stream) {}
PrintingSink::~PrintingSink() = default;

void PrintingSink::vReport(const AssertInfo& info) {
    const std::lock_guard lock(mutex_);
    stream_ << info.file << ':' << info.line << ": " << info.message << " (" << info.function << ")\n";
}

} // namespace kiv::assert
