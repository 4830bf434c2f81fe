#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/help_examples.h"
#include "tests/support/help_folder.h"

namespace orvane {
namespace {

using namespace orvane::test;

class HelpExamplesOf : public testing::TestWithParam<std::string> {};

TEST_P(HelpExamplesOf, PrintWhatThePageShows) {
    const HelpExamples found = ExamplesOf(HelpPages().at(GetParam()).text);
    for (const std::string& fault : found.faults) ADD_FAILURE() << GetParam() << ":" << fault;
    for (const HelpExample& example : found.examples) {
        SCOPED_TRACE(GetParam() + ":" + std::to_string(example.line));
        const HelpReport report = ReportOf(example);
        EXPECT_EQ(report.fault, "");
        EXPECT_EQ(report.text, example.report);
    }
}

std::string NameOfPage(const testing::TestParamInfo<std::string>& page) {
    std::string name = page.param.substr(0, page.param.rfind('.'));
    std::replace(name.begin(), name.end(), '/', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Pages, HelpExamplesOf, testing::ValuesIn(HelpPaths()), NameOfPage);

struct FaultRow {
    const char* page;
    const char* fault;
};
constexpr FaultRow faultRows[] = {
    {"<p>\n<pre class=\"sheet\">1;</pre></p>", "2: a sheet without a report behind it"},
    {"<p><pre class=\"sheet\">1;</pre><b/>\n<pre class=\"report\"></pre></p>",
     "1: a sheet without a report behind it"},
    {"<p>\n\n<pre class=\"report\">1</pre></p>", "3: a report without a sheet in front of it"},
    {"<p><pre class=\"sheet\"><b>1</b>;</pre><pre class=\"report\">1</pre></p>",
     "1: an example with tags in it"},
    {"<p><pre class=\"sheet\">1;</pre><pre class=\"report\"/></p>",
     "1: write an empty report with both its tags"},
    {"<p>\n<pre></p>", "2: Start-end tags mismatch"},
};

TEST(HelpExampleReader, TellsWhatIsWrongWithAPage) {
    for (const FaultRow& row : faultRows) {
        SCOPED_TRACE(row.page);
        const HelpExamples found = ExamplesOf(row.page);
        ASSERT_FALSE(found.faults.empty());
        EXPECT_EQ(found.faults.front(), row.fault);
        EXPECT_TRUE(found.examples.empty());
    }
}

TEST(HelpExampleReader, ReadsSheetsOptionsAndReportsAsTheyStand) {
    const std::string page =
        "<p>\n<pre class=\"sheet\" data-options=\"--bits 8 --precision 4\">\na &lt; 1;\n</pre>\n"
        "<pre title=\"&gt;\" class=\"report\">\n\nx &amp; y \t\n\n</pre></p>";
    const HelpExamples found = ExamplesOf(page);
    EXPECT_TRUE(found.faults.empty());
    ASSERT_EQ(found.examples.size(), 1u);
    const HelpExample& example = found.examples.front();
    EXPECT_EQ(example.line, 2u);
    EXPECT_EQ(example.options, "--bits 8 --precision 4");
    EXPECT_EQ(example.sheet, "a < 1;\n");
    EXPECT_EQ(example.report, "\nx & y \t");
    EXPECT_EQ(page.substr(example.reportFrom, example.reportTo - example.reportFrom),
              "\n\nx &amp; y \t\n\n");
}

TEST(HelpExampleReader, CalculatesWithTheOptionsOfTheSheet) {
    struct Row {
        const char* sheet;
        const char* options;
        const char* text;
        const char* fault;
    };
    constexpr Row rows[] = {
        {"1/3;", "", "+0.33 \t", ""},
        {"1/3;", "--precision 4 --no-show-sign", "0.3333 \t", ""},
        {"hex: -1;", "--bits 8", "0hFF \t", ""},
        {"1;", "--no-such-option", "", "no options of a run: --no-such-option"},
        {"1;", "other.sheet", "", "no options of a run: other.sheet"},
        {"a = 1;", "--position-line", "    21\n    --\na = +1 \t", ""},
        {"", "", "", "nothing to calculate"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.sheet) + row.options);
        HelpExample example;
        example.sheet = row.sheet;
        example.options = row.options;
        const HelpReport report = ReportOf(example);
        EXPECT_EQ(report.text, row.text);
        EXPECT_EQ(report.fault, row.fault);
    }
}

}  // namespace
}  // namespace orvane
