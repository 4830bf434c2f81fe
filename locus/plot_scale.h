#pragma once

#include "locus/locus_store.h"

// How the units of a curve become the pixels of its page. The origin always stands in the plot or
// on its edge, so that a reader sees how far a curve lies from zero, and each axis has a scale of
// its own.

namespace orvane {

struct PlotPoint {
    int x = 0;
    int y = 0;

    bool operator==(const PlotPoint&) const = default;
};

// Pixels, x to the right and y down; `right` and `bottom` are the first ones outside. A page too
// small for what is taken from it gives a rectangle that is inside out; nothing minds.
struct PlotRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const PlotRect&) const = default;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    PlotRect DeflatedBy(int pixels) const {
        return {left + pixels, top + pixels, right - pixels, bottom - pixels};
    }
};

// Whole pixels, halves away from zero. What lies beyond `farthestPixel` stays there, out of sight
// but within what a painter can add and clip; what is no number is 0.
inline constexpr int farthestPixel = 1000000;
int RoundToPixel(double pixels);

struct PlotRanges {
    double minX = 0.0, maxX = 0.0, minY = 0.0, maxY = 0.0;

    bool operator==(const PlotRanges&) const = default;
};

// The ranges that a page shows. A sweep that failed has none, all four are 0; what it recorded is
// shown all the same, in the ranges of its points.
PlotRanges ShownRanges(const LocusSet& set);

struct PlotScale {
    // Room around the plot for arrows and labels, in pixels.
    static constexpr int leftMargin = 15;
    static constexpr int topMargin = 30;
    static constexpr int rightMargin = 30;
    static constexpr int bottomMargin = 15;

    // Of the shown ranges of `set`, for a page with this client rectangle, its sides within 100
    // million.
    PlotScale(const LocusSet& set, const PlotRect& client);

    // The pixel of a point, at most `farthestPixel` away from the origin in each direction. The
    // same in steps of which `parts` make a pixel, which need not be a whole number.
    int PixelX(double x, double parts = 1.0) const {
        return static_cast<int>(originX * parts) + RoundToPixel(x / unitsPerPixelX * parts);
    }
    int PixelY(double y, double parts = 1.0) const {
        return static_cast<int>(originY * parts) - RoundToPixel(y / unitsPerPixelY * parts);
    }

    PlotRanges ranges;
    // Not above 0 where the plot has no pixels; infinite for a range wider than a double can tell,
    // which draws everything onto the origin.
    double unitsPerPixelX = 0.0;
    double unitsPerPixelY = 0.0;
    int originX = 0;
    int originY = 0;
    int plotLeft = 0;
    int plotRight = 0;
    int plotTop = 0;
    int plotBottom = 0;
};

}  // namespace orvane
