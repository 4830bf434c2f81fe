#include "core/sentence_checks.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/stage_run.h"

namespace orvane {
namespace {

using test::RunStages;

struct CheckRow {
    std::string_view sheet;
    std::string_view message;  // empty: the first stage passes
};

template <std::size_t count>
void ExpectMessages(const CheckRow (&rows)[count]) {
    for (const auto& [sheet, message] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(RunStages(sheet, 1).errorText, message);
    }
}

TEST(LineStrings, MustCloseOnTheirLine) {
    ExpectMessages({
        {"1;\n2;\n\"abc", "C001-01: string in line 3 is not matched properly."},
        {"1;\n2;\n\"abc\n\"", "C001-01: string in line 3 is not matched properly."},
        {"\"", "C001-01: string in line 1 is not matched properly."},
        {"\"a\" \"b", "C001-01: string in line 1 is not matched properly."},
        {"strlen(\"a\n\")", "C001-01: string in line 1 is not matched properly."},
        {"\n\n\"a\"\"\n\"", "C001-01: string in line 3 is not matched properly."},
        {"1;\r\"", "C001-01: string in line 1 is not matched properly."},
        {"\"a // \"b\"", "C001-01: string in line 1 is not matched properly."},
        {"text: it's 5\" wide", "C001-01: string in line 1 is not matched properly."},
        // Comments are blanked first, but not inside a string.
        {"1 // \"", ""},
        {"strlen(\"//\")", ""},
        {"strlen(\"a\") // \"", ""},
        {"strlen(\"a\") + strlen(\"b\")\n+ strlen(\"\")", ""},
        // The string of line 1 reaches for the quote in the comment, which then stays.
        {"\"a\n// \"", "C001-01: string in line 1 is not matched properly."},
    });
}

TEST(Headers, MustBeHeaderKeywords) {
    ExpectMessages({
        {"foo: 1", "C001-02: header \"foo\" of sentence 1 is unrecognized."},
        {"1; sin: 1; foo: 2", "C001-02: header \"sin\" of sentence 2 is unrecognized."},
        {"Hex: 1", "C001-02: header \"Hex\" of sentence 1 is unrecognized."},
        {"pi: 1", "C001-02: header \"pi\" of sentence 1 is unrecognized."},
        {"base10: 1", "C001-02: header \"base10\" of sentence 1 is unrecognized."},
        {"a_header_of_more_than_thirty_characters: 1",
         "C001-02: header \"a_header_of_more_than_thirty_characters\" of sentence 1 is "
         "unrecognized."},
        {"bin: 1; binary: 1; base2: 1; quat: 1; quaternary: 1; base4: 1; oct: 1; octal: 1;"
         "base8: 1; hex: 1; hexadecimal: 1; base16: 1; uint: 1; unsigned_integer: 1; hide: 1;"
         "percent: 1; text: 1; define: x = 1",
         ""},
    });
}

TEST(Names, AreUsedOnce) {
    ExpectMessages({
        {"a=1; a=2", "C001-03: name \"a\" is used in sentences 1 and 2."},
        {"define: a=1; a=2", "C001-03: name \"a\" is used in sentences 1 and 2."},
        {"define: a=1; define: a=2", "C001-03: name \"a\" is used in sentences 1 and 2."},
        {"1; a=1; text: a=1; hex: a=2", "C001-03: name \"a\" is used in sentences 2 and 4."},
        // The pair whose first sentence stands highest, and then its nearest partner.
        {"b=1; a=1; a=2; b=2; b=3", "C001-03: name \"b\" is used in sentences 1 and 4."},
        {"sin=1; sin=2", "C001-03: name \"sin\" is used in sentences 1 and 2."},
        {"a=1; A=2", ""},
        {"1; 2; 3", ""},
        {"text: a=1; text: a=1; a=1", ""},
    });
}

TEST(Names, AreNoKeywords) {
    ExpectMessages({
        {"sin=1", "C001-04: name \"sin\" of sentence 1 is reserved keyword."},
        {"1; pi=3", "C001-04: name \"pi\" of sentence 2 is reserved keyword."},
        {"hex=1", "C001-04: name \"hex\" of sentence 1 is reserved keyword."},
        {"if=1", "C001-04: name \"if\" of sentence 1 is reserved keyword."},
        {"e=1", "C001-04: name \"e\" of sentence 1 is reserved keyword."},
        {"true=1", "C001-04: name \"true\" of sentence 1 is reserved keyword."},
        {"strlen=1", "C001-04: name \"strlen\" of sentence 1 is reserved keyword."},
        {"define: text=1", "C001-04: name \"text\" of sentence 1 is reserved keyword."},
        {"a=1; define: define=1; sin=2",
         "C001-04: name \"define\" of sentence 2 is reserved keyword."},
        {"Sin=1", ""},
        {"fault=1", ""},
        {"text: sin=1", ""},
    });
}

TEST(Defines, UseOnlyDefinesAboveThem) {
    ExpectMessages({
        {"define: a=b; define: b=1", "C001-06: define 1 uses name \"b\" of sub-define 2."},
        {"1; define: a=2*c+b; define: b=1; 5; define: c=1",
         "C001-06: define 2 uses name \"c\" of sub-define 5."},
        {"define: a=1; define: b=d; define: c=d; define: d=a",
         "C001-06: define 2 uses name \"d\" of sub-define 4."},
        {"define: b=1; define: a=b", ""},
        {"define: a=a+1", ""},
        {"define: a=2b; define: b=1", ""},
        {"define: a=strlen(\"b\"); define: b=1", ""},
        {"define: a=f; f=1", ""},
        {"define: a=B; define: b=1", ""},
        {"define: a=bb; define: b=1", ""},
    });
}

TEST(Formulas, UseOnlyFormulasAboveThem) {
    ExpectMessages({
        {"x=y+1; y=2", "C001-07: formula 1 uses name \"y\" of sub-formula 2."},
        {"b = a + 1; a = 1", "C001-07: formula 1 uses name \"a\" of sub-formula 2."},
        {"z=1; text: y; 2*y+x; x=1; hex: y=2",
         "C001-07: formula 3 uses name \"y\" of sub-formula 5."},
        {"y(1); y=2", "C001-07: formula 1 uses name \"y\" of sub-formula 2."},
        {"a\n+\ty; y=2", "C001-07: formula 1 uses name \"y\" of sub-formula 2."},
        {"y=1; x=y", ""},
        {"x=x+1", ""},
        {"x=d; define: d=2", ""},
        {"x=strlen(\"y\"); y=1", ""},
        {"x=2y; y=1", ""},
        {"x=Y; y=1", ""},
        {"text: y; y=1", ""},
        {"define: d=y; x=d; y=1", ""},
    });
}

TEST(Brackets, MatchByTheirCounts) {
    ExpectMessages({
        {"(1+2))", "C001-08: brace in sentence 1 is not matched properly."},
        {"(1+2", "C001-08: brace in sentence 1 is not matched properly."},
        {")(", "C001-08: brace in sentence 1 is not matched properly."},
        {"1; 2]; (3", "C001-08: brace in sentence 2 is not matched properly."},
        {"strlen(\"a\"", "C001-08: brace in sentence 1 is not matched properly."},
        {"define: d=(1; 2*d", "C001-08: brace in sentence 2 is not matched properly."},
        {"define: d=1); (d; d)", "C001-08: brace in sentence 3 is not matched properly."},
        {"strlen(\")\")", ""},
        {"strlen(\"((\")", ""},
        {"{1+2)", ""},
        {"[{(1}])", ""},
        {"define: d=((; 2", ""},
        {"text: )(; 2", ""},
        {"define: d=(1; d)", ""},
    });
}

// One sheet with two faults shows the one whose check comes first, wherever it stands.
TEST(Checks, StandInAFixedOrder) {
    ExpectMessages({
        {"foo: 1;\n\"", "C001-01: string in line 2 is not matched properly."},
        {"a=1; a=2; foo: 1", "C001-02: header \"foo\" of sentence 3 is unrecognized."},
        {"sin=1; a=2; a=3", "C001-03: name \"a\" is used in sentences 2 and 3."},
        {"define: a=b; define: b=1; sin=1",
         "C001-04: name \"sin\" of sentence 3 is reserved keyword."},
        {"x=y; y=1; define: a=b; define: b=1",
         "C001-06: define 3 uses name \"b\" of sub-define 4."},
        {"(1; x=y; y=1", "C001-07: formula 2 uses name \"y\" of sub-formula 3."},
        {"define: d=d+1; (1; d", "C001-09: define substitution in sentence 3 does not end."},
    });
}

TEST(CheckSentenceStrings, CountsTheQuotesOfEachLine) {
    struct Row {
        std::string_view text, message;
    };
    constexpr Row rows[] = {
        {"1", ""},
        {"\"a\"", ""},
        {"\"a", "C001-05: string in sentence 2 is not matched properly."},
        {"\"a\n\"b", "C001-05: string in sentence 2 is not matched properly."},
        {"\"a\"\n\"b", "C001-05: string in sentence 2 is not matched properly."},
        {"\"a\"\n\"b\"", ""},
        {"\n", ""},
    };
    for (const auto& [text, message] : rows) {
        SCOPED_TRACE(text);
        SentenceList sentences;
        sentences.Add("1");
        sentences.Add(text);
        EXPECT_EQ(CheckSentenceStrings(sentences, 0), "");
        EXPECT_EQ(CheckSentenceStrings(sentences, 1), message);
    }
}

TEST(CheckLineStrings, CountsLinesFromOne) {
    EXPECT_EQ(CheckLineStrings("\"a\"\n\n"), "");
    EXPECT_EQ(CheckLineStrings(""), "");
    EXPECT_EQ(CheckLineStrings("\n\n\n\""), "C001-01: string in line 4 is not matched properly.");
}

TEST(FailedSheet, HasNoSentencesWhenItsStringsDoNotMatch) {
    const auto staged = RunStages("a=1; \"", 1);
    EXPECT_EQ(staged.sentences.Count(), 0);
}

TEST(FailedSheet, KeepsItsSentencesWithHeadersAndNames) {
    const auto staged = RunStages("hex: a=1; ; foo: b=2; text: x", 1);
    EXPECT_EQ(staged.errorText, "C001-02: header \"foo\" of sentence 2 is unrecognized.");
    ASSERT_EQ(staged.sentences.Count(), 3);
    EXPECT_EQ(staged.sentences[0].header, "hex");
    EXPECT_EQ(staged.sentences[0].name, "a");
    EXPECT_EQ(staged.sentences[1].header, "foo");
    EXPECT_EQ(staged.sentences[1].name, "b");
    EXPECT_EQ(staged.sentences[2].text.View(), " x");
}

TEST(CheckAndUnifyBrackets, LeavesStringsAlone) {
    struct Row {
        std::string_view text, unified, message;
    };
    constexpr Row rows[] = {
        {"{1+[2)}", "(1+(2))", ""},
        {"strlen(\"}{\")", "strlen(\"}{\")", ""},
        {"strlen[\"[\"}+{1]", "strlen(\"[\")+(1)", ""},
        {"1\n+\n2", "1 + 2", ""},
    };
    for (const auto& [text, unified, message] : rows) {
        SCOPED_TRACE(text);
        SentenceList sentences;
        sentences.Add(text);
        EXPECT_EQ(CheckAndUnifyBrackets(sentences, 0), message);
        EXPECT_EQ(sentences[0].text.View(), unified);
    }
}

}  // namespace
}  // namespace orvane
