#include <gtest/gtest.h>

#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

const std::vector<std::string> stageNames = {"AnalyseSentences",      "StringFunctionPass",
                                             "CheckNumbersAndPoints", "RewriteOperators",
                                             "CheckSymbols",          "BuildAndEvaluate"};

using Texts = std::vector<std::string>;

struct TraceRow {
    std::string sheet;
    std::vector<Texts> stages;  // the sentences after each stage that ran
    std::string error;          // of the last one
    int status;
};
const TraceRow traceRows[] = {
    // Cut into nothing.
    {"1;\n\"", {{}}, "C001-01: string in line 2 is not matched properly.", 1},
    // Failed behind the cut, and behind the substitution.
    {"a = 1; foo: b", {{"1", "b"}}, "C001-02: header \"foo\" of sentence 2 is unrecognized.", 1},
    {"define: d = 2; [d+(1}",
     {{"2", "(2+(1)"}},
     "C001-08: brace in sentence 2 is not matched properly.",
     1},
    {"strlen(\"ab\") + strlen(x); 1",
     {{"strlen(\"ab\") + strlen(x)", "1"}, {"2 + strlen(x)", "1"}},
     "E003-02 sentence  1: \"strlen(x)\".",
     1},
    {"2; 1 2",
     {{"2", "1 2"}, {"2", "1 2"}, {"2", "1 2"}},
     "C002-03: \"2\" is used incorrect in sentence 2.",
     1},
    {"1*2;1+;2*3",
     {{"1*2", "1+", "2*3"},
      {"1*2", "1+", "2*3"},
      {"1*2", "1+", "2*3"},
      {"times(1,2)", "1+", "2*3"}},
     "C002-10: operator \"+\" is used incorrect in sentence 2.",
     1},
    {"1+2;a == 1",
     {{"1+2", "= 1"}, {"1+2", "= 1"}, {"1+2", "= 1"}, {"plus(1,2)", "= 1"}, {"plus(1,2)", "= 1"}},
     "C002-02: the symbol \"=\" is unrecognized in sentence 2.",
     1},
    // All six stages, each with something to do.
    {"define: k = 2;\ntext: The answer;\na = [k -- strlen(\"abc\")] * ((pi));",
     {{"2", " The answer", "(2 -- strlen(\"abc\")) * ((pi))"},
      {"2", " The answer", "(2 -- 3) * ((pi))"},
      {"2", " The answer", "(2 +  3) * ((pi))"},
      {"2", " The answer", "times((plus(2,3)),((pi)))"},
      {"2", " The answer", "times((plus(2,3)),((pi)))"},
      {"2", " The answer", "times((plus(2,3)),(3.14159265358979311599796346854419))"}},
     "",
     0},
    // An error of the last stage belongs to its sentence.
    {"nosuch(1);2",
     {{"nosuch(1)", "2"},
      {"nosuch(1)", "2"},
      {"nosuch(1)", "2"},
      {"nosuch(1)", "2"},
      {"nosuch(1)", "2"},
      {"nosuch(1)", "2"}},
     "",
     1},
    {" ", {{}, {}, {}, {}, {}, {}}, "", 0},
};

TEST(TraceJson, GivesTheSentencesAfterEachStageUpToTheOneThatFailed) {
    for (const auto& [sheet, texts, error, status] : traceRows) {
        SCOPED_TRACE(sheet);
        const Json trace = JsonOf({"trace", "--json"}, sheet, status);
        EXPECT_EQ(KeysOf(trace), std::vector<std::string>{"stages"});
        const Json& stages = trace.at("stages");
        ASSERT_EQ(stages.size(), texts.size());
        for (std::size_t index = 0; index < texts.size(); ++index) {
            SCOPED_TRACE(index + 1);
            const bool isLast = index + 1 == texts.size();
            EXPECT_EQ(KeysOf(stages[index]),
                      (std::vector<std::string>{"stage", "name", "error", "sentences"}));
            EXPECT_EQ(stages[index]["stage"], index + 1);
            EXPECT_EQ(stages[index]["name"], stageNames[index]);
            EXPECT_EQ(stages[index]["error"], isLast ? error : "");
            EXPECT_EQ(stages[index]["sentences"], Json(texts[index]));
        }
    }
}

TEST(TraceJson, GivesBytesAsCodePoints) {
    const Json stages = JsonOf({"trace", "--json"}, "text:\x80\xff; \xe4", 1).at("stages");
    EXPECT_EQ(BytesOf(stages[0]["sentences"][0]), "\x80\xff");
    EXPECT_EQ(BytesOf(stages.back()["error"]),
              "C002-02: the symbol \"\xe4\" is unrecognized in sentence 2.");
}

// The position behind the word, looked for from a position on.
std::size_t Behind(const std::string& text, std::string_view word, std::size_t from) {
    const std::size_t at = text.find(word, from);
    EXPECT_NE(at, std::string::npos) << "'" << word << "' is missing in:\n" << text.substr(from);
    return at == std::string::npos ? text.size() : at + word.size();
}

TEST(Trace, ShowsEveryStageItsSentencesAndTheErrorAtTheEnd) {
    for (const auto& [sheet, texts, error, status] : traceRows) {
        SCOPED_TRACE(sheet);
        const std::string output = OutputOf({"trace"}, sheet, status);
        std::size_t at = 0;
        for (std::size_t index = 0; index < texts.size(); ++index) {
            at = Behind(output, "Stage " + std::to_string(index + 1), at);
            at = Behind(output, stageNames[index], at);
            for (std::size_t sentence = 0; sentence < texts[index].size(); ++sentence) {
                at = Behind(output, std::to_string(sentence + 1) + ": " + texts[index][sentence],
                            at);
            }
        }
        EXPECT_EQ(output.find("Stage ", at), std::string::npos) << output;
        EXPECT_TRUE(output.ends_with(error + "\n")) << output;
    }
}

TEST(Trace, ShowsTheErrorsOfTheSentences) {
    const std::string output = OutputOf({"trace"}, "nosuch(1);2", 1);
    EXPECT_NE(output.find("E001-01 sentence  1: function \"nosuch\": unknown function.\n"),
              std::string::npos);
}

TEST(Trace, KeepsFurtherLinesOfATextApartFromTheNumbers) {
    const std::string output = OutputOf({"trace"}, "text:one\n2: two\nthree;4");
    EXPECT_NE(output.find("   1: one\n      2: two\n      three\n   2: 4\n"), std::string::npos)
        << output;
}

}  // namespace
}  // namespace orvane
