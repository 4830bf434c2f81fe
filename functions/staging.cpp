#include "functions/staging.h"

#include <algorithm>

#include "core/error_text.h"

namespace orvane {

namespace {

constexpr ErrorCode noScalar = {"E011-", "01"};
constexpr ErrorCode noPoint = {"E011-", "02"};
constexpr ErrorCode otherPoint = {"E011-", "03"};
constexpr ErrorCode tooManyCells = {"E011-", "04"};

// A value of one row or one column, as one more row of `staged`.
void AppendAsRow(Value& staged, const Value& source) {
    const std::span<const double> cells = source.AllCells();
    const ValueRow row = staged.AppendRow(static_cast<std::int32_t>(cells.size()));
    std::copy(cells.begin(), cells.end(), row.begin());
}

// Asked before a row is taken, so that a sheet that repeats a long point can't take all memory.
bool IsTooLarge(const FunctionNode& node, std::int64_t length) {
    return static_cast<std::int64_t>(node.children.size()) * length > largestTable;
}

bool Fail(ErrorCode code, const FunctionNode& node, int sentence, std::string_view message,
          std::string& errorText) {
    return FunctionErrorText(code, sentence, node.functionName, message, errorText);
}

}  // namespace

bool StageScalars(FunctionNode& node, int sentence, std::string& errorText) {
    node.staged.Clear();
    for (const FunctionNode& child : node.children) {
        if (!child.result.IsScalar()) {
            return Fail(noScalar, node, sentence, "parameter is incorrect", errorText);
        }
        node.staged.AppendScalar(child.result.At(0, 0));
    }
    return true;
}

bool StagePointRows(FunctionNode& node, int first, int sentence, std::string& errorText) {
    node.staged.Clear();
    Dimensions wanted;
    bool isFirst = true;
    for (const FunctionNode& child :
         node.children.subspan(std::min<std::size_t>(first, node.children.size()))) {
        const Dimensions size = child.result.GetDimensions();
        if (isFirst && size.columns != 1) {
            return Fail(noPoint, node, sentence, "point parameter is incorrect", errorText);
        }
        if (isFirst) wanted = size;
        if (IsTooLarge(node, size.rows)) {
            return Fail(tooManyCells, node, sentence, "parameters are too large", errorText);
        }
        if (size != wanted) {
            return Fail(otherPoint, node, sentence, "point parameter is incompatible", errorText);
        }
        AppendAsRow(node.staged, child.result);
        isFirst = false;
    }
    return true;
}

bool StagePoints(FunctionNode& node, int sentence, std::string& errorText) {
    node.staged.Clear();
    std::int32_t wanted = -1;
    for (const FunctionNode& child : node.children) {
        const Dimensions size = child.result.GetDimensions();
        if (size.rows != 1 && size.columns != 1) {
            return Fail(noPoint, node, sentence, "point parameter is incorrect", errorText);
        }
        const std::int32_t length = size.rows == 1 ? size.columns : size.rows;
        if (wanted < 0) wanted = length;
        if (IsTooLarge(node, wanted)) {
            return Fail(tooManyCells, node, sentence, "parameters are too large", errorText);
        }
        if (length != wanted) {
            return Fail(otherPoint, node, sentence, "point parameter is incompatible", errorText);
        }
        AppendAsRow(node.staged, child.result);
    }
    return true;
}

bool StageTable(FunctionNode& node, int first, int sentence, std::string& errorText) {
    const auto only = static_cast<std::size_t>(first);
    if (node.children.size() != only + 1) return StagePointRows(node, first, sentence, errorText);
    node.staged.CopyFrom(node.children[only].result);
    return true;
}

}  // namespace orvane
