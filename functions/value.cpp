#include "functions/value.h"

#include <algorithm>

#include "core/number_literal.h"

namespace orvane {

void DoubleList::Append(double element) {
    if (elements.size() == elements.capacity()) elements.reserve(elements.size() + growth);
    elements.push_back(element);
}

Value& Value::operator=(Value&& other) noexcept {
    if (this == &other) return *this;
    table = std::move(other.table);
    std::copy_n(other.inlineCells, 2, inlineCells);
    rowCount = other.rowCount;
    inlineLength = other.inlineLength;
    inTable = other.inTable;
    complexMark = other.complexMark;
    other.Clear();
    return *this;
}

Dimensions Value::GetDimensions() const {
    if (rowCount == 0) return {0, 0};
    const std::int32_t columns = RowLength(0);
    for (std::int32_t row = 1; row < rowCount; ++row) {
        if (RowLength(row) != columns) return {rowCount, -1};
    }
    return {rowCount, columns};
}

void Value::ExtractColumn(std::int32_t column, DoubleList& list) const {
    for (std::int32_t row = 0; row < rowCount; ++row) list.Append(At(row, column));
}

void Value::SetReal(double number) {
    inTable = false;
    inlineCells[0] = number;
    inlineLength = 1;
    rowCount = 1;
    complexMark = false;
}

void Value::SetComplex(double real, double imaginary) {
    SetReal(real);
    if (imaginary == 0.0) return;
    inlineCells[1] = imaginary;
    inlineLength = 2;
    complexMark = true;
}

void Value::CopyFrom(const Value& source, bool negate) {
    if (this != &source) CopyRows(source);
    if (negate) {
        for (double& cell : AllCells()) cell = -cell;
    }
}

void Value::CopyRows(const Value& source) {
    Clear();
    inTable = source.inTable && source.rowCount > 0;
    inlineLength = source.inlineLength;
    if (inTable) {
        if (!table) table = std::make_unique<Table>();
        const std::span<const double> cells = source.AllCells();
        table->cells.assign(cells.begin(), cells.end());
        table->rowEnds.assign(source.table->rowEnds.begin(),
                              source.table->rowEnds.begin() + source.rowCount);
    } else {
        std::copy_n(source.inlineCells, 2, inlineCells);
    }
    rowCount = source.rowCount;
    complexMark = source.complexMark;
}

void Value::AppendScalar(double number) {
    if (rowCount == 0) {
        const bool mark = complexMark;
        SetReal(number);
        complexMark = mark;
        return;
    }
    AppendRow(1)[0] = number;
}

ValueRow Value::AppendRow(std::int32_t length) {
    if (rowCount == 0 && length >= 1 && length <= 2) {
        inTable = false;
        inlineLength = static_cast<std::int8_t>(length);
        std::fill_n(inlineCells, 2, 0.0);
    } else {
        MoveIntoTable();
        table->cells.resize(CellCount() + static_cast<std::size_t>(length), 0.0);
        table->rowEnds.push_back(static_cast<std::int32_t>(table->cells.size()));
    }
    return Row(rowCount++);
}

std::span<double> Value::AppendRows(std::int32_t rows, std::int32_t length) {
    if (rows <= 0) return {};
    if (rows == 1) return AppendRow(length);
    MoveIntoTable();
    const std::size_t first = CellCount();
    const auto count = static_cast<std::size_t>(rows) * static_cast<std::size_t>(length);
    table->cells.resize(first + count, 0.0);
    for (std::int32_t row = 0; row < rows; ++row) {
        const std::int32_t start = table->rowEnds.empty() ? 0 : table->rowEnds.back();
        table->rowEnds.push_back(start + length);
    }
    rowCount += rows;
    return AllCells().subspan(first);
}

// Takes the inline row, if there is one, into the table; what an earlier content left there goes.
void Value::MoveIntoTable() {
    if (inTable) return;
    if (!table) table = std::make_unique<Table>();
    table->cells.clear();
    table->rowEnds.clear();
    if (rowCount > 0) {
        table->cells.assign(inlineCells, inlineCells + inlineLength);
        table->rowEnds.push_back(inlineLength);
    }
    inTable = true;
}

std::string Value::ToText(int precision) const {
    std::string text;
    for (std::int32_t row = 0; row < rowCount; ++row) {
        const char* separator = "";
        for (const double cell : Row(row)) {
            text += separator;
            text += precision < 0 ? FormatFull(cell) : FormatFixed(cell, precision, false);
            separator = ",";
        }
        text += '\n';
    }
    return text;
}

}  // namespace orvane
