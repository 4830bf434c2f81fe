#include "locus/plot_scale.h"

#include <algorithm>
#include <cmath>

namespace orvane {
namespace {

enum class OriginPlace {
    lowEdge,   // left or bottom
    highEdge,  // right or top
    inside,
};

// The scale of one direction.
struct AxisScale {
    double unitsPerPixel = 0.0;
    OriginPlace origin = OriginPlace::lowEdge;
};

AxisScale ScaleAxis(double smallest, double largest, int length) {
    if (smallest >= 0.0) {
        if (largest > 0.0) return {largest / length, OriginPlace::lowEdge};
        // Kept: a single point at zero has no range to share out; any scale shows it at the origin.
        return {static_cast<double>(length), OriginPlace::lowEdge};
    }
    if (largest <= 0.0) return {-smallest / length, OriginPlace::highEdge};
    return {(largest - smallest) / length, OriginPlace::inside};
}

// A range so small that its scale is 0 would throw the origin out of the plot.
int BetweenEdges(int pixel, int oneEdge, int otherEdge) {
    return std::clamp(pixel, std::min(oneEdge, otherEdge), std::max(oneEdge, otherEdge));
}

}  // namespace

int RoundToPixel(double pixels) {
    if (std::isnan(pixels)) return 0;
    constexpr double farthest = farthestPixel;
    return static_cast<int>(std::round(std::clamp(pixels, -farthest, farthest)));
}

PlotRanges ShownRanges(const LocusSet& set) {
    const PlotRanges found{set.minX, set.maxX, set.minY, set.maxY};
    if (found != PlotRanges() || set.points.empty()) return found;
    PlotRanges ranges{LocusSet::rangeStart, -LocusSet::rangeStart, LocusSet::rangeStart,
                      -LocusSet::rangeStart};
    for (const LocusPoint& point : set.points) {
        if (point.x > ranges.maxX) ranges.maxX = point.x;
        if (point.x < ranges.minX) ranges.minX = point.x;
        if (point.y > ranges.maxY) ranges.maxY = point.y;
        if (point.y < ranges.minY) ranges.minY = point.y;
    }
    return ranges;
}

PlotScale::PlotScale(const LocusSet& set, const PlotRect& client)
    : ranges(ShownRanges(set)),
      plotLeft(client.left + leftMargin),
      plotRight(client.right - rightMargin),
      plotTop(client.top + topMargin),
      plotBottom(client.bottom - bottomMargin) {
    const AxisScale across = ScaleAxis(ranges.minX, ranges.maxX, plotRight - plotLeft);
    unitsPerPixelX = across.unitsPerPixel;
    originX = across.origin == OriginPlace::highEdge ? plotRight : plotLeft;
    if (across.origin == OriginPlace::inside) {
        originX = BetweenEdges(plotLeft - RoundToPixel(ranges.minX / unitsPerPixelX), plotLeft,
                               plotRight);
    }

    const AxisScale upward = ScaleAxis(ranges.minY, ranges.maxY, plotBottom - plotTop);
    unitsPerPixelY = upward.unitsPerPixel;
    originY = upward.origin == OriginPlace::highEdge ? plotTop : plotBottom;
    if (upward.origin == OriginPlace::inside) {
        originY =
            BetweenEdges(plotTop + RoundToPixel(ranges.maxY / unitsPerPixelY), plotTop, plotBottom);
    }
}

}  // namespace orvane
