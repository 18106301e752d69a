#include "Timing.h"

#include "Require.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <limits>
#include <map>

namespace kiv::bench {

namespace {

/// Keeps the least time of each subject, in seconds.
class LeastTimes final : public benchmark::BenchmarkReporter {
public:
    explicit LeastTimes(Clock clock) : clock_(clock) {}

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const auto& run : runs) {
            vRequire(!run.error_occurred, run.error_message);
            if (run.run_type == Run::RT_Iteration)
                vTake(run.run_name.function_name, secondsOfIteration(run));
        }
    }

    double secondsOf(const std::string& name) const { return seconds_.at(name); }

private:
    double secondsOfIteration(const Run& run) const {
        const auto all = clock_ == Clock::Wall ? run.real_accumulated_time : run.cpu_accumulated_time;
        return all / static_cast<double>(run.iterations);
    }

    void vTake(const std::string& name, double seconds) {
        auto& least = seconds_.try_emplace(name, std::numeric_limits<double>::max()).first->second;
        least = std::min(least, seconds);
    }

    Clock clock_;
    std::map<std::string, double> seconds_;
};

void vInitialize() {
    std::array arguments{std::string("kiv_bench"), std::string("--benchmark_enable_random_interleaving=true"),
                         std::string("--benchmark_min_time=0.05")};
    std::array<char*, arguments.size() + 1> pointers{};
    std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                   [](std::string& argument) { return argument.data(); });
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, pointers.data());
}

void vSubjectRun(benchmark::State& state, const Subject& subject) {
    for ([[maybe_unused]] auto iteration : state) {
        if (subject.before) {
            state.PauseTiming();
            subject.before();
            state.ResumeTiming();
        }
        subject.run();
        if (subject.after) {
            state.PauseTiming();
            subject.after();
            state.ResumeTiming();
        }
    }
}

} // namespace

std::vector<double> secondsOf(const std::vector<Subject>& subjects, int repetitions, Clock clock) {
    [[maybe_unused]] static const bool isInitialized = (vInitialize(), true);
    for (const auto& subject : subjects) {
        auto* const registered = benchmark::RegisterBenchmark(
            subject.name.c_str(), [&subject](benchmark::State& state) { vSubjectRun(state, subject); });
        registered->Repetitions(repetitions);
        if (clock == Clock::Wall)
            registered->UseRealTime();
    }
    LeastTimes times(clock);
    benchmark::RunSpecifiedBenchmarks(&times);
    benchmark::ClearRegisteredBenchmarks();
    std::vector<double> seconds;
    for (const auto& subject : subjects)
        seconds.push_back(times.secondsOf(subject.name));
    return seconds;
}

void vUse(std::size_t value) {
    benchmark::DoNotOptimize(value);
}

void vUse(const void* value) {
    benchmark::DoNotOptimize(value);
    benchmark::ClobberMemory();
}

} // namespace kiv::bench
