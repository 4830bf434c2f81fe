#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "tests/functions/value_checks.h"

namespace orvane {
namespace {

using test::AtRunTime;
using test::ErrorRow;
using test::ExpectErrors;
using test::ExpectNumbers;
using test::NumberFrom;
using test::NumberRow;
using test::PreparedCall;
using test::Rows;
using test::TableOf;

constexpr double largest = std::numeric_limits<double>::max();

std::vector<Value> Points(const Rows& points) {
    std::vector<Value> values;
    for (const auto& point : points) values.push_back(TableOf({point}));
    return values;
}

std::string NonFinite(const std::string& name, int sentence = 1) {
    return "E010-01 sentence  " + std::to_string(sentence) + ": function \"" + name +
           "\": generates an infinite or unaccepted number.";
}

TEST(Length, TakesOnePointOrNumbers) {
    const NumberRow rows[] = {
        {"length(3,4)", 5},          {"length(point(3,4))", 5},   {"length(vector_row(3,4))", 5},
        {"length((3,4))", 5},        {"length(-7)", 7},           {"length(2,3,6)", 7},
        {"length(point(2,3,6))", 7}, {"length(complex(3,4))", 5}, {"length(0,0)", 0},
    };
    ExpectNumbers(rows);
}

TEST(Length, RefusesOtherParameters) {
    const ErrorRow rows[] = {
        {"length(point(1,2), 3)",
         "E010-01 sentence  1: function \"length\": parameter signiture is incorrect."},
        {"length(point(1,2), point(3,4))",
         "E010-01 sentence  1: function \"length\": parameter signiture is incorrect."},
        {"length(matrix(point(1,2),point(3,4)))",
         "E010-01 sentence  1: function \"length\": parameter signiture is incorrect."},
        {"1;2;length(x)",
         "E010-01 sentence  3: function \"length\": parameter signiture is incorrect."},
    };
    ExpectErrors(rows);
    PreparedCall none("length");
    none.Run();
    EXPECT_EQ(none.error,
              "E010-01 sentence  3: function \"length\": point parameters are incorrect.");
}

TEST(PolygonEdges, AddUpTheSides) {
    const NumberRow rows[] = {
        {"polygon_edges(point(0,0),point(1,0),point(1,1))", 1.0 + 1.0 + std::sqrt(2.0)},
        {"polygon_edges_open(point(0,0),point(1,0),point(1,1))", 2},
        {"polygon_edges(point(0,0),point(3,0),point(3,4))", 12},
        {"polygon_edges_open(point(0,0),point(3,0),point(3,4))", 7},
        {"polygon_edges((0,0),(1,0),(1,1),(0,1))", 4},
        {"polygon_edges_open((0,0),(1,0),(1,1),(0,1))", 3},
        {"polygon_edges((0,0,0),(2,3,6),(0,0,0))", 14},
        // Two points have one distance, there and not back.
        {"polygon_edges(point(1,1),point(4,5))", 5},
        {"polygon_edges_open(point(1,1),point(4,5))", 5},
        {"polygon_edges(point(1,1),vector_row(4,5))", 5},
        {"polygon_edges(vector_row(0,0),point(0,2),vector_row(0,0))", 4},
    };
    ExpectNumbers(rows);
}

TEST(PolygonEdges, OfOnePointOrOfNumbersAreALength) {
    const NumberRow rows[] = {
        {"polygon_edges(point(3,4))", 5},
        {"polygon_edges_open(point(3,4))", 5},
        {"polygon_edges(vector_row(3,4))", 5},
        {"polygon_edges(3,4)", 5},
        {"polygon_edges_open(3,4)", 5},
        {"polygon_edges(2,3,6)", 7},
        {"polygon_edges(-5)", 5},
    };
    ExpectNumbers(rows);
}

TEST(PolygonEdges, RefuseOtherParameters) {
    const ErrorRow rows[] = {
        {"polygon_edges(point(1,2),3)",
         "E010-01 sentence  1: function \"polygon_edges\": parameter signiture is incorrect."},
        {"polygon_edges_open(point(1,2),point(1,2,3))",
         "E010-01 sentence  1: function \"polygon_edges_open\": parameter signiture is incorrect."},
        {"polygon_edges(matrix(point(1,2),point(3,4)))",
         "E010-01 sentence  1: function \"polygon_edges\": parameter signiture is incorrect."},
        {"polygon_edges(x)",
         "E010-01 sentence  1: function \"polygon_edges\": parameter signiture is incorrect."},
    };
    ExpectErrors(rows);
    for (const std::string name : {"polygon_edges", "polygon_edges_open"}) {
        PreparedCall none(name);
        none.Run();
        EXPECT_EQ(none.error, "E010-01 sentence  3: function \"" + name +
                                  "\": point parameters are incorrect.");
    }
}

TEST(DotProduct, TakesTwoVectorsOrThreePoints) {
    const NumberRow rows[] = {
        {"dot_product(point(1,2),point(3,4))", 11},
        {"dot_product(point(0,0),point(1,0),point(0,1))", 0},
        {"dot_product(point(1,1),point(2,3),point(4,7))", 15},
        {"dot_product((1,2,3),(4,5,6))", 32},
        {"dot_product(vector_row(1,2),point(3,4))", 11},
        {"dot_product(3,4)", 12},
        {"dot_product(1,3,5)", 8},
        {"dot_product(complex(1,2),point(3,4))", 11},
    };
    ExpectNumbers(rows);
}

TEST(AngleOfVectors, IsInRadians) {
    const NumberRow rows[] = {
        {"angle_of_vectors(point(1,0),point(0,1))", std::numbers::pi / 2},
        {"angle_of_vectors(point(1,0),point(-1,0))", std::numbers::pi},
        {"angle_of_vectors(point(2,0),point(5,0))", 0},
        {"angle_of_vectors(point(0,0),point(1,0),point(0,1))", std::numbers::pi / 2},
        {"angle_of_vectors(point(1,1),point(2,1),point(1,3))", std::numbers::pi / 2},
        {"angle_of_vectors(point(1,0,0),point(0,0,2))", std::numbers::pi / 2},
        {"angle_of_vectors(3,-4)", std::numbers::pi},
    };
    ExpectNumbers(rows);
    const double cosine = 11 / (std::sqrt(AtRunTime(5)) * std::sqrt(AtRunTime(25)));
    EXPECT_TRUE(
        test::SameBits(NumberFrom("angle_of_vectors(point(1,2),point(3,4))"), std::acos(cosine)));
}

TEST(AngleOfVectors, FailsWhereItHasNoValue) {
    const std::string message = NonFinite("angle_of_vectors");
    const ErrorRow rows[] = {
        {"angle_of_vectors(point(0,0),point(1,0))", message},
        {"angle_of_vectors(point(1,0),point(0,0))", message},
        {"angle_of_vectors(point(1,1),point(1,1),point(2,2))", message},
        // The product of the two rounded lengths is below 3.
        {"angle_of_vectors(point(1,1,1),point(1,1,1))", message},
    };
    ExpectErrors(rows);
}

TEST(TriangleArea, TakesTwoVectorsOrThreePoints) {
    const NumberRow rows[] = {
        {"triangle_area(point(0,0),point(1,0),point(0,1))", 0.5},
        {"triangle_area(point(1,1),point(5,1),point(1,4))", 6},
        {"triangle_area(point(4,0),point(0,3))", 6},
        {"triangle_area(point(1,2),point(2,4))", 0},
        {"triangle_area((0,0,0),(0,2,0),(0,0,2))", 2},
    };
    ExpectNumbers(rows);
}

// There is no factor 2: half of the distance that geometry knows.
TEST(DistanceToLine, IsTheAreaOverTheBase) {
    const NumberRow rows[] = {
        {"distance_to_line(point(0,1), point(0,0), point(1,0))", 0.5},
        {"distance_to_line(point(3,7), point(0,1), point(10,1))", 3},
        {"distance_to_line((5,0,4),(0,0,0),(2,0,0))", 2},
        // Of two vectors the line goes through their ends.
        {"distance_to_line(point(3,0),point(0,4))", 1.2},
    };
    ExpectNumbers(rows);
}

TEST(DistanceToLine, FailsWithoutALine) {
    const std::string message = NonFinite("distance_to_line");
    const ErrorRow rows[] = {
        {"distance_to_line(point(0,1),point(2,2),point(2,2))", message},
        {"distance_to_line(point(1,2),point(1,2))", message},
    };
    ExpectErrors(rows);
}

TEST(PointFunctions, TakeTwoOrThreePoints) {
    for (const std::string name :
         {"dot_product", "angle_of_vectors", "triangle_area", "distance_to_line"}) {
        const std::string head = "sentence  1: function \"" + name + "\": ";
        const std::string wrongCount = "E010-01 " + head + "point count is incorrect.";
        const std::string notAPoint = "E011-02 " + head + "point parameter is incorrect.";
        const std::string otherPoint = "E011-03 " + head + "point parameter is incompatible.";
        const std::pair<std::string, std::string> cases[] = {
            {"(point(1,2))", wrongCount},
            {"(1)", wrongCount},
            {"(point(1,2),point(3,4),point(5,6),point(7,8))", wrongCount},
            {"(1,2,3,4)", wrongCount},
            {"(matrix(point(1,2),point(3,4)))", notAPoint},
            {"(point(1,2),matrix(point(1,2),point(3,4)))", notAPoint},
            {"(x,point(1,2))", notAPoint},
            {"(point(1,2),3)", otherPoint},
            {"(point(1,2),point(1,2,3),point(1,2))", otherPoint},
        };
        for (const auto& [parameters, message] : cases) {
            SCOPED_TRACE(name + parameters);
            const test::Evaluated evaluated = test::Evaluate(name + parameters);
            EXPECT_EQ(evaluated.error, message);
            EXPECT_EQ(evaluated.rows, Rows{});
        }
        PreparedCall none(name);
        none.Run();
        EXPECT_EQ(none.error, "E010-01 sentence  3: function \"" + name +
                                  "\": point parameters are incorrect.");
    }
}

// What is not finite fails in a curve's body as well, and nothing is stored.
TEST(PointFunctions, TestTheirResultWhateverTheNodeKeeps) {
    struct {
        const char* name;
        Rows points;
    } const cases[] = {
        {"length", {{largest, largest}}},
        {"polygon_edges", {{largest, 0}, {-largest, 0}}},
        {"polygon_edges_open", {{largest, 0}, {-largest, 0}}},
        {"dot_product", {{largest, 0}, {largest, 0}}},
        {"angle_of_vectors", {{0, 0}, {1, 0}}},
        {"triangle_area", {{largest, 0}, {0, largest}}},
        {"distance_to_line", {{1, 1}, {1, 1}}},
    };
    for (const auto& [name, points] : cases) {
        for (const bool keepNonFinite : {false, true}) {
            PreparedCall call(name, Points(points));
            call.node.keepNonFinite = keepNonFinite;
            call.Run();
            EXPECT_EQ(call.error, NonFinite(name, 3));
            EXPECT_EQ(call.Result(), Rows{});
        }
    }
}

}  // namespace
}  // namespace orvane
