#include "locus/plot_scene.h"

#include <algorithm>
#include <iterator>
#include <numbers>
#include <utility>

#include "output/number_text.h"

namespace orvane {
namespace {

constexpr int arrow = 5;       // half the width of an arrow, its length, and that of a mark
constexpr int labelGap = 2;    // between the marks of the X axis and their labels
constexpr int besideAxis = 4;  // between the Y axis, or its marks, and their labels
constexpr int roomBelow = 30;  // labels of the X axis need more than this under it
constexpr int ringCount = 5;
constexpr int sunkenCount = 2;

PlotCurve CurveOf(const LocusSet& set, const PlotScale& scale, double parts) {
    PlotCurve curve;
    for (const LocusPoint& point : set.points) {
        const PlotPoint pixel{scale.PixelX(point.x, parts), scale.PixelY(point.y, parts)};
        if (point.penUp) {
            curve.Begin(pixel);
        } else {
            curve.LineTo(pixel);
        }
    }
    curve.End();
    return curve;
}

void AddAxes(PlotScene& scene, const PlotScale& scale) {
    const PlotPoint right{scale.plotRight + 3 * arrow, scale.originY};
    scene.lines.push_back({{scale.plotLeft - arrow, scale.originY}, right});
    scene.lines.push_back({right, {right.x - arrow, right.y - arrow}});
    scene.lines.push_back({right, {right.x - arrow, right.y + arrow}});

    const PlotPoint top{scale.originX, scale.plotTop - 3 * arrow};
    scene.lines.push_back({{scale.originX, scale.plotBottom + arrow}, top});
    scene.lines.push_back({top, {top.x - arrow, top.y + arrow}});
    scene.lines.push_back({top, {top.x + arrow, top.y + arrow}});
}

// Not at the origin, where a label would stand in the other axis.
bool IsMarked(double value, double smallest, double largest) {
    const double nearZero = (largest - smallest) * 0.05;
    return value > nearZero || value < -nearZero;
}

enum class LabelSide { endsAtMark, startsAtMark };

// What the rules of marks look at.
struct Marking {
    const LocusSet& set;
    const PlotScale& scale;
    int labelPrecision;
    const MeasurePlotText& measure;
};

void AddMarkX(PlotScene& scene, const Marking& marking, double value, LabelSide side) {
    const PlotScale& scale = marking.scale;
    if (!IsMarked(value, scale.ranges.minX, scale.ranges.maxX)) return;
    const int x = scale.PixelX(value);
    scene.lines.push_back({{x, scale.originY}, {x, scale.originY + arrow}});

    std::string label = FormatSigned(value, marking.labelPrecision);
    const PlotTextSize size = marking.measure(label);
    const bool above = scale.plotBottom - scale.originY <= roomBelow;
    const int top =
        above ? scale.originY - (size.height + arrow + labelGap) : scale.originY + arrow + labelGap;
    const int left = side == LabelSide::endsAtMark ? x - size.width : x;
    scene.texts.push_back({{left, top}, std::move(label), plotColours::axes});
}

void AddMarkY(PlotScene& scene, const Marking& marking, double value) {
    const PlotScale& scale = marking.scale;
    if (!IsMarked(value, scale.ranges.minY, scale.ranges.maxY)) return;
    const int y = scale.PixelY(value);
    scene.lines.push_back({{scale.originX, y}, {scale.originX - arrow, y}});

    std::string label = FormatSigned(value, marking.labelPrecision);
    const PlotTextSize size = marking.measure(label);
    const bool axisOnRight = scale.originX - scale.plotLeft > scale.plotRight - scale.originX;
    const int left = axisOnRight ? scale.originX - (arrow + besideAxis) - size.width
                                 : scale.originX + besideAxis;
    scene.texts.push_back({{left, y - size.height / 2}, std::move(label), plotColours::axes});
}

// In the middle of the largest quarter that the axes leave free.
void AddNote(PlotScene& scene, const Marking& marking) {
    std::string note = LastParameterNote(marking.set, marking.labelPrecision);
    if (note.empty()) return;
    const PlotScale& scale = marking.scale;
    const bool right = scale.plotRight - scale.originX >= scale.originX - scale.plotLeft;
    const bool below = scale.plotBottom - scale.originY >= scale.originY - scale.plotTop;
    const int centreX = (scale.originX + (right ? scale.plotRight : scale.plotLeft)) / 2;
    const int centreY = (scale.originY + (below ? scale.plotBottom : scale.plotTop)) / 2;
    const PlotTextSize size = marking.measure(note);
    scene.texts.push_back(
        {{centreX - size.width / 2, centreY - size.height}, std::move(note), plotColours::note});
}

void AddFrame(PlotScene& scene, const PlotRect& client) {
    for (int i = 0; i < ringCount; ++i) scene.rings.push_back(client.DeflatedBy(i));
    for (int i = 0; i < sunkenCount; ++i) {
        scene.sunkenEdges.push_back(client.DeflatedBy(ringCount + i));
    }
}

}  // namespace

std::span<const PlotPoint> PlotCurve::Stroke(std::size_t index) const {
    const std::size_t end = index + 1 < starts.size() ? starts[index + 1] : points.size();
    return std::span(points).subspan(starts[index], end - starts[index]);
}

void PlotCurve::Begin(PlotPoint point) {
    End();
    starts.push_back(points.size());
    points.push_back(point);
    run = {starts.back()};
    begun = true;
}

void PlotCurve::LineTo(PlotPoint point) {
    if (!begun) return Begin(point);
    const PlotPoint last = points.back();
    if (point == last) return;
    const bool staysInColumn = run.isColumn && point.x == last.x;
    const bool staysInRow = run.isRow && point.y == last.y;
    if (!staysInColumn && !staysInRow) {
        run = {points.size() - 1, point.x == last.x, point.y == last.y};
    }
    if (points.size() - run.start < 4) {
        points.push_back(point);
    } else {
        Squeeze(point);
    }
}

// The run has a first point, two more and a last one: what was last may now be an outermost one.
// The outermost ones stand in the order of the run's ends, so that a run straight on is drawn once:
// a smooth line over itself is darker.
void PlotCurve::Squeeze(PlotPoint point) {
    const auto first = points.begin() + static_cast<std::ptrdiff_t>(run.start);
    const auto comesAhead = [this](PlotPoint a, PlotPoint b) {
        return run.isColumn ? a.y < b.y : a.x < b.x;
    };
    const auto [low, high] = std::minmax_element(first + 1, first + 4, comesAhead);
    PlotPoint kept[] = {*low, *high, point};
    if (comesAhead(point, *first)) std::swap(kept[0], kept[1]);
    std::copy(std::begin(kept), std::end(kept), first + 1);
}

void PlotCurve::End() {
    if (begun && points.size() - starts.back() < 2) {
        points.pop_back();
        starts.pop_back();
    }
    begun = false;
}

PlotScene BuildPlotScene(const LocusSet* set, const PlotRect& client, int labelPrecision,
                         const MeasurePlotText& measure, double curveParts) {
    PlotScene scene;
    scene.curveParts = curveParts;
    if (set == nullptr) return scene;
    const PlotScale scale(*set, client);
    scene.curve = CurveOf(*set, scale, curveParts);
    AddAxes(scene, scale);
    const Marking marking{*set, scale, labelPrecision, measure};
    AddMarkX(scene, marking, scale.ranges.maxX, LabelSide::endsAtMark);
    AddMarkX(scene, marking, scale.ranges.minX, LabelSide::startsAtMark);
    AddMarkY(scene, marking, scale.ranges.minY);
    AddMarkY(scene, marking, scale.ranges.maxY);
    AddNote(scene, marking);
    AddFrame(scene, client);
    return scene;
}

std::string LastParameterNote(const LocusSet& set, int labelPrecision) {
    if (set.kind == LocusKind::xy || !set.stoppedEarly) return {};
    std::string note = set.kind == LocusKind::polar ? "Last angle: " : "Last parameter: ";
    note += FormatSigned(set.lastParameter, labelPrecision);
    if (set.kind == LocusKind::polar) {
        note += " or ";
        note += FormatSigned(set.lastParameter / std::numbers::pi, labelPrecision);
        note += "*pi";
    }
    return note;
}

}  // namespace orvane
