#include <gtest/gtest.h>
#include <malloc.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/calc_parameters.h"
#include "locus/locus_store.h"
#include "tests/support/random_sweeps.h"
#include "tests/support/sheet_files.h"
#include "tests/support/sheet_run.h"

#ifdef __SANITIZE_ADDRESS__
// The compiler has it, and no header for it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

// The program is left open for weeks: thousands of calculations in one process, each of another
// sheet, and afterwards no more memory is in use than at the start.

namespace orvane {
namespace {

namespace fs = std::filesystem;

struct Memory {
    std::size_t inUse = 0;     // handed out and not given back
    std::size_t resident = 0;  // what the process has from the system
};

Memory MemoryNow() {
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer holds back what was given back, so what the process has tells nothing.
    return {__sanitizer_get_current_allocated_bytes(), 0};
#else
    constexpr std::size_t pageSize = 4096;
    const struct mallinfo2 info = mallinfo2();
    std::ifstream file("/proc/self/statm");
    std::size_t total = 0;
    std::size_t residentPages = 0;
    file >> total >> residentPages;
    return {info.uordblks + info.hblkhd, residentPages * pageSize};
#endif
}

std::string Repeated(std::string_view text, int count) {
    std::string repeated;
    for (int at = 0; at < count; ++at) repeated += text;
    return repeated;
}

// The form with the text in place of each '$'.
std::string Filled(std::string_view form, const std::string& text) {
    std::string filled;
    for (const char c : form) {
        if (c == '$') {
            filled += text;
        } else {
            filled += c;
        }
    }
    return filled;
}

std::string Matrix(int size) {
    std::string matrix = "matrix(";
    for (int row = 0; row < size; ++row) {
        matrix += row > 0 ? ",(" : "(";
        for (int column = 0; column < size; ++column) {
            if (column > 0) matrix += ",";
            matrix += std::to_string((row * 7 + column * 3) % 11 + (row == column ? 20 : 0));
        }
        matrix += ")";
    }
    return matrix + ")";
}

// Every kind of sheet that takes memory in its own way; the sizes change from round to round.
std::vector<std::string> MadeSheets(int round) {
    const int size = round % 25 + 2;
    const std::string number = std::to_string(round);
    const std::string count = std::to_string(50 + round % 13 * 40);
    return {
        Filled("m=$; m*m; m+m; matrix_inv($); matrix_det($); matrix_transpose($); matrix_rank($)",
               Matrix(size)),
        Filled("s = strlen(\"$\"); strsum(\"$\"); strsumspecial(\"$\")",
               Repeated("ab, c", round % 40)),
        Filled("locus_xy(x,0,1,$,sin(x*20)); locus_polar(t,0,6,$,t); locus_xy(x,-1,1,4,1/x);"
               "locus_parametric(t,0,6,$,cos(t),sin(t))",
               count),
        Filled("series(i,1,1,$,i*i); product(i,1,0.1,9,i); integral_area_xy(x,0,1,$,x*x);"
               "equation_root(x,0,9,$,x*x-2)",
               count),
        Repeated(Filled("define: d$=1+2; a$ = d$; a$*2;", number), size),
        Filled("define: d$=1+2; a$ = d$; a$*2; hex: a$; text: $;", number),
        Filled("$1", Repeated("1+", round % 30 * 50)),
        Filled("$1", Repeated("(", size)) + Repeated(")", size),
        // what fails, in each stage
        Filled("\"$", Repeated("x", size * 30)),
        Filled("1+;$", Repeated("2;", size)),
        Filled("strlen($)", Repeated("x", size)),
        Filled("foo$: 1", number),
        "1e5",
        "nosuch(1); 1/0; ln(0); y=x; z=y+1; matrix((1,2),(3)); sqrt(neg(1)); 5",
        Filled("$1", Repeated("((", size)),
        "define: d=d; d",
        "text: only text; hide: 1",
        "1 // \x80\xFF",
    };
}

constexpr test::SweepWords sweeps[] = {
    {"series", true},
    {"product", true},
    {"equation_root", false, 1, false, 1, 300},
    {"integral_area_xy", false, 1, true, 2, 300},
    {"integral_curve_parametric", false, 2, true, 2, 300},
    {"locus_polar", false, 1, true},
    {"locus_parametric", false, 2, true},
};

// All sheets that ship with the program or stand in the tests, which never change.
std::vector<std::string> FixedSheets() {
    std::vector<std::string> sheets;
    for (const fs::path folder : {ORVANE_SAMPLES_FOLDER, ORVANE_SHEETS_FOLDER}) {
        for (const std::string& name : test::NamesWith(folder, ".sheet")) {
            sheets.push_back(test::ReadAll(folder / (name + ".sheet")));
        }
    }
    return sheets;
}

// The runs of one process, with options that change as a user changes them.
class Soak {
public:
    void Run(const std::string& sheet) {
        CalcParameters parameters = test::ParametersForBits(2 + runs % 52);
        parameters.floatPrecision = runs % 33;
        parameters.positionLine = runs % 3 == 0;
        parameters.formulaBreak = runs % 5 == 0;
        parameters.locusFine = runs % 20;
        reports += test::Run(sheet, parameters).resultText.size();
        ++runs;
    }
    void Round() {
        for (const std::string& sheet : MadeSheets(round)) Run(sheet);
        test::RandomSweeps random(static_cast<std::uint64_t>(round));
        for (const test::SweepWords& words : sweeps) Run(random.Sheet(words));
        // A third of the fixed ones in each round: they take the longest.
        for (std::size_t at = static_cast<std::size_t>(round % 3); at < fixed.size(); at += 3) {
            Run(fixed[at]);
        }
        ++round;
    }
    // What stays of a run is its curves; behind this sheet there are none.
    Memory MemoryBehindASmallSheet() {
        Run("1");
        locusStore = LocusStore();
        return MemoryNow();
    }

    int runs = 0;
    std::size_t reports = 0;

private:
    const std::vector<std::string> fixed = FixedSheets();
    int round = 0;
};

TEST(Soak, LeavesTheMemoryFlatOverTenThousandCalculations) {
    // What the library allocates once it has by then.
    constexpr int warmUp = 1500;
    // The C library counts small pieces that it keeps at hand as in use. Eight bytes left behind by
    // each run would be more.
    constexpr std::size_t keptAtHand = std::size_t{64} << 10;
    constexpr std::size_t torn = std::size_t{4} << 20;  // free, and between what is not
    Soak soak;
    while (soak.runs < warmUp) soak.Round();
    const Memory before = soak.MemoryBehindASmallSheet();
    while (soak.runs < warmUp + 10'000) soak.Round();
    const Memory after = soak.MemoryBehindASmallSheet();
    EXPECT_GT(before.inUse, 0U);
    EXPECT_LE(after.inUse, before.inUse + keptAtHand);
    EXPECT_LE(after.resident, before.resident + torn);
    EXPECT_GT(soak.reports, 1'000'000U);
}

}  // namespace
}  // namespace orvane
