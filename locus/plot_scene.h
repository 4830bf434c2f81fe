#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "locus/locus_store.h"
#include "locus/plot_scale.h"
#include "storage/text_colours.h"

// One page of the plot window as plain shapes, in the order in which they are painted: curve,
// axes with their marks and labels, note, frame. Pixels of the page; every line is one pixel wide
// and texts have no background.

namespace orvane {

namespace plotColours {
inline constexpr Colour page = ColourFrom(224, 224, 208);
inline constexpr Colour curve = ColourFrom(128, 0, 0);
inline constexpr Colour axes = ColourFrom(0, 0, 0);  // marks and labels too
inline constexpr Colour note = ColourFrom(0, 128, 0);
}  // namespace plotColours

struct PlotTextSize {
    int width = 0;
    int height = 0;
};

// The size of a text in the font that the page is painted with. Whoever paints measures.
using MeasurePlotText = std::function<PlotTextSize(std::string_view text)>;

// The strokes of a curve. Neighbours on the same pixel are one point, and a stroke that stays on
// one pixel has no line and is left out, so each stroke has two points at least. Of neighbours in
// one column or one row the first, the two outermost and the last are kept, which cover the same
// pixels: a sweep of millions of points is not drawn over itself a thousand times.
class PlotCurve {
public:
    std::size_t StrokeCount() const { return starts.size(); }
    std::span<const PlotPoint> Stroke(std::size_t index) const;

    void Begin(PlotPoint point);
    void LineTo(PlotPoint point);
    void End();  // of the stroke that is begun, if one is

private:
    // The last points of the stroke, as far as they stand in one column or one row.
    struct Run {
        std::size_t start = 0;
        bool isColumn = false;
        bool isRow = false;
    };

    void Squeeze(PlotPoint point);

    std::vector<PlotPoint> points;  // of all strokes, one behind the other
    std::vector<std::size_t> starts;
    Run run;
    bool begun = false;
};

struct PlotLine {
    PlotPoint from;
    PlotPoint to;

    bool operator==(const PlotLine&) const = default;
};

// A text by its upper left corner.
struct PlotText {
    PlotPoint at;
    std::string text;
    Colour colour = plotColours::axes;

    bool operator==(const PlotText&) const = default;
};

struct PlotScene {
    PlotCurve curve;
    double curveParts = 1.0;            // steps of the curve's coordinates that make a pixel
    std::vector<PlotLine> lines;        // axes, then marks
    std::vector<PlotText> texts;        // labels, then the note
    std::vector<PlotRect> rings;        // one pixel thick, in the face colour of buttons
    std::vector<PlotRect> sunkenEdges;  // one pixel thick; dark above and left, light otherwise
};

// The scene of a page with this client rectangle; empty without a set. Labels and note have
// `labelPrecision` decimals, which is not limited here. Where a picture is finer than a pixel of
// the page, its curve is told in `curveParts` steps for each pixel, from 1 to 16.
PlotScene BuildPlotScene(const LocusSet* set, const PlotRect& client, int labelPrecision,
                         const MeasurePlotText& measure, double curveParts = 1.0);

// Where a sweep ended early, as the note says it; empty when it did not, and for xy.
std::string LastParameterNote(const LocusSet& set, int labelPrecision);

}  // namespace orvane
