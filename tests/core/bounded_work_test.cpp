#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "app/calculation.h"
#include "core/compile_stages.h"
#include "core/node_builder.h"
#include "core/run_stop.h"
#include "core/sheet_cutter.h"
#include "locus/locus_store.h"
#include "tests/support/sheet_run.h"
#include "tests/support/stage_run.h"

// Short sheets that ask for very much, and long ones that are all of one kind: a message comes in
// place of a machine without memory. And what is left of a run that is asked to stop.

namespace orvane {
namespace {

using test::Compile;
using test::CompiledSheet;
using test::Evaluate;
using test::Repeat;
using test::RowsOf;
using test::RunStage;

// The most room that the tables of all values held while the sheet ran, counted at each step of a
// progress display.
class RoomWatch : public Progress {
public:
    void Step() override { most = std::max(most, tableRoom.load()); }
    std::int64_t most = 0;
};

// Compiles without keeping the trees.
std::int64_t MostRoom(const std::string& sheet, SentenceList& sentences) {
    RoomWatch watch;
    CalcParameters parameters = test::ParametersForBits(32);
    parameters.progress = &watch;
    std::string text = sheet;
    std::string errorText;
    EXPECT_TRUE(
        CompileSheet(sentences, text.data(), text.data() + text.size(), parameters, errorText))
        << errorText;
    return watch.most;
}

std::string Numbers(int count) {
    std::string text = "1";
    for (int number = 2; number <= count; ++number) text.append(",").append(std::to_string(number));
    return text;
}

TEST(Tables, OfTermsGoOnceTheTermsAreAdded) {
    // A sweep at the end looks at what 200 terms before it have left: one sum, no matter how many.
    std::string text = "v = point(";
    text.append(Numbers(10000)).append("); ").append(Repeat("v*2+", 200));
    SentenceList sentences;
    const std::int64_t most = MostRoom(text.append("v*series(i,1,1,1,i)"), sentences);
    // The vector, the sum so far, and the last reference; 600 of them if nothing went.
    EXPECT_GT(most, 0);
    EXPECT_LT(most, 5 * 10000 * 12);
    EXPECT_EQ(RowsOf(sentences[1].root.result)[9999][0], 401.0 * 10000.0);
    EXPECT_EQ(RowsOf(sentences[1].root.result).size(), 10000u);
}

TEST(Tables, AreGivenBackBehindTheRun) {
    const std::int64_t before = tableRoom;
    {
        const CompiledSheet sheet = Compile("a = (1,2,3)*2; b = a+a");
        EXPECT_GT(tableRoom, before);
    }
    EXPECT_EQ(tableRoom, before);
}

TEST(Tables, OfOneSheetTakeNoMoreThanTheyMay) {
    const std::string numbers = Numbers(3000);
    std::string text = "c = point(";
    text.append(numbers).append("); r = vector_row(").append(numbers).append("); ");
    const CompiledSheet sheet = Compile(text.append(Repeat("c*r;", 20)).append("1+1; (1,2,3)"));
    EXPECT_FALSE(sheet.succeeded);
    int refused = 0;
    for (int index = 2; index < 22; ++index) {
        const Sentence& sentence = sheet.sentences[index];
        if (sentence.root.evaluated) {
            EXPECT_EQ(refused, 0);  // once it is full it stays so
            continue;
        }
        ++refused;
        std::string message = index + 1 < 10 ? "E001-06 sentence  " : "E001-06 sentence ";
        message.append(std::to_string(index + 1));
        EXPECT_EQ(sentence.error,
                  message.append(": function \"times\": values of the sheet are too large."));
    }
    EXPECT_GT(refused, 0);
    EXPECT_LT(refused, 16);
    EXPECT_EQ(sheet.sentences[22].error, "");  // numbers need no room
    EXPECT_EQ(RowsOf(sheet.sentences[22].root.result), (test::Rows{{2}}));
}

TEST(LongSheets, AreRefusedWithTooManySentences) {
    // One more than there may be, blank ones counted.
    std::string text = Repeat(" ;", mostSentences + 1);
    SentenceList sentences;
    std::string errorText;
    AnalyseSentences(sentences, text.data(), text.data() + text.size(), errorText);
    EXPECT_EQ(errorText, "C001-10: the sheet has more than 4194304 sentences.");
    EXPECT_EQ(sentences.Count(), 0);
}

TEST(LongSheets, PassWithAsManySemicolonsAsTheyLike) {
    EXPECT_EQ(Evaluate(Repeat(";", mostSentences + 1) + "7").rows, (test::Rows{{7}}));
}

TEST(LongSentences, AreRefusedWithTooManyPieces) {
    for (const std::string_view repeated : {"!", "+1", "^1", "-("}) {
        SCOPED_TRACE(repeated);
        const int count = (1 << 24) / static_cast<int>(repeated.size()) + 1;
        std::string formula = "1";
        formula += Repeat(repeated, count);
        EXPECT_EQ(RunStage(RewriteOperators, formula).error, "C002-12: sentence 1 is too long.");
    }
}

TEST(LongSentences, AreRefusedWithTooManyParameters) {
    const std::string sheet = "max(" + Repeat("1,", static_cast<int>(largestTree)) + "1);5";
    const CompiledSheet compiled = Compile(sheet);
    EXPECT_EQ(compiled.sentences[0].error, "E002-06 sentence  1: formula is too long.");
    EXPECT_EQ(RowsOf(compiled.sentences[1].root.result), (test::Rows{{5}}));
}

TEST(Defines, MakeASheetNoMoreThanSixtyFourMebibytesLonger) {
    const std::string define = "define: d = 1" + Repeat("+1", 250'000) + ";";
    std::string text = define + Repeat("d;", 200);
    SentenceList sentences;
    std::string errorText;
    AnalyseSentences(sentences, text.data(), text.data() + text.size(), errorText);
    // 134 times 500,000 characters fit.
    EXPECT_EQ(errorText, "C001-09: define substitution in sentence 136 does not end.");
}

// --- a run that is asked to stop

// Asks in one of the steps of its run.
class Stopper : public ProgressDisplay {
public:
    explicit Stopper(int when) : stepsLeft(when) {}
    void Step() override {
        if (--stepsLeft == 0) stop.Ask();
    }
    void Show() override {}
    void Hide() override {}
    RunStop stop;

private:
    int stepsLeft;
};

class Silence : public MessageDisplay, public ResultDisplay {
public:
    void ShowMessage(std::string_view, std::string_view) override {}
    void ShowTexts(const ColouredText&, const ColouredText&) override {}
};

constexpr std::string_view watched =
    "a = 7; locus_xy(x,0,1,10,x); locus_xy(x,0,1,499,x) + series(i,0,1,100000,i); z = 8";

struct StoppedRun {
    CalculationTexts texts;
    int sentences = -1;
    bool succeeded = false;
    bool stopped = false;

    explicit StoppedRun(Stopper& stopper) {
        CalcParameters parameters;
        parameters.stop = &stopper.stop;
        Silence silence;
        RunWatchers watchers;
        watchers.finished = [this](const FinishedRun& run) {
            sentences = run.sentences.Count();
            succeeded = run.succeeded;
            stopped = run.stopped;
            EXPECT_EQ(run.errorText, "");
        };
        RunCalculation(watched, parameters, {silence, stopper, silence}, texts, watchers);
    }
};

TEST(StoppedRun, KeepsTheSentencesThatWereFinished) {
    // The first curve steps once, the second one once, the series 200 times.
    struct Row {
        int when, sentences;
        std::size_t curves;
    };
    for (const auto& [when, sentences, curves] :
         {Row{1, 1, 0}, Row{2, 2, 1}, Row{3, 2, 1}, Row{202, 2, 1}}) {
        SCOPED_TRACE(when);
        Stopper stopper(when);
        const StoppedRun run(stopper);
        EXPECT_TRUE(run.stopped);
        EXPECT_FALSE(run.succeeded);
        EXPECT_EQ(run.sentences, sentences);
        EXPECT_EQ(run.texts.resultText, sentences == 1 ? "a = +7 \t\n" : "a = +7 \t\n    +1 \t\n");
        EXPECT_EQ(static_cast<std::size_t>(locusStore.Count()), curves);
    }
}

TEST(StoppedRun, IsNoneWhenNobodyAsksInTime) {
    Stopper stopper(203);  // one step more than there are
    const StoppedRun run(stopper);
    EXPECT_FALSE(run.stopped);
    EXPECT_TRUE(run.succeeded);
    EXPECT_EQ(run.sentences, 4);
    EXPECT_EQ(locusStore.Count(), 2);
}

TEST(StoppedRun, HasNothingWhenItIsStoppedBeforeTheFirstSentence) {
    Stopper stopper(1);
    stopper.Step();
    const StoppedRun run(stopper);
    EXPECT_TRUE(run.stopped);
    EXPECT_EQ(run.sentences, 0);
    EXPECT_EQ(run.texts.resultText, "");
}

TEST(StoppedRun, TellsItsWatcherOfNoStageThatWasCutShort) {
    RunStop stop;
    CalcParameters parameters;
    parameters.stop = &stop;
    for (int last = 1; last <= 5; ++last) {
        SCOPED_TRACE(last);
        RunStop asked;
        parameters.stop = &asked;
        int stages = 0;
        CompileWishes wishes;
        wishes.watcher = [&](const StageReport& report) {
            EXPECT_EQ(report.number, ++stages);
            if (stages == last) asked.Ask();
        };
        std::string text = "1+2;3";
        SentenceList sentences;
        std::string errorText;
        EXPECT_FALSE(CompileSheet(sentences, text.data(), text.data() + text.size(), parameters,
                                  errorText, wishes));
        EXPECT_EQ(stages, last);
        EXPECT_EQ(errorText, stoppedMessage);
        EXPECT_EQ(sentences.Count(), 0);
    }
}

}  // namespace
}  // namespace orvane
