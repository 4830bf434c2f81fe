#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <map>
#include <string>

// Runs the benchmarks and prints, behind the usual table, the ratios that matter: a figure in
// seconds tells more about the machine than about the program.

namespace {

class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) times[run.benchmark_name()] = run.GetAdjustedCPUTime();
    }

    void PrintRatio(const char* text, const std::string& above, const std::string& below) const {
        const auto numerator = times.find(above);
        const auto denominator = times.find(below);
        if (numerator == times.end() || denominator == times.end()) return;
        std::printf("%-56s %8.2f\n", text, numerator->second / denominator->second);
    }

private:
    std::map<std::string, double> times;
};

}  // namespace

int main(int count, char** words) {
    benchmark::Initialize(&count, words);
    if (benchmark::ReportUnrecognizedArguments(count, words)) return 2;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\nRatios of processor time\n");
    reporter.PrintRatio("a sheet to the same formulas written by hand", "Formulas/100000",
                        "FormulasByHand/100000");
    reporter.PrintRatio("ten times the formulas, 1,000,000 to 100,000", "Formulas/1000000",
                        "Formulas/100000");
    reporter.PrintRatio("ten times the terms, 100,000 to 10,000", "Terms/100000", "Terms/10000");
    reporter.PrintRatio("ten times the terms, 1,000,000 to 100,000", "Terms/1000000",
                        "Terms/100000");
    reporter.PrintRatio("ten times the depth, 100,000 to 10,000", "Brackets/100000",
                        "Brackets/10000");
    reporter.PrintRatio("ten times the depth, 1,000,000 to 100,000", "Brackets/1000000",
                        "Brackets/100000");
    reporter.PrintRatio("a series to the same loop written by hand", "Series/10000000",
                        "SeriesByHand/10000000");
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%-56s %8ld\n", "most memory at any time, in MiB", usage.ru_maxrss / 1024);
    return 0;
}
