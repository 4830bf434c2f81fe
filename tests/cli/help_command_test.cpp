#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "functions/keyword_table.h"
#include "functions/keyword_texts.h"
#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

std::vector<std::string> LinesOfText(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

bool Contains(const std::string& text, std::string_view piece) {
    return text.find(piece) != std::string::npos;
}

// Characters of UTF-8.
std::size_t WidthOf(const std::string& line) {
    std::size_t width = 0;
    for (const char c : line) width += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
    return width;
}

TEST(HelpCommand, TellsAboutEveryKeyword) {
    for (const KeywordEntry& entry : keywordRows) {
        SCOPED_TRACE(entry.name);
        const std::string text = OutputOf({"help", entry.name}, "");
        const std::vector<std::string> lines = LinesOfText(text);
        ASSERT_GE(lines.size(), 4u);
        EXPECT_TRUE(Contains(lines[0], entry.name)) << lines[0];
        EXPECT_EQ(lines[1], std::string(lines[0].size(), '-'));
        for (const KeywordLine& line : LinesOf(entry)) {
            const std::string name = std::string(line.name) + std::string(line.opening);
            EXPECT_TRUE(Contains(text, "\n    " + std::string(line.returnText) + " " + name));
        }
        EXPECT_TRUE(Contains(text, "\nSheet"));
        EXPECT_TRUE(Contains(text, "\nReport:\n    ") || Contains(text, "\nReport:\n\n    "));
        EXPECT_TRUE(Contains(text, "\nMore on this page: orvane-cli help "));
    }
}

TEST(HelpCommand, StopsAheadOfTheNextKeyword) {
    const std::string text = OutputOf({"help", "bit_and"}, "");
    EXPECT_TRUE(
        text.starts_with("bit_and, bitwise_and\n--------------------\n\n"
                         "    int bit_and( uint ,uint ,bits )\n"
                         "    int bitwise_and( uint ,uint ,bits )\n\n"))
        << text;
    EXPECT_FALSE(Contains(text, "int bit_or("));
    EXPECT_TRUE(text.ends_with("\nMore on this page: orvane-cli help function/bits\n"));
}

TEST(HelpCommand, SaysTheSameForAnAlias) {
    EXPECT_EQ(OutputOf({"help", "square_root"}, ""), OutputOf({"help", "sqrt"}, ""));
}

TEST(HelpCommand, PrintsAPageWithOrWithoutItsEnding) {
    const std::string page = OutputOf({"help", "sentence/number"}, "");
    EXPECT_TRUE(page.starts_with("Numbers\n=======\n\n")) << page.substr(0, 100);
    EXPECT_EQ(OutputOf({"help", "sentence/number.htm"}, ""), page);
    EXPECT_FALSE(Contains(page, "Contents >"));
}

TEST(HelpCommand, ListsAllPagesAndPrintsEachWithinEightyColumns) {
    const std::vector<std::string> lines = LinesOfText(OutputOf({"help"}, ""));
    std::size_t pages = 0;
    for (const std::string& line : lines) {
        if (!line.starts_with("  ")) continue;
        ++pages;
        const std::string path = line.substr(2, line.find(' ', 2) - 2);
        SCOPED_TRACE(path);
        const std::string text = OutputOf({"help", path}, "");
        EXPECT_FALSE(text.empty());
        for (const std::string& printed : LinesOfText(text)) {
            if (printed.starts_with("    ")) continue;  // fixed text, which is never cut
            EXPECT_LE(WidthOf(printed), 80u) << printed;
            EXPECT_FALSE(printed.ends_with(' ')) << printed;
        }
        EXPECT_FALSE(Contains(text, "\n\n\n\n"));
        for (const char* const mark : {"<p>", "</", "&lt;", "&amp;", "&gt;"}) {
            EXPECT_FALSE(Contains(text, mark)) << mark;
        }
    }
    EXPECT_GE(pages, 25u);
    EXPECT_TRUE(Contains(lines[0], "orvane-cli help KEYWORD"));
}

TEST(HelpCommand, IsTheSameWhereverItRunsAndReadsNoFile) {
    TemporaryFolder folder;
    ToolRun run;
    run.arguments = {"help", "sin"};
    run.folder = folder.Path();
    run.withoutRights = true;
    const ToolResult result = RunTool(run);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, OutputOf({"help", "sin"}, ""));
}

struct UnknownRow {
    const char* word;
    std::vector<std::string_view> words;
};

TEST(HelpCommand, RefusesOtherWordsAndNamesThoseNearThem) {
    const UnknownRow rows[] = {
        {"Sin", {"'Sin' is no keyword and no page of the help", "near it: sin, "}},
        {"sqr", {"sqrt"}},
        {"bitand", {"bit_and"}},
        {"locus_x", {"locus_xy"}},
        {"integral_area", {"integral_area_xy", "integral_area_polar"}},
        {"number", {"sentence/number"}},
        {"sentence/numbers.htm", {"near it: sentence/number"}},
        {"../about/about", {"'../about/about' is no keyword"}},
        {"qqqqqqqqqqqq", {"is no keyword and no page of the help\nRun orvane-cli help"}},
    };
    for (const UnknownRow& row : rows) {
        SCOPED_TRACE(row.word);
        const ToolResult result = RunTool({"help", row.word});
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        for (const std::string_view word : row.words) {
            EXPECT_TRUE(Contains(result.error, word)) << result.error;
        }
    }
}

TEST(HelpCommand, TakesOneWordAndNoOptions) {
    ExpectRefused(RunTool({"help", "sin", "cos"}), {"'cos' is one word too many"});
    ExpectRefused(RunTool({"help", "--json"}), {"there is no option '--json' here"});
    EXPECT_TRUE(Contains(OutputOf({"help", "--help"}, ""), "A keyword, or the path of a page"));
    EXPECT_TRUE(Contains(OutputOf({"--help"}, ""), "help"));
}

TEST(HelpCommand, KeepsTheBlankLineThatAReportBeginsWith) {
    const std::string text = OutputOf({"help", "sentence/report"}, "");
    EXPECT_TRUE(Contains(text, "\nReport:\n\n    First\n    a = +1\n")) << text;
    EXPECT_TRUE(Contains(text, "\nReport:\n    First\n    a = +1\n")) << text;
}

TEST(HelpCommand, PutsFormulasOfSeveralWordsInMarks) {
    const std::string text = OutputOf({"help", "bit_and"}, "");
    EXPECT_TRUE(Contains(text, "`first param must be an integer >= 0`")) << text;
}

}  // namespace
}  // namespace orvane
