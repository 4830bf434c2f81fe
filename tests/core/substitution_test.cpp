#include "core/substitution.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/support/sheet_run.h"
#include "tests/support/stage_run.h"

namespace orvane {
namespace {

using test::LastText;
using test::NumberFrom;
using test::Repeat;
using test::RunStages;

TEST(FindDefine, LooksAmongTheDefinesInFront) {
    auto staged = RunStages("define: a=1; b=2; define: c=3; text: a", 1);
    struct Row {
        std::string_view word;
        int limit, define, formula;
    };
    constexpr Row rows[] = {
        {"a", 4, 0, -1},  {"a", 1, 0, -1}, {"a", 0, -1, -1}, {"b", 4, -1, 1},  {"b", 2, -1, 1},
        {"b", 1, -1, -1}, {"c", 4, 2, -1}, {"c", 2, -1, -1}, {"A", 4, -1, -1}, {"", 4, -1, -1},
    };
    for (const auto& [word, limit, define, formula] : rows) {
        SCOPED_TRACE(std::string(word) + ' ' + std::to_string(limit));
        EXPECT_EQ(FindDefine(staged.sentences, word, limit), define);
        EXPECT_EQ(FindFormula(staged.sentences, word, limit), formula);
    }
}

TEST(Defines, AreReplacedAsPlainText) {
    struct Row {
        std::string_view sheet, text;
    };
    constexpr Row rows[] = {
        {"define: d = 1+2; d*3", "1+2*3"},
        {"define: a=2; define: b=a+1; b*3", "2+1*3"},
        {"define: a=2; define: b=a; define: c=b; c", "2"},
        {"b=1; define: c=b; c+1", "b+1"},
        {"define: s=\"abc\"; strlen(s)", "strlen(\"abc\")"},
        {"define: a=1; strlen(\"a\")", "strlen(\"a\")"},
        {"define: a=1; strlen(\"a\")+a+strlen(\"a\")", "strlen(\"a\")+1+strlen(\"a\")"},
        {"define: a=1; define: b=\"a\"; strlen(b)", "strlen(\"a\")"},
        {"define: a=1; a+aa+A+a1+a_+a", "1+aa+A+a1+a_+1"},
        {"define: a=1; x=(a,a , a)", "(1,1 , 1)"},
        {"define: f=sin; f(1)", "sin(1)"},
        {"define: op=+; 1 op 2", "1 + 2"},
        {"define: two=1,2; (two)", "(1,2)"},
        {"define: none=; 1 none", "1 "},
        // a define may bring brackets, tabs and other names
        {"define: d=(; d 1)", "( 1)"},
        {"define: d=\t1\t+\n2; d", "1 + 2"},
        {"define: d=[1}; d", "(1)"},
        // a word that starts with a digit, and what else belongs to a number, stays
        {"define: x=5; 2x", "2x"},
        {"define: x=5; 1.x", "1.x"},
        {"define: b=5; 0b1+b", "0b1+5"},
        {"define: x=5; 2 x", "2 5"},
        {"define: x=5; 2*x.x", "2*5.x"},
        // what was put in is read again, together with what stands behind it
        {"define: x=5; define: one=1; one.x", "1.x"},
    };
    for (const auto& [sheet, text] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(LastText(sheet, 1).text, text);
        EXPECT_EQ(LastText(sheet, 1).error, "");
    }
}

TEST(Defines, SeeOnlyTheDefinesAboveThem) {
    // A define of its own name keeps it; nobody uses it here.
    auto staged = RunStages("define: a=a+1; define: b=c; c=1", 1);
    EXPECT_EQ(staged.errorText, "");
    EXPECT_EQ(staged.sentences[0].text.View(), "a+1");
    EXPECT_EQ(staged.sentences[1].text.View(), "c");
}

TEST(Formulas, SeeTheDefinesBelowThem) {
    auto staged = RunStages("x = 2*d; define: d=e1+1; define: e2=d; y = x+e2", 1);
    EXPECT_EQ(staged.errorText, "");
    EXPECT_EQ(staged.sentences[0].text.View(), "2*e1+1");
    EXPECT_EQ(staged.sentences[2].text.View(), "e1+1");
    EXPECT_EQ(staged.sentences[3].text.View(), "x+e1+1");
}

TEST(TextSentences, KeepTheNamesOfDefines) {
    auto staged = RunStages("define: d=2; text: d and pi", 1);
    EXPECT_EQ(staged.sentences[1].text.View(), " d and pi");
}

TEST(Names, GiveValuesAndDefinesGiveText) {
    struct Row {
        std::string_view sheet;
        double value;
    };
    constexpr Row rows[] = {
        {"define: d = 1+2; d*3", 7},
        {"a = 1+2; b = a*3", 9},
        {"define: a=2; define: b=a+1; b*3", 5},
        {"b=1; define: c=b; c+1", 2},
        {"define: s=\"abc\"; strlen(s)", 3},
        {"define: a=1; strlen(\"a\")", 1},
        {"x=d; define: d=2; x", 2},
        {"hide: a=2; hex: b=a*3; b+a", 8},
        // the name of a later formula may arrive through a define that stands above both
        {"define: d=f; f=3; d", 3},
    };
    for (const auto& [sheet, value] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(NumberFrom(sheet), value);
    }
}

constexpr std::string_view endlessFirst =
    "C001-09: define substitution in sentence 1 does not end.";
constexpr std::string_view endlessSecond =
    "C001-09: define substitution in sentence 2 does not end.";

TEST(Substitution, FailsWhenItDoesNotEnd) {
    struct Row {
        std::string_view sheet, message;
    };
    constexpr Row rows[] = {
        {"define: d = d+1; d", endlessSecond},
        {"define: d = d; d", endlessSecond},
        {"define: d = (d); 1; text: d; d",
         "C001-09: define substitution in sentence 4 does not end."},
        {"d; define: d = 1+d", endlessFirst},
        {"define: d = d d; d", endlessSecond},
        {"define: d = d+1; define: f = 2*d; 1", endlessSecond},
        {"define: d = d+1; define: f = 2; f", ""},
        {"define: d = \"d\"; strlen(d)", ""},
        {"define: d = 2d; d", ""},
    };
    for (const auto& [sheet, message] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(RunStages(sheet, 1).errorText, message);
    }
}

TEST(Substitution, FailsWhenDefinesMultiplyWithoutBound) {
    std::string sheet = "define: d0=1,1";
    for (int i = 1; i <= 40; ++i) {
        const std::string previous = 'd' + std::to_string(i - 1);
        sheet += ";define: d" + std::to_string(i) + '=' + previous + ',' + previous;
    }
    EXPECT_EQ(RunStages(sheet + ";d40", 1).errorText,
              "C001-09: define substitution in sentence 19 does not end.");
}

struct LimitRow {
    std::string define, formula;
    bool passes;
};

void ExpectLimits(const LimitRow& row) {
    SCOPED_TRACE(std::to_string(row.define.size()) + ' ' + std::to_string(row.formula.size()));
    const auto staged = RunStages("define: d=" + row.define + ';' + row.formula, 1);
    EXPECT_EQ(staged.errorText, row.passes ? std::string_view() : endlessSecond);
}

TEST(Substitution, LetsATextGrowToAMillionCharacters) {
    const LimitRow rows[] = {
        {std::string(1'000'000, '1'), "d", true},
        {std::string(1'000'001, '1'), "d", false},
        {std::string(999'998, '1'), "1+d", true},
        {std::string(999'999, '1'), "1+d", false},
        {std::string(499'999, '1'), "d+d ", true},
        {std::string(499'999, '1'), "d+d  ", false},
        {std::string(499'999, '1'), " \t\n d+d  ", false},
        // A text that was longer from the start may go on as long as it does not grow.
        {"2", "d+" + std::string(1'000'000, '1'), true},
        {"", "1d+d" + std::string(1'000'000, ' ') + "+1", true},
        {"22", "d+" + std::string(1'000'000, '1'), false},
    };
    for (const LimitRow& row : rows) ExpectLimits(row);
}

TEST(Substitution, MakesAHundredThousandReplacements) {
    const LimitRow rows[] = {
        {"2", Repeat("d+", 99'999) + 'd', true},
        {"2", Repeat("d+", 100'000) + 'd', false},
        {"2", Repeat("d+", 100'000) + '1', true},
    };
    for (const LimitRow& row : rows) ExpectLimits(row);
}

TEST(Substitution, CountsEachSentenceForItself) {
    const std::string formula = Repeat("d+", 60'000) + '1';
    EXPECT_EQ(RunStages("define: d=2;" + formula + ';' + formula, 1).errorText, "");
    const std::string nested = "define: d=2; define: f=" + formula + "; f; f";
    EXPECT_EQ(RunStages(nested, 1).errorText, "");
}

TEST(Substitution, LeavesALongTextAloneThatHasNothingToReplace) {
    EXPECT_EQ(RunStages("define: d=2;" + std::string(1'500'000, '1'), 1).errorText, "");
}

struct FoldRow {
    std::string_view text, folded;
};

constexpr std::string_view e = "2.71828182845904509079559829842765";
constexpr std::string_view pi = "3.14159265358979311599796346854419";

std::string Folded(std::string_view form) {
    std::string text(form);
    for (const auto& [mark, value] : {FoldRow{"<e>", e}, FoldRow{"<pi>", pi}}) {
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark)) {
            text.replace(at, mark.size(), value);
        }
    }
    return text;
}

constexpr FoldRow foldRows[] = {
    {"e", "<e>"},
    {"pi", "<pi>"},
    {"true", "1"},
    {"false", "0"},
    {"times(2,pi)", "times(2,<pi>)"},
    {"plus(e,plus(pi,e))", "plus(<e>,plus(<pi>,<e>))"},
    {"true(1)", "1(1)"},
    {"( true , false )", "( 1 , 0 )"},
    // of five letters only the first two are looked at
    {"fault", "0"},
    {"fancy", "0"},
    {"fa_12", "0"},
    {"plus(fancy,1)", "plus(0,1)"},
    {"falsehood", "falsehood"},
    {"false1", "false1"},
    {"falx", "falx"},
    {"fa", "fa"},
    {"Fancy", "Fancy"},
    {"fAlse", "fAlse"},
    // exact spelling otherwise
    {"E", "E"},
    {"Pi", "Pi"},
    {"pie", "pie"},
    {"epi", "epi"},
    {"True", "True"},
    {"truth", "truth"},
    {"tree", "tree"},
    {"pp", "pp"},
    {"_e", "_e"},
    {"e1", "e1"},
    {"2e", "2e"},
    {"2pi", "2pi"},
    {"1", "1"},
    {"", ""},
};

TEST(FoldConstants, ReplacesEveryConstantWord) {
    for (const auto& [text, folded] : foldRows) {
        SCOPED_TRACE(text);
        EditBuffer buffer(text);
        FoldConstants(buffer);
        EXPECT_EQ(buffer.View(), Folded(folded));
    }
}

TEST(FoldConstantOnce, ReplacesTheFirstOneAndTellsWhetherThereWasOne) {
    SentenceList sentences;
    sentences.Add("1");
    sentences.Add("plus(pi,times(e,true))");
    EXPECT_FALSE(FoldConstantOnce(sentences, 0));
    EXPECT_TRUE(FoldConstantOnce(sentences, 1));
    EXPECT_EQ(sentences[1].text.View(), Folded("plus(<pi>,times(e,true))"));
    EXPECT_TRUE(FoldConstantOnce(sentences, 1));
    EXPECT_EQ(sentences[1].text.View(), Folded("plus(<pi>,times(<e>,true))"));
    EXPECT_TRUE(FoldConstantOnce(sentences, 1));
    EXPECT_EQ(sentences[1].text.View(), Folded("plus(<pi>,times(<e>,1))"));
    EXPECT_FALSE(FoldConstantOnce(sentences, 1));
    EXPECT_EQ(sentences[0].text.View(), "1");
}

TEST(FoldConstantOnce, MakesTheSameAsTheWholeWalk) {
    for (const auto& [text, folded] : foldRows) {
        SCOPED_TRACE(text);
        SentenceList sentences;
        sentences.Add(text);
        while (FoldConstantOnce(sentences, 0)) {
        }
        EXPECT_EQ(sentences[0].text.View(), Folded(folded));
    }
}

TEST(Constants, HaveTheirExactValues) {
    struct Row {
        std::string_view sheet;
        double value;
    };
    constexpr Row rows[] = {
        {"pi", 0x1.921fb54442d18p+1},
        {"e", 0x1.5bf0a8b145769p+1},
        {"true", 1},
        {"false", 0},
        {"fancy+1", 1},
        {"2*pi", 0x1.921fb54442d18p+2},
    };
    for (const auto& [sheet, value] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(NumberFrom(sheet), value);
    }
}

}  // namespace
}  // namespace orvane
