#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/calculation.h"
#include "cli/run_json.h"
#include "fuzz/fuzzed_bytes.h"
#include "locus/locus_store.h"

// A whole run, from the sheet's text to the report: with any options, and twice, since sweeps by
// columns must give what the tree evaluator gives. Four bytes of options, then the sheet.

namespace orvane::fuzz {

namespace {

constexpr std::size_t longestSheet = 4096;
constexpr int mostSteps = 40;  // of the progress: some 20,000 rounds of sweeps

// Ends a run that asks for more. The library throws nothing itself, and all that it owns has an
// owner, so that a run may be left in this way; only a fuzzer does.
struct TooMuchWork {};

class Displays : public MessageDisplay, public ProgressDisplay, public ResultDisplay {
public:
    int steps = 0;

    void ShowMessage(std::string_view, std::string_view) override {}
    void Step() override {
        if (++steps > mostSteps) throw TooMuchWork();
    }
    void Show() override {}
    void Hide() override {}
    void ShowTexts(const ColouredText&, const ColouredText&) override {}
};

struct Outcome {
    bool isFinished = false;
    int steps = 0;
    CalculationTexts texts;
    std::vector<std::uint64_t> numbers;  // of all results and curves, as their bits

    bool operator==(const Outcome& other) const {
        return isFinished == other.isFinished && steps == other.steps &&
               texts.positionText == other.texts.positionText &&
               texts.resultText == other.texts.resultText && numbers == other.numbers;
    }
    // The sign of what is no number is nobody's promise.
    void Add(double number) {
        numbers.push_back(std::isnan(number) ? 1 : std::bit_cast<std::uint64_t>(number));
    }
};

void AddNumbers(const FinishedRun& run, Outcome& outcome) {
    std::string printed;
    cli::PiecewiseText text([&](std::string_view piece) { printed += piece; });
    cli::PrintRun(run, text);
    Require(cli::Json::accept(printed), "a run is JSON");
    for (const Sentence* sentence : run.sentences) {
        const Value& result = sentence->root.result;
        for (const double number : result.AllCells()) outcome.Add(number);
    }
    for (int at = 0; at < locusStore.Count(); ++at) {
        const LocusSet& curve = locusStore[at];
        for (const LocusPoint& point : curve.points) {
            outcome.Add(point.x);
            outcome.Add(point.y);
            outcome.Add(point.penUp ? 1.0 : 0.0);
        }
        for (const double number : {curve.minX, curve.maxX, curve.minY, curve.maxY}) {
            outcome.Add(number);
        }
        outcome.Add(curve.stoppedEarly ? curve.lastParameter : 0.0);
    }
}

Outcome Calculate(std::string_view sheet, CalcParameters parameters) {
    Displays displays;
    Outcome outcome;
    RunWatchers watchers;
    watchers.finished = [&outcome](const FinishedRun& run) { AddNumbers(run, outcome); };
    try {
        RunCalculation(sheet, parameters, {displays, displays, displays}, outcome.texts, watchers);
        outcome.isFinished = true;
    } catch (const TooMuchWork&) {
        outcome = {};
    }
    outcome.steps = displays.steps;
    return outcome;
}

CalcParameters ReadOptions(FuzzedBytes& bytes) {
    CalcParameters parameters;
    parameters.systemBitsIndex = static_cast<std::int32_t>(bytes.Below(lastWordBitsRow + 3)) - 1;
    parameters.floatPrecision = static_cast<std::int32_t>(bytes.Below(40)) - 2;
    const unsigned switches = bytes.Byte();
    parameters.showSign = (switches & 1) != 0;
    parameters.positionLine = (switches & 2) != 0;
    parameters.formulaBreak = (switches & 4) != 0;
    parameters.breakText = (switches & 8) != 0;
    parameters.locusFine = static_cast<std::int32_t>(bytes.Below(20));
    return parameters;
}

}  // namespace

}  // namespace orvane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane;
    using namespace orvane::fuzz;
    FuzzedBytes bytes(data, size);
    CalcParameters parameters = ReadOptions(bytes);
    const std::string_view sheet = bytes.Rest().substr(0, longestSheet);
    const Outcome byColumns = Calculate(sheet, parameters);
    parameters.sweepByColumns = false;
    Require(Calculate(sheet, parameters) == byColumns, "columns and trees give the same");
    return 0;
}
