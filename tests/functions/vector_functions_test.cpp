#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/functions/value_checks.h"

namespace orvane {
namespace {

using test::ErrorRow;
using test::ExpectErrors;
using test::ExpectValues;
using test::PreparedCall;
using test::Rows;
using test::SheetValue;
using test::TableOf;

TEST(VectorBuilders, MakeColumnsAndRowsOfNumbers) {
    const SheetValue cases[] = {
        {"point(1,2,3)", {{1}, {2}, {3}}},
        {"vector_clm(1,2,3)", {{1}, {2}, {3}}},
        {"vector_column(1,2,3)", {{1}, {2}, {3}}},
        {"vector_row(1,2,3)", {{1, 2, 3}}},
        {"point(1,-2)", {{1}, {-2}}},
        {"vector_row(1+1,2*3)", {{2, 6}}},
    };
    ExpectValues(cases);
}

TEST(VectorBuilders, CopyANumber) {
    const SheetValue cases[] = {
        {"point(1)", {{1}}},
        {"vector_clm(2)", {{2}}},
        {"vector_column(3)", {{3}}},
        {"vector_row(4)", {{4}}},
    };
    ExpectValues(cases);
}

TEST(VectorBuilders, TurnOneVector) {
    const SheetValue cases[] = {
        {"point(vector_row(1,2))", {{1}, {2}}},
        {"vector_clm(vector_row(1,2))", {{1}, {2}}},
        {"vector_column(vector_row(1,2,3))", {{1}, {2}, {3}}},
        {"vector_row(point(1,2))", {{1, 2}}},
        {"vector_row(point(1,2,3))", {{1, 2, 3}}},
        {"point(point(1,2))", {{1}, {2}}},
        {"vector_row(vector_row(1,2))", {{1, 2}}},
        {"vector_row(point(vector_row(1,2,3)))", {{1, 2, 3}}},
    };
    ExpectValues(cases);
}

// A complex number is a row of two; a row it stays, with its mark.
TEST(VectorBuilders, TakeAComplexNumberAsARow) {
    const SheetValue cases[] = {
        {"point(complex(1,2))", {{1}, {2}}},
        {"vector_clm(complex(1,2))", {{1}, {2}}},
        {"vector_row(complex(1,2))", {{1, 2}}, true},
        {"vector_row(point(complex(1,2)))", {{1, 2}}},
    };
    ExpectValues(cases);
}

TEST(Brackets, GroupOneValueOfAnyVectorShape) {
    const SheetValue cases[] = {
        {"(5)", {{5}}},
        {"(2+3)*2", {{10}}},
        {"((1,2))", {{1}, {2}}},
        {"(vector_row(1,2))", {{1, 2}}},
        {"(complex(1,2))", {{1, 2}}, true},
        {"(complex(1,2))*2", {{2, 4}}, true},
    };
    ExpectValues(cases);
}

TEST(Brackets, MakeAColumnOfSeveralNumbers) {
    const SheetValue cases[] = {
        {"(1,2)", {{1}, {2}}},          {"(1,2,3)", {{1}, {2}, {3}}}, {"[1,2]", {{1}, {2}}},
        {"{1,-2,3}", {{1}, {-2}, {3}}}, {"(1,2)*2", {{2}, {4}}},
    };
    ExpectValues(cases);
}

TEST(VectorBuilders, RefuseAMatrix) {
    const ErrorRow cases[] = {
        {"point(matrix(point(1,2),point(3,4)))",
         "E004-02 sentence  1: function \"point\": parameters are incorrect."},
        {"vector_row(matrix(point(1,2),point(3,4)))",
         "E004-02 sentence  1: function \"vector_row\": parameters are incorrect."},
        {"vector_clm(matrix(point(1,2),point(3,4)))",
         "E004-02 sentence  1: function \"vector_clm\": parameters are incorrect."},
        {"1;vector_column(matrix(point(1,2),point(3,4)))",
         "E004-02 sentence  2: function \"vector_column\": parameters are incorrect."},
        // Plain grouping is no way around it.
        {"(matrix(point(1,2),point(3,4)))",
         "E004-02 sentence  1: function \"\": parameters are incorrect."},
    };
    ExpectErrors(cases);
}

TEST(VectorBuilders, RefuseSeveralParametersThatAreNoNumbers) {
    const ErrorRow cases[] = {
        {"point(point(1,2), 3)",
         "E011-01 sentence  1: function \"point\": parameter is incorrect."},
        {"vector_row(3, vector_row(1,2))",
         "E011-01 sentence  1: function \"vector_row\": parameter is incorrect."},
        {"vector_clm(complex(1,2),3)",
         "E011-01 sentence  1: function \"vector_clm\": parameter is incorrect."},
        {"vector_column(1,x)",
         "E011-01 sentence  1: function \"vector_column\": parameter is incorrect."},
        {"((1,2),3)", "E011-01 sentence  1: function \"\": parameter is incorrect."},
    };
    ExpectErrors(cases);
}

TEST(VectorBuilders, RefuseAnEmptyParameter) {
    const ErrorRow cases[] = {
        {"point(x)", "E004-01 sentence  1: function \"point\": parameters are incorrect."},
        {"vector_row(x)",
         "E004-01 sentence  1: function \"vector_row\": parameters are incorrect."},
        {"(x)", "E004-01 sentence  1: function \"\": parameters are incorrect."},
    };
    ExpectErrors(cases);
    for (const std::string name : {"point", "vector_row", "vector_clm", "vector_column", ""}) {
        const std::string message =
            "E004-01 sentence  3: function \"" + name + "\": parameters are incorrect.";
        PreparedCall none(name);
        none.Run();
        EXPECT_EQ(none.error, message);
        EXPECT_EQ(none.Result(), Rows{});
        std::vector<Value> ragged;
        ragged.push_back(TableOf({{1, 2}, {3}}));
        PreparedCall uneven(name, std::move(ragged));
        uneven.Run();
        EXPECT_EQ(uneven.error, message);
    }
}

// A body runs once for each step of a sweep, on a node that was cleared in between.
TEST(VectorBuilders, GiveTheSameWhenTheyRunAgain) {
    std::vector<Value> parameters;
    parameters.push_back(TableOf({{1, 2, 3}}));
    PreparedCall call("point", std::move(parameters));
    for (int round = 0; round < 3; ++round) {
        call.node.result.Clear();
        call.node.staged.Clear();
        call.Run();
        EXPECT_EQ(call.error, "");
        EXPECT_EQ(call.Result(), (Rows{{1}, {2}, {3}}));
    }
}

}  // namespace
}  // namespace orvane
