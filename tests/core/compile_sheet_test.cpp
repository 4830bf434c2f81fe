#include "core/compile_sheet.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::Compile;
using test::CompiledSheet;
using test::RowsOf;

// What the stages of one compile left behind: the texts of all sentences behind each of them.
struct WatchedCompile {
    std::vector<std::string> names, errors;
    std::vector<std::vector<std::string>> texts;
    SentenceList sentences;
    std::string errorText;
    bool succeeded = false;

    explicit WatchedCompile(std::string_view sheet) {
        CompileWishes wishes;
        wishes.keepTrees = true;
        wishes.watcher = [this](const StageReport& report) { Note(report); };
        std::string text(sheet);
        succeeded = CompileSheet(sentences, text.data(), text.data() + text.size(),
                                 CalcParameters(), errorText, wishes);
    }

    void Note(const StageReport& report) {
        names.emplace_back(report.name);
        errors.push_back(report.errorText);
        texts.emplace_back();
        EXPECT_EQ(report.number, static_cast<int>(names.size()));
        for (const auto& sentence : report.sentences) {
            texts.back().emplace_back(sentence->text.View());
        }
    }
};

TEST(CompileSheet, RunsItsSixStagesInOrder) {
    const std::vector<std::string> stages = {"AnalyseSentences",      "StringFunctionPass",
                                             "CheckNumbersAndPoints", "RewriteOperators",
                                             "CheckSymbols",          "BuildAndEvaluate"};
    EXPECT_EQ(WatchedCompile("1+2").names, stages);
}

TEST(CompileSheet, StopsBehindTheFirstStageThatFails) {
    struct Row {
        std::string_view sheet;
        std::string_view stage, message;
    };
    constexpr Row rows[] = {
        {"foo: 1", "AnalyseSentences", "C001-02: header \"foo\" of sentence 1 is unrecognized."},
        {"strlen(1)", "StringFunctionPass", "E003-02 sentence  1: \"strlen(1)\"."},
        {"strlen \"a\"", "StringFunctionPass", "E003-01 sentence  1: \"strlen \"a\"\"."},
        {"1--2; a b", "CheckNumbersAndPoints", "C002-03: \"b\" is used incorrect in sentence 2."},
        {"1+;2", "RewriteOperators", "C002-10: operator \"+\" is used incorrect in sentence 1."},
        {"1&2", "CheckSymbols", "C002-02: the symbol \"&\" is unrecognized in sentence 1."},
    };
    for (const auto& [sheet, stage, message] : rows) {
        SCOPED_TRACE(sheet);
        const WatchedCompile compile(sheet);
        EXPECT_FALSE(compile.succeeded);
        EXPECT_EQ(compile.errorText, message);
        ASSERT_FALSE(compile.names.empty());
        EXPECT_EQ(compile.names.back(), stage);
        EXPECT_EQ(compile.errors.back(), message);
        for (const auto& sentence : compile.sentences) {
            EXPECT_FALSE(sentence->root.evaluated);
            EXPECT_EQ(sentence->error, "");
        }
    }
}

TEST(CompileSheet, CutsTheTextOfAStringErrorToThirtyCharacters) {
    EXPECT_EQ(Compile("strlen(123456789012345678901234)").errorText,
              "E003-02 sentence  1: \"strlen(12345678901234567890...\".");
    EXPECT_EQ(Compile("strlen(1234567890123456789012)").errorText,
              "E003-02 sentence  1: \"strlen(1234567890123456789012)\".");
}

TEST(CompileSheet, TakesASheetThroughItsStages) {
    const WatchedCompile compile(
        "define: k = 2;\n"
        "text: The answer;\n"
        "hex: a = k^3 + 1; // comment\n"
        "b = a * pi;\n");
    EXPECT_TRUE(compile.succeeded);
    EXPECT_EQ(compile.errorText, "");
    ASSERT_EQ(compile.sentences.Count(), 4);

    struct Row {
        std::string_view header, name;
    };
    constexpr Row heads[] = {{"define", "k"}, {"text", ""}, {"hex", "a"}, {"", "b"}};
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(compile.sentences[i].header, heads[i].header);
        EXPECT_EQ(compile.sentences[i].name, heads[i].name);
    }

    const std::vector<std::string> infix = {"2", " The answer", "2^3 + 1", "a * pi"};
    const std::vector<std::string> calls = {"2", " The answer", "plus(power(2,3),1)",
                                            "times(a,pi)"};
    ASSERT_EQ(compile.texts.size(), 6u);
    EXPECT_EQ(compile.texts[0], infix);
    EXPECT_EQ(compile.texts[1], infix);
    EXPECT_EQ(compile.texts[2], infix);
    EXPECT_EQ(compile.texts[3], calls);
    EXPECT_EQ(compile.texts[4], calls);
    EXPECT_EQ(compile.texts[5][3], "times(a,3.14159265358979311599796346854419)");

    const FunctionNode& a = compile.sentences[2].root;
    EXPECT_EQ(a.kind, NodeKind::function);
    EXPECT_EQ(a.children.size(), 2u);
    EXPECT_EQ(RowsOf(a.result), (test::Rows{{9}}));
    const FunctionNode& b = compile.sentences[3].root;
    ASSERT_EQ(b.children.size(), 2u);
    EXPECT_EQ(b.children[0].kind, NodeKind::formulaReference);
    EXPECT_EQ(RowsOf(b.children[0].result), (test::Rows{{9}}));
    EXPECT_EQ(RowsOf(b.result), (test::Rows{{9 * 3.141592653589793}}));
    EXPECT_FALSE(compile.sentences[0].root.evaluated);
    EXPECT_FALSE(compile.sentences[1].root.evaluated);
}

TEST(CompileSheet, KeepsTheTreesBelowTheRootsOnlyOnWish) {
    SentenceList sentences;
    std::string text = "1+2", errorText;
    CompileSheet(sentences, text.data(), text.data() + text.size(), CalcParameters(), errorText);
    EXPECT_TRUE(sentences[0].root.children.empty());
    EXPECT_TRUE(sentences[0].root.evaluated);
    EXPECT_EQ(RowsOf(sentences[0].root.result), (test::Rows{{3}}));
    EXPECT_EQ(Compile("1+2").sentences[0].root.children.size(), 2u);
}

TEST(CompileSheet, KeepsAnEvaluationErrorWithItsSentence) {
    const CompiledSheet compiled = Compile("nosuchname(1);2;1/0;text: x;5");
    EXPECT_FALSE(compiled.succeeded);
    EXPECT_EQ(compiled.errorText, "");
    ASSERT_EQ(compiled.sentences.Count(), 5);
    EXPECT_EQ(compiled.sentences[0].error,
              "E001-01 sentence  1: function \"nosuchname\": unknown function.");
    EXPECT_EQ(compiled.sentences[1].error, "");
    EXPECT_EQ(RowsOf(compiled.sentences[1].root.result), (test::Rows{{2}}));
    EXPECT_EQ(
        compiled.sentences[2].error,
        "E009-41 sentence  3: function \"divide\": generates an infinite or unaccepted number.");
    EXPECT_FALSE(compiled.sentences[2].root.evaluated);
    EXPECT_EQ(RowsOf(compiled.sentences[4].root.result), (test::Rows{{5}}));
}

TEST(CompileSheet, SucceedsWhenNoFormulaCarriesAnError) {
    struct Row {
        std::string_view sheet;
        bool succeeds;
    };
    constexpr Row rows[] = {
        {"", true},  {"// nothing", true}, {"text: x", true}, {"define: a=(", true}, {"1", true},
        {"x", true}, {"1;foo(1)", false},  {"a=", false},     {"1+", false},
    };
    for (const auto& [sheet, succeeds] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(Compile(sheet).succeeded, succeeds);
    }
}

TEST(CompileSheet, CountsSentencesOfAllKinds) {
    EXPECT_EQ(Compile("text: a; ; text: b; define: c=1; foo(1)").sentences[3].error,
              "E001-01 sentence  4: function \"foo\": unknown function.");
    EXPECT_EQ(Compile("text: a; text: b; 1; 2; 3+").errorText,
              "C002-10: operator \"+\" is used incorrect in sentence 5.");
}

TEST(CompileSheet, TakesBytesAbove127AsPlainCharacters) {
    EXPECT_EQ(test::NumberFrom("strlen(\"\xE4\xF6\xFC\")"), 3);
    EXPECT_EQ(test::NumberFrom("1 // \xE4\n+ 2"), 3);
    EXPECT_EQ(Compile("text: \xE4\xFF").sentences[0].text.View(), " \xE4\xFF");
    EXPECT_EQ(Compile("1+2\xA0").errorText,
              "C002-02: the symbol \"\xA0\" is unrecognized in sentence 1.");
    EXPECT_EQ(Compile("\xFF: 1").errorText,
              "C002-02: the symbol \"\xFF\" is unrecognized in sentence 1.");
}

}  // namespace
}  // namespace orvane
