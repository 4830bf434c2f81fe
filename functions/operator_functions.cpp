#include <algorithm>
#include <cmath>
#include <cstdint>

#include "functions/function_bodies.h"
#include "functions/scalar_call.h"
#include "functions/staging.h"

// The operators of the sheet language on values of every shape, and the builder of complex
// numbers. Operands are read straight from the children's results. What "complex" and "number"
// mean here: the mark is set; one row of one element.

namespace orvane {

namespace {

constexpr std::string_view wrongCount = "parameter count is incorrect";
constexpr std::string_view incompatible = "parameters are incompatible";

bool IsNumber(const Value& value) { return value.IsScalar() && !value.complexMark; }

bool AllEvaluated(const FunctionNode& node) {
    return std::ranges::all_of(node.children,
                               [](const FunctionNode& child) { return child.evaluated; });
}

bool RequireOperands(const ValueCall& call, std::size_t count) {
    if (call.Node().children.size() == count) return true;
    return call.Fail({"E009-", "01"}, wrongCount);
}

// Two operands, both with a value: a variable that nobody has set has none.
bool RequireTwoValues(const ValueCall& call) {
    if (!RequireOperands(call, 2)) return false;
    return AllEvaluated(call.Node()) || call.Fail({"E009-", "02"}, "unknown error");
}

// Kept: with a number on either side, `minus` takes the real part from the number and leaves the
// imaginary part's sign alone, so complex(5,2) - 1 and 1 - complex(5,2) are both (-4, 2).
void CombineWithNumber(ValueCall& call, double number, const Value& complex, bool add) {
    const double real = add ? number + complex.At(0, 0) : number - complex.At(0, 0);
    call.Result().SetComplex(real, complex.At(0, 1));
}

void AddOrSubtract(ValueCall& call, bool add) {
    if (!RequireTwoValues(call)) return;
    const Value& left = call.Node().children[0].result;
    const Value& right = call.Node().children[1].result;
    if (IsNumber(left) && IsNumber(right)) {
        const double number = left.At(0, 0);
        call.Result().SetReal(add ? number + right.At(0, 0) : number - right.At(0, 0));
    } else if (left.GetDimensions() == right.GetDimensions()) {
        if (left.complexMark != right.complexMark) {
            call.Fail({"E009-", "20"}, incompatible);
            return;
        }
        // Kept: the mark stays even where the imaginary part has become 0. Empty and ragged
        // operands give an empty result and no error.
        call.Result().AddOrSubtract(left, right, add);
        call.Result().complexMark = left.complexMark;
    } else if (IsNumber(left) && right.complexMark) {
        CombineWithNumber(call, left.At(0, 0), right, add);
    } else if (IsNumber(right) && left.complexMark) {
        CombineWithNumber(call, right.At(0, 0), left, add);
    } else {
        const bool withNumber = IsNumber(left) || IsNumber(right);
        call.Fail({"E009-", withNumber ? "22" : "21"}, incompatible);
    }
}

struct ComplexNumber {
    double real;
    double imaginary;
};

// Of a marked value, or of a number.
ComplexNumber ComplexOf(const Value& value) {
    return {value.At(0, 0), value.complexMark ? value.At(0, 1) : 0.0};
}

// The product of a complex number and another value, which must be complex or a number.
void ComplexProduct(ValueCall& call, const Value& other, ComplexNumber c) {
    if (other.complexMark) {
        const ComplexNumber o = ComplexOf(other);
        call.Result().SetComplex(o.real * c.real - o.imaginary * c.imaginary,
                                 o.real * c.imaginary + o.imaginary * c.real);
    } else if (IsNumber(other)) {
        const double number = other.At(0, 0);
        call.Result().SetComplex(number * c.real, number * c.imaginary);
    } else {
        call.Fail({"E009-", "23"}, incompatible);
    }
}

// Only tables that fit, with more than one cell each, can outgrow both operands.
bool IsTooLarge(const Value& left, const Value& right) {
    const Dimensions a = left.GetDimensions();
    const Dimensions b = right.GetDimensions();
    if (a.IsNumber() || b.IsNumber() || a.columns != b.rows) return false;
    return std::int64_t{a.rows} * b.columns > largestTable;
}

void RealProduct(ValueCall& call, const Value& left, const Value& right) {
    if (IsTooLarge(left, right)) {
        call.Fail({"E009-", "24"}, "result is too large");
    } else if (!call.Result().MultiplyMatrices(left, right, call.family.parameters.stop)) {
        call.Fail({"E009-", "22"}, incompatible);
    }
}

// Kept: unlike inv(x), a division by zero fails also where the finite test is off, so a curve
// through 1/x ends at 0.
void DivideByReal(ValueCall& call, const Value& left, const Value& right) {
    const bool isComplex = left.complexMark;
    if (!IsNumber(right)) {
        call.Fail({"E009-", isComplex ? "33" : "30"}, incompatible);
    } else if (!call.Result().DivideBy(left, right.At(0, 0))) {
        call.FailNonFinite({"E009-", isComplex ? "43" : "41"});
    }
}

void DivideByComplex(ValueCall& call, const Value& left, ComplexNumber c) {
    const double squares = c.imaginary * c.imaginary + c.real * c.real;
    if (squares == 0.0) {
        call.FailNonFinite({"E009-", "42"});
        return;
    }
    // By way of the normal form, which drops the sign of an imaginary part that vanishes.
    Value reciprocal;
    reciprocal.SetComplex(c.real / squares, -(c.imaginary / squares));
    ComplexProduct(call, left, ComplexOf(reciprocal));
}

}  // namespace

void EvaluateOperator(const FamilyCall& call) {
    if (call.keyword->body.value != nullptr) {
        RunValueBody(call);
    } else {
        ValueCall{call}.Fail({"E009-", "03"}, incompatible);
    }
}

void EvaluateComplex(const FamilyCall& call) { RunValueBody(call); }

void Negate(ValueCall& call) {
    if (!RequireOperands(call, 1)) return;
    call.Staged().CopyFrom(call.Node().children[0].result);
    call.Result().CopyFrom(call.Staged(), true);
}

void Plus(ValueCall& call) { AddOrSubtract(call, true); }

void Minus(ValueCall& call) { AddOrSubtract(call, false); }

void Times(ValueCall& call) {
    if (!RequireTwoValues(call)) return;
    const Value& left = call.Node().children[0].result;
    const Value& right = call.Node().children[1].result;
    if (IsNumber(left) && IsNumber(right)) {
        call.Result().SetReal(right.At(0, 0) * left.At(0, 0));
    } else if (left.complexMark) {
        ComplexProduct(call, right, ComplexOf(left));
    } else if (right.complexMark) {
        ComplexProduct(call, left, ComplexOf(right));
    } else {
        RealProduct(call, left, right);
    }
}

void Divide(ValueCall& call) {
    if (!RequireTwoValues(call)) return;
    const Value& left = call.Node().children[0].result;
    const Value& right = call.Node().children[1].result;
    if (right.complexMark) {
        DivideByComplex(call, left, ComplexOf(right));
    } else {
        DivideByReal(call, left, right);
    }
}

// A number's absolute value, a complex number's modulus, the length of a row or a column. Kept: of
// a square table the bars mean the determinant with its sign, so an absolute value may be negative.
void Absolute(ValueCall& call) {
    const std::span<const FunctionNode> children = call.Node().children;
    if (!AllEvaluated(call.Node())) {
        call.Fail({"E009-", "10"}, "unknown error");
        return;
    }
    const bool sameShape = std::ranges::all_of(children, [&](const FunctionNode& child) {
        return child.result.GetDimensions() == children.front().result.GetDimensions();
    });
    if (!sameShape) {
        call.Fail({"E009-", "11"}, incompatible);
        return;
    }
    if (!StageTable(call.Node(), 0, call.family.sentence, call.family.errorText)) return;

    Value& staged = call.Staged();
    const Dimensions size = staged.GetDimensions();
    if (size.IsNumber()) {
        call.Result().SetReal(std::abs(staged.At(0, 0)));
    } else if (size.rows == 1 || size.columns == 1) {
        call.Result().SetReal(std::sqrt(staged.SumOfSquares()));
    } else if (size.rows == size.columns) {
        call.Result().SetReal(staged.Determinant(call.family.parameters.stop));
    } else {
        call.Fail({"E009-", "14"}, incompatible);
    }
}

void BuildComplex(ValueCall& call) {
    const std::span<const FunctionNode> children = call.Node().children;
    if (children.size() != 2) {
        call.Fail({"E012-", "01"}, wrongCount);
    } else if (!AllEvaluated(call.Node())) {
        call.Fail({"E012-", "02"}, "unknown error");
    } else if (!children[0].result.IsScalar() || !children[1].result.IsScalar()) {
        call.Fail({"E012-", "03"}, incompatible);
    } else {
        call.Result().SetComplex(children[0].result.At(0, 0), children[1].result.At(0, 0));
    }
}

}  // namespace orvane
