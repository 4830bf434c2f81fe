#include <optional>

#include "functions/function_bodies.h"
#include "functions/scalar_call.h"
#include "functions/staging.h"
#include "functions/whole_number.h"

// Matrices from points or from one table, and the functions on them. No result is tested for
// infinity here.

namespace orvane {

namespace {

const RunStop* StopOf(const ValueCall& call) { return call.family.parameters.stop; }

bool StageFrom(const ValueCall& call, int first) {
    return StageTable(call.Node(), first, call.family.sentence, call.family.errorText);
}

// A table with equal rows, in `staged`.
bool StageMatrix(const ValueCall& call) {
    if (!StageFrom(call, 0)) return false;
    return call.Staged().GetDimensions().IsTable() ||
           call.Fail({"E005-", "01"}, "point parameters are incorrect");
}

bool StageSquare(const ValueCall& call) {
    if (!StageMatrix(call)) return false;
    const Dimensions size = call.Staged().GetDimensions();
    return size.rows == size.columns ||
           call.Fail({"E005-", "03"}, "parameter must be square matrix");
}

// What is wrong with a row or column number, in the words for that parameter.
struct IndexMessages {
    std::string_view noNumber;
    std::string_view notPositive;
    std::string_view tooLarge;
};
constexpr IndexMessages indexMessages[] = {
    {"first parameter is incorrect", "first parameter is not a positive integer (>0)",
     "first parameter is too large"},
    {"second parameter is incorrect", "second parameter is not a positive integer (>0)",
     "second parameter is too large"},
};

// A row or column number as people count, taken to one that counts from zero. Kept: the number
// wraps at 32 bits, so one far above the table's size may name a row or column again.
std::optional<std::int32_t> ReadIndex(const ValueCall& call, std::size_t parameter) {
    constexpr ErrorCode code = {"E005-", "05"};
    const Value& value = call.Node().children[parameter].result;
    const IndexMessages& messages = indexMessages[parameter];
    if (!value.IsScalar()) {
        call.Fail(code, messages.noNumber);
        return std::nullopt;
    }
    const double number = value.At(0, 0);
    const std::int32_t index = RoundToInt(number - 1.0);
    if (IsIntegerValue(number) && index >= 0) return index;
    call.Fail(code, messages.notPositive);
    return std::nullopt;
}

bool RequireInside(const ValueCall& call, std::size_t parameter, std::int32_t index,
                   std::int32_t count) {
    return index < count || call.Fail({"E005-", "06"}, indexMessages[parameter].tooLarge);
}

}  // namespace

void EvaluateMatrix(const FamilyCall& call) { RunValueBody(call); }

void BuildMatrix(ValueCall& call) {
    if (!StageMatrix(call)) return;
    const Dimensions size = call.Staged().GetDimensions();
    if (size.rows >= 2 && size.columns >= 2) {
        call.Result().CopyFrom(call.Staged());
    } else {
        call.Fail({"E005-", "02"}, "matrix size must be >= 2x2");
    }
}

void MatrixAdjoint(ValueCall& call) {
    if (StageSquare(call)) call.Result().AdjointOf(call.Staged(), StopOf(call));
}

void MatrixInverse(ValueCall& call) {
    if (!StageSquare(call) || call.Result().InverseOf(call.Staged(), StopOf(call))) return;
    call.Fail({"E005-", "03"}, "determinant of the matrix is 0");
}

void MatrixRank(ValueCall& call) {
    if (StageMatrix(call)) call.Result().AppendScalar(call.Staged().RankOf(StopOf(call)));
}

void MatrixDeterminant(ValueCall& call) {
    if (StageSquare(call)) call.Result().AppendScalar(call.Staged().Determinant(StopOf(call)));
}

// Kept: only square tables, on purpose.
void MatrixTranspose(ValueCall& call) {
    if (!StageSquare(call)) return;
    call.Result().CopyFrom(call.Staged());
    call.Result().TransposeSquare();
}

// matrix_minor(row, column, table) or matrix_minor(row, column, point, point, ...)
void MatrixMinor(ValueCall& call) {
    if (!StageFrom(call, 2)) return;
    const Dimensions size = call.Staged().GetDimensions();
    if (!size.IsTable()) {
        call.Fail({"E005-", "04"}, "matrix parameters are incorrect");
        return;
    }
    const std::optional<std::int32_t> row = ReadIndex(call, 0);
    if (!row) return;
    const std::optional<std::int32_t> column = ReadIndex(call, 1);
    if (!column) return;
    if (RequireInside(call, 0, *row, size.rows) && RequireInside(call, 1, *column, size.columns)) {
        call.Result().MinorOf(*row, *column, call.Staged());
    }
}

}  // namespace orvane
