#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "functions/function_bodies.h"
#include "tests/functions/value_checks.h"

namespace orvane {
namespace {

using test::ErrorRow;
using test::Evaluate;
using test::ExpectErrors;
using test::ExpectValues;
using test::NumberFrom;
using test::PreparedCall;
using test::Rows;
using test::RowsOf;
using test::SheetValue;
using test::TableOf;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();

// Two prepared operands in their order.
std::vector<Value> Operands(Value left, Value right) {
    std::vector<Value> operands;
    operands.push_back(std::move(left));
    operands.push_back(std::move(right));
    return operands;
}

Value Number(double number) { return TableOf({{number}}); }
Value Complex(double real, double imaginary) { return TableOf({{real, imaginary}}, true); }

// A sheet that names a column and a row of that many ones, and then works on them.
std::string OnesSheet(int columnLength, int rowLength, const std::string& formula) {
    std::string column = "1", row = "1";
    for (int at = 1; at < columnLength; ++at) column += ",1";
    for (int at = 1; at < rowLength; ++at) row += ",1";
    return "column = point(" + column + "); row = vector_row(" + row + "); " + formula;
}

TEST(Neg, NegatesEveryShape) {
    const SheetValue cases[] = {
        {"neg(5)", {{-5}}},
        {"negative(5)", {{-5}}},
        {"-5", {{-5}}},
        {"- -5", {{5}}},
        {"neg(point(1,-2,3))", {{-1}, {2}, {-3}}},
        {"negative(vector_row(1,-2,3))", {{-1, 2, -3}}},
        {"neg(matrix(point(1,2),point(3,4)))", {{-1, -2}, {-3, -4}}},
        {"-matrix(point(1,2),point(3,4))", {{-1, -2}, {-3, -4}}},
        {"neg(complex(1,-2))", {{-1, 2}}, true},
        {"neg(neg(complex(1,-2)))", {{1, -2}}, true},
    };
    ExpectValues(cases);
    EXPECT_TRUE(test::SameBits(NumberFrom("neg(0)"), -0.0));
}

// A variable that nobody has set gives an empty value here, and no error.
TEST(Neg, OfAVariableWithoutAValueIsEmpty) {
    const SheetValue cases[] = {{"neg(x)", {}}, {"-x", {}}};
    ExpectValues(cases);
}

TEST(Neg, TakesOneParameter) {
    const ErrorRow cases[] = {
        {"neg(1,2)", "E009-01 sentence  1: function \"neg\": parameter count is incorrect."},
        {"negative(1,2,3)",
         "E009-01 sentence  1: function \"negative\": parameter count is incorrect."},
    };
    ExpectErrors(cases);
    PreparedCall call("neg");
    call.Run();
    EXPECT_EQ(call.error, "E009-01 sentence  3: function \"neg\": parameter count is incorrect.");
}

TEST(Operators, TakeTwoParameters) {
    for (const std::string name : {"plus", "minus", "times", "divide"}) {
        const std::string message =
            "E009-01 sentence  1: function \"" + name + "\": parameter count is incorrect.";
        EXPECT_EQ(Evaluate(name + "(1)").error, message);
        EXPECT_EQ(Evaluate(name + "(1,2,3)").error, message);
        EXPECT_EQ(Evaluate(name + "(x)").error, message);
    }
}

TEST(Operators, FailOnAVariableWithoutAValue) {
    const ErrorRow cases[] = {
        {"x+1", "E009-02 sentence  1: function \"plus\": unknown error."},
        {"1+x", "E009-02 sentence  1: function \"plus\": unknown error."},
        {"minus(x,x)", "E009-02 sentence  1: function \"minus\": unknown error."},
        {"point(1,2)*x", "E009-02 sentence  1: function \"times\": unknown error."},
        {"x/0", "E009-02 sentence  1: function \"divide\": unknown error."},
        {"1;2;3;4;5;6;7;8;9;x/2", "E009-02 sentence 10: function \"divide\": unknown error."},
        {"|x|", "E009-10 sentence  1: function \"abs\": unknown error."},
        {"abs(1,x)", "E009-10 sentence  1: function \"abs\": unknown error."},
        {"absolute(point(1,2),x)", "E009-10 sentence  1: function \"absolute\": unknown error."},
        {"complex(x,1)", "E012-02 sentence  1: function \"complex\": unknown error."},
        {"complex(1,x)", "E012-02 sentence  1: function \"complex\": unknown error."},
    };
    ExpectErrors(cases);
}

TEST(Operators, RefuseANameWithoutABody) {
    constexpr KeywordEntry nameless = {"modulus", "any",   KeywordGroup::operators, 2, 2,
                                       "any,any", nullptr, HelpKind::operators};
    PreparedCall call("plus", Operands(Number(1), Number(2)));
    call.node.functionName = "modulus";
    call.RunAs(&nameless, KeywordGroup::operators);
    EXPECT_EQ(call.error,
              "E009-03 sentence  3: function \"modulus\": parameters are incompatible.");
    EXPECT_EQ(call.Result(), Rows{});
}

TEST(PlusAndMinus, WorkOnEqualShapes) {
    const SheetValue cases[] = {
        {"2+3", {{5}}},
        {"plus(2,3)", {{5}}},
        {"2-3", {{-1}}},
        {"minus(2,3)", {{-1}}},
        {"point(1,2)+point(3,5)", {{4}, {7}}},
        {"point(1,2)-point(3,5)", {{-2}, {-3}}},
        {"(1,2)+(3,5)", {{4}, {7}}},
        {"vector_row(1,2)+vector_row(3,5)", {{4, 7}}},
        {"matrix(point(1,2),point(3,4))+matrix(point(5,6),point(7,8))", {{6, 8}, {10, 12}}},
        {"matrix(point(1,2),point(3,4))-matrix(point(5,6),point(7,8))", {{-4, -4}, {-4, -4}}},
        {"complex(1,2)+complex(3,4)", {{4, 6}}, true},
        {"complex(1,2)-complex(3,5)", {{-2, -3}}, true},
    };
    ExpectValues(cases);
}

TEST(PlusAndMinus, KeepTheMarkWhereTheImaginaryPartVanishes) {
    const SheetValue cases[] = {
        {"complex(1,2)+complex(3,-2)", {{4, 0}}, true},
        {"complex(1,2)-complex(3,2)", {{-2, 0}}, true},
        {"complex(1,2)-complex(1,2)", {{0, 0}}, true},
    };
    ExpectValues(cases);
}

TEST(PlusAndMinus, TakeANumberAndAComplexNumber) {
    const SheetValue cases[] = {
        {"complex(5,2)+1", {{6, 2}}, true},
        {"1+complex(5,2)", {{6, 2}}, true},
        // The real part is taken from the number on either side, and the sign of the imaginary
        // part never turns.
        {"complex(5,2)-1", {{-4, 2}}, true},
        {"1-complex(5,2)", {{-4, 2}}, true},
        {"complex(5,-2)-7", {{2, -2}}, true},
        {"(complex(1,2)+complex(3,-2))+1", {{5}}},
        {"1-(complex(1,2)-complex(3,2))", {{3}}},
    };
    ExpectValues(cases);
}

TEST(PlusAndMinus, RefuseShapesThatDiffer) {
    const ErrorRow cases[] = {
        {"complex(1,2)+vector_row(1,2)",
         "E009-20 sentence  1: function \"plus\": parameters are incompatible."},
        {"vector_row(1,2)-complex(1,2)",
         "E009-20 sentence  1: function \"minus\": parameters are incompatible."},
        {"point(1,2)+point(1,2,3)",
         "E009-21 sentence  1: function \"plus\": parameters are incompatible."},
        {"point(1,2)-vector_row(1,2)",
         "E009-21 sentence  1: function \"minus\": parameters are incompatible."},
        {"complex(1,2)+point(1,2)",
         "E009-21 sentence  1: function \"plus\": parameters are incompatible."},
        {"matrix(point(1,2),point(3,4))+point(1,2)",
         "E009-21 sentence  1: function \"plus\": parameters are incompatible."},
        {"point(1,2)+1", "E009-22 sentence  1: function \"plus\": parameters are incompatible."},
        {"1-vector_row(1,2)",
         "E009-22 sentence  1: function \"minus\": parameters are incompatible."},
        {"complex(3,0)+point(1,2)",
         "E009-22 sentence  1: function \"plus\": parameters are incompatible."},
        {"2;matrix(point(1,2),point(3,4))-1",
         "E009-22 sentence  2: function \"minus\": parameters are incompatible."},
    };
    ExpectErrors(cases);
}

TEST(PlusAndMinus, GiveAnEmptyResultForEmptyAndRaggedOperands) {
    const Rows noTables[] = {{}, {{1, 2}, {3}}};
    for (const Rows& rows : noTables) {
        for (const char* name : {"plus", "minus"}) {
            PreparedCall call(name, Operands(TableOf(rows), TableOf(rows)));
            call.Run();
            EXPECT_EQ(call.error, "");
            EXPECT_EQ(call.Result(), Rows{});
        }
    }
    PreparedCall mixed("plus", Operands(Value(), Number(1)));
    mixed.Run();
    EXPECT_EQ(mixed.error, "E009-22 sentence  3: function \"plus\": parameters are incompatible.");
}

TEST(Operators, LetWhatOverflowsStand) {
    const double tiny = 5e-324;
    struct {
        const char* name;
        double left, right, result;
    } const cases[] = {
        {"plus", largest, largest, infinite},
        {"minus", -largest, largest, -infinite},
        {"times", largest, 2, infinite},
        {"divide", largest, tiny, infinite},
    };
    for (const auto& [name, left, right, result] : cases) {
        SCOPED_TRACE(name);
        PreparedCall call(name, Operands(Number(left), Number(right)));
        call.Run();
        EXPECT_EQ(call.error, "");
        EXPECT_EQ(call.Result(), (Rows{{result}}));
    }
}

TEST(Times, IsTheMatrixProductOfRealValues) {
    const SheetValue cases[] = {
        {"2*3", {{6}}},
        {"times(2,3)", {{6}}},
        {"point(1,2)*3", {{3}, {6}}},
        {"3*point(1,2)", {{3}, {6}}},
        {"vector_row(1,2)*point(3,4)", {{11}}},
        {"point(1,2)*vector_row(3,4)", {{3, 4}, {6, 8}}},
        {"matrix(point(1,2),point(3,4))*point(5,6)", {{17}, {39}}},
        {"matrix(point(1,2),point(3,4))*matrix(point(5,6),point(7,8))", {{19, 22}, {43, 50}}},
        {"matrix(point(1,2),point(3,4))*2", {{2, 4}, {6, 8}}},
    };
    ExpectValues(cases);
}

TEST(Times, MultipliesComplexNumbers) {
    const SheetValue cases[] = {
        {"complex(1,2)*complex(3,4)", {{-5, 10}}, true},
        {"complex(1,2)*3", {{3, 6}}, true},
        {"3*complex(1,2)", {{3, 6}}, true},
        {"complex(1,2)*complex(1,-2)", {{5}}},
        {"complex(0,1)*complex(0,1)", {{-1}}},
        {"complex(1,2)*0", {{0}}},
        {"(complex(1,2)+complex(3,-2))*complex(0,1)", {{0, 4}}, true},
    };
    ExpectValues(cases);
}

TEST(Times, RefusesWhatDoesNotFit) {
    const ErrorRow cases[] = {
        {"point(1,2)*point(3,4)",
         "E009-22 sentence  1: function \"times\": parameters are incompatible."},
        {"vector_row(1,2)*vector_row(3,4)",
         "E009-22 sentence  1: function \"times\": parameters are incompatible."},
        {"complex(1,2)*point(1,2)",
         "E009-23 sentence  1: function \"times\": parameters are incompatible."},
        {"vector_row(1,2)*complex(1,2)",
         "E009-23 sentence  1: function \"times\": parameters are incompatible."},
        {"1;2;matrix(point(1,2),point(3,4))*complex(1,2)",
         "E009-23 sentence  3: function \"times\": parameters are incompatible."},
    };
    ExpectErrors(cases);
    PreparedCall call("times", Operands(Value(), Number(2)));
    call.Run();
    EXPECT_EQ(call.error, "E009-22 sentence  3: function \"times\": parameters are incompatible.");
}

TEST(Times, RefusesAProductTooLargeToHold) {
    EXPECT_EQ(Evaluate(OnesSheet(300, 400, "column*row")).rows, Rows(300, std::vector(400, 1.0)));
    const test::Evaluated refused = Evaluate(OnesSheet(12000, 12000, "column*row"));
    EXPECT_EQ(refused.error, "E009-24 sentence  3: function \"times\": result is too large.");
    EXPECT_EQ(refused.rows, Rows{});
    // One cell more than fits, and a product of the same operands that is only long.
    EXPECT_EQ(Evaluate(OnesSheet(8193, 16384, "column*row")).error,
              "E009-24 sentence  3: function \"times\": result is too large.");
    EXPECT_EQ(NumberFrom(OnesSheet(12000, 12000, "row*column")), 12000);
    EXPECT_EQ(Evaluate(OnesSheet(12000, 5, "column*3")).rows, Rows(12000, std::vector{3.0}));
    // Tables that do not fit are no large product.
    EXPECT_EQ(Evaluate(OnesSheet(12000, 12000, "column*times(point(1,1),row)")).error,
              "E009-22 sentence  3: function \"times\": parameters are incompatible.");
}

TEST(Divide, DividesEveryShapeByANumber) {
    const SheetValue cases[] = {
        {"7/2", {{3.5}}},
        {"divide(7,2)", {{3.5}}},
        {"point(1,2)/2", {{0.5}, {1}}},
        {"vector_row(1,2)/4", {{0.25, 0.5}}},
        {"matrix(point(1,2),point(3,4))/2", {{0.5, 1}, {1.5, 2}}},
        {"complex(1,2)/2", {{0.5, 1}}, true},
        {"(complex(1,2)-complex(3,2))/2", {{-1, 0}}, true},
        {"0/5", {{0}}},
    };
    ExpectValues(cases);
    PreparedCall ragged("divide", Operands(TableOf({{2, 4}, {6}}), Number(2)));
    ragged.Run();
    EXPECT_EQ(ragged.error, "");
    EXPECT_EQ(ragged.Result(), (Rows{{1, 2}, {3}}));
    PreparedCall empty("divide", Operands(Value(), Number(2)));
    empty.Run();
    EXPECT_EQ(empty.error, "");
    EXPECT_EQ(empty.Result(), Rows{});
}

TEST(Divide, DividesByComplexNumbers) {
    const SheetValue cases[] = {
        {"complex(1,0)/complex(0,1)", {{0, -1}}, true},
        {"complex(-5,10)/complex(3,4)", {{1, 2}}, true},
        {"complex(3,4)/complex(3,4)", {{1}}},
        {"2/complex(0,4)", {{0, -0.5}}, true},
        {"complex(2,4)/complex(0,2)", {{2, -1}}, true},
    };
    for (const SheetValue& expected : cases) {
        SCOPED_TRACE(expected.sheet);
        const test::Evaluated evaluated = Evaluate(expected.sheet);
        EXPECT_EQ(evaluated.error, "");
        ASSERT_EQ(evaluated.rows.size(), 1u);
        ASSERT_EQ(evaluated.rows[0].size(), expected.rows[0].size());
        for (std::size_t at = 0; at < expected.rows[0].size(); ++at) {
            EXPECT_DOUBLE_EQ(evaluated.rows[0][at], expected.rows[0][at]);
        }
        EXPECT_EQ(evaluated.complex, expected.complex);
    }
}

// By the reciprocal, each part over the sum of squares, and then the product.
TEST(Divide, ByAComplexNumberKeepsTheOrderOfItsSteps) {
    const double re = 0.3, im = 0.7, x = 1.1, y = -2.3;
    const double d = im * im + re * re;
    const double real = re / d, imaginary = -(im / d);
    PreparedCall call("divide", Operands(Complex(x, y), Complex(re, im)));
    call.Run();
    EXPECT_TRUE(
        test::SameBits(call.Result(), Rows{{x * real - y * imaginary, x * imaginary + y * real}}));
    PreparedCall number("divide", Operands(Number(x), Complex(re, im)));
    number.Run();
    EXPECT_TRUE(test::SameBits(number.Result(), Rows{{x * real, x * imaginary}}));
}

// The reciprocal's imaginary part is lost below the smallest number; what is left is plain.
TEST(Divide, ByAComplexNumberWhoseReciprocalIsPlain) {
    PreparedCall call("divide", Operands(Complex(1, 2), Complex(1e100, 1e-300)));
    call.Run();
    EXPECT_EQ(call.error, "");
    EXPECT_EQ(call.Result(), (Rows{{1e100 / (1e100 * 1e100), 2 * (1e100 / (1e100 * 1e100))}}));
    PreparedCall huge("divide", Operands(Number(3), Complex(1e200, 1e200)));
    huge.Run();
    EXPECT_EQ(huge.error, "");
    EXPECT_EQ(huge.Result(), (Rows{{0}}));
    EXPECT_FALSE(huge.node.result.complexMark);
}

TEST(Divide, RefusesDivisorsOfOtherShapes) {
    const ErrorRow cases[] = {
        {"2/point(1,2)", "E009-30 sentence  1: function \"divide\": parameters are incompatible."},
        {"point(1,2)/point(1,2)",
         "E009-30 sentence  1: function \"divide\": parameters are incompatible."},
        {"matrix(point(1,2),point(3,4))/vector_row(1,2)",
         "E009-30 sentence  1: function \"divide\": parameters are incompatible."},
        {"complex(1,2)/point(1,2)",
         "E009-33 sentence  1: function \"divide\": parameters are incompatible."},
        {"complex(1,2)/vector_row(1,2)",
         "E009-33 sentence  1: function \"divide\": parameters are incompatible."},
        {"point(1,2)/complex(1,2)",
         "E009-23 sentence  1: function \"divide\": parameters are incompatible."},
    };
    ExpectErrors(cases);
}

TEST(Divide, ByZeroFails) {
    const ErrorRow cases[] = {
        {"1/0",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"0/0",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"1/-0",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"point(1,2)/0",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"1/(complex(1,2)-complex(1,2))",
         "E009-42 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"point(1,2)/(complex(1,2)-complex(1,2))",
         "E009-42 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"complex(1,2)/0",
         "E009-43 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
        {"locus_xy(x,-1,1,2,1/x)",
         "E009-41 sentence  1: function \"divide\": generates an infinite or unaccepted number."},
    };
    ExpectErrors(cases);
}

TEST(Divide, ByZeroFailsAlsoWhereTheFiniteTestIsOff) {
    struct {
        Value left, right;
        const char* code;
    } cases[] = {
        {Number(1), Number(0), "E009-41"},
        {Number(1), Number(-0.0), "E009-41"},
        {Number(1), Complex(1e-200, 1e-200), "E009-42"},
        {Complex(1, 2), Number(0), "E009-43"},
    };
    for (auto& [left, right, code] : cases) {
        PreparedCall call("divide", Operands(std::move(left), std::move(right)));
        call.node.keepNonFinite = true;
        call.Run();
        EXPECT_EQ(call.error, code + std::string(" sentence  3: function \"divide\": "
                                                 "generates an infinite or unaccepted number."));
        EXPECT_EQ(call.Result(), Rows{});
    }
}

TEST(Abs, GoesByTheShape) {
    const SheetValue cases[] = {
        {"abs(-3)", {{3}}},
        {"absolute(-3)", {{3}}},
        {"abs(3)", {{3}}},
        {"|1-2|", {{1}}},
        {"abs(point(3,4))", {{5}}},
        {"|(3,4)|", {{5}}},
        {"abs(vector_row(3,4))", {{5}}},
        {"abs(vector_row(2,3,6))", {{7}}},
        {"abs(point(2,3,6))", {{7}}},
        {"abs(complex(3,4))", {{5}}},
        {"abs(matrix(point(1,2),point(3,4)))", {{-2}}},
        {"|matrix(point(1,2),point(3,4))|", {{-2}}},
        {"abs(point(1,2),point(3,4))", {{-2}}},
        {"absolute(point(3,4),point(1,2))", {{2}}},
        // Numbers are points of one coordinate: the rows make a column.
        {"abs(3,4)", {{5}}},
        {"abs(-2,-3,-6)", {{7}}},
    };
    ExpectValues(cases);
}

TEST(Abs, RefusesOtherShapes) {
    const ErrorRow cases[] = {
        {"abs(point(1,2),3)",
         "E009-11 sentence  1: function \"abs\": parameters are incompatible."},
        {"absolute(point(1,2),vector_row(1,2))",
         "E009-11 sentence  1: function \"absolute\": parameters are incompatible."},
        {"abs(matrix(point(1,2,3),point(4,5,6)))",
         "E009-14 sentence  1: function \"abs\": parameters are incompatible."},
        {"abs(point(1,2,3),point(4,5,6))",
         "E009-14 sentence  1: function \"abs\": parameters are incompatible."},
        {"abs(vector_row(1,2),vector_row(3,4))",
         "E011-02 sentence  1: function \"abs\": point parameter is incorrect."},
        {"abs(complex(1,2),complex(3,4))",
         "E011-02 sentence  1: function \"abs\": point parameter is incorrect."},
    };
    ExpectErrors(cases);
    std::vector<Value> ragged;
    ragged.push_back(TableOf({{1, 2}, {3}}));
    PreparedCall call("abs", std::move(ragged));
    call.Run();
    EXPECT_EQ(call.error, "E009-14 sentence  3: function \"abs\": parameters are incompatible.");
}

TEST(Abs, MakesNoFiniteTest) {
    std::vector<Value> parameters;
    parameters.push_back(TableOf({{largest, largest}}));
    PreparedCall call("abs", std::move(parameters));
    call.Run();
    EXPECT_EQ(call.error, "");
    EXPECT_EQ(call.Result(), (Rows{{infinite}}));
}

// No rows are a square table as well, and its determinant is 1.
TEST(Abs, OfAnEmptyValueIsOne) {
    std::vector<Value> parameters(1);
    PreparedCall one("abs", std::move(parameters));
    one.Run();
    EXPECT_EQ(one.Result(), (Rows{{1}}));
    PreparedCall none("abs");
    none.Run();
    EXPECT_EQ(none.error, "");
    EXPECT_EQ(none.Result(), (Rows{{1}}));
}

TEST(Abs, LeavesItsParameterAlone) {
    const SheetValue cases[] = {
        {"a = matrix(point(1,2),point(3,4)); b = |a|; a", {{1, 2}, {3, 4}}},
    };
    ExpectValues(cases);
}

TEST(Complex, TakesARealAndAnImaginaryPart) {
    const SheetValue cases[] = {
        {"complex(1,2)", {{1, 2}}, true},
        {"complex(-1.5,-2.5)", {{-1.5, -2.5}}, true},
        {"complex(0,1)", {{0, 1}}, true},
        {"complex(3,0)", {{3}}},
        {"complex(3,-0)", {{3}}},
        {"complex(3,0)*point(1,2)", {{3}, {6}}},
        {"complex(complex(3,0),point(4))", {{3, 4}}, true},
    };
    ExpectValues(cases);
}

TEST(Complex, RefusesOtherParameters) {
    const ErrorRow cases[] = {
        {"complex(1)", "E012-01 sentence  1: function \"complex\": parameter count is incorrect."},
        {"complex(1,2,3)",
         "E012-01 sentence  1: function \"complex\": parameter count is incorrect."},
        {"complex(point(1,2),3)",
         "E012-03 sentence  1: function \"complex\": parameters are incompatible."},
        {"complex(3,complex(1,2))",
         "E012-03 sentence  1: function \"complex\": parameters are incompatible."},
    };
    ExpectErrors(cases);
}

TEST(Complex, IsNoNumberForOtherFamilies) {
    const ErrorRow cases[] = {
        {"sin(complex(1,2))", "E011-01 sentence  1: function \"sin\": parameter is incorrect."},
        {"sin(complex(1,2)+complex(3,-2))",
         "E011-01 sentence  1: function \"sin\": parameter is incorrect."},
    };
    ExpectErrors(cases);
}

}  // namespace
}  // namespace orvane
