// Reports under one lock: a sink is called while it is held, so none is ever called after its end.

#include "kiv/Host/Assert/KivAssert.h"

#include <atomic>
#include <map>
#include <ostream>
#include <utility>

namespace kiv::assert {

namespace {

struct Sinks {
    std::recursive_mutex mutex;
    std::map<std::uint64_t, Sink*> byNumber;
    std::uint64_t last = 0;
    bool isReporting = false;
};

std::atomic<std::size_t> installed{0};

/// Never destroyed: static objects may report at their end.
Sinks& sinks() {
    static auto& all = *new Sinks;
    return all;
}

void vHandOver(Sinks& all, const AssertInfo& info) {
    const auto last = all.last;
    for (auto next = all.byNumber.begin(); next != all.byNumber.end() && next->first <= last;) {
        const auto number = next->first;
        try {
            next->second->vReport(info);
        } catch (...) {
            // What a sink throws is dropped with its report.
        }
        next = all.byNumber.upper_bound(number);
    }
}

} // namespace

bool Assert::isEnabled() noexcept {
    return installed != 0;
}

void Assert::addAssert(const AssertInfo& info) noexcept {
    auto& all = sinks();
    const std::lock_guard lock(all.mutex);
    if (std::exchange(all.isReporting, true))
        return;
    vHandOver(all, info);
    all.isReporting = false;
}

Sink::Sink() = default;
Sink::~Sink() = default;

ScopedSink::ScopedSink(Sink& sink) : number_(0) {
    auto& all = sinks();
    const std::lock_guard lock(all.mutex);
    number_ = ++all.last;
    all.byNumber.emplace(number_, &sink);
    ++installed;
}

ScopedSink::~ScopedSink() {
    auto& all = sinks();
    const std::lock_guard lock(all.mutex);
    all.byNumber.erase(number_);
    --installed;
}

CollectingSink::CollectingSink() = default;
CollectingSink::~CollectingSink() = default;

void CollectingSink::vReport(const AssertInfo& info) {
    const std::lock_guard lock(mutex_);
    records_.push_back({info.code, std::string(info.message), std::string(info.function),
                        std::string(info.file), info.line});
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
    const std::lock_guard lock(mutex_);
    records_.clear();
}

PrintingSink::PrintingSink(std::ostream& stream) : stream_(stream) {}
PrintingSink::~PrintingSink() = default;

void PrintingSink::vReport(const AssertInfo& info) {
    const std::lock_guard lock(mutex_);
    stream_ << info.file << ':' << info.line << ": " << info.message << " (" << info.function << ")\n";
}

} // namespace kiv::assert
