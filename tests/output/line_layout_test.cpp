#include "output/line_layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "output/number_text.h"
#include "tests/support/sheet_run.h"

namespace orvane {
namespace {

using test::Rows;

CalcParameters Options(int precision, bool showSign = false) {
    CalcParameters parameters;
    parameters.floatPrecision = precision;
    parameters.showSign = showSign;
    return parameters;
}

Value MakeValue(const Rows& rows) {
    Value value;
    for (const auto& row : rows) {
        std::ranges::copy(row, value.AppendRow(static_cast<std::int32_t>(row.size())).begin());
    }
    return value;
}

ReportLine NumberLine(std::string_view value, std::string_view name = "",
                      std::string_view note = "") {
    ReportLine line;
    line.isNumber = line.isFormula = true;
    line.value = value;
    line.name = name;
    line.note = note;
    return line;
}

DecimalColumns ColumnsOf(const std::vector<ReportLine>& lines) {
    DecimalColumns columns;
    for (const ReportLine& line : lines) columns.Widen(line);
    return columns;
}

std::string Aligned(ReportLine line, DecimalColumns columns) {
    AlignLine(line, columns);
    return line.line;
}

// --- columns

struct ColumnsRow {
    std::vector<std::string_view> values;
    std::size_t integer;
    std::size_t fraction;
};

TEST(DecimalColumns, TakesTheWidestParts) {
    const ColumnsRow rows[] = {
        {{}, 0, 0},
        {{""}, 0, 0},
        {{"7"}, 1, 0},
        {{"7", "-120"}, 4, 0},
        {{"1.5", "120"}, 3, 1},
        {{"1.5", "-3.125", ""}, 2, 3},
        {{"25 %", "1"}, 4, 0},  // the blank and the '%' count
        {{"0.25 %"}, 1, 4},
        {{"0hFF", "1.5"}, 4, 1},
        {{"inf %", "-inf"}, 5, 0},
        {{"1."}, 1, 0},
    };
    for (const auto& [values, integer, fraction] : rows) {
        SCOPED_TRACE(testing::PrintToString(values));
        std::vector<ReportLine> lines;
        for (const std::string_view value : values) lines.push_back(NumberLine(value));
        const DecimalColumns columns = ColumnsOf(lines);
        EXPECT_EQ(columns.integer, integer);
        EXPECT_EQ(columns.fraction, fraction);
    }
}

TEST(DecimalColumns, LooksAtNumbersOnly) {
    std::vector<ReportLine> lines(3);
    lines[0].value = "E006-10 sentence  1: text.";
    lines[1] = NumberLine("1.25");
    lines[2].value = "1000,2000.12345";
    const DecimalColumns columns = ColumnsOf(lines);
    EXPECT_EQ(columns.integer, 1u);
    EXPECT_EQ(columns.fraction, 2u);
}

// --- aligning

struct AlignRow {
    std::string_view value;
    std::size_t integer;
    std::size_t fraction;
    std::string_view text;
};

TEST(AlignLine, PutsThePointInItsColumn) {
    const AlignRow rows[] = {
        {"1.5", 1, 1, "1.5 \t"},         {"1.5", 3, 3, "  1.5   \t"},
        {"12", 3, 3, " 12     \t"},  // the point's column stays blank
        {"12", 4, 0, "  12 \t"},         {"0hFF", 6, 2, "  0hFF    \t"},
        {"25 %", 4, 0, "  25 % \t"},                                 // split at the blank
        {"25 %", 4, 2, "  25 %  \t"},    {"25%", 4, 0, "  25% \t"},  // split at the '%'
        {"0.25 %", 3, 4, "  0.25 % \t"}, {" %", 2, 0, "   % \t"},
        {"", 2, 1, "     \t"},           {"", 0, 0, " \t"},
        {"-inf", 5, 1, " -inf   \t"},    {"inf %", 5, 0, "  inf % \t"},
    };
    for (const auto& [value, integer, fraction, text] : rows) {
        SCOPED_TRACE(testing::Message() << '"' << value << "\" in " << integer << '.' << fraction);
        EXPECT_EQ(Aligned(NumberLine(value), {integer, fraction}), text);
    }
}

TEST(AlignLine, WritesNameAheadAndNoteBehind) {
    EXPECT_EQ(Aligned(NumberLine("5", "ab  = ", "(truncate: 0.5)"), {3, 2}),
              "ab  =   5    \t(truncate: 0.5)");
}

TEST(AlignLine, LeavesWhatIsNoNumberBehindItsName) {
    ReportLine line;
    line.isFormula = true;
    line.name = "a = ";
    line.value = "E006-10 sentence  1: function \"ln\": 1.5 %.";
    EXPECT_EQ(Aligned(line, {20, 5}), "a = E006-10 sentence  1: function \"ln\": 1.5 %.");
    line.value = "";
    EXPECT_EQ(Aligned(line, {20, 5}), "a = ");
}

TEST(AlignLine, PassesTextThroughUnchanged) {
    ReportLine line;
    line.keyword = "text";
    line.name = "never shown";
    line.value = "  \tThe 1.5 % of\nthem \xFF ";
    EXPECT_EQ(Aligned(line, {20, 5}), line.value);
}

TEST(AlignLine, PutsEveryPointOfARandomReportInOneColumn) {
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        const std::string name(random() % 30, 'n');
        std::vector<ReportLine> lines;
        for (int count = 0; count < 12; ++count) {
            std::string value(random() % 9, '1');
            const auto shape = random() % 4;
            if (shape % 2 == 1) value += "." + std::string(1 + random() % 7, '2');
            if (shape >= 2) value += " %";
            lines.push_back(NumberLine(value, name));
        }
        const DecimalColumns columns = ColumnsOf(lines);
        for (ReportLine& line : lines) {
            SCOPED_TRACE(line.value);
            AlignLine(line, columns);
            const std::size_t split = std::min(line.value.find_first_of(". "), line.value.size());
            const std::size_t start = name.size() + columns.integer - split;
            ASSERT_EQ(line.line.substr(0, start), name + std::string(start - name.size(), ' '));
            ASSERT_EQ(line.line.substr(start, line.value.size()), line.value);
            // Behind the fraction column, or behind the value where there is no such column.
            const std::size_t valueEnd = start + line.value.size();
            const std::size_t fractionEnd = name.size() + columns.integer + 1 + columns.fraction;
            const std::size_t end =
                columns.fraction > 0 ? std::max(fractionEnd, valueEnd) : valueEnd;
            ASSERT_EQ(line.line.substr(valueEnd), std::string(end - valueEnd, ' ') + " \t");
        }
    }
}

// --- tables

struct TableRow {
    Rows cells;
    int precision;
    std::string_view text;
};

TEST(FormatTable, LinesUpEachColumnOnItsPoints) {
    const TableRow rows[] = {
        {{{1.5, 10}, {200, 0.25}}, 2, "  1.5,10   \n    200  , 0.25"},
        {{{1, 2, 3}}, 2, "1,2,3"},
        {{{1}, {20}, {300}}, 2, "  1\n     20\n    300"},
        {{{1.5}, {2}}, 2, "1.5\n    2  "},
        {{{3, 1}}, 2, "3,1"},  // a complex number looks like a row
        {{{-1.25, 0}, {0.5, -10}}, 2, "-1.25,  0\n     0.5 ,-10"},
        {{{0.001}, {1}}, 2, "0\n    1"},
        {{{1e16, 1}}, 2, "10000000000000000,1"},
    };
    for (const auto& [cells, precision, text] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(FormatTable(MakeValue(cells), Options(precision), "    "), text);
    }
}

TEST(FormatTable, PrintsRaggedRowsAsTheyAre) {
    EXPECT_EQ(FormatTable(MakeValue({{1, 2.5}, {10}, {3, 4, 5}}), Options(2), ""),
              " 1,2.5\n10\n 3,4  ,5");
    EXPECT_EQ(FormatTable(MakeValue({{}, {7}, {}}), Options(2), ">"), "\n>7\n>");
}

TEST(FormatTable, IsEmptyWithoutCells) {
    EXPECT_EQ(FormatTable(MakeValue({}), Options(2), "    "), "");
    EXPECT_EQ(FormatTable(MakeValue({{}}), Options(2), "    "), "");
    EXPECT_EQ(FormatTable(MakeValue({{}, {}, {}}), Options(2), "    "), "");
}

TEST(FormatTable, GivesNothingWhereTheTextIsTooLong) {
    const Value value = MakeValue({{1.5, 10}, {200, 0.25}});
    const std::string text = "  1.5,10   \n    200  , 0.25";
    EXPECT_EQ(FormatTable(value, Options(2), "    ", text.size()), text);
    // From the last character down to the texts of the numbers alone, and below.
    for (std::size_t most = 0; most < text.size(); ++most) {
        SCOPED_TRACE(most);
        EXPECT_EQ(FormatTable(value, Options(2), "    ", most), std::nullopt);
    }
}

TEST(FormatTable, FollowsSignAndPrecision) {
    EXPECT_EQ(FormatTable(MakeValue({{0, -1.5}, {2, 3}}), Options(6, true), ""),
              "+0,-1.5\n+2,+3  ");
    // Without decimals zeros go, and a cell can be empty.
    EXPECT_EQ(FormatTable(MakeValue({{100, 0.4}, {-0.4, 12}}), Options(0), ""), "1,  \n-,12");
}

TEST(FormatTable, ShowsWhatIsNotFinite) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(FormatTable(MakeValue({{infinity, 1.5}, {-infinity, notANumber}}), Options(2), ""),
              " inf,  1.5\n-inf,nan  ");
}

// One string through a printf pattern with a width, the way the layout is defined.
std::string Padded(const std::string& text, std::size_t width, bool left) {
    std::vector<char> buffer(std::max(width, text.size()) + 1);
    std::snprintf(buffer.data(), buffer.size(), left ? "%-*s" : "%*s", static_cast<int>(width),
                  text.c_str());
    return buffer.data();
}

// The same table, each column rendered on its own.
std::string PaddedTable(const Rows& rows, const CalcParameters& parameters,
                        const std::string& indent) {
    std::vector<std::vector<std::string>> cells(rows.size());
    std::size_t columnCount = 0;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (const double number : rows[row])
            cells[row].push_back(FormatNumber(number, parameters));
        columnCount = std::max(columnCount, rows[row].size());
    }
    for (std::size_t column = 0; column < columnCount; ++column) {
        std::size_t integer = 0;
        std::size_t fraction = 0;
        for (const auto& row : cells) {
            if (column >= row.size()) continue;
            const std::size_t point = std::min(row[column].find('.'), row[column].size());
            integer = std::max(integer, point);
            fraction = std::max(fraction, row[column].size() - point);
        }
        for (auto& row : cells) {
            if (column >= row.size()) continue;
            const std::size_t point = row[column].find('.');
            if (point != std::string::npos) {
                row[column] = Padded(row[column].substr(0, point), integer, false) +
                              Padded(row[column].substr(point), fraction, true);
            } else {
                row[column] = Padded(row[column], integer, false);
                if (fraction != 0) row[column] += Padded(" ", fraction, true);
            }
        }
    }
    std::string text;
    for (std::size_t row = 0; row < cells.size(); ++row) {
        if (row > 0) text += indent;
        for (std::size_t column = 0; column < cells[row].size(); ++column) {
            text += cells[row][column];
            if (column + 1 < cells[row].size()) text += ',';
        }
        if (row + 1 < cells.size()) text += '\n';
    }
    return columnCount == 0 ? "" : text;
}

TEST(FormatTable, AgreesWithPaddedPatternsOnRandomTables) {
    std::mt19937 random(12);
    for (int round = 0; round < 500; ++round) {
        Rows rows(random() % 6);
        const bool ragged = round % 3 == 0;
        const std::size_t columns = random() % 5;
        for (auto& row : rows) {
            row.resize(ragged ? random() % 5 : columns);
            for (double& cell : row) {
                cell = (static_cast<int>(random() % 20'001) - 10'000) /
                       static_cast<double>(1 << random() % 12);
            }
        }
        const CalcParameters parameters = Options(static_cast<int>(random() % 6), round % 2 == 0);
        const std::string indent(random() % 9, ' ');
        ASSERT_EQ(FormatTable(MakeValue(rows), parameters, indent),
                  PaddedTable(rows, parameters, indent));
    }
}

// --- the ruler

struct RulerRow {
    std::size_t nameWidth;
    std::size_t integer;
    std::size_t fraction;
    std::string_view text;
};

TEST(FormatPositionLine, CountsAwayFromThePoint) {
    const RulerRow rows[] = {
        {1, 12, 3, "    21 987654321.123\r\n    --1--------- ---\r\n"},
        {0, 1, 0, "1\r\n-\r\n"},
        {0, 3, 0, "321\r\n---\r\n"},
        {0, 1, 1, "1.1\r\n- -\r\n"},
        {2, 9, 0, "     987654321\r\n     ---------\r\n"},
        {2, 10, 0, "      987654321\r\n     1---------\r\n"},
        {0, 1, 12, "1.123456789 12\r\n- ---------1--\r\n"},
        {0, 0, 0, "\r\n\r\n"},
        {3, 0, 2, "      .12\r\n       --\r\n"},
    };
    for (const auto& [nameWidth, integer, fraction, text] : rows) {
        SCOPED_TRACE(testing::Message() << nameWidth << ", " << integer << '.' << fraction);
        EXPECT_EQ(FormatPositionLine(nameWidth, {integer, fraction}), text);
    }
}

// A ruler of the given width, made column by column; `column` counts from the point, from 1 on.
char DigitMark(int column) { return column % 10 == 0 ? ' ' : static_cast<char>('0' + column % 10); }
char TensMark(int column) {
    if (column == 100) return ' ';
    return column % 10 == 0 ? static_cast<char>('0' + column / 10) : '-';
}

TEST(FormatPositionLine, MarksEveryColumnUpToAHundred) {
    std::string left, leftTens, right, rightTens;
    for (int width = 1; width <= 130; ++width) {
        SCOPED_TRACE(width);
        // The rulers stop: the right tens row before the hundredth column, the others at it.
        if (width <= 100) {
            left.insert(0, 1, DigitMark(width));
            leftTens.insert(0, 1, TensMark(width));
            right += DigitMark(width);
        }
        if (width < 100) rightTens += TensMark(width);
        const auto size = static_cast<std::size_t>(width);
        EXPECT_EQ(FormatPositionLine(0, {size, 0}), left + "\r\n" + leftTens + "\r\n");
        EXPECT_EQ(FormatPositionLine(4, {1, size}),
                  "       1." + right + "\r\n       - " + rightTens + "\r\n");
        EXPECT_EQ(FormatPositionLine(0, {size, size}),
                  left + "." + right + "\r\n" + leftTens + " " + rightTens + "\r\n");
    }
}

TEST(NameIndent, IsAsWideAsANameWithItsEqualsSign) {
    EXPECT_EQ(NameIndent(0), "");
    EXPECT_EQ(NameIndent(1), "    ");
    EXPECT_EQ(NameIndent(7), std::string(10, ' '));
}

}  // namespace
}  // namespace orvane
