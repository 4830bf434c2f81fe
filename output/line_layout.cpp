#include "output/line_layout.h"

#include <algorithm>
#include <vector>

#include "core/sentence.h"
#include "output/number_text.h"

namespace orvane {

namespace {

constexpr std::string_view leftDigits =
    " 987654321 987654321 987654321 987654321 987654321"
    " 987654321 987654321 987654321 987654321 987654321";
constexpr std::string_view leftTens =
    " ---------9---------8---------7---------6---------"
    "5---------4---------3---------2---------1---------";
constexpr std::string_view rightDigits =
    "123456789 123456789 123456789 123456789 123456789 "
    "123456789 123456789 123456789 123456789 123456789 ";
// Kept: one character shorter than the others, so the hundredth column has no mark.
constexpr std::string_view rightTens =
    "---------1---------2---------3---------4---------5"
    "---------6---------7---------8---------9---------";
static_assert(leftDigits.size() == 100 && leftTens.size() == 100);
static_assert(rightDigits.size() == 100 && rightTens.size() == 99);

std::string_view First(std::string_view ruler, std::size_t count) { return ruler.substr(0, count); }

std::string_view Last(std::string_view ruler, std::size_t count) {
    return ruler.substr(ruler.size() - std::min(count, ruler.size()));
}

// The characters ahead of the first point; all of them when there is none.
std::size_t PointPosition(std::string_view number) {
    return std::min(number.find('.'), number.size());
}

// Where the integer column ends inside a value. The blank and the '%' set a percent form apart
// from its number.
std::size_t SplitPosition(std::string_view value) {
    for (const char mark : {'.', ' ', '%'}) {
        const std::size_t at = value.find(mark);
        if (at != std::string_view::npos) return at;
    }
    return value.size();
}

void AppendBlanks(std::string& text, std::size_t width, std::size_t used) {
    if (used < width) text.append(width - used, ' ');
}

// The number texts of all cells in one string: a table may have a million of them.
class CellTexts {
public:
    void Add(std::string_view text) {
        characters += text;
        ends.push_back(characters.size());
    }
    std::string_view operator[](std::size_t cell) const {
        const std::size_t start = cell == 0 ? 0 : ends[cell - 1];
        return std::string_view(characters).substr(start, ends[cell] - start);
    }
    std::size_t Size() const { return characters.size(); }

private:
    std::string characters;
    std::vector<std::size_t> ends;
};

// The widest parts of one column of a table. Kept: unlike the columns of the number lines, the
// fraction counts its point, so a column of whole numbers has 0.
struct TableColumn {
    std::size_t integer = 0;
    std::size_t fraction = 0;

    void Widen(std::string_view cell) {
        const std::size_t point = PointPosition(cell);
        integer = std::max(integer, point);
        fraction = std::max(fraction, cell.size() - point);
    }

    void AppendCell(std::string& text, std::string_view cell) const {
        const std::size_t point = PointPosition(cell);
        AppendBlanks(text, integer, point);
        text += cell;
        AppendBlanks(text, fraction, cell.size() - point);
    }
};

}  // namespace

void DecimalColumns::Widen(const ReportLine& line) {
    if (!line.isNumber) return;
    const std::size_t point = PointPosition(line.value);
    integer = std::max(integer, point);
    if (point < line.value.size()) fraction = std::max(fraction, line.value.size() - point - 1);
}

void AlignLine(ReportLine& line, const DecimalColumns& columns) {
    line.line.clear();
    AppendAligned(line.line, line, columns);
}

void AppendAligned(std::string& report, const ReportLine& line, const DecimalColumns& columns) {
    if (line.keyword == textHeader) {
        report += line.value;
        return;
    }
    report += line.name;
    if (!line.isNumber) {
        report += line.value;
        return;
    }
    const std::size_t start = report.size();
    AppendBlanks(report, columns.integer, SplitPosition(line.value));
    report += line.value;
    if (columns.fraction > 0) {
        const std::size_t width = columns.integer + columns.fraction + 1;
        AppendBlanks(report, width, report.size() - start);
    }
    report += " \t";
    report += line.note;
}

std::optional<std::string> FormatTable(const Value& value, const CalcParameters& parameters,
                                       std::string_view indent, std::size_t most) {
    CellTexts cells;
    std::vector<TableColumn> columns;
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        const ConstValueRow numbers = value.Row(row);
        if (numbers.size() > columns.size()) columns.resize(numbers.size());
        for (std::size_t column = 0; column < numbers.size(); ++column) {
            const std::string text = FormatNumber(numbers[column], parameters);
            columns[column].Widen(text);
            cells.Add(text);
            if (cells.Size() > most) return std::nullopt;
        }
    }
    std::string text;
    if (columns.empty()) return text;

    std::size_t cell = 0;
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        if (row > 0) text.append(1, '\n').append(indent);
        const std::size_t length = value.Row(row).size();
        for (std::size_t column = 0; column < length; ++column) {
            if (column > 0) text += ',';
            columns[column].AppendCell(text, cells[cell++]);
            if (text.size() > most) return std::nullopt;
        }
    }
    return text;
}

std::string NameIndent(std::size_t nameWidth) {
    constexpr std::size_t equalsWidth = 3;  // " = "
    return std::string(nameWidth > 0 ? nameWidth + equalsWidth : 0, ' ');
}

std::string FormatPositionLine(std::size_t nameWidth, const DecimalColumns& columns) {
    const std::string indent = NameIndent(nameWidth);
    std::string digits = indent;
    std::string tens = indent;
    // Kept: a ruler that is too short is not padded, and so leaves the point's column.
    digits += Last(leftDigits, columns.integer);
    tens += Last(leftTens, columns.integer);
    if (columns.fraction > 0) {
        digits.append(1, '.').append(First(rightDigits, columns.fraction));
        tens.append(1, ' ').append(First(rightTens, columns.fraction));
    }
    return digits + "\r\n" + tens + "\r\n";
}

}  // namespace orvane
