#include "locus/plot_scene.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

void PrintTo(const PlotPoint& point, std::ostream* out) {
    *out << '(' << point.x << ", " << point.y << ')';
}
void PrintTo(const PlotLine& line, std::ostream* out) {
    *out << '(' << line.from.x << ", " << line.from.y << ") to (" << line.to.x << ", " << line.to.y
         << ')';
}
void PrintTo(const PlotText& text, std::ostream* out) {
    *out << '"' << text.text << "\" at " << text.at.x << ", " << text.at.y;
}

namespace {

// The plot is 15 to 615 across and 30 to 470 down.
constexpr PlotRect page = {0, 0, 645, 485};

// Seven pixels for each character, 13 high.
PlotTextSize MeasureSevens(std::string_view text) {
    return {static_cast<int>(text.size()) * 7, 13};
}

LocusSet SetOf(const std::vector<LocusPoint>& points, LocusKind kind = LocusKind::xy) {
    LocusSet set;
    set.kind = kind;
    set.points = points;
    set.FindRanges(1920, 1080, 1);
    return set;
}

PlotScene SceneOf(const LocusSet& set, int labelPrecision = 2, const PlotRect& client = page) {
    return BuildPlotScene(&set, client, labelPrecision, MeasureSevens);
}

using Strokes = std::vector<std::vector<PlotPoint>>;

Strokes StrokesOf(const PlotScene& scene) {
    Strokes strokes;
    for (std::size_t i = 0; i < scene.curve.StrokeCount(); ++i) {
        const auto stroke = scene.curve.Stroke(i);
        strokes.emplace_back(stroke.begin(), stroke.end());
    }
    return strokes;
}

std::vector<PlotLine> MarksOf(const PlotScene& scene) {
    return {scene.lines.begin() + 6, scene.lines.end()};
}

TEST(PlotScene, PaintsNothingWithoutASet) {
    const PlotScene scene = BuildPlotScene(nullptr, page, 2, MeasureSevens);
    EXPECT_EQ(scene.curve.StrokeCount(), 0u);
    EXPECT_TRUE(scene.lines.empty());
    EXPECT_TRUE(scene.texts.empty());
    EXPECT_TRUE(scene.rings.empty());
    EXPECT_TRUE(scene.sunkenEdges.empty());
}

TEST(PlotScene, HasTheseColours) {
    EXPECT_EQ(plotColours::page, ColourFrom(224, 224, 208));
    EXPECT_EQ(plotColours::curve, ColourFrom(128, 0, 0));
    EXPECT_EQ(plotColours::axes, ColourFrom(0, 0, 0));
    EXPECT_EQ(plotColours::note, ColourFrom(0, 128, 0));
}

TEST(PlotCurve, MovesWhereThePenIsUpAndDrawsElse) {
    // One unit for each pixel, the origin at 315, 250.
    const LocusSet set = SetOf({{-300, -220, true},
                                {0, 0, false},
                                {10.5, 10.4, false},
                                {100, 0, true},
                                {300, 220, false}});
    EXPECT_EQ(StrokesOf(SceneOf(set)),
              (Strokes{{{15, 470}, {315, 250}, {326, 240}}, {{415, 250}, {615, 30}}}));
}

TEST(PlotCurve, StartsAStrokeWithTheFirstPointInAnyCase) {
    const LocusSet set = SetOf({{0, 0, false}, {600, 440, false}});
    EXPECT_EQ(StrokesOf(SceneOf(set)), (Strokes{{{15, 470}, {615, 30}}}));
}

TEST(PlotCurve, LeavesOutWhatHasNoLine) {
    // The first stroke is one point, the second stays on its pixel, the last is one point again.
    const LocusSet set = SetOf({{0, 0, true},
                                {5, 5, true},
                                {5.2, 5.3, false},
                                {10, 10, true},
                                {10.1, 10, false},
                                {20, 10, false},
                                {20, 10.1, false},
                                {600, 440, true}});
    EXPECT_EQ(StrokesOf(SceneOf(set)), (Strokes{{{25, 460}, {35, 460}}}));
}

TEST(PlotCurve, ComesBackToAPixelThatItLeft) {
    const LocusSet set = SetOf({{0, 0, true}, {600, 440, false}, {0, 0, false}});
    EXPECT_EQ(StrokesOf(SceneOf(set)), (Strokes{{{15, 470}, {615, 30}, {15, 470}}}));
}

TEST(PlotCurve, OfAFailedSweepFillsThePlotLikeAnyOther) {
    LocusSet set;  // its ranges were never found
    set.points = {{-300, 0, true}, {300, -440, false}, {0, -220, false}};
    EXPECT_EQ(StrokesOf(SceneOf(set)), (Strokes{{{15, 30}, {615, 470}, {315, 250}}}));
    // The marks stand at the ends of what was recorded.
    EXPECT_EQ(MarksOf(SceneOf(set)),
              (std::vector<PlotLine>{
                  {{615, 30}, {615, 35}}, {{15, 30}, {15, 35}}, {{315, 470}, {310, 470}}}));
}

struct SqueezeRow {
    const char* name;
    std::vector<PlotPoint> points;
    std::vector<PlotPoint> kept;
};
const SqueezeRow squeezeRows[] = {
    {"four in a column stay", {{5, 1}, {5, 9}, {5, 3}, {5, 4}}, {{5, 1}, {5, 9}, {5, 3}, {5, 4}}},
    {"of five in a column one goes",
     {{5, 1}, {5, 9}, {5, 3}, {5, 4}, {5, 2}},
     {{5, 1}, {5, 3}, {5, 9}, {5, 2}}},
    {"the last is an outermost one",
     {{5, 4}, {5, 3}, {5, 5}, {5, 2}, {5, 6}, {5, 7}},
     {{5, 4}, {5, 2}, {5, 6}, {5, 7}}},
    {"a row", {{1, 5}, {2, 5}, {3, 5}, {4, 5}, {5, 5}, {0, 5}}, {{1, 5}, {5, 5}, {2, 5}, {0, 5}}},
    {"straight on and never back",
     {{9, 5}, {7, 5}, {6, 5}, {4, 5}, {3, 5}, {1, 5}},
     {{9, 5}, {7, 5}, {3, 5}, {1, 5}}},
    {"a corner is the end of one run and the start of the next",
     {{0, 0}, {0, 1}, {0, 2}, {0, 3}, {0, 4}, {1, 4}, {2, 4}, {3, 4}, {4, 4}},
     {{0, 0}, {0, 1}, {0, 3}, {0, 4}, {1, 4}, {3, 4}, {4, 4}}},
    {"slopes are left alone",
     {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}},
     {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}}},
};

TEST(PlotCurve, KeepsTheEndsOfRunsInAColumnOrARow) {
    for (const SqueezeRow& row : squeezeRows) {
        SCOPED_TRACE(row.name);
        PlotCurve curve;
        curve.Begin({100, 100});  // a stroke of its own, so that the run does not begin at 0
        curve.LineTo({101, 102});
        curve.Begin(row.points.front());
        for (const PlotPoint point : row.points) curve.LineTo(point);
        curve.End();
        ASSERT_EQ(curve.StrokeCount(), 2u);
        const auto stroke = curve.Stroke(1);
        EXPECT_EQ(std::vector<PlotPoint>(stroke.begin(), stroke.end()), row.kept);
    }
}

TEST(PlotCurve, ComesInStepsFinerThanAPixel) {
    const LocusSet set =
        SetOf({{-300, -220, true}, {0.5, 0.25, false}, {10.1, 10.2, false}, {300, 220, false}});
    const PlotScene scene = BuildPlotScene(&set, page, 2, MeasureSevens, 8);
    EXPECT_EQ(scene.curveParts, 8.0);
    EXPECT_EQ(StrokesOf(scene), (Strokes{{{15 * 8, 470 * 8},
                                          {315 * 8 + 4, 250 * 8 - 2},
                                          {315 * 8 + 81, 250 * 8 - 82},
                                          {615 * 8, 30 * 8}}}));
    const PlotScene plain = SceneOf(set);
    EXPECT_EQ(plain.curveParts, 1.0);
    EXPECT_EQ(scene.lines, plain.lines);
    EXPECT_EQ(scene.texts, plain.texts);
    EXPECT_EQ(StrokesOf(BuildPlotScene(&set, page, 2, MeasureSevens, 1.5)),
              (Strokes{{{22, 705}, {473, 375}, {487, 360}, {922, 45}}}));
}

TEST(PlotScene, DrawsAxesWithArrows) {
    const PlotScene scene = SceneOf(SetOf({{-300, -220, true}, {300, 220, false}}));
    ASSERT_GE(scene.lines.size(), 6u);
    const std::vector<PlotLine> axes = {
        {{10, 250}, {630, 250}}, {{630, 250}, {625, 245}}, {{630, 250}, {625, 255}},
        {{315, 475}, {315, 15}}, {{315, 15}, {310, 20}},   {{315, 15}, {320, 20}},
    };
    EXPECT_EQ((std::vector<PlotLine>{scene.lines.begin(), scene.lines.begin() + 6}), axes);
}

TEST(PlotScene, LetsTheArrowPassAYAxisAtTheRightEdge) {
    const PlotScene scene = SceneOf(SetOf({{-5, -1, true}, {-1, -3, false}}));
    ASSERT_GE(scene.lines.size(), 6u);
    EXPECT_EQ(scene.lines[0], (PlotLine{{10, 30}, {630, 30}}));
    EXPECT_EQ(scene.lines[3], (PlotLine{{615, 475}, {615, 15}}));
}

// Sets of two points with these ranges; marks and labels in the order of painting.
struct MarkRow {
    const char* name;
    double minX, maxX, minY, maxY;
    std::vector<PlotLine> marks;
    std::vector<PlotText> labels;
};

const std::vector<MarkRow>& MarkRows() {
    static const std::vector<MarkRow> rows = {
        {"axes in the middle: the labels of Y stand right",
         -300,
         300,
         -220,
         220,
         {{{615, 250}, {615, 255}},
          {{15, 250}, {15, 255}},
          {{315, 470}, {310, 470}},
          {{315, 30}, {310, 30}}},
         {{{587, 257}, "+300"}, {{15, 257}, "-300"}, {{319, 464}, "-220"}, {{319, 24}, "+220"}}},
        {"first quadrant: the labels of X stand above",
         0,
         600,
         0,
         440,
         {{{615, 470}, {615, 475}}, {{15, 30}, {10, 30}}},
         {{{587, 450}, "+600"}, {{19, 24}, "+440"}}},
        {"first quadrant away from zero",
         300,
         600,
         220,
         440,
         {{{615, 470}, {615, 475}},
          {{315, 470}, {315, 475}},
          {{15, 250}, {10, 250}},
          {{15, 30}, {10, 30}}},
         {{{587, 450}, "+600"}, {{315, 450}, "+300"}, {{19, 244}, "+220"}, {{19, 24}, "+440"}}},
        {"negative alone: the labels of Y stand left",
         -600,
         -300,
         -440,
         -220,
         {{{315, 30}, {315, 35}},
          {{15, 30}, {15, 35}},
          {{615, 470}, {610, 470}},
          {{615, 250}, {610, 250}}},
         {{{287, 37}, "-300"}, {{15, 37}, "-600"}, {{578, 464}, "-440"}, {{578, 244}, "-220"}}},
        {"one pixel right of the middle counts as right",
         -301,
         299,
         -220,
         220,
         {{{615, 250}, {615, 255}},
          {{15, 250}, {15, 255}},
          {{316, 470}, {311, 470}},
          {{316, 30}, {311, 30}}},
         {{{587, 257}, "+299"}, {{15, 257}, "-301"}, {{279, 464}, "-220"}, {{279, 24}, "+220"}}},
        {"31 pixels below the axis: labels below",
         0,
         600,
         -31,
         409,
         {{{615, 439}, {615, 444}}, {{15, 470}, {10, 470}}, {{15, 30}, {10, 30}}},
         {{{587, 446}, "+600"}, {{19, 464}, "-31"}, {{19, 24}, "+409"}}},
        {"30 pixels below the axis: labels above",
         0,
         600,
         -30,
         410,
         {{{615, 440}, {615, 445}}, {{15, 470}, {10, 470}}, {{15, 30}, {10, 30}}},
         {{{587, 420}, "+600"}, {{19, 464}, "-30"}, {{19, 24}, "+410"}}},
        {"exactly 5% of the range is no mark",
         -1,
         19,
         0,
         440,
         {{{615, 470}, {615, 475}}, {{45, 30}, {40, 30}}},
         {{{594, 450}, "+19"}, {{49, 24}, "+440"}}},
        {"a little more than 5% is one",
         -1.25,
         18.75,
         0,
         440,
         {{{616, 470}, {616, 475}}, {{15, 470}, {15, 475}}, {{53, 30}, {48, 30}}},
         {{{574, 450}, "+18.75"}, {{15, 450}, "-1.25"}, {{57, 24}, "+440"}}},
        {"a single point off zero",
         4,
         4,
         5,
         5,
         {{{615, 470}, {615, 475}},
          {{615, 470}, {615, 475}},
          {{15, 30}, {10, 30}},
          {{15, 30}, {10, 30}}},
         {{{601, 450}, "+4"}, {{615, 450}, "+4"}, {{19, 24}, "+5"}, {{19, 24}, "+5"}}},
        {"a single point at zero", 0, 0, 0, 0, {}, {}},
        {"a range wider than a double", -1.7e308, 1.7e308, 0, 0, {}, {}},
    };
    return rows;
}

TEST(PlotScene, MarksTheEndsOfTheRanges) {
    for (const MarkRow& row : MarkRows()) {
        SCOPED_TRACE(row.name);
        const PlotScene scene =
            SceneOf(SetOf({{row.minX, row.minY, true}, {row.maxX, row.maxY, false}}));
        EXPECT_EQ(MarksOf(scene), row.marks);
        EXPECT_EQ(scene.texts, row.labels);
    }
}

struct LabelRow {
    double value;
    int labelPrecision;
    const char* label;
};
constexpr LabelRow labelRows[] = {
    {100.0, 0, "+1"},  // Kept: without decimals the zeros of the whole part go
    {100.0, 1, "+100"}, {1.0 / 3, 5, "+0.33333"}, {0.4, 0, "+"},
    {2.5, 40, "+2.5"},  {2.125, 2, "+2.12"},      {7.0, -1, "+7"},
};

TEST(PlotScene, WritesLabelsWithTheTypedPrecision) {
    for (const auto& [value, labelPrecision, label] : labelRows) {
        SCOPED_TRACE(label);
        const PlotScene scene =
            SceneOf(SetOf({{0, 0, true}, {value, value, false}}), labelPrecision);
        ASSERT_EQ(scene.texts.size(), 2u);
        const int width = static_cast<int>(std::string(label).size()) * 7;
        EXPECT_EQ(scene.texts[0], (PlotText{{615 - width, 450}, label}));
        EXPECT_EQ(scene.texts[1], (PlotText{{19, 24}, label}));
    }
}

LocusSet StoppedSet(LocusKind kind, double lastParameter) {
    LocusSet set = SetOf({{-300, -220, true}, {300, 220, false}}, kind);
    set.stoppedEarly = true;
    set.lastParameter = lastParameter;
    return set;
}

struct NoteRow {
    LocusKind kind;
    bool stoppedEarly;
    double lastParameter;
    int labelPrecision;
    const char* note;
};
constexpr double pi = 3.141592653589793;
constexpr NoteRow noteRows[] = {
    {LocusKind::polar, true, pi, 2, "Last angle: +3.14 or +1*pi"},
    {LocusKind::polar, true, -pi / 2, 4, "Last angle: -1.5708 or -0.5*pi"},
    {LocusKind::polar, true, 0.0, 2, "Last angle: +0 or +0*pi"},
    {LocusKind::polar, true, 10 * pi, 0, "Last angle: +31 or +1*pi"},
    {LocusKind::parametric, true, 1.5, 2, "Last parameter: +1.5"},
    {LocusKind::parametric, true, -0.25, 1, "Last parameter: -0.2"},
    {LocusKind::parametric, true, 0.0, 3, "Last parameter: +0"},
    {LocusKind::xy, true, 1.5, 2, ""},
    {LocusKind::polar, false, 1.5, 2, ""},
    {LocusKind::parametric, false, 1.5, 2, ""},
};

TEST(LastParameterNote, TellsWhereAPolarOrParametricSweepEnded) {
    for (const NoteRow& row : noteRows) {
        SCOPED_TRACE(row.note);
        LocusSet set = StoppedSet(row.kind, row.lastParameter);
        set.stoppedEarly = row.stoppedEarly;
        EXPECT_EQ(LastParameterNote(set, row.labelPrecision), row.note);
        // It comes behind the four labels.
        const PlotScene scene = SceneOf(set, row.labelPrecision);
        ASSERT_EQ(scene.texts.size(), row.note[0] == '\0' ? 4u : 5u);
        if (scene.texts.size() == 5) {
            EXPECT_EQ(scene.texts[4].text, row.note);
            EXPECT_EQ(scene.texts[4].colour, plotColours::note);
        }
        for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(scene.texts[i].colour, plotColours::axes);
    }
}

// "Last parameter: +1.5" is 140 wide and 13 high.
struct NotePlaceRow {
    const char* name;
    double minX, maxX, minY, maxY;
    PlotPoint at;
};
constexpr NotePlaceRow notePlaceRows[] = {
    {"even: right and below", -300, 300, -220, 220, {465 - 70, 360 - 13}},
    {"origin in the lower left corner", 0, 600, 0, 440, {315 - 70, 250 - 13}},
    {"origin in the upper right corner", -600, 0, -440, 0, {315 - 70, 250 - 13}},
    {"left is larger, above is larger", -400, 200, -100, 340, {215 - 70, 200 - 13}},
    {"right is larger, below is larger", -200, 400, -340, 100, {415 - 70, 300 - 13}},
    {"one pixel more on the left", -301, 299, -220, 220, {165 - 70, 360 - 13}},
    {"one pixel more above", -300, 300, -219, 221, {465 - 70, 140 - 13}},
    {"a single point at zero", 0, 0, 0, 0, {315 - 70, 250 - 13}},
};

TEST(PlotScene, PutsTheNoteIntoTheLargestFreeQuarter) {
    for (const NotePlaceRow& row : notePlaceRows) {
        SCOPED_TRACE(row.name);
        LocusSet set =
            SetOf({{row.minX, row.minY, true}, {row.maxX, row.maxY, false}}, LocusKind::parametric);
        set.stoppedEarly = true;
        set.lastParameter = 1.5;
        const PlotScene scene = SceneOf(set);
        ASSERT_FALSE(scene.texts.empty());
        EXPECT_EQ(scene.texts.back(),
                  (PlotText{row.at, "Last parameter: +1.5", plotColours::note}));
    }
}

TEST(PlotScene, FramesThePageWithFiveRingsAndTwoSunkenEdges) {
    const PlotScene scene = SceneOf(SetOf({{1, 1, true}}), 2, {2, 3, 202, 153});
    EXPECT_EQ(scene.rings, (std::vector<PlotRect>{{2, 3, 202, 153},
                                                  {3, 4, 201, 152},
                                                  {4, 5, 200, 151},
                                                  {5, 6, 199, 150},
                                                  {6, 7, 198, 149}}));
    EXPECT_EQ(scene.sunkenEdges, (std::vector<PlotRect>{{7, 8, 197, 148}, {8, 9, 196, 147}}));
}

TEST(PlotScene, ShowsAxesAndFrameOfASetWithoutPoints) {
    const LocusSet set = SetOf({});
    const PlotScene scene = SceneOf(set);
    EXPECT_EQ(scene.curve.StrokeCount(), 0u);
    ASSERT_GE(scene.lines.size(), 6u);
    EXPECT_EQ(scene.lines[0], (PlotLine{{10, 470}, {630, 470}}));
    EXPECT_EQ(scene.lines[3], (PlotLine{{15, 475}, {15, 15}}));
    EXPECT_EQ(scene.rings.size(), 5u);
    // The upside down ranges have marks by the same rule, all of them out of sight.
    EXPECT_EQ(MarksOf(scene), (std::vector<PlotLine>{{{-999985, 470}, {-999985, 475}},
                                                     {{1000015, 470}, {1000015, 475}},
                                                     {{15, -999530}, {10, -999530}},
                                                     {{15, 1000470}, {10, 1000470}}}));
    ASSERT_EQ(scene.texts.size(), 4u);
    EXPECT_LT(scene.texts[0].at.x + MeasureSevens(scene.texts[0].text).width, 0);
    EXPECT_GT(scene.texts[1].at.x, page.right);
    EXPECT_LT(scene.texts[2].at.y + 13, 0);
    EXPECT_GT(scene.texts[3].at.y, page.bottom);
}

TEST(PlotScene, ShowsTheNoteOfASetWithoutPoints) {
    LocusSet set = SetOf({}, LocusKind::polar);
    set.stoppedEarly = true;
    set.lastParameter = -pi;
    EXPECT_EQ(SceneOf(set).texts.back().text, "Last angle: -3.14 or -1*pi");
}

TEST(PlotScene, DrawsASinglePointAsAxesAlone) {
    for (const double value : {0.0, 5.0, -5.0, 1.7e308, -1.7e308, 5e-324}) {
        SCOPED_TRACE(value);
        const PlotScene scene = SceneOf(SetOf({{value, value, true}}));
        EXPECT_EQ(scene.curve.StrokeCount(), 0u);
        EXPECT_GE(scene.lines.size(), 6u);
    }
}

TEST(PlotScene, DrawsValuesNearTheDoubleRange) {
    const LocusSet set = SetOf({{-8e307, -8e307, true}, {0, 0, false}, {8e307, 8e307, false}});
    EXPECT_EQ(StrokesOf(SceneOf(set)), (Strokes{{{15, 470}, {315, 250}, {615, 30}}}));
}

TEST(PlotScene, StandsPagesWithoutRoomAndValuesWithoutASize) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    const std::vector<LocusPoint> points = {{0, 0, true},
                                            {-infinity, infinity, false},
                                            {notANumber, notANumber, false},
                                            {1.7e308, -1.7e308, false},
                                            {5e-324, -5e-324, false}};
    const PlotRect rooms[] = {{0, 0, 0, 0}, {0, 0, 45, 45}, {0, 0, 20, 500}, page};
    for (const PlotRect& room : rooms) {
        SCOPED_TRACE(room.bottom);
        const PlotScene scene = SceneOf(SetOf(points), 2, room);
        EXPECT_EQ(scene.rings.size(), 5u);
        for (const auto& stroke : StrokesOf(scene)) {
            for (const PlotPoint& point : stroke) {
                EXPECT_LE(std::abs(point.x), farthestPixel + 1000);
                EXPECT_LE(std::abs(point.y), farthestPixel + 1000);
            }
        }
    }
}

// A sweep of ten million points that lie this dense is thinned before it is painted; one that
// failed is not.
TEST(PlotScene, DrawsTenMillionPointsAsTheirPixels) {
    constexpr std::size_t count = 10000000;
    LocusSet set;
    set.points.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = static_cast<double>(i) * 600 / (count - 1);
        set.points.push_back({x, i % 2 == 0 ? 0.0 : 440.0, i == 0});
    }
    set.maxX = 600;
    set.maxY = 440;
    const Strokes strokes = StrokesOf(SceneOf(set));
    ASSERT_EQ(strokes.size(), 1u);
    EXPECT_LE(strokes[0].size(), 601u * 4);
    // Each column from top to bottom.
    std::vector<std::set<int>> ends(616);
    for (const PlotPoint point : strokes[0])
        ends.at(static_cast<std::size_t>(point.x)).insert(point.y);
    for (std::size_t x = 15; x <= 615; ++x) EXPECT_EQ(ends[x], (std::set<int>{30, 470})) << x;

    for (LocusPoint& point : set.points) point.penUp = true;
    EXPECT_EQ(SceneOf(set).curve.StrokeCount(), 0u);
}

}  // namespace
}  // namespace orvane
