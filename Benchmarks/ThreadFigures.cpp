#include "Questions.h"
#include "Reading.h"
#include "Require.h"
#include "Sections.h"
#include "Timing.h"

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace kiv::bench {

namespace {

constexpr std::size_t Threads = 8;
// Long enough that it does not count when one of the threads is the last to end.
constexpr std::size_t RoundsOfThread = 40;
constexpr int ComputeSteps = 250'000;

/// Does all rounds of all threads, in as many threads as there are works; each thread does its own.
void vRounds(const std::vector<std::function<void()>>& works) {
    std::vector<std::jthread> running;
    for (const auto& work : works) {
        running.emplace_back([&work, rounds = Threads * RoundsOfThread / works.size()] {
            for (std::size_t round = 0; round != rounds; ++round)
                work();
        });
    }
}

void vRounds(std::size_t threads, const std::function<void()>& work) {
    vRounds(std::vector(threads, work));
}

/// Nothing but arithmetic, of which the machine itself can do twice as much on two cores.
void vCompute() {
    std::size_t value = 1;
    for (int step = 0; step != ComputeSteps; ++step)
        value = value * 6364136223846793005U + 1442695040888963407U;
    vUse(value);
}

/// A schema and sets with all questions about them. Nothing of it is in the registry, where another one of
/// the same name would share its sets.
class Asked {
public:
    explicit Asked(const Input& input) : schema_(pSchemaRead(input.schemaText)) {
        auto documents = documentsFrom(input.setTexts);
        definitions_ = definitionsRead(documents, *schema_);
        names_ = nameQuestions(*schema_);
        attributes_ = attributeQuestions(*schema_);
        sets_ = setQuestions(definitions_);
        guids_ = guidQuestions(definitions_);
    }

    std::size_t size() const { return names_.size() + attributes_.size() + sets_.size() + guids_.size(); }

    void vAsk() const {
        const auto found = namesAsk(*schema_, names_) + attributesAsk(attributes_) +
                           setsAsk(definitions_, sets_) + guidsAsk(definitions_, guids_);
        vRequire(found == size(), "a thread does not find something");
    }

private:
    std::unique_ptr<ifc::def::schema::Schema> schema_;
    ifc::def::SchemaPropertySetDefinitions definitions_;
    std::vector<std::string> names_;
    std::vector<AttributeQuestion> attributes_;
    std::vector<std::string> sets_;
    std::vector<Guid> guids_;
};

} // namespace

Figures threadFigures(const Input& input) {
    const Asked shared(input);
    const Asked another(input);
    const auto ask = [&shared] { shared.vAsk(); };
    const auto askAnother = [&another] { another.vAsk(); };
    const auto seconds = secondsOf({{"look-ups, one", [&] { vRounds(1, ask); }},
                                    {"look-ups, eight", [&] { vRounds(Threads, ask); }},
                                    {"look-ups, apart",
                                     [&] {
                                         vRounds({ask, askAnother});
                                     }},
                                    {"arithmetic, one", [&] { vRounds(1, vCompute); }},
                                    {"arithmetic, eight", [&] { vRounds(Threads, vCompute); }}},
                                   9, Clock::Wall);
    const auto asked = static_cast<double>(shared.size() * Threads * RoundsOfThread);
    const auto computed = static_cast<double>(Threads * RoundsOfThread) * ComputeSteps;
    return {{"threads", "look-ups of eight threads on one schema", asked / seconds[1], "of one thread",
             asked / seconds[0], Unit::PerSecond, 1.9, Sense::AtLeast},
            {"threads", "look-ups of eight threads on one schema", asked / seconds[1],
             "of two that share nothing", asked / seconds[2], Unit::PerSecond},
            {"threads", "look-ups of two threads, each on a schema of its own", asked / seconds[2],
             "of one thread", asked / seconds[0], Unit::PerSecond},
            {"threads", "arithmetic of eight threads, the machine itself", computed / seconds[4],
             "of one thread", computed / seconds[3], Unit::PerSecond}};
}

} // namespace kiv::bench
