#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "windows/rich_text_parser.h"

// Where everything of a rich text label stands, and which part of it is seen while it scrolls.
// Sizes and places are pixels. Picture coordinates count from the top left of the whole text, the
// control's own from the top left of the control.

namespace orvane {

// The rows that are ever drawn; text further down is lost, but counts in the total height.
inline constexpr std::int32_t labelCanvasRows = 5000;

struct LabelSize {
    std::int32_t width = 0, height = 0;
};

struct LabelRect {
    std::int32_t left = 0, top = 0, width = 0, height = 0;

    // The right and bottom edges lie outside.
    bool Holds(std::int32_t x, std::int32_t y) const;
    bool operator==(const LabelRect&) const = default;
};

// What only a screen can tell.
class LabelMeasure {
public:
    virtual ~LabelMeasure() = default;
    // The extent of the text on one line.
    virtual LabelSize TextSize(const LabelFont& font, std::string_view text) = 0;
    // Nothing when there is no bitmap of this number.
    virtual std::optional<LabelSize> BitmapSize(std::int32_t number) = 0;
};

// One run, picture or rule in its place.
struct LabelPiece {
    std::size_t item = 0;  // index into the document's items: text, fonts and colours are there
    LabelRect rect;        // a rule of no width or height is not seen
};

struct LabelLink {
    LabelRect rect;
    std::size_t target = 0;  // index into the document's targets
};

struct LabelLayout {
    std::vector<LabelPiece> pieces;  // from top to bottom, in a line from left to right
    std::vector<LabelLink> links;    // in the same order
    std::int32_t totalHeight = 0;
};

// There is no wrapping: a run wider than the area is left for the painter to clip. A line that the
// text does not end is not placed.
LabelLayout LayOutRichText(const LabelDocument& document, std::int32_t areaWidth,
                           LabelMeasure& measure);

// Rows of the picture and the row of the control at which the first of them is shown.
struct LabelStrip {
    std::int32_t pictureTop = 0, controlTop = 0, height = 0;

    bool operator==(const LabelStrip&) const = default;
};

enum class LabelPressKind : std::int32_t { nothing, followLink, startDrag };

struct LabelPress {
    LabelPressKind kind = LabelPressKind::nothing;
    std::size_t target = 0;  // of followLink: index into the document's targets
};

// Whether the system is asked to open it. The other targets, which start with "#", name functions
// by their address; there are no such addresses, and a press on them does nothing.
bool IsOpenableTarget(std::string_view target);

// The state of the scrolling and of a drag. `controlHeight` is the height of the control.
struct LabelScroller {
    std::int32_t scrollOffset = 0;  // first picture row shown; may start negative
    std::int32_t scrollDelay = 40;  // milliseconds between steps
    bool dragEnabled = false;
    bool dragging = false;
    std::int32_t dragOrigin = 0;
    std::optional<std::size_t> hotLink;  // the link under the pointer: index into the links

    // The wait before the first step of all, in milliseconds.
    std::int32_t FirstDelay() const;
    // A text that fits stands still in place.
    static bool Scrolls(const LabelLayout& layout, std::int32_t controlHeight);
    // One step upward. The pointer is looked at behind it, with PointAt.
    void Step(const LabelLayout& layout);
    // What is to be copied from the picture, from top to bottom; rows between are background.
    std::vector<LabelStrip> Strips(const LabelLayout& layout, std::int32_t controlHeight) const;

    // The link under a point of the control.
    std::optional<std::size_t> LinkAt(const LabelLayout& layout, std::int32_t controlHeight,
                                      std::int32_t x, std::int32_t y) const;
    void PointAt(const LabelLayout& layout, std::int32_t controlHeight, std::int32_t x,
                 std::int32_t y);

    // The left button. Behind startDrag the timer stands still and the mouse is captured.
    LabelPress Press(const LabelLayout& layout, std::int32_t controlHeight, std::int32_t x,
                     std::int32_t y);
    // Nothing unless a drag is on.
    void DragTo(const LabelLayout& layout, std::int32_t y);
    // Whether a drag has ended; then the scrolling goes on with a step at once.
    bool Release();
};

}  // namespace orvane
