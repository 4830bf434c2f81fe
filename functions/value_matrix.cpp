#include <algorithm>
#include <cmath>

#include "core/run_stop.h"
#include "functions/value.h"

// Gaussian elimination with partial pivoting, and what follows from it: determinant, rank, minors,
// adjoint and inverse by cofactors. The only threshold is the exact value 0: a table that is
// singular but for rounding counts as regular. Every result depends on the order of the steps down
// to its last bit, so no step is skipped or merged. Callers see to it that a table is square where
// that matters; on any other shape nothing is read outside of it.

namespace orvane {

std::int32_t Value::SharedColumns() const {
    std::int32_t columns = rowCount == 0 ? 0 : RowLength(0);
    for (std::int32_t row = 1; row < rowCount; ++row) columns = std::min(columns, RowLength(row));
    return columns;
}

std::int32_t Value::DiagonalLength() const { return std::min(rowCount, SharedColumns()); }

// The first row, from row `column` on, with the largest absolute value in that column.
std::int32_t Value::FindPivotRow(std::int32_t column) const {
    std::int32_t best = column;
    for (std::int32_t row = column + 1; row < rowCount; ++row) {
        if (std::abs(At(row, column)) > std::abs(At(best, column))) best = row;
    }
    return best;
}

bool Value::EliminateRows(const RunStop* stop) {
    const std::int32_t columns = SharedColumns();
    const std::int32_t diagonal = DiagonalLength();
    bool oddSwaps = false;
    for (std::int32_t k = 0; k < diagonal && !IsStopAsked(stop); ++k) {
        double* const pivotRow = Row(k).data();
        const std::int32_t best = FindPivotRow(k);
        if (best != k) {
            std::swap_ranges(pivotRow, pivotRow + columns, Row(best).data());
            oddSwaps = !oddSwaps;
        }
        const double pivot = pivotRow[k];
        // Kept: no pivot is looked for in a later column. Determinants do not notice; ranks do.
        if (pivot == 0.0) continue;
        for (std::int32_t i = k + 1; i < rowCount; ++i) {
            double* const row = Row(i).data();
            const double factor = row[k] / pivot;
            for (std::int32_t j = k; j < columns; ++j) row[j] = row[j] - pivotRow[j] * factor;
        }
    }
    return oddSwaps;
}

double Value::Determinant(const RunStop* stop) {
    const bool oddSwaps = EliminateRows(stop);
    const std::int32_t diagonal = DiagonalLength();
    double product = 1.0;
    for (std::int32_t k = 0; k < diagonal; ++k) product *= At(k, k);
    return oddSwaps ? -product : product;
}

// Kept: this can fall short of the true rank, since a column without a pivot spends its row, and
// can exceed it, since rounding noise on the diagonal is not 0. Sheets rely on it.
std::int32_t Value::RankOf(const RunStop* stop) {
    EliminateRows(stop);
    const std::int32_t diagonal = DiagonalLength();
    std::int32_t rank = 0;
    for (std::int32_t k = 0; k < diagonal; ++k) {
        if (At(k, k) != 0.0) ++rank;
    }
    return rank;
}

void Value::TransposeSquare() {
    const std::int32_t diagonal = DiagonalLength();
    for (std::int32_t i = 0; i < diagonal; ++i) {
        for (std::int32_t j = 0; j < i; ++j) std::swap(Row(i)[j], Row(j)[i]);
    }
}

void Value::MinorOf(std::int32_t row, std::int32_t column, const Value& source) {
    Clear();
    const Dimensions size = source.GetDimensions();
    if (size.rows == 1 || size.columns == 1) {
        // Kept: ones, whatever the source holds and whichever row and column are asked for.
        const std::int32_t rows = std::max(size.rows - 1, 1);
        const std::int32_t columns = std::max(size.columns - 1, 1);
        std::ranges::fill(AppendRows(rows, columns), 1.0);
        return;
    }
    for (std::int32_t i = 0; i < size.rows; ++i) {
        if (i == row) continue;
        const ConstValueRow from = source.Row(i);
        const auto left = std::min(static_cast<std::size_t>(column), from.size());
        const auto right = std::min(left + 1, from.size());
        const ValueRow to =
            AppendRow(source.RowLength(i) - static_cast<std::int32_t>(right - left));
        std::copy(from.begin() + right, from.end(), std::copy_n(from.begin(), left, to.begin()));
    }
}

void Value::AdjointOf(const Value& source, const RunStop* stop) {
    const std::int32_t size = source.RowCount();
    Clear();
    AppendRows(size, size);
    Value minor;  // of a single element it is 1.0, and so is the adjoint
    for (std::int32_t i = 0; i < size; ++i) {
        for (std::int32_t j = 0; j < size && !IsStopAsked(stop); ++j) {
            minor.MinorOf(i, j, source);
            const double determinant = minor.Determinant(stop);
            Row(j)[i] = (i + j) % 2 == 0 ? determinant : -determinant;
        }
    }
}

bool Value::InverseOf(const Value& source, const RunStop* stop) {
    Value eliminated;
    eliminated.CopyFrom(source);
    const double determinant = eliminated.Determinant(stop);
    if (determinant == 0.0) return false;
    AdjointOf(source, stop);
    for (double& cell : AllCells()) cell /= determinant;
    return true;
}

}  // namespace orvane
