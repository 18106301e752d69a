/// @file
/// Many independent pieces of work on several threads, whose results are taken one after another in order.
///
///     vInOrder(paths.size(), 4, [&](std::size_t at) { return documentRead(paths[at]); },
///              [&](Document&& document) { vShow(document); });
///
/// Ownership: results belong to it. `take` may move what it wants to keep out of its result; the rest is
///            destroyed on the thread that made it, as memory that another thread gives back makes both wait;
///            what is left when all are made, on the calling one.
/// Threads:   `make` is called on any of the threads, of which the calling one is one, `take` on the calling
///            one alone.
/// Errors:    what `make` throws is thrown on the calling thread when the turn of that piece has come; what
///            `take` throws ends the work. A thread that cannot be had is done without.
#pragma once

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace kiv::kivifc {

/// The pieces of one job, made ahead of their turn by a few.
template <typename Make>
class OrderedJobs {
public:
    using Result = decltype(std::declval<Make&>()(std::size_t{}));

    /// With that many threads, the calling one included.
    OrderedJobs(std::size_t count, std::size_t threads, Make& make) :
        count_(count),
        make_(make),
        slots_(threads > 1 ? 4 * threads : 1),
        spent_(std::max<std::size_t>(threads, 1)) {
        try {
            for (std::size_t maker = 1; maker < threads; ++maker)
                threads_.emplace_back([this, maker] { vWork(maker); });
        } catch (const std::system_error&) {
            // Those that there are do the work.
        } catch (...) {
            vStop();
            throw;
        }
    }
    OrderedJobs(const OrderedJobs&) = delete;
    OrderedJobs& operator=(const OrderedJobs&) = delete;
    ~OrderedJobs() { vStop(); }

    /// The result of the piece whose turn it is, which is there until the next is asked for.
    Result& next() {
        std::unique_lock lock(mutex_);
        if (isLent_)
            vGiveBack();
        auto& slot = slots_[taken_ % slots_.size()];
        // To make another piece meanwhile takes less time than to be woken for each.
        while (!slot.has_value()) {
            if (boMayBegin())
                vMake(CallingThread, begun_++, lock);
            else
                made_.wait(lock);
        }
        if (slot->exception)
            std::rethrow_exception(slot->exception);
        isLent_ = true;
        return *slot->result;
    }

private:
    /// The number of the calling thread among those that make pieces.
    static constexpr std::size_t CallingThread = 0;

    struct Done {
        std::size_t maker;
        std::optional<Result> result;
        std::exception_ptr exception;
    };

    /// The result that was taken last goes to the thread that made it, and there is room for one piece more.
    void vGiveBack() {
        auto& slot = slots_[taken_ % slots_.size()];
        spent_[slot->maker].push_back(std::move(*slot->result));
        slot.reset();
        isLent_ = false;
        ++taken_;
        taking_.notify_one();
    }

    /// Whether there is a piece to make, and room for its result.
    bool boMayBegin() const { return begun_ != count_ && begun_ < taken_ + slots_.size(); }

    /// Makes a piece without the lock, and keeps its result with it.
    void vMake(std::size_t maker, std::size_t number, std::unique_lock<std::mutex>& lock) {
        auto spent = std::exchange(spent_[maker], {});
        lock.unlock();
        spent.clear();
        Done done{maker, {}, {}};
        try {
            done.result.emplace(make_(number));
        } catch (...) {
            done.exception = std::current_exception();
        }
        lock.lock();
        slots_[number % slots_.size()].emplace(std::move(done));
    }

    void vWork(std::size_t maker) {
        std::unique_lock lock(mutex_);
        for (;;) {
            taking_.wait(lock, [this] { return isStopped_ || begun_ == count_ || boMayBegin(); });
            if (isStopped_ || begun_ == count_)
                return;
            const auto number = begun_++;
            vMake(maker, number, lock);
            // Nobody waits for a later piece: who takes them is not woken for nothing.
            if (number == taken_)
                made_.notify_one();
        }
    }

    void vStop() {
        {
            const std::lock_guard lock(mutex_);
            isStopped_ = true;
            taking_.notify_all();
        }
        for (auto& thread : threads_)
            thread.join();
    }

    std::size_t count_;
    Make& make_;
    // Pieces are made no further ahead than there are slots, so each has one of its own.
    std::vector<std::optional<Done>> slots_;
    /// What was taken, by the number of the thread that made it.
    std::vector<std::vector<Result>> spent_;
    std::mutex mutex_;
    /// The piece whose turn it is was made.
    std::condition_variable made_;
    /// A piece was taken, or all is to end.
    std::condition_variable taking_;
    std::size_t begun_ = 0;
    std::size_t taken_ = 0;
    /// Whether the piece after those that were taken is with the caller.
    bool isLent_ = false;
    bool isStopped_ = false;
    // Last, so that they begin when everything else is there.
    std::vector<std::thread> threads_;
};

/// With one thread everything is done on the calling one, which is one of them in any case.
template <typename Make, typename Take>
void vInOrder(std::size_t count, std::size_t threads, Make make, Take take) {
    OrderedJobs<Make> jobs(count, std::min(threads, count), make);
    for (std::size_t number = 0; number < count; ++number)
        take(std::move(jobs.next()));
}

} // namespace kiv::kivifc
