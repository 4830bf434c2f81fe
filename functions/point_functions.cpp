#include <cmath>

#include "functions/function_bodies.h"
#include "functions/scalar_call.h"
#include "functions/staging.h"

// Geometry on points of any dimension. A point is a row or a column; in `staged` each point is one
// row. No function tests how many parameters its keyword row asks for.

namespace orvane {

namespace {

constexpr ErrorCode pointError = {"E010-", "01"};
constexpr std::string_view wrongPoints = "point parameters are incorrect";

// Kept: unlike in the number families a result that is not finite fails in a curve's body too.
void GiveFinite(ValueCall& call, double number) {
    if (std::isfinite(number)) {
        call.Result().AppendScalar(number);
    } else {
        call.FailNonFinite(pointError);
    }
}

// Replaces the staging helper's message where that one failed.
bool RequireStaged(const ValueCall& call, bool isStaged) {
    return isStaged || call.Fail(pointError, "parameter signiture is incorrect");
}

bool StageAllPoints(const ValueCall& call) {
    return StagePoints(call.Node(), call.family.sentence, call.family.errorText);
}

bool RequireTable(const ValueCall& call) {
    return call.Staged().GetDimensions().IsTable() || call.Fail(pointError, wrongPoints);
}

// Of a single row or column.
double Norm(const Value& vector) { return std::sqrt(vector.SumOfSquares()); }

double Distance(const Value& points, std::int32_t from, std::int32_t to) {
    const ConstValueRow p = points.Row(from);
    const ConstValueRow q = points.Row(to);
    double squares = 0.0;
    for (std::size_t at = 0; at < p.size(); ++at) {
        const double difference = p[at] - q[at];
        squares += difference * difference;
    }
    return std::sqrt(squares);
}

void MeasurePolygon(ValueCall& call, bool closed) {
    if (!RequireStaged(call, StageAllPoints(call)) || !RequireTable(call)) return;
    const Value& points = call.Staged();
    const Dimensions size = points.GetDimensions();
    // One point, or plain numbers, have a length and no edges.
    if (size.rows == 1 || size.columns == 1) {
        GiveFinite(call, Norm(points));
        return;
    }
    double length = 0.0;
    for (std::int32_t at = 0; at + 1 < size.rows; ++at) length += Distance(points, at, at + 1);
    if (closed && size.rows > 2) length += Distance(points, size.rows - 1, 0);
    GiveFinite(call, length);
}

// Kept: two or three points, whatever the keyword row says.
bool StageTwoVectors(const ValueCall& call) {
    if (!StageAllPoints(call) || !RequireTable(call)) return false;
    const std::int32_t count = call.Staged().RowCount();
    return count == 2 || count == 3 || call.Fail(pointError, "point count is incorrect");
}

// Of the vectors u and v: two points themselves, or the ways from the first of three points to the
// other two.
struct VectorProducts {
    double dot = 0.0;
    double squaresOfU = 0.0;
    double squaresOfV = 0.0;

    // Kept: two rounded norms. Of parallel vectors the dot product can come out larger, and their
    // angle is no number then.
    double OfNorms() const { return std::sqrt(squaresOfU) * std::sqrt(squaresOfV); }
    double OfSquaredNorms() const { return squaresOfU * squaresOfV; }
};

VectorProducts ProductsOf(const Value& points) {
    const bool fromVertex = points.RowCount() == 3;
    const ConstValueRow first = points.Row(0);
    VectorProducts products;
    for (std::int32_t at = 0; at < points.RowLength(0); ++at) {
        const double u = fromVertex ? points.At(1, at) - first[at] : first[at];
        const double v = fromVertex ? points.At(2, at) - first[at] : points.At(1, at);
        products.dot += u * v;
        products.squaresOfU += u * u;
        products.squaresOfV += v * v;
    }
    return products;
}

double AreaOf(const Value& points) {
    const VectorProducts products = ProductsOf(points);
    return std::sqrt(products.OfSquaredNorms() - products.dot * products.dot) * 0.5;
}

}  // namespace

void EvaluatePoint(const FamilyCall& call) { RunValueBody(call); }

// Of one point, or of several numbers.
void Length(ValueCall& call) {
    const bool onePoint = call.Node().children.size() == 1;
    const bool isStaged =
        onePoint ? StageAllPoints(call)
                 : StageScalars(call.Node(), call.family.sentence, call.family.errorText);
    if (!RequireStaged(call, isStaged)) return;
    const Dimensions size = call.Staged().GetDimensions();
    if (size.rows != 1 && size.columns != 1) {
        call.Fail(pointError, wrongPoints);
        return;
    }
    GiveFinite(call, Norm(call.Staged()));
}

void PolygonEdges(ValueCall& call) { MeasurePolygon(call, true); }

void PolygonEdgesOpen(ValueCall& call) { MeasurePolygon(call, false); }

void DotProduct(ValueCall& call) {
    if (StageTwoVectors(call)) GiveFinite(call, ProductsOf(call.Staged()).dot);
}

void AngleOfVectors(ValueCall& call) {
    if (!StageTwoVectors(call)) return;
    const VectorProducts products = ProductsOf(call.Staged());
    GiveFinite(call, std::acos(products.dot / products.OfNorms()));
}

void TriangleArea(ValueCall& call) {
    if (StageTwoVectors(call)) GiveFinite(call, AreaOf(call.Staged()));
}

// Kept: the area over the base with no factor 2, so half of the distance that geometry knows. The
// line goes through the last two points.
void DistanceToLine(ValueCall& call) {
    if (!StageTwoVectors(call)) return;
    const Value& points = call.Staged();
    const std::int32_t last = points.RowCount() - 1;
    GiveFinite(call, AreaOf(points) / Distance(points, last - 1, last));
}

}  // namespace orvane
