#include "functions/string_functions.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "core/compile_stages.h"
#include "core/sentence.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

// One sentence behind the pass.
struct Passed {
    std::string text;
    std::string error;
};

Passed PassOne(std::string_view text) {
    SentenceList sentences;
    sentences.Add(text);
    Passed passed;
    StringFunctionPass(sentences, passed.error);
    passed.text = sentences[0].text.View();
    return passed;
}

struct PassRow {
    const char* text;
    const char* rewritten;
};

constexpr PassRow passRows[] = {
    {"strlen(\"abc\")", "3"},
    {"strsum(\"A\")", "65"},
    {"strlen(\"\")", "0"},
    {"strsum(\"\")", "0"},
    {"strsumspecial(\"\")", "0"},
    {"strlen(\"a\") + strlen(\"bc\")", "1 + 2"},
    {"strlen (\"abc\")", "3"},
    {"strlen   ( \"abc\" )", "3"},
    {"strlen(\"ab\" + \"cd\")", "4"},
    {"strlen((\"ab\")\"cd\")", "4"},
    {"strlen((((\"ab\"))) + ())", "2"},
    {"strlen(\"\"\"\")", "0"},
    {"strlen(\"0123456789\")", "10"},  // the zero of a whole number stays
    {"strsum(\"AB\" \"C\")", "198"},
    {"strsum(\"\xC8\")", "-56"},
    {"strsum(\"\x80\x7F\")", "-1"},
    {"strsum(\"\xFF\x01\")", "0"},
    {"strsumspecial(\"nt\")", "19"},
    {"strsumspecial(\"n\" + \"t\")", "19"},
    {"strsumspecial(\"abfnrstv\")", "104"},
    // Brackets, commas and keywords in a string are plain characters.
    {"strlen(\")\")", "1"},
    {"strlen(\"((\")", "2"},
    {"strlen(\"strlen(1)\") * 2", "9 * 2"},
    {"strlen(\"a,b;c\")", "5"},
    {"\"strlen\"", "\"strlen\""},
    {"\"strlen(\" + strlen(\"ab\")", "\"strlen(\" + 2"},
    // The call may stand anywhere in the sentence.
    {"sin(strlen(\"ab\"), 3) + 1", "sin(2, 3) + 1"},
    {"-strlen(\"ab\")!", "-2!"},
    {"(strlen(\"a\"))(strsum(\"A\"))", "(1)(65)"},
    // Only whole words count.
    {"xstrlen(1)", "xstrlen(1)"},
    {"strlens(1)", "strlens(1)"},
    {"strlen_(1)", "strlen_(1)"},
    {"2strlen(1)", "2strlen(1)"},
    {"Strlen(1)", "Strlen(1)"},
    {"str len(1)", "str len(1)"},
    {"1.strlen(\"a\")", "1.1"},
    // A number that is put in joins with the word behind it, which is then no keyword.
    {"strlen(\"b\")strlen(\"c\")", "1strlen(\"c\")"},
    {"strlen(\"b\")strlen", "1strlen"},
    {"strlen(\"b\") strlen(\"c\")", "1 1"},
    {"strlen(\"b\")x", "1x"},
    {"strlen(\"b\")\"c\"strlen(\"d\")", "1\"c\"1"},
    // Nothing to do.
    {"", ""},
    {"1 + 2", "1 + 2"},
    // A string without an end hides what follows.
    {"1 + \"strlen(\"", "1 + \"strlen(\""},
    {"1 + \"strlen(1)", "1 + \"strlen(1)"},
};

TEST(StringFunctionPass, PutsTheNumberInPlaceOfTheCall) {
    for (const auto& [text, rewritten] : passRows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(PassOne(text).text, rewritten);
    }
}

struct FailureRow {
    const char* text;
    const char* message;
    const char* left;  // the text behind the pass
};

constexpr FailureRow failureRows[] = {
    {"strlen \"abc\"", "E003-01 sentence  1: \"strlen \"abc\"\".", "strlen \"abc\""},
    {"strlen", "E003-01 sentence  1: \"strlen\".", "strlen"},
    {"1 + strsum  ", "E003-01 sentence  1: \"strsum\".", "1 + strsum  "},
    {"strlen\t(\"a\")", "E003-01 sentence  1: \"strlen\t(\"a\")\".", "strlen\t(\"a\")"},
    {"strlen + 1", "E003-01 sentence  1: \"strlen + 1\".", "strlen + 1"},
    {"strlen()", "E003-02 sentence  1: \"strlen()\".", "strlen()"},
    {"strlen(+ ())", "E003-02 sentence  1: \"strlen(+ ())\".", "strlen(+ ())"},
    {"strlen(x)", "E003-02 sentence  1: \"strlen(x)\".", "strlen(x)"},
    {"strlen(1)", "E003-02 sentence  1: \"strlen(1)\".", "strlen(1)"},
    {"strlen(\"a\" - \"b\")", "E003-02 sentence  1: \"strlen(\"a\" - \"b\")\".",
     "strlen(\"a\" - \"b\")"},
    {"strlen(\"a\",\"b\")", "E003-02 sentence  1: \"strlen(\"a\",\"b\")\".", "strlen(\"a\",\"b\")"},
    {"strlen(\"a\"\t)", "E003-02 sentence  1: \"strlen(\"a\"\t)\".", "strlen(\"a\"\t)"},
    {"strlen(strlen(\"a\"))", "E003-02 sentence  1: \"strlen(strlen(\"a\"))\".",
     "strlen(strlen(\"a\"))"},
    {"strsumspecial(\"x\")", "E003-02 sentence  1: \"strsumspecial(\"x\")\".",
     "strsumspecial(\"x\")"},
    {"strsumspecial(\"nxt\")", "E003-02 sentence  1: \"strsumspecial(\"nxt\")\".",
     "strsumspecial(\"nxt\")"},
    {"strsumspecial(\"N\")", "E003-02 sentence  1: \"strsumspecial(\"N\")\".",
     "strsumspecial(\"N\")"},
    {"strlen(+)(+\"ab\")", "E003-02 sentence  1: \"strlen(+)(+\"ab\")\".", "strlen(+)(+\"ab\")"},
    // No bracket balances the call.
    {"strlen(\"a\"", "E003-02 sentence  1: \"strlen(\"a\"\".", "strlen(\"a\""},
    {"strlen((\"a\")", "E003-02 sentence  1: \"strlen((\"a\")\".", "strlen((\"a\")"},
    {"strlen(\"a)", "E003-02 sentence  1: \"strlen(\"a)\".", "strlen(\"a)"},
    // From the keyword to the sentence's end, cut to thirty characters.
    {"1 + 2 + strlen(a) ", "E003-02 sentence  1: \"strlen(a)\".", "1 + 2 + strlen(a) "},
    {"strlen(a) + 3456789 + 23456789", "E003-02 sentence  1: \"strlen(a) + 3456789 + 23456789\".",
     "strlen(a) + 3456789 + 23456789"},
    {"strlen(a) + 3456789 + 234567890", "E003-02 sentence  1: \"strlen(a) + 3456789 + 23456...\".",
     "strlen(a) + 3456789 + 234567890"},
    {"9 + strlen a + 3456789 + 234567890",
     "E003-01 sentence  1: \"strlen a + 3456789 + 234567890\".",
     "9 + strlen a + 3456789 + 234567890"},
    // What was replaced ahead of the failure stays.
    {"strlen(\"abc\") + strlen(1) + strlen(\"b\")",
     "E003-02 sentence  1: \"strlen(1) + strlen(\"b\")\".", "3 + strlen(1) + strlen(\"b\")"},
};

TEST(StringFunctionPass, SaysWhatItCannotRead) {
    for (const auto& [text, message, left] : failureRows) {
        SCOPED_TRACE(text);
        const Passed passed = PassOne(text);
        EXPECT_EQ(passed.error, message);
        EXPECT_EQ(passed.text, left);
    }
}

TEST(StringFunctionPass, LeavesTextAndDefineSentencesAlone) {
    SentenceList sentences;
    for (int index = 0; index < 4; ++index) sentences.Add("strlen(\"ab\")");
    sentences[0].header = "text";
    sentences[1].header = "define";
    sentences[2].header = "hex";
    std::string error;
    StringFunctionPass(sentences, error);
    EXPECT_EQ(error, "");
    EXPECT_EQ(sentences[0].text.View(), "strlen(\"ab\")");
    EXPECT_EQ(sentences[1].text.View(), "strlen(\"ab\")");
    EXPECT_EQ(sentences[2].text.View(), "2");
    EXPECT_EQ(sentences[3].text.View(), "2");
}

TEST(StringFunctionPass, StopsAtTheFirstSentenceThatFails) {
    SentenceList sentences;
    sentences.Add("strlen(1)");
    sentences[0].header = "text";
    sentences.Add("strlen(\"ab\")");
    sentences.Add("strlen(2)");
    sentences.Add("strlen(\"ab\")");
    std::string error;
    StringFunctionPass(sentences, error);
    EXPECT_EQ(error, "E003-02 sentence  3: \"strlen(2)\".");
    EXPECT_EQ(sentences[1].text.View(), "2");
    EXPECT_EQ(sentences[3].text.View(), "strlen(\"ab\")");
}

TEST(StringFunctionPass, KeepsTheSourceAndTakesNoSpareRoom) {
    SentenceList sentences;
    sentences.Add("strlen(\"abcdef\") + 1");
    std::string error;
    StringFunctionPass(sentences, error);
    EXPECT_EQ(sentences[0].source, "strlen(\"abcdef\") + 1");
    EXPECT_EQ(sentences[0].text.View(), "6 + 1");
    EXPECT_EQ(sentences[0].text.capacity, sentences[0].text.length);
}

// As many calls as a sheet can be asked to hold; each must cost no more than its own text.
TEST(StringFunctionPass, ReadsOnBehindEachOfManyCalls) {
    constexpr int callCount = 100000;
    std::string text;
    std::string rewritten;
    for (int index = 0; index < callCount; ++index) {
        text += "strlen(\"\")+";
        rewritten += "0+";
    }
    const Passed passed = PassOne(text + "1");
    EXPECT_EQ(passed.error, "");
    EXPECT_TRUE(passed.text == rewritten + "1");
}

TEST(StringFunctionPass, CountsLongStringsExactly) {
    constexpr std::size_t length = 3000000;
    const std::string quoted = '"' + std::string(length, 'z') + '"';
    EXPECT_EQ(PassOne("strlen(" + quoted + ")").text, "3000000");
    EXPECT_EQ(PassOne("strsum(" + quoted + ")").text, "366000000");
}

TEST(ReplaceNextStringCall, ReplacesOneCallAtATime) {
    EditBuffer text("strlen(\"a\") + strlen(\"bc\")");
    std::string error;
    {
        ForwardEdit walk(text);
        EXPECT_TRUE(ReplaceNextStringCall(walk, 0, error));
        EXPECT_EQ(walk.Rest(), "1 + strlen(\"bc\")");
        EXPECT_TRUE(ReplaceNextStringCall(walk, 0, error));
        EXPECT_EQ(walk.Rest(), "2");
        EXPECT_FALSE(ReplaceNextStringCall(walk, 0, error));
    }
    EXPECT_EQ(error, "");
    EXPECT_EQ(text.View(), "1 + 2");
}

TEST(ReplaceNextStringCall, GivesFalseWithTheMessageSetOnAFailure) {
    EditBuffer text("strlen(y)");
    std::string error;
    {
        ForwardEdit walk(text);
        EXPECT_FALSE(ReplaceNextStringCall(walk, 11, error));
    }
    EXPECT_EQ(error, "E003-02 sentence 12: \"strlen(y)\".");
    EXPECT_EQ(text.View(), "strlen(y)");
}

struct CallRow {
    const char* name;
    const char* arguments;
    std::optional<double> value;
};

const CallRow callRows[] = {
    {"strlen", "\"\"", 0.0},
    {"strlen", "", std::nullopt},
    {"strlen", " ", std::nullopt},
    {"strlen", "\"ab\" + (\"c\")", 3.0},
    {"strlen", "\"ab", std::nullopt},
    {"strlen", "\"ab\"\"", std::nullopt},
    {"strlen", "\"\xE4\xF6\"", 2.0},
    {"strlen", "[\"a\"]", std::nullopt},
    {"strsum", "\"A\"", 65.0},
    {"strsum", "\"\xC8\"", -56.0},
    {"strsumspecial", "\"a\"", 7.0},
    {"strsumspecial", "\"b\"", 8.0},
    {"strsumspecial", "\"f\"", 12.0},
    {"strsumspecial", "\"n\"", 10.0},
    {"strsumspecial", "\"r\"", 13.0},
    {"strsumspecial", "\"s\"", 34.0},
    {"strsumspecial", "\"t\"", 9.0},
    {"strsumspecial", "\"v\"", 11.0},
    {"strsumspecial", "\"nt\"", 19.0},
    {"strsumspecial", "\"c\"", std::nullopt},
    {"strsumspecial", "\"n t\"", std::nullopt},
    {"strsumspecial", "\"\\n\"", std::nullopt},
    {"sin", "\"a\"", std::nullopt},
};

TEST(ComputeStringCall, JoinsTheStringsAndAddsUp) {
    for (const auto& [name, arguments, value] : callRows) {
        SCOPED_TRACE(std::string(name) + '(' + arguments + ')');
        EXPECT_EQ(ComputeStringCall(name, arguments), value);
    }
}

// --- what becomes of it in a whole run

TEST(StringFunctions, StandForTheirNumberInAFormula) {
    EXPECT_EQ(test::NumberFrom("strlen(\"a;b\") * 2"), 6.0);
    EXPECT_EQ(test::NumberFrom("define: k = strlen(\"abc\"); k + 1"), 4.0);
    EXPECT_EQ(test::NumberFrom("strlen[\"ab\"}"), 2.0);
    EXPECT_EQ(test::NumberFrom("10 - strsum(\"\xC8\")"), 66.0);
}

TEST(StringFunctions, LeaveNoOtherUseForAString) {
    for (const char* sheet : {"\"strlen\"", "strlen(\"b\")strlen(\"c\")"}) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(test::Evaluate(sheet).error.substr(0, 8), "C002-01:");
    }
}

}  // namespace
}  // namespace orvane
