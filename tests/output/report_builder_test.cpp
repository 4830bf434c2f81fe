#include "output/report_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::Rows;

// A sentence as a run leaves it behind. Without rows it holds an empty value.
struct Row {
    std::string_view header;
    std::string_view name;
    Rows value;
    std::string_view error = "";
    bool evaluated = true;
    std::string_view text = "";
};

Row Number(std::string_view name, double value, std::string_view header = "") {
    return {header, name, {{value}}};
}
Row Table(std::string_view name, Rows value, std::string_view header = "") {
    return {header, name, std::move(value)};
}
Row Failed(std::string_view name, std::string_view error, std::string_view header = "") {
    return {header, name, {}, error, false};
}
Row NotReached(std::string_view name, std::string_view header = "") {
    return {header, name, {}, "", false};
}
Row Text(std::string_view text) { return {"text", "", {}, "", false, text}; }
Row Define(std::string_view name) { return {"define", name, {}, "", false, "2"}; }

SentenceList MakeSentences(const std::vector<Row>& rows) {
    SentenceList sentences;
    for (const Row& row : rows) {
        sentences.Add(row.text);
        Sentence& sentence = sentences[sentences.Count() - 1];
        sentence.header = row.header;
        sentence.name = row.name;
        sentence.error = row.error;
        sentence.root.evaluated = row.evaluated;
        for (const auto& cells : row.value) {
            const ValueRow made =
                sentence.root.result.AppendRow(static_cast<std::int32_t>(cells.size()));
            std::ranges::copy(cells, made.begin());
        }
    }
    return sentences;
}

// Two decimals, eight bits, no signs, no blank lines, no ruler.
CalcParameters Plain() {
    CalcParameters parameters = test::ParametersForBits(8);
    parameters.floatPrecision = 2;
    parameters.showSign = false;
    parameters.breakText = false;
    return parameters;
}

CalcParameters WithRuler() {
    CalcParameters parameters = Plain();
    parameters.positionLine = true;
    return parameters;
}

struct Report {
    std::string text;
    std::string position;
};

Report BuildReport(const std::vector<Row>& rows, const CalcParameters& parameters = Plain()) {
    const SentenceList sentences = MakeSentences(rows);
    Report report{"", "left over"};
    report.text = ReportBuilder().Build(sentences, parameters, FindNumberLimits(), report.position);
    return report;
}

std::string ReportText(const std::vector<Row>& rows, const CalcParameters& parameters = Plain()) {
    return BuildReport(rows, parameters).text;
}

TEST(ReportBuilder, LeavesThePositionAloneWithoutSentences) {
    const Report report = BuildReport({}, WithRuler());
    EXPECT_EQ(report.text, "");
    EXPECT_EQ(report.position, "left over");
}

TEST(ReportBuilder, LinesNumbersUpOnTheirPoints) {
    EXPECT_EQ(ReportText({
                  Number("a", 1.5),
                  Number("long_name", -120),
                  Number("", 3.14159),
                  Number("zero", 0),
              }),
              "a         =    1.5  \t\n"
              "long_name = -120    \t\n"
              "               3.14 \t\n"
              "zero      =    0    \t\n");
}

TEST(ReportBuilder, StartsUnnamedValuesInTheFirstColumn) {
    EXPECT_EQ(ReportText({Number("", 7), Number("", 12.5), Failed("", "E002-01 broken.")}),
              " 7   \t\n"
              "12.5 \t\n"
              "E002-01 broken.\n");
}

TEST(ReportBuilder, NeverEchoesAFormula) {
    std::vector<Row> rows = {Number("a", 4)};
    rows[0].text = "plus(2,2)";
    EXPECT_EQ(ReportText(rows), "a = 4 \t\n");
}

TEST(ReportBuilder, PutsRemarksBehindTheNumber) {
    EXPECT_EQ(
        ReportText({
            Number("a", 300.25, "hex"),
            Number("b", 0.25, "percent"),
            Number("c", -1, "binary"),
            Number("d", 25, "percent"),
            Number("e", 1e16, "uint"),
        }),
        "a =              0h2C      \t(trim: 1 of +256,truncate: 0.25)\n"
        "b =                 0.25 % \t\n"
        "c =        0b11111111      \t\n"
        "d =                25 %    \t\n"
        "e = 10000000000000000      \t(ignore format \"uint\" since the number is too large)\n");
}

TEST(ReportBuilder, CountsAPercentSignIntoTheIntegerColumn) {
    EXPECT_EQ(ReportText({Number("", 25, "percent"), Number("", 7)}),
              "  25 % \t\n"
              "   7 \t\n");
}

TEST(ReportBuilder, PadsValuesThatAreEmptyWithoutDecimals) {
    CalcParameters parameters = Plain();
    parameters.floatPrecision = 0;
    EXPECT_EQ(ReportText({Number("a", 0.4), Number("b", 1250)}, parameters),
              "a =     \t\n"
              "b = 125 \t\n");
    parameters.positionLine = true;
    const Report alone = BuildReport({Number("a", 0.4)}, parameters);
    EXPECT_EQ(alone.text, "a =  \t\n");
    EXPECT_EQ(alone.position, "    \r\n    \r\n");
}

TEST(ReportBuilder, TakesSixDecimalsForANegativePrecision) {
    CalcParameters parameters = Plain();
    parameters.floatPrecision = -1;
    EXPECT_EQ(ReportText({Number("", 1.0 / 3.0)}, parameters), "0.333333 \t\n");
}

TEST(ReportBuilder, ShowsSignsOnRequest) {
    CalcParameters parameters = Plain();
    parameters.showSign = true;
    EXPECT_EQ(ReportText({Number("a", 0), Number("b", -2.5), Number("c", 5, "hex"),
                          Table("d", {{1, -0.001}})},
                         parameters),
              "a =   +0   \t\n"
              "b =   -2.5 \t\n"
              "c = 0h05   \t\n"
              "d = +1,+0\n");
}

// --- what is shown, and with what name

TEST(ReportBuilder, HidesWhatIsCalculatedAndHidden) {
    const std::vector<Row> rows = {Number("a_very_long_name", 5, "hide"), Number("", 2.5, "hide"),
                                   Table("m", {{1, 2}}, "hide")};
    const Report report = BuildReport(rows, WithRuler());
    EXPECT_EQ(report.text, "");
    EXPECT_EQ(report.position, "");
}

TEST(ReportBuilder, LetsHiddenSentencesNeitherWidenNorAlign) {
    EXPECT_EQ(ReportText({Number("very_long", 12345.25, "hide"), Number("a", 1)}), "a = 1 \t\n");
}

TEST(ReportBuilder, ShowsAHiddenSentenceThatFailed) {
    EXPECT_EQ(ReportText({Failed("hidden", "E001-01 sentence  1: text.", "hide"), Number("a", 1)}),
              "hidden = E001-01 sentence  1: text.\n"
              "a      = 1 \t\n");
    // An error counts even where a value stands.
    EXPECT_EQ(ReportText({{"hide", "h", {{5}}, "E001-01 both.", true}}), "h = E001-01 both.\n");
}

TEST(ReportBuilder, ShowsAHiddenSentenceThatWasNotReached) {
    EXPECT_EQ(ReportText({NotReached("hidden", "hide")}),
              "hidden = sentence 1  was not calculated.\n");
}

TEST(ReportBuilder, ShowsTextAtTheFirstColumn) {
    EXPECT_EQ(ReportText({Number("long_name", 5), Text("  as\twritten \xE4\n 1.5 % "), Text("")}),
              "long_name = 5 \t\n"
              "  as\twritten \xE4\n 1.5 % \n"
              "\n");
}

TEST(ReportBuilder, IgnoresNamesOfTextAndDefines) {
    EXPECT_EQ(
        ReportText(
            {{"text", "text_name", {}, "", false, "words"}, Define("define_name"), Number("a", 5)}),
        "words\n"
        "a = 5 \t\n");
}

TEST(ReportBuilder, ComparesHeadersExactly) {
    // Only "text", "define" and "hide" themselves are special.
    EXPECT_EQ(ReportText({Failed("a", "error.", "Text"),
                          Failed("b", "error.", "defines"),
                          {"hidden", "c", {{1, 2}}}}),
              "a = error.\n"
              "b = error.\n"
              "c = 1,2\n");
}

TEST(ReportBuilder, NumbersSentencesThatWereNotCalculated) {
    std::vector<Row> rows = {Text("t"), Define("k"), NotReached("a"), NotReached("")};
    while (rows.size() < 9) rows.push_back(Define("k"));
    rows.push_back(NotReached("b"));
    while (rows.size() < 99) rows.push_back(Number("x", 1, "hide"));
    rows.push_back(NotReached("c"));
    EXPECT_EQ(ReportText(rows),
              "t\n"
              "a = sentence 3  was not calculated.\n"
              "    sentence 4  was not calculated.\n"
              "b = sentence 10 was not calculated.\n"
              "c = sentence 100 was not calculated.\n");
}

TEST(ReportBuilder, KeepsErrorsOutOfTheColumns) {
    const Report report = BuildReport(
        {
            Failed("a", "E006-10 sentence  1: a long text with 12345678901234567890.5 in it."),
            Number("b", 2.5),
            NotReached("c"),
        },
        WithRuler());
    EXPECT_EQ(report.text,
              "a = E006-10 sentence  1: a long text with 12345678901234567890.5 in it.\n"
              "b = 2.5 \t\n"
              "c = sentence 3  was not calculated.\n");
    EXPECT_EQ(report.position, "    1.1\r\n    - -\r\n");
}

// --- tables

TEST(ReportBuilder, StartsATableBehindItsName) {
    EXPECT_EQ(ReportText({Table("m", {{1.5, 10}, {200, 0.25}})}),
              "m =   1.5,10   \n"
              "    200  , 0.25\n");
}

TEST(ReportBuilder, IndentsTablesByTheWidestName) {
    EXPECT_EQ(ReportText({Table("m", {{1}, {20}}), Number("name", 5), Table("", {{3}, {4}})}),
              "m    =  1\n"
              "       20\n"
              "name = 5 \t\n"
              "       3\n"
              "       4\n");
    EXPECT_EQ(ReportText({Table("", {{1, 2}, {3, 4}})}), "1,2\n3,4\n");
}

TEST(ReportBuilder, PrintsTablesPlainUnderAnyKeyword) {
    EXPECT_EQ(ReportText({Table("m", {{255, 300.5}}, "hex"), Table("c", {{0.5, 2}}, "percent")}),
              "m = 255,300.5\n"
              "c = 0.5,2\n");
}

TEST(ReportBuilder, PrintsAnEmptyValueAsItsNameAlone) {
    const Report report =
        BuildReport({Table("roots", {}), Table("", {}), Table("r", {{}, {}})}, WithRuler());
    EXPECT_EQ(report.text,
              "roots = \n"
              "        \n"
              "r     = \n");
    EXPECT_EQ(report.position, "");
}

TEST(ReportBuilder, PrintsRaggedTables) {
    EXPECT_EQ(ReportText({Table("m", {{1, 2.5}, {10}, {}, {3, 4, 5}})}),
              "m =  1,2.5\n"
              "    10\n"
              "    \n"
              "     3,4  ,5\n");
}

TEST(ReportBuilder, KeepsTablesOutOfTheColumns) {
    EXPECT_EQ(ReportText({Table("m", {{1234567.25}, {1}}), Number("a", 1.5)}),
              "m = 1234567.25\n"
              "          1   \n"
              "a = 1.5 \t\n");
}

TEST(ReportBuilder, PrintsAComplexNumberAsARow) {
    SentenceList sentences;
    sentences.Add("complex(3,-1)");
    sentences[0].root.result.SetComplex(3, -1.5);
    sentences[0].root.evaluated = true;
    std::string position;
    EXPECT_EQ(ReportBuilder().Build(sentences, Plain(), FindNumberLimits(), position), "3,-1.5\n");
}

TEST(ReportBuilder, PrintsWhatIsNotFinite) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(ReportText({Number("a", infinity), Number("b", -infinity, "percent"),
                          Number("c", notANumber, "hex"), Number("d", 1.5)}),
              "a =    inf   \t\n"
              "b =   -inf % \t\n"
              "c =    nan   \t(ignore format \"hex\" since the number is too large)\n"
              "d =      1.5 \t\n");
}

// --- blank lines

struct BreakRow {
    bool formulaBreak;
    bool breakText;
    std::string_view text;
};

TEST(ReportBuilder, SetsBlankLinesAsAsked) {
    const std::vector<Row> rows = {Text("one"), Number("a", 1),    Text("two"),
                                   Define("k"), Failed("b", "E."), Text("three")};
    const BreakRow breakRows[] = {
        {false, false, "one\na = 1 \t\ntwo\nb = E.\nthree\n"},
        {true, false, "one\na = 1 \t\n\ntwo\nb = E.\n\nthree\n"},
        {false, true, "\none\na = 1 \t\n\ntwo\nb = E.\n\nthree\n"},
        {true, true, "\none\na = 1 \t\n\n\ntwo\nb = E.\n\n\nthree\n"},
    };
    for (const auto& [formulaBreak, breakText, text] : breakRows) {
        SCOPED_TRACE(testing::Message() << formulaBreak << breakText);
        CalcParameters parameters = Plain();
        parameters.formulaBreak = formulaBreak;
        parameters.breakText = breakText;
        EXPECT_EQ(ReportText(rows, parameters), text);
    }
}

// --- the ruler

TEST(ReportBuilder, RulesTheColumnsOfTheNumbers) {
    CalcParameters parameters = WithRuler();
    parameters.floatPrecision = 6;
    const Report report =
        BuildReport({Number("a", 123456789012.5), Number("b", -1.125)}, parameters);
    EXPECT_EQ(report.position, "    21 987654321.123\r\n    --1--------- ---\r\n");
    EXPECT_EQ(report.text,
              "a = 123456789012.5   \t\n"
              "b =           -1.125 \t\n");
    EXPECT_EQ(BuildReport({Number("", 7)}, parameters).position, "1\r\n-\r\n");
}

TEST(ReportBuilder, RulesNothingWithoutANumber) {
    const std::vector<Row> rows = {Text("1.5"),     Table("m", {{1, 2}}),   Failed("a", "E."),
                                   NotReached("b"), Number("h", 1, "hide"), Define("k")};
    EXPECT_EQ(BuildReport(rows, WithRuler()).position, "");
    EXPECT_EQ(BuildReport({Number("a", 1)}, Plain()).position, "");
}

TEST(ReportBuilder, StopsTheRulerAtAHundredColumns) {
    const Report report = BuildReport({Number("", 1e300), Number("", 0.5)}, WithRuler());
    EXPECT_EQ(report.position.find(".1\r\n"), 100u);
    EXPECT_EQ(report.position.size(), 2 * (100u + 2u + 2u));
    EXPECT_EQ(report.text.find(' '), 301u);
    EXPECT_EQ(report.text.find(".5"), 301u + 2u + 2u + 1u + 301u);
}

// --- size and life

TEST(ReportBuilder, TakesNamesOfAnyLength) {
    const std::string name(5000, 'n');
    EXPECT_EQ(ReportText({Number(name, 1), Number("a", 2), Number("", 3), Text("t")}),
              name + " = 1 \t\n" + "a" + std::string(4999, ' ') + " = 2 \t\n" +
                  std::string(5003, ' ') + "3 \t\nt\n");
}

TEST(ReportBuilder, EndsInFrontOfWhatTakesItBeyondItsBound) {
    // Each name is padded to the widest one: 255 lines of a MiB and a bit fit, the next one does
    // not.
    const std::string wide(std::size_t{1} << 20, 'w');
    std::vector<Row> rows{Number(wide, 1)};
    for (int line = 2; line <= 300; ++line) rows.push_back(Number("a", 2));
    const SentenceList sentences = MakeSentences(rows);
    ReportBuilder builder;
    std::string position;
    const std::string text = builder.Build(sentences, Plain(), FindNumberLimits(), position);
    EXPECT_TRUE(builder.IsCut());
    const std::string last =
        "the report is too long: sentence 256 and what follows are not shown.\n";
    const std::size_t lineLength = wide.size() + std::string(" = 1 \t\n").size();
    EXPECT_EQ(text.size(), 255 * lineLength + last.size());
    EXPECT_TRUE(text.ends_with("= 2 \t\n" + last));

    EXPECT_EQ(builder.Build(MakeSentences({Number("a", 1)}), Plain(), FindNumberLimits(), position),
              "a = 1 \t\n");
    EXPECT_FALSE(builder.IsCut());
}

TEST(ReportBuilder, EndsInFrontOfATableThatIsTooLong) {
    // 900,000 numbers of 301 digits, as a row and a column give them, and a sentence behind them.
    const std::vector<double> cells(1000, 1e300);
    const SentenceList sentences =
        MakeSentences({Number("a", 1), Table("m", Rows(900, cells)), Number("b", 2)});
    ReportBuilder builder;
    std::string position;
    EXPECT_EQ(builder.Build(sentences, Plain(), FindNumberLimits(), position),
              "a = 1 \t\n"
              "the report is too long: sentence 2 and what follows are not shown.\n");
    EXPECT_TRUE(builder.IsCut());
}

TEST(ReportBuilder, StartsAfreshEachTime) {
    const SentenceList first = MakeSentences({Number("name", 123.25), Text("t")});
    const SentenceList second = MakeSentences({Number("a", 1)});
    const NumberLimits limits = FindNumberLimits();
    ReportBuilder builder;
    std::string position;
    const std::string text = builder.Build(first, WithRuler(), limits, position);
    EXPECT_EQ(text, "name = 123.25 \t\nt\n");
    EXPECT_EQ(position, "       321.12\r\n       --- --\r\n");
    EXPECT_EQ(builder.Build(second, WithRuler(), limits, position), "a = 1 \t\n");
    EXPECT_EQ(position, "    1\r\n    -\r\n");
    EXPECT_EQ(builder.Build(first, Plain(), limits, position), text);
    EXPECT_EQ(position, "");
}

TEST(ReportBuilder, TakesAHundredThousandSentences) {
    constexpr int count = 100'000;
    std::vector<Row> rows;
    for (int index = 0; index < count; ++index) rows.push_back(Number("a", index % 10));
    std::string expected;
    for (int index = 0; index < count; ++index) {
        expected += "a = " + std::to_string(index % 10) + " \t\n";
    }
    EXPECT_TRUE(ReportText(rows) == expected);  // too long to show where they differ
}

TEST(ReportBuilder, TakesALargeTable) {
    constexpr int count = 100'000;
    std::string expected;
    for (int row = 0; row < count; ++row) expected += (row == 0 ? "m = 1,2" : "\n    1,2");
    EXPECT_TRUE(ReportText({Table("m", Rows(count, {1, 2}))}) == expected + "\n");
}

// Whatever stands in a sheet, the points of all numbers and of the ruler stand in one column.
TEST(ReportBuilder, KeepsThePointColumnOfRandomSheets) {
    std::mt19937 random(31);
    CalcParameters parameters = WithRuler();
    parameters.floatPrecision = 9;
    for (int round = 0; round < 200; ++round) {
        std::vector<std::string> names;
        for (int count = 0; count < 15; ++count) names.emplace_back(random() % 12, 'x');
        std::vector<Row> rows = {Number("", 0.5)};
        for (const std::string& name : names) {
            // Odd quarters, so that every number has a point.
            const double number = (static_cast<int>(random() % 2'000'001) - 1'000'000) * 0.5 + 0.25;
            switch (random() % 5) {
                case 0:
                    rows.push_back(Text("text 1.5"));
                    break;
                case 1:
                    rows.push_back(Table(name, {{number}, {1}}));
                    break;
                case 2:
                    rows.push_back(Failed(name, "E. 1.5"));
                    break;
                default:
                    rows.push_back(Number(name, number));
                    break;
            }
        }
        const Report report = BuildReport(rows, parameters);
        const std::size_t column = report.position.find('.');
        ASSERT_NE(column, std::string::npos);
        std::size_t start = 0;
        std::size_t numbers = 0;
        while (start < report.text.size()) {
            const std::size_t end = report.text.find('\n', start);
            const std::string_view line = std::string_view(report.text).substr(start, end - start);
            start = end + 1;
            if (!line.ends_with(" \t")) continue;
            ++numbers;
            ASSERT_EQ(line.find('.'), column) << line;
            ASSERT_EQ(line.rfind('.'), column) << line;
        }
        ASSERT_EQ(numbers, static_cast<std::size_t>(
                               std::count_if(rows.begin(), rows.end(), [](const Row& row) {
                                   return row.value.size() == 1 && row.evaluated;
                               })));
    }
}

}  // namespace
}  // namespace orvane
