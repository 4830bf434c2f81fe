#include <algorithm>

#include "core/run_stop.h"
#include "functions/value.h"

// Sums, products and quotients of tables. None makes a test for infinity: what overflows stays in
// the table for whoever reads it.

namespace orvane {

bool Value::AddOrSubtract(const Value& left, const Value& right, bool add) {
    const Dimensions size = left.GetDimensions();
    if (!size.IsTable() || size != right.GetDimensions()) return false;
    const std::span<const double> a = left.AllCells();
    const std::span<const double> b = right.AllCells();
    const std::span<double> cells = AppendRows(size.rows, size.columns);
    for (std::size_t at = 0; at < cells.size(); ++at) {
        cells[at] = add ? a[at] + b[at] : a[at] - b[at];
    }
    return true;
}

bool Value::MultiplyMatrices(const Value& left, const Value& right, const RunStop* stop) {
    const Dimensions a = left.GetDimensions();
    const Dimensions b = right.GetDimensions();
    if (!a.IsTable() || !b.IsTable()) return false;
    Clear();
    if (a.IsNumber() || b.IsNumber()) {
        const bool byLeft = a.IsNumber();
        ScaleBy(byLeft ? right : left, (byLeft ? left : right).At(0, 0));
        return true;
    }
    if (a.columns != b.rows) return false;
    AppendRows(a.rows, b.columns);
    // Each cell adds its products for k upward from 0. Whole rows of `right` are taken at a time,
    // which runs along memory and leaves that order as it is.
    for (std::int32_t i = 0; i < a.rows && !IsStopAsked(stop); ++i) {
        const ValueRow sums = Row(i);
        for (std::int32_t k = 0; k < a.columns; ++k) {
            const double factor = left.At(i, k);
            const ConstValueRow terms = right.Row(k);
            for (std::size_t j = 0; j < sums.size(); ++j) sums[j] += factor * terms[j];
        }
    }
    return true;
}

void Value::ScaleBy(const Value& source, double factor) {
    for (std::int32_t row = 0; row < source.RowCount(); ++row) {
        const ConstValueRow from = source.Row(row);
        std::transform(from.begin(), from.end(), AppendRow(source.RowLength(row)).begin(),
                       [factor](double cell) { return cell * factor; });
    }
}

bool Value::DivideBy(const Value& source, double divisor) {
    if (divisor == 0.0) {
        Clear();
        return false;
    }
    CopyFrom(source);
    for (double& cell : AllCells()) cell /= divisor;
    return true;
}

double Value::SumOfSquares() const {
    const Dimensions size = GetDimensions();
    if (size.rows != 1 && size.columns != 1) return 0.0;
    double sum = 0.0;
    for (const double cell : AllCells()) sum += cell * cell;
    return sum;
}

}  // namespace orvane
