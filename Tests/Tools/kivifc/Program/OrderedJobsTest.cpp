#include "kivifc/Program/OrderedJobs.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

namespace kiv::kivifc::test {

namespace {

class OrderedJobsTest : public testing::TestWithParam<std::size_t> {};

/// Later pieces are done before earlier ones.
TEST_P(OrderedJobsTest, ResultsAreTakenInOrder) {
    std::vector<std::size_t> taken;
    vInOrder(
        200, GetParam(),
        [](std::size_t number) {
            if (number % 7 == 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            return number * number;
        },
        [&](std::size_t square) { taken.push_back(square); });
    ASSERT_EQ(taken.size(), 200U);
    for (std::size_t number = 0; number < taken.size(); ++number)
        EXPECT_EQ(taken[number], number * number);
}

TEST_P(OrderedJobsTest, WhatAPieceThrowsComesWhenItIsItsTurn) {
    std::size_t taken = 0;
    const auto vRun = [&] {
        vInOrder(
            50, GetParam(),
            [](std::size_t number) {
                if (number == 20)
                    throw std::runtime_error("the twentieth");
                return number;
            },
            [&](std::size_t) { ++taken; });
    };
    EXPECT_THROW(vRun(), std::runtime_error);
    EXPECT_EQ(taken, 20U);
}

TEST_P(OrderedJobsTest, WhatTakingThrowsEndsTheWork) {
    const auto vRun = [&] {
        vInOrder(
            1000, GetParam(), [](std::size_t number) { return number; },
            [](std::size_t number) {
                if (number == 3)
                    throw std::runtime_error("the third");
            });
    };
    EXPECT_THROW(vRun(), std::runtime_error);
}

TEST_P(OrderedJobsTest, NothingIsMadeFarAheadOfItsTurn) {
    std::atomic<std::size_t> made = 0;
    std::size_t taken = 0;
    vInOrder(
        300, GetParam(),
        [&](std::size_t number) {
            ++made;
            return number;
        },
        [&](std::size_t) {
            EXPECT_LE(made.load(), taken + 4 * GetParam() + 1);
            ++taken;
        });
    EXPECT_EQ(made.load(), 300U);
}

TEST(OrderedJobs, OneThreadIsTheCallingOne) {
    const auto caller = std::this_thread::get_id();
    vInOrder(
        3, 1, [&](std::size_t) { return std::this_thread::get_id(); },
        [&](std::thread::id maker) { EXPECT_EQ(maker, caller); });
}

/// It would have nothing to do but to wait.
TEST(OrderedJobs, TheCallingThreadMakesPiecesToo) {
    const auto caller = std::this_thread::get_id();
    bool isCallerMaker = false;
    vInOrder(
        50, 2,
        [](std::size_t) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            return std::this_thread::get_id();
        },
        [&](std::thread::id maker) { isCallerMaker = isCallerMaker || maker == caller; });
    EXPECT_TRUE(isCallerMaker);
}

/// A piece that knows the thread that made it, and counts those of its kind that another one destroyed.
class MadeHere {
public:
    explicit MadeHere(std::atomic<int>& strays) : strays_(&strays) {}
    MadeHere(MadeHere&& other) noexcept :
        strays_(std::exchange(other.strays_, nullptr)), maker_(other.maker_) {}
    MadeHere& operator=(MadeHere&&) = delete;
    ~MadeHere() {
        if (strays_ != nullptr && std::this_thread::get_id() != maker_)
            ++*strays_;
    }

private:
    std::atomic<int>* strays_;
    std::thread::id maker_ = std::this_thread::get_id();
};

/// A few are left for the calling thread at the end, when the others have no more to make: those that wait
/// for their turn then, and those that came back to a thread since it began its last piece.
TEST_P(OrderedJobsTest, WhatWasTakenIsDestroyedByItsMaker) {
    constexpr int Pieces = 2000;
    std::atomic<int> strays = 0;
    vInOrder(
        Pieces, GetParam(),
        [&](std::size_t) {
            // The calling thread makes no more than its share.
            std::this_thread::sleep_for(std::chrono::microseconds(10));
            return MadeHere(strays);
        },
        [](MadeHere&&) {});
    EXPECT_LE(strays.load(), static_cast<int>(4 * GetParam() * GetParam()));
}

TEST_P(OrderedJobsTest, WhatIsTakenMayBeKept) {
    std::vector<std::unique_ptr<std::size_t>> kept;
    vInOrder(
        100, GetParam(), [](std::size_t number) { return std::make_unique<std::size_t>(number); },
        [&](std::unique_ptr<std::size_t>&& number) { kept.push_back(std::move(number)); });
    ASSERT_EQ(kept.size(), 100U);
    EXPECT_EQ(*kept.back(), 99U);
}

TEST(OrderedJobs, NoWorkIsDoneAtOnce) {
    vInOrder(
        0, 4, [](std::size_t number) { return number; }, [](std::size_t) { FAIL(); });
}

INSTANTIATE_TEST_SUITE_P(Threads, OrderedJobsTest, testing::Values(1U, 2U, 5U));

} // namespace

} // namespace kiv::kivifc::test
