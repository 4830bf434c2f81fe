#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/function_node.h"
#include "storage/text_colours.h"

// The picture of a node tree for whoever works on the calculation: one framed box of text for each
// node, its children in a column to the right of it. Sizes and places are pixels. Trees may nest as
// deep as memory allows.

namespace orvane {

inline constexpr std::int32_t nodeBoxWidth = 160;
inline constexpr std::int32_t nodeColumnStep = 185;    // from a box's left edge to its children's
inline constexpr std::int32_t nodeDrawingOrigin = 10;  // left and top of the root's box

// The two colours of a 3-D frame.
struct NodeFrame {
    Colour topLeft = 0;
    Colour bottomRight = 0;
};

// None for a formula reference, which no kind of its own is shown for.
std::optional<NodeFrame> FrameOf(NodeKind kind);

// The text in the node's box; each line of it ends with a line feed.
std::string NodeText(const FunctionNode& node);

struct NodeLine {
    std::int32_t fromX = 0, fromY = 0, toX = 0, toY = 0;

    bool operator==(const NodeLine&) const = default;
};

struct NodeRect {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;  // right and bottom lie outside
};

bool Intersect(const NodeRect& left, const NodeRect& right);

// The part of the line that runs through the rectangle, ends rounded to whole pixels; none where it
// misses it. A line that lies in it whole stays as it is.
std::optional<NodeLine> ClipLine(const NodeLine& line, const NodeRect& rect);

struct NodeBox {
    const FunctionNode* node = nullptr;
    std::int32_t left = 0, top = 0, height = 0;
    std::optional<NodeLine> line;  // from the parent's box; drawn ahead of this box

    // The frame is drawn twice: around the box, and one pixel further in.
    NodeRect Outer() const;
    NodeRect Inner() const;
    // Where the text starts and is cut off.
    NodeRect TextArea() const;
};

// Sets `boxHeight` and `treeHeight` of every node of the tree. A box is as high as its text asks
// for; a tree covers its own box with a gap below it, and all trees of its children.
void MeasureNodeTree(FunctionNode& root, std::int32_t lineHeight);

// Every box of a measured tree in the order of drawing: a node ahead of its children, children in
// order, each with all that is below it ahead of the next.
std::vector<NodeBox> PlaceNodeTree(FunctionNode& root, std::int32_t left, std::int32_t top);

}  // namespace orvane
