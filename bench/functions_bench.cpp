// The channel functions over one channel in memory, held against a plain loop over the same doubles ("Plain"), which
// knows neither nulls nor failures. Samples per second stand under items_per_second.
#include <benchmark/benchmark.h>
#include <cstddef>
#include <random>
#include <vector>

#include "functions/functions.h"

namespace welvane::bench {
namespace {

constexpr float nullValue = -999.25F;

/// Densities with runs of nulls, as at the top of a log.
std::vector<double> samples(std::size_t count) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> density(1.9, 2.9);
    std::vector<double> values(count);
    for (std::size_t index = 0; index < count; ++index) values[index] = index % 1000 < 50 ? -999.25 : density(random);
    return values;
}

void Plain(benchmark::State& state) {
    const std::vector<double> source = samples(static_cast<std::size_t>(state.range(0)));
    std::vector<double> target(source.size());
    for (auto _ : state) {
        for (std::size_t index = 0; index < source.size(); ++index) target[index] = 2.0 * (1.5 * source[index] + 0.25);
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Plain)->Arg(20'000)->Arg(2'000'000);

void Evaluate(benchmark::State& state, const char* descriptor) {
    const std::vector<double> source = samples(static_cast<std::size_t>(state.range(0)));
    std::vector<double> target(source.size());
    const ParsedFunction function = parseFunction(descriptor, stockMatrixTable);
    const ReferenceTables reference;
    FunctionState functionState;
    FailureList failures;
    for (auto _ : state) {
        evaluateFunction(function, "V/V", "G/C3", source, target, nullValue, reference, stockMatrixTable, functionState,
                         failures);
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(Evaluate, Linear, "2|2.65|1")->Arg(20'000)->Arg(2'000'000);
BENCHMARK_CAPTURE(Evaluate, Reciprocal, "0")->Arg(20'000)->Arg(2'000'000);
BENCHMARK_CAPTURE(Evaluate, Clip, "11|2|2.5")->Arg(20'000)->Arg(2'000'000);
BENCHMARK_CAPTURE(Evaluate, Replace, "13|2.5|-999.25")->Arg(2'000'000);
BENCHMARK_CAPTURE(Evaluate, DensityMatrix, "4|||1|0")->Arg(2'000'000);
BENCHMARK_CAPTURE(Evaluate, NeutronCP1e, "7|||1|0")->Arg(200'000);
BENCHMARK_CAPTURE(Evaluate, NeutronCP1c, "8|||0|1")->Arg(200'000);
BENCHMARK_CAPTURE(Evaluate, PowerLaw, "10|1|0|0|0.5")->Arg(200'000);
BENCHMARK_CAPTURE(Evaluate, WeightedMean, "14|1")->Arg(2'000'000);
BENCHMARK_CAPTURE(Evaluate, MovingMean7, "14|2|3")->Arg(2'000'000);
BENCHMARK_CAPTURE(Evaluate, MovingMean20001, "14|2|10000")->Arg(2'000'000);

}  // namespace
}  // namespace welvane::bench
