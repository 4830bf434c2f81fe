#include "core/sheet_cutter.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/support/stage_run.h"

namespace orvane {
namespace {

using test::RunStages;

TEST(BlankComments, OverwritesThemAndKeepsEveryPosition) {
    struct Row {
        std::string_view text, cleaned;
    };
    constexpr Row rows[] = {
        {"1 // x;y", "1       "},
        {"1 // x\n2", "1     \n2"},
        {"//", "  "},
        {"//\n//\n", "  \n  \n"},
        {"1 / 2", "1 / 2"},
        {"1 /// 2", "1      "},
        {"a /* b */ c", "a /* b */ c"},
        {"// \"", "    "},
        {"\"//\" 1", "\"//\" 1"},
        {"\"a\" // \"b", "\"a\"      "},
        {"1\r\n2\r", "1 \n2 "},
        {"// a\r\n2", "     \n2"},
        {"\"a\rb\"", "\"a b\""},
        // A string that runs over a line end hides the comment sign inside it.
        {"\"a // b\nc\" // d\"", "\"a // b\nc\"      "},
        // Behind a string that is never closed nothing is a comment.
        {"1 // x\n\"a // b\n// c", "1     \n\"a // b\n// c"},
        {"\" // x", "\" // x"},
        {"", ""},
    };
    for (const auto& [text, cleaned] : rows) {
        SCOPED_TRACE(text);
        std::string changed(text);
        BlankComments(changed);
        EXPECT_EQ(changed, cleaned);
    }
}

TEST(BlankComments, LeavesWhatStandsBehindItsTextAlone) {
    std::string text = "1 // ab\n2 // c";
    BlankComments(std::span<char>(text).first(6));
    EXPECT_EQ(text, "1     b\n2 // c");
}

std::vector<std::string> Cuts(std::string_view text) {
    SentenceList sentences;
    CutSentences(sentences, text);
    std::vector<std::string> cuts;
    for (const Sentence* sentence : sentences) cuts.emplace_back(sentence->source);
    return cuts;
}

TEST(CutSentences, CutsAtSemicolonsOutsideStringsAndNowhereElse) {
    struct Row {
        std::string_view text;
        std::vector<std::string> cuts;
    };
    const Row rows[] = {
        {"a=1;;b=2;", {"a=1", "b=2"}},
        {";1", {"1"}},
        {";;;", {}},
        {"", {}},
        {"1", {"1"}},
        {"1;", {"1"}},
        {"1;2", {"1", "2"}},
        {"1\n+\n2", {"1\n+\n2"}},
        {"1; \n 2 ;", {"1", " \n 2 "}},
        {"\"a;b\"", {"\"a;b\""}},
        {"\"a;b\";\"c\"", {"\"a;b\"", "\"c\""}},
        {"\";\";\";\"", {"\";\"", "\";\""}},
        // A string that is not closed takes the rest.
        {"1;\"a;b", {"1", "\"a;b"}},
        {"1; ;2", {"1", " ", "2"}},
    };
    for (const auto& [text, cuts] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Cuts(text), cuts);
    }
}

struct HeadRow {
    std::string_view sentence, header, name, text;
};

void ExpectHead(const HeadRow& row) {
    SCOPED_TRACE(row.sentence);
    SentenceList sentences;
    sentences.Add(row.sentence);
    FindLeadingWords(sentences);
    EXPECT_EQ(sentences[0].header, row.header);
    EXPECT_EQ(sentences[0].name, row.name);
    EXPECT_EQ(sentences[0].text.View(), row.text);
    EXPECT_EQ(sentences[0].source, row.sentence);
}

TEST(FindHeader, TakesTheWordInFrontOfAColonOnce) {
    constexpr HeadRow rows[] = {
        {"hide : 3", "hide", "", "3"},
        {"hide:3", "hide", "", "3"},
        {" \n\thide\t\n : 3", "hide", "", "3"},
        {"foo: 1", "foo", "", "1"},
        {"_x9: 1", "_x9", "", "1"},
        {"hide: hex: 1", "hide", "", "hex: 1"},
        {"hide:", "hide", "", ""},
        {"2x: 3", "", "", "2x: 3"},
        {": 3", "", "", ": 3"},
        {"a b: 3", "", "", "a b: 3"},
        {"(hide: 3)", "", "", "(hide: 3)"},
        {"\"hide\": 3", "", "", "\"hide\": 3"},
        {"\xE9: 3", "", "", "\xE9: 3"},
        {"hide", "", "", "hide"},
    };
    for (const HeadRow& row : rows) ExpectHead(row);
}

TEST(FindName, TakesTheWordInFrontOfAnEqualsSign) {
    constexpr HeadRow rows[] = {
        {"a=1", "", "a", "1"},
        {"  a = 1 ", "", "a", "1 "},
        {"a\n\t=\n1", "", "a", "1"},
        {"hex: a = 255", "hex", "a", "255"},
        {"define: k = 2", "define", "k", "2"},
        {"a = b = 1", "", "a", "b = 1"},
        {"a=", "", "a", ""},
        {"2a = 1", "", "", "2a = 1"},
        {"a b = 1", "", "", "a b = 1"},
        {"= 1", "", "", "= 1"},
        {"(a) = 1", "", "", "(a) = 1"},
        // The next character is not looked at.
        {"a == 1", "", "a", "= 1"},
        {"a => 1", "", "a", "> 1"},
        {"a <= 1", "", "", "a <= 1"},
    };
    for (const HeadRow& row : rows) ExpectHead(row);
}

TEST(TextSentences, KeepTheirTextWithAllWhiteSpace) {
    constexpr HeadRow rows[] = {
        {"text: a = b", "text", "", " a = b"},
        {"\n text :\t two\n lines ", "text", "", "\t two\n lines "},
        {"text:", "text", "", ""},
        {"text: hide: x", "text", "", " hide: x"},
    };
    for (const HeadRow& row : rows) ExpectHead(row);
}

TEST(FindName, OverwritesThemWithBlanks) {
    SentenceList sentences;
    sentences.Add(" ab = 1");
    FindName(sentences[0]);
    EXPECT_EQ(sentences[0].text.View(), "      1");
}

TEST(WhiteSpace, BecomesBlanksInAllButTextSentences) {
    struct Row {
        std::string_view sheet, text;
    };
    constexpr Row rows[] = {
        {"1\n+\n2", "1 + 2"},
        {"1\t+\t2", "1 + 2"},
        {"\t\n1 +\r\n2\n", "1 +  2 "},
        {"strlen(\"a\tb\")\t", "strlen(\"a\tb\") "},
        {"text:\ta\n\tb", "\ta\n\tb"},
        {"text: a\r\nb", " a \nb"},
        {"define: a =\t1\n+\t2", "1 + 2"},
        {"define: a = \"x\ty\"\t", "\"x\ty\" "},
    };
    for (const auto& [sheet, text] : rows) {
        SCOPED_TRACE(sheet);
        const auto staged = RunStages(sheet, 1);
        EXPECT_EQ(staged.errorText, "");
        ASSERT_EQ(staged.sentences.Count(), 1);
        EXPECT_EQ(staged.sentences[0].text.View(), text);
    }
}

// The sentences of a sheet behind all of stage 1, as "header/name/text".
std::vector<std::string> Sentences(std::string_view sheet) {
    const auto staged = RunStages(sheet, 1);
    EXPECT_EQ(staged.errorText, "");
    std::vector<std::string> found;
    for (const Sentence* sentence : staged.sentences) {
        std::string& line = found.emplace_back(sentence->header);
        line.append(1, '/').append(sentence->name);
        line.append(1, '/').append(sentence->text.View());
    }
    return found;
}

TEST(Sheet, IsReadSentenceBySentence) {
    struct Row {
        std::string_view sheet;
        std::vector<std::string> sentences;
    };
    const Row rows[] = {
        {"a=1;;b=2;", {"/a/1", "/b/2"}},
        {"\"a;b\"", {"//\"a;b\""}},
        {"// x;y", {}},
        {"1 + // comment\n2;", {"//1 +            2"}},
        {"hide : 3", {"hide//3"}},
        {"2x: 3", {"//2x: 3"}},
        {"text: a = b", {"text// a = b"}},
        {"hex: a = 255", {"hex/a/255"}},
        {"  ;\n;\t; 1", {"//1"}},
        {"{a+b)", {"//(a+b)"}},
        {"[{(1)]}", {"//(((1)))"}},
        {"define: a=[1}", {"define/a/[1}"}},
        {"text: {x]", {"text// {x]"}},
        {"", {}},
    };
    for (const auto& [sheet, sentences] : rows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(Sentences(sheet), sentences);
    }
}

TEST(Sheet, KeepsEachSentenceAsItWasCut) {
    const auto staged = RunStages("define: k = 2;\nhex: a = {k^3 // c\n+\t1]; text: x", 1);
    EXPECT_EQ(staged.errorText, "");
    ASSERT_EQ(staged.sentences.Count(), 3);
    EXPECT_EQ(staged.sentences[0].source, "define: k = 2");
    EXPECT_EQ(staged.sentences[1].source, "\nhex: a = {k^3     \n+\t1]");
    EXPECT_EQ(staged.sentences[1].text.View(), "(2^3      + 1)");
    EXPECT_EQ(staged.sentences[2].source, " text: x");
}

}  // namespace
}  // namespace orvane
