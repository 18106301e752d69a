/// @file
/// Many independent pieces of work on several threads, whose results are taken one after another in order.
///
///     vInOrder(paths.size(), 4, [&](std::size_t at) { return documentRead(paths[at]); },
///              [&](Document&& document) { vShow(document); });
///
/// Ownership: results that wait for their turn belong to it.
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
        count_(count), make_(make), slots_(threads > 1 ? 4 * threads : 1) {
        try {
            for (std::size_t number = 1; number < threads; ++number)
                threads_.emplace_back([this] { vWork(); });
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

    /// The result of the piece whose turn it is.
    Result next() {
        std::unique_lock lock(mutex_);
        auto& slot = slots_[taken_ % slots_.size()];
        // To make another piece meanwhile takes less time than to be woken for each.
        while (!slot.has_value()) {
            if (boMayBegin())
                vMake(begun_++, lock);
            else
                made_.wait(lock);
        }
        auto done = std::move(*slot);
        slot.reset();
        ++taken_;
        lock.unlock();
        // There is room for one piece more.
        taking_.notify_one();
        if (done.exception)
            std::rethrow_exception(done.exception);
        return std::move(*done.result);
    }

private:
    struct Done {
        std::optional<Result> result;
        std::exception_ptr exception;
    };

    /// Whether there is a piece to make, and room for its result.
    bool boMayBegin() const { return begun_ != count_ && begun_ < taken_ + slots_.size(); }

    /// Makes a piece without the lock, and keeps its result with it.
    void vMake(std::size_t number, std::unique_lock<std::mutex>& lock) {
        lock.unlock();
        Done done;
        try {
            done.result.emplace(make_(number));
        } catch (...) {
            done.exception = std::current_exception();
        }
        lock.lock();
        slots_[number % slots_.size()] = std::move(done);
    }

    void vWork() {
        std::unique_lock lock(mutex_);
        for (;;) {
            taking_.wait(lock, [this] { return isStopped_ || begun_ == count_ || boMayBegin(); });
            if (isStopped_ || begun_ == count_)
                return;
            const auto number = begun_++;
            vMake(number, lock);
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
    std::mutex mutex_;
    /// The piece whose turn it is was made.
    std::condition_variable made_;
    /// A piece was taken, or all is to end.
    std::condition_variable taking_;
    std::size_t begun_ = 0;
    std::size_t taken_ = 0;
    bool isStopped_ = false;
    // Last, so that they begin when everything else is there.
    std::vector<std::thread> threads_;
};

/// With one thread everything is done on the calling one, which is one of them in any case.
template <typename Make, typename Take>
void vInOrder(std::size_t count, std::size_t threads, Make make, Take take) {
    OrderedJobs<Make> jobs(count, std::min(threads, count), make);
    for (std::size_t number = 0; number < count; ++number)
        take(jobs.next());
}

} // namespace kiv::kivifc
