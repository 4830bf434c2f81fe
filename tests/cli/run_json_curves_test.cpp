#include <gtest/gtest.h>

#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

Json CurvesOf(std::string_view sheet, int status = 0) {
    return JsonOf({"calc", "--json"}, sheet, status)["curves"];
}

struct CurveRow {
    std::string sheet;
    std::string curves;
    int status = 0;
};
const CurveRow curveRows[] = {
    {"locus_xy(x, 0, 2, 4, x / 2)",
     R"([{"sentence": 1, "kind": "xy",
          "points": [[0.0, 0.0, true], [0.5, 0.25, false], [1.0, 0.5, false], [1.5, 0.75, false],
                     [2.0, 1.0, false]],
          "dropped": 0, "minX": 0.0, "maxX": 2.0, "minY": 0.0, "maxY": 1.0,
          "stoppedEarly": false, "lastParameter": 0.0}])"},
    // Behind a point over the limit the pen comes down anew.
    {"1; locus_xy(x, 0, 4, 4, if(equals(x, 2), 99, 1), 10)",
     R"([{"sentence": 2, "kind": "xy",
          "points": [[0.0, 1.0, true], [1.0, 1.0, false], [3.0, 1.0, true], [4.0, 1.0, false]],
          "dropped": 0, "minX": 0.0, "maxX": 4.0, "minY": 1.0, "maxY": 1.0,
          "stoppedEarly": false, "lastParameter": 0.0}])"},
    // At the angle 0 a radius is an abscissa; the last round is over the limit.
    {"text: a; locus_polar(t, 0, 1, 1, 5 * (t + 1), 7)",
     R"([{"sentence": 2, "kind": "polar", "points": [[5.0, 0.0, true]],
          "dropped": 0, "minX": 5.0, "maxX": 5.0, "minY": 0.0, "maxY": 0.0,
          "stoppedEarly": true, "lastParameter": 0.0}])"},
    // Without a point the ranges are upside down and the last parameter is a step ahead of all.
    {"locus_polar(t, 0, 1, 2, 5, 1)",
     R"([{"sentence": 1, "kind": "polar", "points": [],
          "dropped": 0, "minX": 1.7e308, "maxX": -1.7e308, "minY": 1.7e308, "maxY": -1.7e308,
          "stoppedEarly": true, "lastParameter": -0.5}])"},
    {"locus_parametric(t, 0, 2, 2, t * 3, -t)",
     R"([{"sentence": 1, "kind": "parametric",
          "points": [[0.0, -0.0, true], [3.0, -1.0, false], [6.0, -2.0, false]],
          "dropped": 0, "minX": 0.0, "maxX": 6.0, "minY": -2.0, "maxY": 0.0,
          "stoppedEarly": false, "lastParameter": 0.0}])"},
    // A sweep that fails leaves the points that it has, and ranges of 0.
    {"locus_xy(x, -1, 1, 2, 1 / x)",
     R"([{"sentence": 1, "kind": "xy", "points": [[-1.0, -1.0, true]],
          "dropped": 0, "minX": 0.0, "maxX": 0.0, "minY": 0.0, "maxY": 0.0,
          "stoppedEarly": false, "lastParameter": 0.0}])",
     1},
};

TEST(CurvesJson, TellsEveryCurve) {
    for (const auto& [sheet, curves, status] : curveRows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(CurvesOf(sheet, status), Json::parse(curves));
    }
}

TEST(CurvesJson, HasOneTypeForEachKey) {
    const Json curve = CurvesOf("locus_xy(x, 0, 1, 1, x)").at(0);
    EXPECT_TRUE(curve["sentence"].is_number_integer());
    EXPECT_TRUE(curve["kind"].is_string());
    EXPECT_TRUE(curve["dropped"].is_number_integer());
    EXPECT_TRUE(curve["stoppedEarly"].is_boolean());
    for (const std::string key : {"minX", "maxX", "minY", "maxY", "lastParameter"}) {
        EXPECT_TRUE(curve[key].is_number()) << key;
    }
    ASSERT_EQ(curve["points"].size(), 2u);
    for (const Json& point : curve["points"]) {
        ASSERT_EQ(point.size(), 3u);
        EXPECT_TRUE(point[0].is_number());
        EXPECT_TRUE(point[1].is_number());
        EXPECT_TRUE(point[2].is_boolean());
    }
}

TEST(CurvesJson, GivesTheCurvesInTheOrderOfTheSheet) {
    const Json curves = CurvesOf(
        "locus_polar(t, 0, 1, 1, t);"
        "locus_xy(x, 0, 1, 1, x) + locus_parametric(t, 0, 1, 1, t, t);");
    ASSERT_EQ(curves.size(), 3u);
    EXPECT_EQ(curves[0]["sentence"], 1);
    EXPECT_EQ(curves[0]["kind"], "polar");
    EXPECT_EQ(curves[1]["sentence"], 2);
    EXPECT_EQ(curves[1]["kind"], "xy");
    EXPECT_EQ(curves[2]["sentence"], 2);
    EXPECT_EQ(curves[2]["kind"], "parametric");
}

TEST(CurvesJson, GivesWordsForNumbersThatAreNotFinite) {
    // A polar radius has no limit downward.
    const Json curve = CurvesOf("locus_polar(t, 0, 1, 1, -" + std::string(400, '9') + ")").at(0);
    EXPECT_EQ(curve["points"], Json::parse(R"([["-inf", "nan", true], ["-inf", "-inf", false]])"));
    EXPECT_EQ(curve["minX"], "-inf");
    EXPECT_EQ(curve["maxX"], -1.7e308);
    EXPECT_EQ(curve["minY"], "-inf");
}

}  // namespace
}  // namespace orvane
