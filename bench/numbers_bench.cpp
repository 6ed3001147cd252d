// Reading and printing of the values of a data section, ours against the standard library. The time per value is the
// inverse of items_per_second.
#include <benchmark/benchmark.h>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "shared/numbers.h"
#include "shared/numbers_fast.h"
#include "shared/text.h"

namespace welvane::bench {
namespace {

constexpr int count = 400000;  // so many that no processor learns their order
constexpr int decimals = 5;

/// Depths, small fractions, densities, resistivities and nulls, as they follow each other along a record.
std::vector<double> logValues() {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> unit(0, 1);
    std::vector<double> values;
    for (int index = 0; index < count; ++index) {
        switch (index % 5) {
            case 0:
                values.push_back(1000 + 0.01 * index);
                break;
            case 1:
                values.push_back(unit(random) * 0.4);
                break;
            case 2:
                values.push_back(1950 + unit(random) * 900);
                break;
            case 3:
                values.push_back(std::pow(10, unit(random) * 3));
                break;
            default:
                values.push_back(unit(random) < 0.2 ? -999.25 : unit(random) * 150 - 20);
                break;
        }
    }
    return values;
}

/// The values as text with `places` decimals, each in a column with two blanks or more before it.
std::string logText(int places) {
    std::string text;
    for (const double value : logValues())
        text += "  " + rightAligned(formatMask(value, places), 6u + static_cast<unsigned>(places));
    return text + "\r\n";
}

/// Reads all of the text by `read(at, end, value)`, which returns the place behind the number.
template <class Read>
void readAll(benchmark::State& state, Read read) {
    const std::string text = logText(static_cast<int>(state.range(0)));
    const char* const end = text.data() + text.size();
    for (auto _ : state) {
        double sum = 0;
        for (const char* at = text.data();;) {
            while (*at == ' ') ++at;
            if (*at == '\r') break;
            double value = 0;
            at = read(at, end, value);
            sum += value;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void readFast(benchmark::State& state) {
    readAll(state, parseNumberFast);
}
void readGeneral(benchmark::State& state) {
    readAll(state, detail::parseNumberGeneral);
}
/// What finding the numbers costs, which is part of the times of the others too.
void findOnly(benchmark::State& state) {
    readAll(state, [](const char* at, const char*, double& value) {
        value = *at;
        while (*at > ' ') ++at;
        return at;
    });
}
void readStandard(benchmark::State& state) {
    readAll(state, [](const char* at, const char* end, double& value) { return std::from_chars(at, end, value).ptr; });
}
BENCHMARK(findOnly)->Arg(5);
BENCHMARK(readFast)->Arg(5)->Arg(4)->Arg(10);
BENCHMARK(readGeneral)->Arg(5)->Arg(4)->Arg(10);
BENCHMARK(readStandard)->Arg(5)->Arg(4)->Arg(10);

/// Prints all values one behind the other by `print(target, value)`, which returns the length.
template <class Print>
void printAll(benchmark::State& state, const std::vector<double>& values, Print print) {
    std::vector<char> buffer(values.size() * 32 + formatMaskCapacity(decimals));
    for (auto _ : state) {
        char* place = buffer.data();
        for (const double value : values) place += print(place, value);
        benchmark::DoNotOptimize(buffer.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * count);
}

std::size_t printByLibrary(char* target, double value) {
    return static_cast<std::size_t>(std::to_chars(target, target + 32, value, std::chars_format::fixed, decimals).ptr -
                                    target);
}

void printFast(benchmark::State& state) {
    printAll(state, logValues(), [](char* target, double value) { return formatMaskFast(target, value, decimals); });
}
void printCalled(benchmark::State& state) {
    printAll(state, logValues(), [](char* target, double value) { return formatMaskTo(target, value, decimals); });
}
void printSlow(benchmark::State& state) {
    printAll(state, logValues(),
             [](char* target, double value) { return detail::formatMaskSlowTo(target, value, decimals); });
}
void printStandard(benchmark::State& state) {
    printAll(state, logValues(), printByLibrary);
}
BENCHMARK(printFast);
BENCHMARK(printCalled);
BENCHMARK(printSlow);
BENCHMARK(printStandard);

/// Values with six decimals, so that one in ten is a tie where five are printed.
void printTies(benchmark::State& state) {
    std::vector<double> values;
    for (const double value : logValues()) values.push_back(val(formatMask(value, decimals + 1)));
    printAll(state, values, [](char* target, double value) { return formatMaskFast(target, value, decimals); });
}
BENCHMARK(printTies);

}  // namespace
}  // namespace welvane::bench
