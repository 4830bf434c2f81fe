#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

// The one value type of evaluation. Numbers, points, vectors, matrices and complex numbers are
// shapes of the same table of doubles; truth is 1.0 and 0.0; integers are doubles without a
// fraction. There is no other kind of value.

namespace orvane {

class RunStop;

// A plain growable list of doubles. It has room for 1000 from the start and grows by 1000.
class DoubleList {
public:
    static constexpr std::size_t growth = 1000;

    DoubleList() { elements.reserve(growth); }
    void Append(double element);
    void Clear() { elements.clear(); }
    std::size_t Count() const { return elements.size(); }
    std::size_t Capacity() const { return elements.capacity(); }
    double operator[](std::size_t index) const { return elements[index]; }
    double& operator[](std::size_t index) { return elements[index]; }
    std::span<double> Elements() { return elements; }
    std::span<const double> Elements() const { return elements; }

private:
    std::vector<double> elements;
};

// Rows, and the length that all rows have: 0 when there are no rows, -1 when they differ.
struct Dimensions {
    std::int32_t rows = 0;
    std::int32_t columns = 0;

    bool operator==(const Dimensions&) const = default;
    bool IsNumber() const { return rows == 1 && columns == 1; }
    // At least one row and one column, and not ragged.
    bool IsTable() const { return rows >= 1 && columns >= 1; }
};

// A row of a value, looked at or written in place. It is stale when the value gets another row.
using ValueRow = std::span<double>;
using ConstValueRow = std::span<const double>;

// The most cells, 128 MB of them, that one table or the parameters of one call may take. A short
// sheet can ask for tables of any size, as by a column times a row; it gets a message instead.
inline constexpr std::int64_t largestTable = std::int64_t{1} << 24;

// The room that the tables of all values hold together, in bytes. A short sheet can make very many
// tables; evaluation refuses what goes beyond `mostTableRoom`.
inline std::atomic<std::int64_t> tableRoom = 0;
inline constexpr std::int64_t mostTableRoom = std::int64_t{1} << 30;

// Takes room as any vector does, and counts it.
template <typename Element>
struct CountedRoom {
    using value_type = Element;

    CountedRoom() = default;
    template <typename Other>
    CountedRoom(const CountedRoom<Other>&) {}

    Element* allocate(std::size_t count) {
        Element* const room = std::allocator<Element>().allocate(count);
        tableRoom.fetch_add(Bytes(count), std::memory_order_relaxed);
        return room;
    }
    void deallocate(Element* room, std::size_t count) {
        tableRoom.fetch_sub(Bytes(count), std::memory_order_relaxed);
        std::allocator<Element>().deallocate(room, count);
    }
    bool operator==(const CountedRoom&) const { return true; }

private:
    static std::int64_t Bytes(std::size_t count) {
        return static_cast<std::int64_t>(count * sizeof(Element));
    }
};

// A table of rows, which need not be of equal length. One row of one or two cells lives inside the
// value itself: numbers and complex numbers, which is nearly everything a sheet holds, take no
// memory of their own. A cleared value keeps its room, so a body that runs a million times
// allocates nothing. All indices count from zero; none is checked.
class Value {
public:
    Value() = default;
    // What was moved away is empty.
    Value(Value&& other) noexcept { *this = std::move(other); }
    Value& operator=(Value&& other) noexcept;
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    // --- shape and access
    std::int32_t RowCount() const { return rowCount; }
    std::int32_t RowLength(std::int32_t row) const { return RowEnd(row) - RowStart(row); }
    Dimensions GetDimensions() const;
    // Exactly one row of exactly one element.
    bool IsScalar() const { return rowCount == 1 && RowEnd(0) == 1; }
    double At(std::int32_t row, std::int32_t column) const {
        return Cells()[RowStart(row) + column];
    }
    ValueRow Row(std::int32_t row) { return {Cells() + RowStart(row), RowSize(row)}; }
    ConstValueRow Row(std::int32_t row) const { return {Cells() + RowStart(row), RowSize(row)}; }
    // Every element, row behind row.
    std::span<double> AllCells() { return {Cells(), CellCount()}; }
    std::span<const double> AllCells() const { return {Cells(), CellCount()}; }
    // Appends element `column` of every row to the list.
    void ExtractColumn(std::int32_t column, DoubleList& list) const;

    // --- filling; what appends does not clear
    void Clear() {
        rowCount = 0;
        inTable = false;
        complexMark = false;
    }
    // Gives up the table and its room. A number or a complex number stays as it is.
    void ReleaseTable() {
        if (!table) return;
        if (inTable) Clear();
        table.reset();
    }
    bool HasTable() const { return inTable; }
    void SetReal(double number);
    // A number when the imaginary part is exactly 0, else one row of two with the mark set. This
    // is the only normal form: no other operation turns a complex number into a plain one.
    void SetComplex(double real, double imaginary);
    // Clears, then copies rows and mark; every element is negated when `negate` is set.
    void CopyFrom(const Value& source, bool negate = false);
    // One more row of one element; repeated calls build a column.
    void AppendScalar(double number);
    // One more row of that many zeros.
    ValueRow AppendRow(std::int32_t length);

    // --- arithmetic (value_arithmetic.cpp); where a `stop` is given, what may take long looks at
    // it and, when asked, returns with cells that mean nothing
    // Appends one row per row of `left`, holding left + right or left - right. Both must be tables
    // of the same dimensions; otherwise false, and nothing is touched. The mark is left alone.
    bool AddOrSubtract(const Value& left, const Value& right, bool add);
    // Clears, then fills with the matrix product. A number scales the other table. False when an
    // operand is no table (nothing is touched) or when left's columns are not right's rows.
    bool MultiplyMatrices(const Value& left, const Value& right, const RunStop* stop = nullptr);
    // Appends a copy of the rows with each element times the factor. The mark is not copied.
    void ScaleBy(const Value& source, double factor);
    // Clears, then copies rows and mark with each element divided. False when the divisor is 0.
    bool DivideBy(const Value& source, double divisor);
    // Of one row, or of the first elements of one column; 0 for any other shape.
    double SumOfSquares() const;

    // --- matrices (value_matrix.cpp); see there for shapes
    // Gaussian elimination with partial pivoting, in place. True when the count of row swaps is
    // odd. A column whose pivot is exactly 0 is skipped and its row is spent all the same.
    bool EliminateRows(const RunStop* stop = nullptr);
    // Destroys the table. 1.0 (or -1.0) when there are no rows.
    double Determinant(const RunStop* stop = nullptr);
    // Destroys the table. The count of diagonal elements that are not 0 after elimination.
    std::int32_t RankOf(const RunStop* stop = nullptr);
    // In place; square tables only.
    void TransposeSquare();
    // Fills this value with the source without that row and column. A source of one row or one
    // column gives ones.
    void MinorOf(std::int32_t row, std::int32_t column, const Value& source);
    // Fills this value with the transposed cofactors of a square source; 1.0 for one row.
    void AdjointOf(const Value& source, const RunStop* stop = nullptr);
    // Fills this value with the adjoint over the determinant. False when the determinant is 0, and
    // nothing is touched then.
    bool InverseOf(const Value& source, const RunStop* stop = nullptr);

    // The text of the node inspector, not the report's: elements joined by ",", each row closed by
    // a line feed, `precision` decimals; a negative precision shows the full form.
    std::string ToText(int precision) const;

private:
    struct Table {
        // Row behind row, and for each row the index behind its last cell.
        std::vector<double, CountedRoom<double>> cells;
        std::vector<std::int32_t, CountedRoom<std::int32_t>> rowEnds;
    };

    const double* Cells() const { return inTable ? table->cells.data() : inlineCells; }
    double* Cells() { return inTable ? table->cells.data() : inlineCells; }
    std::int32_t RowEnd(std::int32_t row) const {
        return inTable ? table->rowEnds[static_cast<std::size_t>(row)] : inlineLength;
    }
    std::int32_t RowStart(std::int32_t row) const { return row == 0 ? 0 : RowEnd(row - 1); }
    std::size_t RowSize(std::int32_t row) const { return static_cast<std::size_t>(RowLength(row)); }
    std::size_t CellCount() const {
        return rowCount == 0 ? 0 : static_cast<std::size_t>(RowEnd(rowCount - 1));
    }
    void CopyRows(const Value& source);
    void MoveIntoTable();
    // That many more rows of zeros, in one growth. Gives their cells, row behind row.
    std::span<double> AppendRows(std::int32_t rows, std::int32_t length);
    // The length of the shortest row, so of every row of a table; 0 without rows.
    std::int32_t SharedColumns() const;
    // How many elements lie on the diagonal, in each row's own cells.
    std::int32_t DiagonalLength() const;
    std::int32_t FindPivotRow(std::int32_t column) const;

    std::unique_ptr<Table> table;
    double inlineCells[2] = {0.0, 0.0};
    std::int32_t rowCount = 0;
    std::int8_t inlineLength = 0;  // cells of the one row inside the value
    bool inTable = false;          // the rows, if there are any, are in the table

public:
    // Set when the table is one complex number: one row of real and imaginary part.
    bool complexMark = false;
};

}  // namespace orvane
