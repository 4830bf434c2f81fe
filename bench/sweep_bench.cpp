#include <benchmark/benchmark.h>

#include <string>

#include "bench/allocation_count.h"
#include "bench/silent_run.h"

// Sweeps of one body over ten million values.

namespace orvane::bench {
namespace {

void Series(benchmark::State& state) {
    const std::string sheet = "series(i,1,1," + std::to_string(state.range(0)) + ",1/(i*i))";
    std::int64_t allocations = 0;
    for (auto _ : state) {
        const std::int64_t before = AllocationCount();
        benchmark::DoNotOptimize(RunSilently(sheet));
        allocations += AllocationCount() - before;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    // Those of the run as a whole: as many for ten terms as for ten million.
    state.counters["allocations"] =
        static_cast<double>(allocations) / static_cast<double>(state.iterations());
}

void SeriesByHand(benchmark::State& state) {
    for (auto _ : state) {
        double sum = 0.0;
        for (std::int64_t index = 0; index < state.range(0); ++index) {
            const double i = static_cast<double>(index) * 1.0 + 1.0;
            const double term = 1.0 / (i * i);
            if (!(term - term == 0.0)) break;  // not finite
            sum += term;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(Series)->Arg(10)->Arg(10'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(SeriesByHand)->Arg(10'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
