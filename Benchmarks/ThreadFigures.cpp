#include "Questions.h"
#include "Require.h"
#include "Sections.h"
#include "Store.h"
#include "Timing.h"

#include <thread>

namespace kiv::bench {

namespace {

constexpr std::size_t Threads = 8;
// Long enough that it does not count when one of the threads is the last to end.
constexpr std::size_t RoundsOfThread = 40;
constexpr int ComputeSteps = 250'000;

/// Calls the work that often in one thread, or as often together in several.
void vRounds(std::size_t threads, const std::function<void()>& work) {
    std::vector<std::jthread> running;
    for (std::size_t thread = 0; thread != threads; ++thread) {
        running.emplace_back([&] {
            for (std::size_t round = 0; round != Threads * RoundsOfThread / threads; ++round)
                work();
        });
    }
}

/// Nothing but arithmetic, of which the machine itself can do twice as much on two cores.
void vCompute() {
    std::size_t value = 1;
    for (int step = 0; step != ComputeSteps; ++step)
        value = value * 6364136223846793005U + 1442695040888963407U;
    vUse(value);
}

} // namespace

Figures threadFigures(const Input& input) {
    const Store store(input);
    const auto names = nameQuestions(store.getSchema());
    const auto attributes = attributeQuestions(store.getSchema());
    const auto sets = setQuestions(store.getSets());
    const auto guids = guidQuestions(store.getSets());
    const auto questions = names.size() + attributes.size() + sets.size() + guids.size();
    const auto ask = [&] {
        const auto found = namesAsk(store.getSchema(), names) + attributesAsk(attributes) +
                           setsAsk(store.getSets(), sets) + guidsAsk(store.getSets(), guids);
        vRequire(found == questions, "a thread does not find something");
    };
    const auto seconds = secondsOf({{"look-ups, one", [&] { vRounds(1, ask); }},
                                    {"look-ups, eight", [&] { vRounds(Threads, ask); }},
                                    {"arithmetic, one", [&] { vRounds(1, vCompute); }},
                                    {"arithmetic, eight", [&] { vRounds(Threads, vCompute); }}},
                                   9, Clock::Wall);
    const auto asked = static_cast<double>(questions * Threads * RoundsOfThread);
    const auto computed = static_cast<double>(Threads * RoundsOfThread) * ComputeSteps;
    return {{"threads", "look-ups of eight threads on one schema", asked / seconds[1], "of one thread",
             asked / seconds[0], Unit::PerSecond, 1.9, Sense::AtLeast},
            {"threads", "arithmetic of eight threads, the machine itself", computed / seconds[3],
             "of one thread", computed / seconds[2], Unit::PerSecond}};
}

} // namespace kiv::bench
