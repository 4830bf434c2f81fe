#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "core/compile_stages.h"
#include "tests/support/stage_run.h"

namespace orvane {
namespace {

using test::RunStage;
using test::RunStages;

struct CheckRow {
    std::string_view sheet;
    std::string_view message;  // empty: all stages up to the last one pass
};

template <std::size_t count>
void ExpectMessages(const CheckRow (&rows)[count], int lastStage) {
    for (const auto& [sheet, message] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(RunStages(sheet, lastStage).errorText, message);
    }
}

TEST(Strings, BelongIntoStringFunctions) {
    ExpectMessages(
        {
            {"\"x\"", "C002-01: string can not be used out of string function in sentence 1."},
            {"1; sin(\"x\")",
             "C002-01: string can not be used out of string function in sentence 2."},
            {"\"strlen\"", "C002-01: string can not be used out of string function in sentence 1."},
            {"text: \"x\"; 1", ""},
            {"define: d=\"x\"; 1", ""},
            {"strlen(\"x\")", ""},
        },
        3);
}

TEST(Words, DoNotStandNextToEachOther) {
    ExpectMessages(
        {
            {"1 2", "C002-03: \"2\" is used incorrect in sentence 1."},
            {"a b", "C002-03: \"b\" is used incorrect in sentence 1."},
            {"sin x", "C002-03: \"x\" is used incorrect in sentence 1."},
            {"1; 2+(3  4e5.6)", "C002-03: \"4e5\" is used incorrect in sentence 2."},
            {"a\tb", "C002-03: \"b\" is used incorrect in sentence 1."},
            {"a\n b c", "C002-03: \"b\" is used incorrect in sentence 1."},
            {"hex a=1", "C002-03: \"a\" is used incorrect in sentence 1."},
            {"1 a_word_of_more_than_thirty_characters",
             "C002-03: \"a_word_of_more_than_thirty_characters\" is used incorrect in sentence 1."},
            {"a (b)", ""},
            {"(a) b", ""},
            {"1 . 2", "C002-04: decimal point around \".\" is incorrect in sentence 1."},
            {"1 \xE9 2", ""},
            {"text: a b; define: d=a b; 1", ""},
        },
        3);
}

TEST(DecimalPoints, NeedADigitOnEachSide) {
    ExpectMessages(
        {
            {".5", "C002-04: decimal point around \".5\" is incorrect in sentence 1."},
            {".5+1 -2", "C002-04: decimal point around \".5+1\" is incorrect in sentence 1."},
            {" \t .5 ", "C002-04: decimal point around \".5\" is incorrect in sentence 1."},
            {".", "C002-04: decimal point around \".\" is incorrect in sentence 1."},
            {"1 .5", "C002-04: decimal point around \".5\" is incorrect in sentence 1."},
            {"5.", "C002-04: decimal point around \"5.\" is incorrect in sentence 1."},
            {"5.+2", "C002-04: decimal point around \"5.+2\" is incorrect in sentence 1."},
            {"1 + 5.+2 - 3", "C002-04: decimal point around \"5.+2\" is incorrect in sentence 1."},
            {"1; 2*(3. )", "C002-04: decimal point around \"2*(3.\" is incorrect in sentence 2."},
            {"a.5", "C002-04: decimal point around \"a.5\" is incorrect in sentence 1."},
            {"1.a", "C002-04: decimal point around \"1.a\" is incorrect in sentence 1."},
            {"1..2", "C002-04: decimal point around \"1..2\" is incorrect in sentence 1."},
            {"x1.5", "C002-04: decimal point around \"x1.5\" is incorrect in sentence 1."},
            {"2 * (1+x1.5)-3 * 4",
             "C002-04: decimal point around \"x1.5)-3\" is incorrect in sentence 1."},
            {"_1.5", "C002-04: decimal point around \"_1.5\" is incorrect in sentence 1."},
            {"1.5;1.5+x1.5", "C002-04: decimal point around \"x1.5\" is incorrect in sentence 2."},
            // quoted pieces are cut to 30 characters
            {"x1.5+12345678901234567890123456",
             "C002-04: decimal point around \"x1.5+1234567890123456789012...\" is incorrect in "
             "sentence 1."},
            {"x1.5+1234567890123456789012345",
             "C002-04: decimal point around \"x1.5+1234567890123456789012345\" is incorrect in "
             "sentence 1."},
            {".123456789012345678901234567890",
             "C002-04: decimal point around \".12345678901234567890123456...\" is incorrect in "
             "sentence 1."},
            {"12345678901234567890+1234567890.",
             "C002-04: decimal point around \"12345678901234567890+123456...\" is incorrect in "
             "sentence 1."},
            {"1.5", ""},
            {"1.5*2", ""},
            {"0.5+12.25", ""},
            {"text: .5; define: d=.5; 1", ""},
        },
        3);
}

TEST(Numbers, HaveAKnownShape) {
    ExpectMessages(
        {
            {"1.2.3", "C002-06: the number \"1.2.3\" is unrecognized in sentence 1."},
            {"0b102", "C002-06: the number \"0b102\" is unrecognized in sentence 1."},
            {"0x", "C002-06: the number \"0x\" is unrecognized in sentence 1."},
            {"0X1F", "C002-06: the number \"0X1F\" is unrecognized in sentence 1."},
            {"1e5", "C002-06: the number \"1e5\" is unrecognized in sentence 1."},
            {"2e", "C002-06: the number \"2e\" is unrecognized in sentence 1."},
            {"2x: 3", "C002-06: the number \"2x\" is unrecognized in sentence 1."},
            {"1; a+(2*0b1.1)", "C002-06: the number \"0b1.1\" is unrecognized in sentence 2."},
            {"1.5x", "C002-06: the number \"1.5x\" is unrecognized in sentence 1."},
            {"1_000", "C002-06: the number \"1_000\" is unrecognized in sentence 1."},
            {"1234567890123456789012345678901x",
             "C002-06: the number \"1234567890123456789012345678901x\" is unrecognized in sentence "
             "1."},
            {"define: x=5; 2x", "C002-06: the number \"2x\" is unrecognized in sentence 2."},
            {"0x1F", ""},
            {"0b101", ""},
            {"0q123+0o17+0u19+0hfF", ""},
            {"a1e5+x0b2+_1", ""},
            {"007", ""},
            {"text: 1e5; define: d=1e5; 1", ""},
        },
        3);
}

// One check goes through all sentences before the next one starts.
TEST(NumberChecks, StandInAFixedOrder) {
    ExpectMessages(
        {
            {"a b; \"x\"", "C002-01: string can not be used out of string function in sentence 2."},
            {".5; 1 2", "C002-03: \"2\" is used incorrect in sentence 2."},
            {"1e5; .5", "C002-04: decimal point around \".5\" is incorrect in sentence 2."},
            {"1+; 1e5", "C002-06: the number \"1e5\" is unrecognized in sentence 2."},
        },
        5);
}

TEST(Signs, CollapseIntoTheFirstOfTheirRun) {
    struct Row {
        std::string_view text, collapsed;
    };
    constexpr Row rows[] = {
        {"1 -- 2", "1 +  2"},
        {"a - -b", "a +  b"},
        {"a+-+b", "a-  b"},
        {"1+2", "1+2"},
        {"1-2", "1-2"},
        {"1 + 2", "1 + 2"},
        {"-5", "-5"},
        {"--5", "+ 5"},
        {"---5", "-  5"},
        {"+-5", "- 5"},
        {"- - - - 5", "+       5"},
        {"1*--2", "1*+ 2"},
        {"(-1)-(-2)", "(-1)-(-2)"},
        {"1+ -", "1-  "},
        {"a- -(+-b)", "a+  (- b)"},
        {"1", "1"},
        {" ", " "},
    };
    for (const auto& [text, collapsed] : rows) {
        SCOPED_TRACE(text);
        const test::StagedText staged = RunStage(CheckNumbersAndPoints, text);
        EXPECT_EQ(staged.text, collapsed);
        EXPECT_EQ(staged.error, "");
    }
}

TEST(Signs, StayInDefinesAndTextSentences) {
    const auto staged = RunStages("define: d=1--2; text: a -- b; 1--2", 3);
    EXPECT_EQ(staged.errorText, "");
    EXPECT_EQ(staged.sentences[0].text.View(), "1--2");
    EXPECT_EQ(staged.sentences[1].text.View(), " a -- b");
    EXPECT_EQ(staged.sentences[2].text.View(), "1+ 2");
}

TEST(Symbols, AreKnown) {
    ExpectMessages(
        {
            {"a == 1", "C002-02: the symbol \"=\" is unrecognized in sentence 1."},
            {"hide: hex: 1", "C002-02: the symbol \":\" is unrecognized in sentence 1."},
            {"1 = 2", "C002-02: the symbol \"=\" is unrecognized in sentence 1."},
            {"(1!=2)", "C002-02: the symbol \"=\" is unrecognized in sentence 1."},
            {"1 & 2", "C002-02: the symbol \"&\" is unrecognized in sentence 1."},
            {"1; a$ + b#", "C002-02: the symbol \"$\" is unrecognized in sentence 2."},
            {"a ? b : c", "C002-02: the symbol \"?\" is unrecognized in sentence 1."},
            {"a's", "C002-02: the symbol \"'\" is unrecognized in sentence 1."},
            {"a\\b", "C002-02: the symbol \"\\\" is unrecognized in sentence 1."},
            {"1~", "C002-02: the symbol \"~\" is unrecognized in sentence 1."},
            {"\xE9=1", "C002-02: the symbol \"\xE9\" is unrecognized in sentence 1."},
            {"1+\xC3\xA9", "C002-10: operator \"+\" is used incorrect in sentence 1."},
            {"1*(\xC3\xA9)", "C002-02: the symbol \"\xC3\" is unrecognized in sentence 1."},
            {"1\x01", "C002-02: the symbol \"\x01\" is unrecognized in sentence 1."},
            {"1\v", "C002-02: the symbol \"\v\" is unrecognized in sentence 1."},
            {"text: ?$\xE9; define: d=?; 1", ""},
        },
        5);
}

TEST(Symbols, StandWellNextToEachOther) {
    ExpectMessages(
        {
            {"sin()", "C002-05: symbol \"()\" is incorrect in sentence 1."},
            {"()", "C002-05: symbol \"()\" is incorrect in sentence 1."},
            {"sin( )", "C002-05: symbol \"( )\" is incorrect in sentence 1."},
            {"{}", "C002-05: symbol \"()\" is incorrect in sentence 1."},
            {"max(1,2,)", "C002-05: symbol \",)\" is incorrect in sentence 1."},
            {"max(1,2, )", "C002-05: symbol \", )\" is incorrect in sentence 1."},
            {"max(,1)", "C002-05: symbol \"(,\" is incorrect in sentence 1."},
            {"max(1,,2)", "C002-05: symbol \",,\" is incorrect in sentence 1."},
            {"max(1,  ,2)", "C002-05: symbol \",  ,\" is incorrect in sentence 1."},
            {"a=1,", "C002-05: symbol \"last ,\" is incorrect in sentence 1."},
            {"1, ", "C002-05: symbol \"last ,\" is incorrect in sentence 1."},
            {",", "C002-05: symbol \"last ,\" is incorrect in sentence 1."},
            {"1; (2)+sin()", "C002-05: symbol \"()\" is incorrect in sentence 2."},
            {"(+)", "C002-05: symbol \"( )\" is incorrect in sentence 1."},
            {"||x||", "C002-05: symbol \"()\" is incorrect in sentence 1."},
            {"|(|)", "C002-05: symbol \"()\" is incorrect in sentence 1."},
            {"(-1)", ""},
            {"(1)(2)", ""},
            {"((1),(2))", ""},
            {",1", ""},
            {"1,2", ""},
            {"sin(1) ", ""},
            {"+", ""},
            {"a=", ""},
            {"text: (,; define: d=(,; 1", ""},
        },
        5);
}

TEST(CheckSymbols, LooksAtAllCharactersBeforeAnyNeighbours) {
    ExpectMessages(
        {
            {"sin(); 1&2", "C002-02: the symbol \"&\" is unrecognized in sentence 2."},
            {"sin();max(1,)", "C002-05: symbol \"()\" is incorrect in sentence 1."},
        },
        5);
}

// On texts that no earlier stage lets through, too.
TEST(CheckSymbols, JudgesEachPairOfNeighbours) {
    constexpr std::string_view symbols = "()+-*/^,";
    constexpr std::string_view mustBeFollowed = "(*+,-/^";
    constexpr std::string_view mayNotFollow = ")*,/^";
    for (const char left : symbols) {
        for (const char right : symbols) {
            for (const std::string_view blanks : {"", "  "}) {
                std::string pair(1, left);
                pair.append(blanks) += right;
                SCOPED_TRACE(pair);
                // The two characters that are operators still are unknown here.
                const std::size_t unknown = pair.find_first_of("*/^");
                const bool wrong = mustBeFollowed.find(left) != std::string_view::npos &&
                                   mayNotFollow.find(right) != std::string_view::npos;
                std::string message;
                if (unknown != std::string::npos) {
                    message = std::string("C002-02: the symbol \"") + pair[unknown] +
                              "\" is unrecognized in sentence 1.";
                } else if (wrong) {
                    message = "C002-05: symbol \"" + pair + "\" is incorrect in sentence 1.";
                }
                EXPECT_EQ(RunStage(CheckSymbols, "1" + pair + "2").error, message);
            }
        }
    }
}

TEST(CheckSymbols, WantsAClosingBracketWhereASymbolIsLast) {
    struct Row {
        std::string_view text, message;
    };
    constexpr Row rows[] = {
        {"1)", ""},
        {"1) ", ""},
        {"1(", "C002-05: symbol \"last (\" is incorrect in sentence 1."},
        {"1+ ", "C002-05: symbol \"last +\" is incorrect in sentence 1."},
        {"1-", "C002-05: symbol \"last -\" is incorrect in sentence 1."},
        {"1,", "C002-05: symbol \"last ,\" is incorrect in sentence 1."},
        {"(1)+(2)", ""},
        {"1.", ""},
        {"", ""},
    };
    for (const auto& [text, message] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(RunStage(CheckSymbols, text).error, message);
    }
}

}  // namespace
}  // namespace orvane
