#include <benchmark/benchmark.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <array>
#include <charconv>
#include <string>

#include "bench/sheet_of_formulas.h"
#include "bench/silent_run.h"

// Whole sheets: reading, calculating and printing, per line.

namespace orvane::bench {
namespace {

std::string SumOfTerms(std::int64_t terms) {
    std::string sheet = "1";
    for (std::int64_t term = 1; term < terms; ++term) sheet += "+1";
    return sheet;
}

std::string NestedBrackets(std::int64_t depth) {
    std::string sheet;
    for (std::int64_t level = 0; level < depth; ++level) sheet += "(1+";
    sheet += "1";
    return sheet.append(static_cast<std::size_t>(depth), ')');
}

// Gives the memory of the run before back to the system. A small sheet is run several times and a
// large one once: both shall start with none, as the command-line tool does.
void ForgetMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

void RunSheet(benchmark::State& state, const std::string& sheet) {
    for (auto _ : state) {
        state.PauseTiming();
        ForgetMemory();
        state.ResumeTiming();
        benchmark::DoNotOptimize(RunSilently(sheet));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void Formulas(benchmark::State& state) { RunSheet(state, SheetOfFormulas(state.range(0))); }
void Terms(benchmark::State& state) { RunSheet(state, SumOfTerms(state.range(0))); }
void Brackets(benchmark::State& state) { RunSheet(state, NestedBrackets(state.range(0))); }

// What a program written for these formulas alone would have to do: read two numbers of a line,
// calculate, and print the result with its name.
void FormulasByHand(benchmark::State& state) {
    const std::string sheet = SheetOfFormulas(state.range(0));
    for (auto _ : state) {
        std::string report;
        std::string_view rest = sheet;
        double last = 0.0;
        while (!rest.empty()) {
            const std::string_view line = rest.substr(0, rest.find('\n'));
            rest.remove_prefix(line.size() + 1);
            const std::size_t equals = line.find('=');
            const std::string_view formula = line.substr(equals + 2);
            double first = last;
            if (formula.front() != 'v') std::from_chars(formula.data(), line.end(), first);
            double factor = 0.0;
            std::from_chars(formula.data() + formula.find('*') + 2, line.end(), factor);
            double added = 0.0;
            std::from_chars(formula.data() + formula.find('+') + 2, line.end(), added);
            last = first * factor + added;
            std::array<char, 400> digits;
            const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), last,
                                           std::chars_format::fixed, 2)
                                 .ptr;
            report.append(line.substr(0, equals)).append("= ").append(digits.data(), end) += '\n';
        }
        benchmark::DoNotOptimize(report);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(Formulas)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(FormulasByHand)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Terms)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(Brackets)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace orvane::bench
