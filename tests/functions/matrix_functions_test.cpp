#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/functions/value_checks.h"

namespace orvane {
namespace {

using test::ErrorRow;
using test::Evaluate;
using test::ExpectErrors;
using test::ExpectNumbers;
using test::ExpectValues;
using test::NumberRow;
using test::PreparedCall;
using test::Rows;
using test::SheetValue;
using test::TableOf;

constexpr double infinite = std::numeric_limits<double>::infinity();

// A call of matrix_minor on a table of 3 by 3.
PreparedCall MinorCall(double row, double column) {
    std::vector<Value> parameters;
    parameters.push_back(TableOf({{row}}));
    parameters.push_back(TableOf({{column}}));
    parameters.push_back(TableOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));
    return PreparedCall("matrix_minor", std::move(parameters));
}

TEST(Matrix, TakesPointsAsRowsOrOneTable) {
    const SheetValue cases[] = {
        {"matrix(point(1,2),point(3,4))", {{1, 2}, {3, 4}}},
        {"matrix((1,2,3),(4,5,6))", {{1, 2, 3}, {4, 5, 6}}},
        {"matrix((1,2),(3,4),(5,6))", {{1, 2}, {3, 4}, {5, 6}}},
        {"matrix(matrix(point(1,2),point(3,4)))", {{1, 2}, {3, 4}}},
    };
    ExpectValues(cases);
}

TEST(Matrix, HasAtLeastTwoRowsAndColumns) {
    const ErrorRow cases[] = {
        {"matrix(point(1,2))",
         "E005-02 sentence  1: function \"matrix\": matrix size must be >= 2x2."},
        {"matrix(vector_row(1,2))",
         "E005-02 sentence  1: function \"matrix\": matrix size must be >= 2x2."},
        {"matrix(5)", "E005-02 sentence  1: function \"matrix\": matrix size must be >= 2x2."},
        {"matrix(1,2)", "E005-02 sentence  1: function \"matrix\": matrix size must be >= 2x2."},
        {"matrix(complex(1,2))",
         "E005-02 sentence  1: function \"matrix\": matrix size must be >= 2x2."},
    };
    ExpectErrors(cases);
}

TEST(MatrixFunctions, StagePointsOfOneLength) {
    for (const std::string name :
         {"matrix", "matrix_t", "matrix_transpose", "matrix_inv", "matrix_inverse", "matrix_adj",
          "matrix_adjoint", "matrix_det", "matrix_determinant", "matrix_rank"}) {
        const std::string head = " sentence  1: function \"" + name + "\": ";
        const std::pair<std::string, std::string> cases[] = {
            {"(point(1,2),point(3))", "E011-03" + head + "point parameter is incompatible."},
            {"(point(1,2),vector_row(3,4))", "E011-03" + head + "point parameter is incompatible."},
            {"(vector_row(1,2),vector_row(3,4))",
             "E011-02" + head + "point parameter is incorrect."},
            {"(x,point(1,2))", "E011-02" + head + "point parameter is incorrect."},
            {"(x)", "E005-01" + head + "point parameters are incorrect."},
        };
        for (const auto& [parameters, message] : cases) {
            SCOPED_TRACE(name + parameters);
            const test::Evaluated evaluated = Evaluate(name + parameters);
            EXPECT_EQ(evaluated.error, message);
            EXPECT_EQ(evaluated.rows, Rows{});
        }
    }
}

TEST(MatrixFunctions, RefuseEmptyAndRaggedTables) {
    for (const std::string name :
         {"matrix", "matrix_t", "matrix_inv", "matrix_adj", "matrix_det", "matrix_rank"}) {
        const std::string message =
            "E005-01 sentence  3: function \"" + name + "\": point parameters are incorrect.";
        PreparedCall none(name);
        none.Run();
        EXPECT_EQ(none.error, message);
        const Rows tables[] = {{}, {{1, 2}, {3}}, {{1}, {2, 3}}};
        for (const Rows& rows : tables) {
            std::vector<Value> parameters;
            parameters.push_back(TableOf(rows));
            PreparedCall call(name, std::move(parameters));
            call.Run();
            EXPECT_EQ(call.error, message);
            EXPECT_EQ(call.Result(), Rows{});
        }
    }
}

TEST(MatrixFunctions, RefuseTablesThatAreNotSquare) {
    for (const std::string name :
         {"matrix_t", "matrix_transpose", "matrix_inv", "matrix_inverse", "matrix_adj",
          "matrix_adjoint", "matrix_det", "matrix_determinant"}) {
        const std::string message =
            "E005-03 sentence  1: function \"" + name + "\": parameter must be square matrix.";
        for (const std::string parameters :
             {"(matrix((1,2,3),(4,5,6)))", "((1,2,3),(4,5,6))", "(point(1,2))", "(vector_row(1,2))",
              "(complex(1,2))", "(1,2)"}) {
            SCOPED_TRACE(name + parameters);
            const test::Evaluated evaluated = Evaluate(name + parameters);
            EXPECT_EQ(evaluated.error, message);
            EXPECT_EQ(evaluated.rows, Rows{});
        }
    }
}

TEST(MatrixTranspose, SwapsRowsAndColumns) {
    const SheetValue cases[] = {
        {"matrix_t(matrix(point(1,2),point(3,4)))", {{1, 3}, {2, 4}}},
        {"matrix_transpose(matrix(point(1,2),point(3,4)))", {{1, 3}, {2, 4}}},
        {"matrix_t((1,2,3),(4,5,6),(7,8,9))", {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}}},
        {"matrix_t(5)", {{5}}},
        {"a = matrix((1,2),(3,4)); matrix_t(matrix_t(a))", {{1, 2}, {3, 4}}},
    };
    ExpectValues(cases);
}

TEST(MatrixDeterminant, HasConcreteValues) {
    const NumberRow cases[] = {
        {"matrix_det(matrix(point(1,2),point(3,4)))", -2},
        {"matrix_determinant(matrix(point(1,2),point(3,4)))", -2},
        {"matrix_det(point(1,2),point(3,4))", -2},
        {"matrix_det((2,0,0),(0,3,0),(0,0,4))", 24},
        {"matrix_det((1,2),(2,4))", 0},
        {"matrix_det(7)", 7},
    };
    ExpectNumbers(cases);
}

TEST(MatrixRank, CountsTheDiagonalAfterElimination) {
    const NumberRow cases[] = {
        {"matrix_rank(matrix(point(1,2),point(2,4)))", 1},
        {"matrix_rank(matrix(point(1,2),point(3,4)))", 2},
        {"matrix_rank((1,2,3),(4,5,6))", 2},
        {"matrix_rank((1,2),(3,4),(5,6))", 2},
        // The rows are independent; the first column spends the first row all the same.
        {"matrix_rank(matrix(point(0,1,0),point(0,0,1)))", 0},
        {"matrix_rank(vector_row(1,2,3))", 1},
        {"matrix_rank(point(0,2))", 1},
        {"matrix_rank(0)", 0},
        {"matrix_rank(5)", 1},
    };
    ExpectNumbers(cases);
}

TEST(MatrixAdjoint, IsTheTransposedTableOfCofactors) {
    const SheetValue cases[] = {
        {"matrix_adj(matrix(point(1,2),point(3,4)))", {{4, -2}, {-3, 1}}},
        {"matrix_adjoint(matrix(point(1,2),point(3,4)))", {{4, -2}, {-3, 1}}},
        {"matrix_adj((1,2),(2,4))", {{4, -2}, {-2, 1}}},
        {"matrix_adj((2,0,0),(0,3,0),(0,0,4))", {{12, 0, 0}, {0, 8, 0}, {0, 0, 6}}},
        {"matrix_adj(5)", {{1}}},
        {"matrix_adj(0)", {{1}}},
    };
    ExpectValues(cases);
}

TEST(MatrixInverse, IsTheAdjointOverTheDeterminant) {
    const SheetValue cases[] = {
        {"matrix_inv(matrix(point(1,2),point(3,4)))", {{-2, 1}, {1.5, -0.5}}},
        {"matrix_inverse(matrix(point(1,2),point(3,4)))", {{-2, 1}, {1.5, -0.5}}},
        {"matrix_inv((2,0),(0,4))", {{0.5, 0}, {0, 0.25}}},
        {"matrix_inv(4)", {{0.25}}},
        {"a = matrix((1,2),(3,4)); a*matrix_inv(a)", {{1, 0}, {0, 1}}},
    };
    ExpectValues(cases);
}

TEST(MatrixInverse, FailsForADeterminantOfExactlyZero) {
    const ErrorRow cases[] = {
        {"matrix_inv(matrix(point(1,2),point(2,4)))",
         "E005-03 sentence  1: function \"matrix_inv\": determinant of the matrix is 0."},
        {"matrix_inverse((0,0),(0,0))",
         "E005-03 sentence  1: function \"matrix_inverse\": determinant of the matrix is 0."},
        {"1;matrix_inv(0)",
         "E005-03 sentence  2: function \"matrix_inv\": determinant of the matrix is 0."},
    };
    ExpectErrors(cases);
}

// Singular but for rounding: 1 - 49 x (1 / 49) leaves 1.1e-16 on the diagonal.
TEST(MatrixInverse, IsHugeWhereRoundingHidesAZero) {
    const test::Evaluated evaluated = Evaluate("matrix_inv((49,49),(1,1))");
    EXPECT_EQ(evaluated.error, "");
    ASSERT_EQ(evaluated.rows.size(), 2u);
    EXPECT_GT(evaluated.rows[1][1], 1e14);
}

TEST(MatrixFunctions, MakeNoFiniteTest) {
    for (const char* name : {"matrix_det", "matrix_adj", "matrix_t", "matrix_inv"}) {
        std::vector<Value> parameters;
        parameters.push_back(TableOf({{infinite, 1}, {1, 2}}));
        PreparedCall call(name, std::move(parameters));
        call.Run();
        EXPECT_EQ(call.error, "");
        EXPECT_NE(call.Result(), Rows{});
    }
}

TEST(MatrixMinor, LeavesOutOneRowAndOneColumnCountedFromOne) {
    const SheetValue cases[] = {
        {"matrix_minor(1, 1, matrix(point(1,2),point(3,4)))", {{4}}},
        {"matrix_minor(2, 1, matrix(point(1,2),point(3,4)))", {{2}}},
        {"matrix_minor(1, 3, matrix((1,2,3),(4,5,6),(7,8,9)))", {{4, 5}, {7, 8}}},
        {"matrix_minor(2, 2, (1,2,3),(4,5,6),(7,8,9))", {{1, 3}, {7, 9}}},
        {"matrix_minor(2, 3, (1,2,3),(4,5,6))", {{1, 2}}},
        {"matrix_minor(3, 1, (1,2),(3,4),(5,6))", {{2}, {4}}},
    };
    ExpectValues(cases);
}

TEST(MatrixMinor, GivesOnesForASingleRowOrColumn) {
    const SheetValue cases[] = {
        {"matrix_minor(1,1,7)", {{1}}},
        {"matrix_minor(1,2,vector_row(7,8,9))", {{1, 1}}},
        {"matrix_minor(3,1,point(7,8,9))", {{1}, {1}}},
        {"matrix_minor(1,2,complex(3,4))", {{1}}},
        {"matrix_minor(2,1,7,8)", {{1}}},
    };
    ExpectValues(cases);
}

TEST(MatrixMinor, RefusesOtherParameters) {
    const ErrorRow cases[] = {
        {"matrix_minor(1)",
         "E005-04 sentence  1: function \"matrix_minor\": matrix parameters are incorrect."},
        {"matrix_minor(1,1)",
         "E005-04 sentence  1: function \"matrix_minor\": matrix parameters are incorrect."},
        {"matrix_minor(1,1,x)",
         "E005-04 sentence  1: function \"matrix_minor\": matrix parameters are incorrect."},
        // The table is judged ahead of the two numbers, and the first ahead of the second.
        {"matrix_minor(0,0,x)",
         "E005-04 sentence  1: function \"matrix_minor\": matrix parameters are incorrect."},
        {"matrix_minor(1,1,vector_row(1,2),vector_row(3,4))",
         "E011-02 sentence  1: function \"matrix_minor\": point parameter is incorrect."},
        {"matrix_minor(1,1,(1,2),(1,2,3))",
         "E011-03 sentence  1: function \"matrix_minor\": point parameter is incompatible."},
        {"matrix_minor(point(1,2),1,(1,2),(3,4))",
         "E005-05 sentence  1: function \"matrix_minor\": first parameter is incorrect."},
        {"matrix_minor(x,1,(1,2),(3,4))",
         "E005-05 sentence  1: function \"matrix_minor\": first parameter is incorrect."},
        {"matrix_minor(1,complex(1,2),(1,2),(3,4))",
         "E005-05 sentence  1: function \"matrix_minor\": second parameter is incorrect."},
        {"matrix_minor(0,x,(1,2),(3,4))",
         "E005-05 sentence  1: function \"matrix_minor\": "
         "first parameter is not a positive integer (>0)."},
        {"matrix_minor(0,1,matrix((1,2),(3,4)))",
         "E005-05 sentence  1: function \"matrix_minor\": "
         "first parameter is not a positive integer (>0)."},
        {"matrix_minor(-1,1,matrix((1,2),(3,4)))",
         "E005-05 sentence  1: function \"matrix_minor\": "
         "first parameter is not a positive integer (>0)."},
        {"matrix_minor(1.5,1,matrix((1,2),(3,4)))",
         "E005-05 sentence  1: function \"matrix_minor\": "
         "first parameter is not a positive integer (>0)."},
        {"matrix_minor(1,0,matrix((1,2),(3,4)))",
         "E005-05 sentence  1: function \"matrix_minor\": "
         "second parameter is not a positive integer (>0)."},
        {"matrix_minor(3,2.5,matrix((1,2),(3,4)))",
         "E005-05 sentence  1: function \"matrix_minor\": "
         "second parameter is not a positive integer (>0)."},
        {"matrix_minor(3,1,matrix((1,2),(3,4)))",
         "E005-06 sentence  1: function \"matrix_minor\": first parameter is too large."},
        {"matrix_minor(3,3,matrix((1,2),(3,4)))",
         "E005-06 sentence  1: function \"matrix_minor\": first parameter is too large."},
        {"matrix_minor(2,3,matrix((1,2),(3,4)))",
         "E005-06 sentence  1: function \"matrix_minor\": second parameter is too large."},
        {"matrix_minor(2147483648,1,matrix((1,2),(3,4)))",
         "E005-06 sentence  1: function \"matrix_minor\": first parameter is too large."},
        {"matrix_minor(1,2147483649,matrix((1,2),(3,4)))",
         "E005-05 sentence  1: function \"matrix_minor\": "
         "second parameter is not a positive integer (>0)."},
    };
    ExpectErrors(cases);
    PreparedCall none("matrix_minor");
    none.Run();
    EXPECT_EQ(none.error,
              "E005-04 sentence  3: function \"matrix_minor\": matrix parameters are incorrect.");
}

// Numbers beyond 32 bits wrap, one short of or one past the word; they name a row again.
TEST(MatrixMinor, WrapsHugeNumbers) {
    struct {
        double number;
        std::int32_t row;  // left out, from zero
    } const cases[] = {
        {4294967296.0, 0}, {4294967297.0, 1}, {4294967298.0, 2},
        {1e300, 1},        {infinite, 1},     {-4294967294.0, 0},
    };
    const Rows table = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
    for (const auto& [number, row] : cases) {
        SCOPED_TRACE(number);
        Rows expected = table;
        expected.erase(expected.begin() + row);
        for (auto& cells : expected) cells.erase(cells.begin());
        PreparedCall call = MinorCall(number, 1);
        call.Run();
        EXPECT_EQ(call.error, "");
        EXPECT_EQ(call.Result(), expected);

        expected = table;
        expected.erase(expected.begin());
        for (auto& cells : expected) cells.erase(cells.begin() + row);
        PreparedCall byColumn = MinorCall(1, number);
        byColumn.Run();
        EXPECT_EQ(byColumn.error, "");
        EXPECT_EQ(byColumn.Result(), expected);
    }
    for (const double number : {-infinite, std::numeric_limits<double>::quiet_NaN(), -1e300}) {
        PreparedCall call = MinorCall(number, 1);
        call.Run();
        EXPECT_EQ(call.error,
                  "E005-05 sentence  3: function \"matrix_minor\": "
                  "first parameter is not a positive integer (>0).");
    }
}

}  // namespace
}  // namespace orvane
