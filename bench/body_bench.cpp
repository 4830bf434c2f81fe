#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "bench/hand_loops.h"
#include "bench/other_parser.h"
#include "core/calc_parameters.h"
#include "core/compile_sheet.h"
#include "core/sentence.h"

// Sums of one body over ten million points: by `series`, by a loop written by hand for that body,
// and by muParser where it is there. All three run by turns, many times, and each ratio is the
// median of those of one turn: what else the machine does slows neighbours alike.
//
//     orvane_body_bench [TURNS [POINTS]]
//
// Ends with status 1 where a sum differs from that of the loop, whose order is the same: it must be
// the same to the last bit.

namespace orvane::bench {
namespace {

struct BodyRow {
    const char* body;
    const char* otherBody;  // as muParser writes it
    const char* lower;
    const char* step;
    HandLoop byHand;
    double wanted;  // at most, of the time of the loop
};

constexpr const char* aMillionth = "0.000001";

constexpr BodyRow bodyRows[] = {
    {"1/(x*x)", "1/(x*x)", "1", "1", InverseSquares, 0.90},
    {"x*x*x-2*x+5", "x*x*x-2*x+5", "0", aMillionth, Cubic, 0.90},
    {"sin(x)*exp(-x/3)", "sin(x)*exp(-x/3)", "0", aMillionth, DampedSine, 1.00},
    {"(x+1)/(x*x+3)-x/(x+2)", "(x+1)/(x*x+3)-x/(x+2)", "0", aMillionth, TwoQuotients, 0.55},
    {"sqrt(x*x+1)", "sqrt(x*x+1)", "0", aMillionth, Hypotenuse, 0.50},
    {"if(great_than(x,5),x*x,x/2)", "x>5?x*x:x/2", "0", aMillionth, ParabolaOrLine, 1.15},
    {"pow(x,1.5)+ln(x)", "x^1.5+ln(x)", "0.5", aMillionth, PowerAndLogarithm, 1.00},
};
constexpr double wantedMean = 0.85;

double NumberFrom(std::string_view text) {
    double number = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// Of this process: what others take of the machine does not count.
double ProcessorSeconds() {
    timespec now = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// The value of the sheet's only sentence, NaN without one. Reading the sheet is part of it.
double SumBySheet(std::string sheet) {
    CalcParameters parameters;
    SentenceList sentences;
    std::string errorText;
    CompileSheet(sentences, sheet.data(), sheet.data() + sheet.size(), parameters, errorText);
    const bool hasValue = !sentences.IsEmpty() && sentences[0].root.evaluated;
    return hasValue ? sentences[0].root.result.At(0, 0) : std::nan("");
}

bool SameBits(double left, double right) { return std::memcmp(&left, &right, sizeof left) == 0; }

// The relative times of all turns.
struct Spread {
    std::vector<double> figures;

    double Median() {
        std::ranges::sort(figures);
        return figures[figures.size() / 2];
    }
    double Least() const { return *std::ranges::min_element(figures); }
    double Most() const { return *std::ranges::max_element(figures); }
};

struct BodyFigures {
    Spread byHand;  // ns for a point
    Spread bySheet;
    Spread sheetToHand;
    Spread otherToSheet;
    bool sameBits = true;
};

template <typename Work>
double SecondsFor(Work work) {
    const double start = ProcessorSeconds();
    work();
    return ProcessorSeconds() - start;
}

void RunTurn(const BodyRow& row, std::int64_t points, BodyFigures& figures) {
    const double lower = NumberFrom(row.lower);
    const double step = NumberFrom(row.step);
    const std::string sheet = std::string("series(x,") + row.lower + "," + row.step + "," +
                              std::to_string(points) + "," + row.body + ")";
    GridSum expected;
    double sum = 0.0;
    const double byHand = SecondsFor([&] { expected = row.byHand(lower, step, points); });
    const double bySheet = SecondsFor([&] { sum = SumBySheet(sheet); });
    figures.sameBits = figures.sameBits && !expected.failed && SameBits(sum, expected.sum);
    const double nanoseconds = 1e9 / static_cast<double>(points);
    figures.byHand.figures.push_back(byHand * nanoseconds);
    figures.bySheet.figures.push_back(bySheet * nanoseconds);
    figures.sheetToHand.figures.push_back(bySheet / byHand);
    if (!HasOtherParser()) return;
    double other = 0.0;
    const double byOther =
        SecondsFor([&] { other = SumByOtherParser(row.otherBody, lower, step, points); });
    figures.otherToSheet.figures.push_back(byOther / bySheet);
    if (std::fabs(other - sum) > std::fabs(sum) * 1e-9) {
        std::printf("muParser has another sum for %s\n", row.otherBody);
    }
}

int Run(int turns, std::int64_t points) {
    constexpr std::size_t rows = std::size(bodyRows);
    BodyFigures warmUp[rows];
    BodyFigures figures[rows];
    for (std::size_t i = 0; i < rows; ++i) RunTurn(bodyRows[i], points / 10 + 1, warmUp[i]);
    for (int turn = 0; turn < turns; ++turn) {
        for (std::size_t i = 0; i < rows; ++i) RunTurn(bodyRows[i], points, figures[i]);
    }

    std::printf("%lld points, median of %d turns (least to most); processor time\n",
                static_cast<long long>(points), turns);
    std::printf("%-28s %9s %9s %28s %7s %16s\n", "", "hand, ns", "sheet, ns", "sheet / hand",
                "wanted", "muParser / sheet");
    double logarithms = 0.0;
    bool allSame = true;
    for (std::size_t i = 0; i < rows; ++i) {
        BodyFigures& row = figures[i];
        const double ratio = row.sheetToHand.Median();
        logarithms += std::log(ratio);
        allSame = allSame && row.sameBits;
        std::printf("%-28s %9.2f %9.2f %12.2f (%.2f to %.2f) %7.2f ", bodyRows[i].body,
                    row.byHand.Median(), row.bySheet.Median(), ratio, row.sheetToHand.Least(),
                    row.sheetToHand.Most(), bodyRows[i].wanted);
        if (HasOtherParser()) std::printf("%16.1f", row.otherToSheet.Median());
        std::printf("%s%s\n", ratio > bodyRows[i].wanted ? "  too slow" : "",
                    row.sameBits ? "" : "  OTHER BITS");
    }
    std::printf("%-28s %9s %9s %12.2f %15s %7.2f\n", "geometric mean", "", "",
                std::exp(logarithms / static_cast<double>(rows)), "", wantedMean);
    if (!HasOtherParser()) std::printf("built without muParser: install libmuparser-dev\n");
    return allSame ? 0 : 1;
}

}  // namespace
}  // namespace orvane::bench

int main(int count, char** words) {
    const int turns = count > 1 ? std::atoi(words[1]) : 9;
    const long long points = count > 2 ? std::atoll(words[2]) : 10'000'000;
    if (count > 3 || turns < 1 || points < 1) {
        std::fprintf(stderr, "usage: orvane_body_bench [TURNS [POINTS]]\n");
        return 2;
    }
    return orvane::bench::Run(turns, points);
}
