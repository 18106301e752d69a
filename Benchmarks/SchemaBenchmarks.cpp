#include "BenchData.h"

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

namespace kiv::bench {

namespace {

/// Yardstick of the schema benchmarks: what it costs to look at each line of the same text once.
void GetLineYardstick(benchmark::State& state) {
    for (auto _ : state) {
        std::istringstream stream(schemaText());
        std::string line;
        std::size_t bytes = 0;
        while (std::getline(stream, line))
            bytes += line.size() + 1;
        benchmark::DoNotOptimize(bytes);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(schemaText().size()));
}
BENCHMARK(GetLineYardstick)->Unit(benchmark::kMicrosecond);

/// Everything read and resolved, all rules parsed into trees.
void LoadSchema(benchmark::State& state) {
    if (loadSchema()->getObjects().empty())
        state.SkipWithError("the schema holds nothing");
    for (auto _ : state) {
        auto schema = loadSchema();
        benchmark::DoNotOptimize(schema);
        state.PauseTiming();
        schema.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(schemaText().size()));
}
BENCHMARK(LoadSchema)->Unit(benchmark::kMicrosecond);

void DestroySchema(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto schema = loadSchema();
        state.ResumeTiming();
        schema.reset();
    }
}
BENCHMARK(DestroySchema)->Unit(benchmark::kMicrosecond);

} // namespace

} // namespace kiv::bench
