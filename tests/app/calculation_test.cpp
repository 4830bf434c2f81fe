#include "app/calculation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <locale>
#include <string>
#include <string_view>
#include <vector>

#include "locus/locus_store.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

// Writes down what a run shows, in order.
class Recorder : public MessageDisplay, public ProgressDisplay, public ResultDisplay {
public:
    std::vector<std::string> events;
    std::vector<std::uint32_t> colours;

    void ShowMessage(std::string_view message, std::string_view caption) override {
        events.push_back("message [" + std::string(caption) + "] " + std::string(message));
    }
    void Step() override { events.emplace_back("step"); }
    void Show() override { events.emplace_back("show progress"); }
    void Hide() override { events.emplace_back("hide progress"); }
    void ShowTexts(const ColouredText& position, const ColouredText& result) override {
        events.push_back("texts [" + std::string(position.text) + "] [" + std::string(result.text) +
                         ']');
        colours.push_back(position.colour);
        colours.push_back(result.colour);
    }

    CalculationDisplays Displays() { return {*this, *this, *this}; }
};

using Events = std::vector<std::string>;

TEST(RunCalculation, ShowsItsTextsInOrder) {
    Recorder recorder;
    CalcParameters parameters;
    parameters.positionLine = true;
    CalculationTexts texts = {"earlier position", "earlier result"};
    RunWatchers watchers;
    watchers.wishes.watcher = [&](const StageReport& report) {
        recorder.events.push_back("stage " + std::string(report.name));
    };
    watchers.finished = [&](const FinishedRun& run) {
        EXPECT_EQ(run.errorText, "");
        EXPECT_EQ(run.sentences.Count(), 1);
        EXPECT_EQ(run.texts.resultText, "+3 \t\n");
        recorder.events.emplace_back("finished");
    };
    EXPECT_TRUE(RunCalculation("1+2", parameters, recorder.Displays(), texts, watchers));

    const Events events = {"show progress",
                           "texts [] [Now is calculating,please wait...]",
                           "stage AnalyseSentences",
                           "stage StringFunctionPass",
                           "stage CheckNumbersAndPoints",
                           "stage RewriteOperators",
                           "stage CheckSymbols",
                           "stage BuildAndEvaluate",
                           "hide progress",
                           "texts [21\r\n--\r\n] [+3 \t\n]",
                           "finished"};
    Events shown = recorder.events;
    // Where a watcher looks at the finished run, between the pipeline and its end, is open.
    const auto finished = std::find(shown.begin(), shown.end(), "finished");
    ASSERT_NE(finished, shown.end());
    shown.erase(finished);
    EXPECT_EQ(shown, Events(events.begin(), events.end() - 1));
    EXPECT_EQ(texts.positionText, "21\r\n--\r\n");
    EXPECT_EQ(texts.resultText, "+3 \t\n");
}

TEST(RunCalculation, StepsTheProgressBetweenShowAndHide) {
    Recorder recorder;
    CalcParameters parameters;
    CalculationTexts texts;
    EXPECT_TRUE(RunCalculation("series(i,1,1,1001,1)", parameters, recorder.Displays(), texts));
    const Events events = {"show progress",
                           "texts [] [Now is calculating,please wait...]",
                           "step",
                           "step",
                           "step",
                           "hide progress",
                           "texts [] [+1001 \t\n]"};
    EXPECT_EQ(recorder.events, events);
}

TEST(RunCalculation, OnlyShowsAMessageForAnEmptySheet) {
    Recorder recorder;
    CalcParameters parameters;
    parameters.systemBitsIndex = 6;
    parameters.floatPrecision = 40;
    CalculationTexts texts = {"earlier position", "earlier result"};
    locusStore.Clear();
    locusStore.Add(0, LocusKind::xy);
    EXPECT_FALSE(RunCalculation("", parameters, recorder.Displays(), texts));
    EXPECT_EQ(recorder.events,
              (Events{"message [Message] Please input formulas for calculation."}));
    EXPECT_EQ(texts.positionText, "earlier position");
    EXPECT_EQ(texts.resultText, "earlier result");
    EXPECT_EQ(parameters.floatPrecision, 40);
    EXPECT_EQ(locusStore.Count(), 1);
    locusStore.Clear();
}

TEST(RunCalculation, OnlyShowsAMessageForASheetTooLarge) {
    Recorder recorder;
    CalcParameters parameters;
    CalculationTexts texts = {"earlier position", "earlier result"};
    std::string sheet(largestSheet + 1, ' ');
    EXPECT_FALSE(RunCalculation(sheet, parameters, recorder.Displays(), texts));
    EXPECT_EQ(recorder.events,
              (Events{"message [Message] The sheet is too large. No more than 64 MiB can be "
                      "calculated."}));
    EXPECT_EQ(texts.resultText, "earlier result");
    // What stands behind a NUL does not count.
    sheet[1] = '\0';
    EXPECT_TRUE(RunCalculation(sheet, parameters, recorder.Displays(), texts));
    EXPECT_TRUE(
        RunCalculation(std::string(largestSheet, ' '), parameters, recorder.Displays(), texts));
    EXPECT_EQ(texts.resultText, "");
}

TEST(RunCalculation, GivesAnEmptyReportForASheetWithoutSentences) {
    for (const std::string_view sheet : {" ", "\n\t", "// only a comment", ";;", "define: a=1"}) {
        SCOPED_TRACE(sheet);
        const test::RanSheet ran = test::Run(sheet);
        EXPECT_EQ(ran.message, "");
        EXPECT_EQ(ran.positionText, "");
        EXPECT_EQ(ran.resultText, "");
    }
}

TEST(RunCalculation, SetsTheWordLimits) {
    struct Row {
        int index;
        double modulus, maxUnsigned, maxSigned, minSigned;
    };
    constexpr Row rows[] = {
        {0, 4.0, 3.0, 1.0, -2.0},
        {51, 9007199254740992.0, 9007199254740991.0, 4503599627370495.0, -4503599627370496.0},
    };
    for (const auto& [index, modulus, maxUnsigned, maxSigned, minSigned] : rows) {
        SCOPED_TRACE(index);
        Recorder recorder;
        CalcParameters parameters;
        parameters.systemBitsIndex = index;
        CalculationTexts texts;
        RunCalculation("1", parameters, recorder.Displays(), texts);
        EXPECT_EQ(parameters.wordModulus, modulus);
        EXPECT_EQ(parameters.wordMaxUnsigned, maxUnsigned);
        EXPECT_EQ(parameters.wordMaxSigned, maxSigned);
        EXPECT_EQ(parameters.wordMinSigned, minSigned);
    }
}

// Rows that no list offers, but a settings file may hold: the nearest word that there is.
TEST(RunCalculation, TakesTheNearestWordForARowOutsideTheList) {
    const std::string widest = "0b0" + std::string(44, '0') + "11111111 \t\n";
    const std::string narrowest = "0b11 \t(trim: 63 of +4)\n";
    struct Row {
        std::int32_t asked, used;
        std::string result;
    };
    const Row rows[] = {
        {-2147483647 - 1, 0, narrowest},
        {-2147483647, 0, narrowest},
        {-1, 0, narrowest},
        {0, 0, narrowest},
        {51, 51, widest},
        {52, 51, widest},
        {1022, 51, widest},
        {2147483645, 51, widest},
        {2147483647, 51, widest},
    };
    for (const auto& [asked, used, result] : rows) {
        SCOPED_TRACE(asked);
        Recorder recorder;
        CalcParameters parameters;
        parameters.systemBitsIndex = asked;
        CalculationTexts texts;
        RunCalculation("bin: 255", parameters, recorder.Displays(), texts);
        EXPECT_EQ(parameters.systemBitsIndex, used);
        EXPECT_EQ(texts.resultText, result);
    }
}

TEST(RunCalculation, LimitsThePrecisionFromAbove) {
    struct Row {
        int asked, used;
        std::string_view result;
    };
    constexpr Row rows[] = {
        {40, 32, "+0.10000000000000000555111512312578 \t\n"},
        {33, 32, "+0.10000000000000000555111512312578 \t\n"},
        {32, 32, "+0.10000000000000000555111512312578 \t\n"},
        {31, 31, "+0.1000000000000000055511151231258 \t\n"},
        {1, 1, "+0.1 \t\n"},
        {0, 0, "+ \t\n"},
        {-1, -1, "+0.1 \t\n"},
        {-2147483647 - 1, -2147483647 - 1, "+0.1 \t\n"},
    };
    for (const auto& [asked, used, result] : rows) {
        SCOPED_TRACE(asked);
        Recorder recorder;
        CalcParameters parameters;
        parameters.floatPrecision = asked;
        CalculationTexts texts;
        RunCalculation("0.1", parameters, recorder.Displays(), texts);
        EXPECT_EQ(parameters.floatPrecision, used);
        EXPECT_EQ(texts.resultText, result);
    }
}

TEST(RunCalculation, PutsTheErrorTextDirectlyBehindTheReport) {
    struct Row {
        std::string_view sheet, result;
    };
    constexpr Row rows[] = {
        {"1+;2",
         "sentence 1  was not calculated.\nsentence 2  was not calculated.\n"
         "C002-10: operator \"+\" is used incorrect in sentence 1."},
        {"\"", "C001-01: string in line 1 is not matched properly."},
        {"foo: ab=1; 2",
         "ab = sentence 1  was not calculated.\n     sentence 2  was not calculated.\n"
         "C001-02: header \"foo\" of sentence 1 is unrecognized."},
        {"text: a; hide: b; define: c=1; d=2; a b",
         "\n a\n    sentence 2  was not calculated.\nd = sentence 4  was not calculated.\n"
         "    sentence 5  was not calculated.\nC002-03: \"b\" is used incorrect in sentence 5."},
        {"1;strlen(x)",
         "sentence 1  was not calculated.\nsentence 2  was not calculated.\n"
         "E003-02 sentence  2: \"strlen(x)\"."},
        {"define: d=d; d",
         "sentence 2  was not calculated.\n"
         "C001-09: define substitution in sentence 2 does not end."},
        // an evaluation error stays with its sentence
        {"nosuchname(1);2",
         "E001-01 sentence  1: function \"nosuchname\": unknown function.\n+2 \t\n"},
        {"y=x;z=y+1",
         "y = sentence 1  was not calculated.\n"
         "z = sentence 1 was not calculated because it uses formula name \"y\"\n"},
    };
    for (const auto& [sheet, result] : rows) {
        SCOPED_TRACE(sheet);
        const test::RanSheet ran = test::Run(sheet);
        EXPECT_EQ(ran.resultText, result);
        EXPECT_EQ(ran.positionText, "");
    }
}

TEST(RunCalculation, LetsNothingOfOneRunBeSeenByTheNext) {
    constexpr std::string_view sheet =
        "define: d=2; a=d+1; text: t; hex: 255; b=a*pi; 1/0; locus_xy(x,0,1,10,x)";
    const test::RanSheet first = test::Run(sheet);
    EXPECT_EQ(locusStore.Count(), 1);
    const test::RanSheet second = test::Run(sheet);
    EXPECT_EQ(second.resultText, first.resultText);
    EXPECT_EQ(locusStore.Count(), 1);

    // Neither name nor define nor curve of the earlier run is there.
    EXPECT_EQ(test::Run("a").resultText, "sentence 1  was not calculated.\n");
    EXPECT_EQ(test::Run("d").resultText, "sentence 1  was not calculated.\n");
    EXPECT_TRUE(locusStore.IsEmpty());
}

TEST(RunCalculation, KeepsTheCurvesUntilTheNextRun) {
    test::Run("locus_xy(x,0,1,10,x); locus_xy(x,0,1,10,2*x)");
    EXPECT_EQ(locusStore.Count(), 2);
    test::Run("1+");
    EXPECT_TRUE(locusStore.IsEmpty());
}

TEST(RunCalculation, EndsTheSheetAtANul) {
    constexpr std::string_view sheet("1+1\0+5; 7", 9);
    EXPECT_EQ(test::Run(sheet).resultText, "+2 \t\n");
    constexpr std::string_view inComment("1 // \0\n; 7", 10);
    EXPECT_EQ(test::Run(inComment).resultText, "+1 \t\n");
}

TEST(RunCalculation, LeavesTheTextOfItsCallerAlone) {
    const std::string sheet = "a = [1\t+ 2} // c\r\n; hex: pi";
    const std::string copy = sheet;
    test::Run(sheet);
    EXPECT_EQ(sheet, copy);
}

// A locale that writes decimal commas, for the C library and for C++.
class CommaLocale {
public:
    CommaLocale() {
        const char* const current = std::setlocale(LC_ALL, nullptr);
        if (current != nullptr) libraryLocale = current;
        setenv("LOCPATH", ORVANE_LOCALES_FOLDER, 1);
        EXPECT_NE(std::setlocale(LC_ALL, "comma"), nullptr);
        EXPECT_STREQ(std::localeconv()->decimal_point, ",");
        static const Comma comma;
        std::locale::global(std::locale(std::locale::classic(), &comma));
    }
    ~CommaLocale() {
        std::locale::global(streamLocale);
        std::setlocale(LC_ALL, libraryLocale.c_str());
        unsetenv("LOCPATH");
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    // Not owned by the locales that use it.
    struct Comma : std::numpunct<char> {
        Comma() : std::numpunct<char>(1) {}
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::string libraryLocale = "C";
    std::locale streamLocale;
};

TEST(RunCalculation, AsksNoLocale) {
    struct Row {
        std::string_view sheet, result;
    };
    constexpr Row rows[] = {
        {"1.5+0.25; 1234567.5; pi*2; hex: 300.25",
         "        +1.75 \t\n"
         "  +1234567.5  \t\n"
         "        +6.28 \t\n"
         "0h0000012C    \t(truncate: 0.25)\n"},
        {"percent: 0.5", "+0.5 % \t\n"},
        {"matrix((1.5,2),(3,4))", "+1.5,+2\n+3  ,+4\n"},
        {"strlen(\"a,b\")", "+3 \t\n"},
        {"1,5", "E002-01 sentence  1: number format error.\n"},
        {"1e5",
         "sentence 1  was not calculated.\n"
         "C002-06: the number \"1e5\" is unrecognized in sentence 1."},
    };
    const CommaLocale guard;
    for (const auto& [sheet, result] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(test::Run(sheet).resultText, result);
    }
}

TEST(ShowResult, HasColoursForEachBackground) {
    struct Row {
        bool black;
        std::uint32_t position, result;
    };
    constexpr Row rows[] = {{false, 0x808080, 0x000000}, {true, 0xC0C0C0, 0xFFFFFF}};
    for (const auto& [black, position, result] : rows) {
        SCOPED_TRACE(black);
        CalcParameters parameters;
        parameters.blackOutput = black;
        for (const std::string_view ruler : {"", "ruler"}) {
            Recorder recorder;
            ShowResult({std::string(ruler), "report"}, parameters, recorder);
            EXPECT_EQ(recorder.events, (Events{"texts [" + std::string(ruler) + "] [report]"}));
            EXPECT_EQ(recorder.colours, (std::vector<std::uint32_t>{position, result}));
        }
        Recorder recorder;
        CalculationTexts texts;
        RunCalculation("1", parameters, recorder.Displays(), texts);
        EXPECT_EQ(recorder.colours,
                  (std::vector<std::uint32_t>{position, result, position, result}));
    }
}

}  // namespace
}  // namespace orvane
