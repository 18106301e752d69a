/// Lets each allocation of an operation fail in turn, alone and with all that follow, and looks at what is
/// left behind.
///
///     const Operation<State> operation{
///         .prepare = [] { return State(); },                      // what it works on, fresh for every trial
///         .run = [](State& state) { state.vAdd(text); },
///         .answers = [](const State& state) { return state.sAll(); }};
///     EXPECT_GT(failuresOf(operation), 10U);
///
/// Four things must hold for every allocation: std::bad_alloc comes out, and nothing else; the answers are
/// those from before; the same call made again succeeds; and nothing is held once the state is gone. An
/// allocation that asks for null instead of an exception may be refused without any harm, or with
/// std::bad_alloc: libexpat's are of that kind.
#pragma once

#include "Support/Allocations.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <new>
#include <string>
#include <string_view>

namespace kiv::test {

template <class State>
struct Operation {
    std::function<State()> prepare;
    /// Is made again on the same state after it failed.
    std::function<void(State&)> run;
    std::function<std::string(const State&)> answers;
};

/// How a call went. There is no memory to say more.
struct Outcome {
    /// What came out of it: "" for nothing, "std::bad_alloc", or "another exception".
    std::string_view thrown;
    bool wasRefused = false;
    bool hasThrown = false;
};

template <class State>
Outcome outcomeOf(const Operation<State>& operation, State& state, std::size_t allocations, Refusal refusal) {
    const AllocationLimit limit(allocations, refusal);
    std::string_view thrown;
    try {
        operation.run(state);
    } catch (const std::bad_alloc&) {
        thrown = "std::bad_alloc";
    } catch (const std::exception&) {
        thrown = "another exception";
    }
    return {thrown, limit.boRefused(), limit.boThrew()};
}

/// One trial: false when it needed no more than that many allocations.
template <class State>
bool boTrialRefused(const Operation<State>& operation, std::size_t allocations, Refusal refusal,
                    const std::string& before, const std::string& after) {
    auto state = operation.prepare();
    const auto outcome = outcomeOf(operation, state, allocations, refusal);
    if (outcome.hasThrown || (outcome.wasRefused && !outcome.thrown.empty()))
        EXPECT_EQ(outcome.thrown, "std::bad_alloc");
    else
        EXPECT_EQ(outcome.thrown, "");
    if (!outcome.thrown.empty()) {
        EXPECT_EQ(operation.answers(state), before);
        EXPECT_NO_THROW(operation.run(state));
    }
    EXPECT_EQ(operation.answers(state), after);
    return outcome.wasRefused;
}

template <class State>
std::string sAnswersAfterwards(const Operation<State>& operation) {
    auto state = operation.prepare();
    operation.run(state);
    return operation.answers(state);
}

/// Makes all trials; how many allocations the operation makes.
template <class State>
std::size_t failuresOf(const Operation<State>& operation) {
    // First of all, so that what is made once in a process is there.
    const auto after = sAnswersAfterwards(operation);
    const auto before = operation.answers(operation.prepare());
    std::size_t failures = 0;
    for (const auto refusal : {Refusal::FromThenOn, Refusal::Once}) {
        for (std::size_t allocations = 0; !testing::Test::HasFailure(); ++allocations) {
            SCOPED_TRACE(std::to_string(allocations) + " allocations and then " +
                         (refusal == Refusal::Once ? "one failure" : "failures only"));
            const auto held = allocationsHeld();
            const bool wasRefused = boTrialRefused(operation, allocations, refusal, before, after);
            EXPECT_EQ(allocationsHeld(), held);
            if (!wasRefused)
                break;
            failures = allocations + 1;
        }
    }
    return failures;
}

} // namespace kiv::test
