#include "windows/node_drawing.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr std::int32_t frameInset = 1;
constexpr std::int32_t textInsetLeft = 4;
constexpr std::int32_t textInsetTop = 2;
// Above the text and below it: both frames, and what the text keeps away from them.
constexpr std::int32_t boxMargins = 2 * (frameInset + textInsetTop);
constexpr std::int32_t gapBelowBox = 10;

// No place lies further out, so that sums of two places stay in range for trees of any size.
constexpr std::int64_t farthest = 1'000'000'000;

std::int32_t Limited(std::int64_t place) {
    return static_cast<std::int32_t>(std::clamp(place, -farthest, farthest));
}

std::string FirstLine(const FunctionNode& node) {
    switch (node.kind) {
        case NodeKind::none:
            return "type: none";
        case NodeKind::number:
            return "type: number";
        case NodeKind::function:
            return std::string("function: ").append(node.functionName);
        case NodeKind::brace:
            return "type: brace";
        case NodeKind::variable:
            return std::string("variable: ").append(node.variableName);
        case NodeKind::formulaReference:
            break;
    }
    return {};
}

// A node on the way from the root to the node that is being placed.
struct PlacedNode {
    const FunctionNode* node;
    std::int32_t left, top;
};

NodeLine LineBetween(const PlacedNode& parent, const PlacedNode& child) {
    return {Limited(std::int64_t{parent.left} + nodeBoxWidth),
            Limited(std::int64_t{parent.top} + parent.node->boxHeight / 2), child.left,
            Limited(std::int64_t{child.top} + child.node->boxHeight / 2)};
}

}  // namespace

std::optional<NodeFrame> FrameOf(NodeKind kind) {
    constexpr Colour black = ColourFrom(0, 0, 0);
    constexpr Colour white = ColourFrom(255, 255, 255);
    constexpr Colour red = ColourFrom(255, 0, 0);
    constexpr Colour blue = ColourFrom(0, 0, 255);
    switch (kind) {
        case NodeKind::none:
            return NodeFrame{red, red};
        case NodeKind::number:
            return NodeFrame{black, white};
        case NodeKind::function:
            return NodeFrame{white, black};
        case NodeKind::brace:
            return NodeFrame{blue, blue};
        case NodeKind::variable:
            return NodeFrame{black, black};
        case NodeKind::formulaReference:
            break;
    }
    return std::nullopt;
}

std::string NodeText(const FunctionNode& node) {
    std::string text = FirstLine(node);
    text += node.evaluated ? " - yes\n" : " - not\n";
    if (!node.functionName.empty() && node.kind != NodeKind::function) {
        text += "error function: ";
        text += node.functionName;
        text += '\n';
    }
    text += "--------------- Done\n";
    text += node.result.ToText(1);
    text += "--------------- Pick\n";
    text += node.staged.ToText(1);
    return text;
}

bool Intersect(const NodeRect& left, const NodeRect& right) {
    return left.left < right.right && right.left < left.right && left.top < right.bottom &&
           right.top < left.bottom;
}

// The part is kept as two shares of the way, 0 where the line starts and 1 where it ends, and each
// side of the rectangle moves one of them: the method of Liang and Barsky.
std::optional<NodeLine> ClipLine(const NodeLine& line, const NodeRect& rect) {
    const double wayX = static_cast<double>(line.toX) - line.fromX;
    const double wayY = static_cast<double>(line.toY) - line.fromY;
    double first = 0.0;
    double last = 1.0;
    // `way` leads out of the side, which lies `distance` ahead of the start.
    const auto clip = [&](double way, double distance) {
        if (way > 0) last = std::min(last, distance / way);
        if (way < 0) first = std::max(first, distance / way);
        return way != 0 || distance >= 0;
    };
    const bool isInside = clip(-wayX, static_cast<double>(line.fromX) - rect.left) &&
                          clip(wayX, rect.right - 1.0 - line.fromX) &&
                          clip(-wayY, static_cast<double>(line.fromY) - rect.top) &&
                          clip(wayY, rect.bottom - 1.0 - line.fromY);
    if (!isInside || first > last) return std::nullopt;
    const auto at = [](std::int32_t from, double way, double share) {
        return static_cast<std::int32_t>(std::lround(from + way * share));
    };
    return NodeLine{at(line.fromX, wayX, first), at(line.fromY, wayY, first),
                    at(line.fromX, wayX, last), at(line.fromY, wayY, last)};
}

NodeRect NodeBox::Outer() const {
    return {left, top, Limited(std::int64_t{left} + nodeBoxWidth),
            Limited(std::int64_t{top} + height)};
}

NodeRect NodeBox::Inner() const {
    const NodeRect outer = Outer();
    return {outer.left + frameInset, outer.top + frameInset, outer.right - frameInset,
            outer.bottom - frameInset};
}

NodeRect NodeBox::TextArea() const {
    const NodeRect inner = Inner();
    return {inner.left + textInsetLeft, inner.top + textInsetTop, inner.right, inner.bottom};
}

void MeasureNodeTree(FunctionNode& root, std::int32_t lineHeight) {
    std::vector<FunctionNode*> nodes;
    for (FunctionNode* node = &root; node != nullptr; node = NextInTree(&root, node)) {
        nodes.push_back(node);
    }
    // From the last to the first, so that the children's heights are known.
    for (std::size_t left = nodes.size(); left > 0; --left) {
        FunctionNode& node = *nodes[left - 1];
        const std::string text = NodeText(node);
        const std::int64_t lines = std::count(text.begin(), text.end(), '\n');
        std::int64_t childHeights = 0;
        for (const FunctionNode& child : node.children) childHeights += child.treeHeight;
        node.boxHeight = Limited(lines * lineHeight + boxMargins);
        node.treeHeight =
            Limited(std::max(std::int64_t{node.boxHeight} + gapBelowBox, childHeights));
    }
}

std::vector<NodeBox> PlaceNodeTree(FunctionNode& root, std::int32_t left, std::int32_t top) {
    std::vector<NodeBox> boxes;
    std::vector<PlacedNode> path = {{&root, left, top}};
    boxes.push_back({&root, left, top, root.boxHeight, std::nullopt});
    for (FunctionNode* node = NextInTree(&root, &root); node != nullptr;
         node = NextInTree(&root, node)) {
        PlacedNode placed = {node, 0, 0};
        if (node == &node->parent->children.front()) {
            placed.left = Limited(std::int64_t{path.back().left} + nodeColumnStep);
            placed.top = path.back().top;
        } else {
            while (path.back().node != node - 1) path.pop_back();
            const PlacedNode& before = path.back();
            placed.left = before.left;
            placed.top = Limited(std::int64_t{before.top} + before.node->treeHeight);
            path.pop_back();
        }
        boxes.push_back(
            {node, placed.left, placed.top, node->boxHeight, LineBetween(path.back(), placed)});
        path.push_back(placed);
    }
    return boxes;
}

}  // namespace orvane
