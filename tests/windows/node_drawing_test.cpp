#include "windows/node_drawing.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

void PrintTo(const NodeLine& line, std::ostream* out) {
    *out << line.fromX << ' ' << line.fromY << " to " << line.toX << ' ' << line.toY;
}

namespace {

void Adopt(FunctionNode& parent, std::span<FunctionNode> children) {
    parent.children = children;
    for (FunctionNode& child : children) child.parent = &parent;
}

TEST(FrameOf, HasTwoColoursForEachKindThatIsShown) {
    struct Row {
        NodeKind kind;
        Colour topLeft, bottomRight;
    };
    constexpr Row rows[] = {{NodeKind::none, 0x0000FF, 0x0000FF},
                            {NodeKind::number, 0x000000, 0xFFFFFF},
                            {NodeKind::function, 0xFFFFFF, 0x000000},
                            {NodeKind::brace, 0xFF0000, 0xFF0000},
                            {NodeKind::variable, 0x000000, 0x000000}};
    for (const Row& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.kind));
        const std::optional<NodeFrame> frame = FrameOf(row.kind);
        ASSERT_TRUE(frame);
        EXPECT_EQ(frame->topLeft, row.topLeft);
        EXPECT_EQ(frame->bottomRight, row.bottomRight);
    }
    EXPECT_FALSE(FrameOf(NodeKind::formulaReference));
}

TEST(NodeText, StartsWithTheKind) {
    constexpr std::string_view rest = "--------------- Done\n--------------- Pick\n";
    struct Row {
        NodeKind kind;
        std::string_view functionName, variableName;
        bool evaluated;
        std::string_view head;
    };
    constexpr Row rows[] = {
        {NodeKind::none, "", "", false, "type: none - not\n"},
        {NodeKind::none, "", "", true, "type: none - yes\n"},
        {NodeKind::number, "", "", true, "type: number - yes\n"},
        {NodeKind::function, "sin", "", false, "function: sin - not\n"},
        {NodeKind::function, "", "", false, "function:  - not\n"},
        {NodeKind::brace, "", "", true, "type: brace - yes\n"},
        {NodeKind::variable, "", "x", true, "variable: x - yes\n"},
        {NodeKind::formulaReference, "", "", true, " - yes\n"},
        {NodeKind::formulaReference, "", "", false, " - not\n"},
        {NodeKind::none, "sinn", "", false, "type: none - not\nerror function: sinn\n"},
        {NodeKind::variable, "f", "x", true, "variable: x - yes\nerror function: f\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.head);
        FunctionNode node;
        node.kind = row.kind;
        node.functionName = row.functionName;
        node.variableName = row.variableName;
        node.evaluated = row.evaluated;
        EXPECT_EQ(NodeText(node), std::string(row.head).append(rest));
    }
}

TEST(NodeText, ShowsBothValuesWithOneDecimal) {
    FunctionNode node;
    node.kind = NodeKind::number;
    node.evaluated = true;
    node.result.SetReal(2.25);
    node.staged.AppendRow(2);
    node.staged.AppendRow(2);
    EXPECT_EQ(NodeText(node), "type: number - yes\n--------------- Done\n" + node.result.ToText(1) +
                                  "--------------- Pick\n0.0,0.0\n0.0,0.0\n");
    EXPECT_EQ(node.result.ToText(1), "2.2\n");
}

TEST(MeasureNodeTree, MakesRoomForTheTextAndTheChildren) {
    FunctionNode root;
    FunctionNode children[3];
    Adopt(root, children);
    root.kind = NodeKind::function;
    children[1].result.SetReal(1.0);
    MeasureNodeTree(root, 16);
    for (const FunctionNode* node : {&root, &children[0], &children[2]}) {
        EXPECT_EQ(node->boxHeight, 3 * 16 + 6);
    }
    EXPECT_EQ(children[1].boxHeight, 4 * 16 + 6);
    for (const FunctionNode& child : children) EXPECT_GE(child.treeHeight, child.boxHeight);
    EXPECT_EQ(root.treeHeight,
              children[0].treeHeight + children[1].treeHeight + children[2].treeHeight);
    const NodeBox box = {&root, 10, 10, root.boxHeight, std::nullopt};
    const NodeRect text = box.TextArea();
    EXPECT_GE(text.bottom - text.top, 3 * 16);
}

TEST(MeasureNodeTree, CoversABoxHigherThanItsChildren) {
    FunctionNode root;
    FunctionNode child[1];
    Adopt(root, child);
    for (int row = 0; row < 50; ++row) root.result.AppendRow(1);
    MeasureNodeTree(root, 10);
    EXPECT_EQ(root.boxHeight, 53 * 10 + 6);
    EXPECT_GE(root.treeHeight, root.boxHeight);
    EXPECT_LT(child[0].treeHeight, root.boxHeight);
}

TEST(NodeBox, ShrinksByFrameAndMargin) {
    const NodeBox box = {nullptr, 10, 20, 54, std::nullopt};
    const auto expect = [](const NodeRect& rect, std::vector<std::int32_t> sides) {
        EXPECT_EQ((std::vector<std::int32_t>{rect.left, rect.top, rect.right, rect.bottom}), sides);
    };
    expect(box.Outer(), {10, 20, 170, 74});
    expect(box.Inner(), {11, 21, 169, 73});
    expect(box.TextArea(), {15, 23, 169, 73});
}

TEST(PlaceNodeTree, PutsChildrenInAColumnWithLinesToTheirMiddles) {
    FunctionNode root;
    FunctionNode children[3];
    FunctionNode grandChildren[2];
    Adopt(root, children);
    Adopt(children[0], grandChildren);
    const auto size = [](FunctionNode& node, std::int32_t box, std::int32_t tree) {
        node.boxHeight = box;
        node.treeHeight = tree;
    };
    size(root, 61, 300);
    size(children[0], 50, 120);
    size(grandChildren[0], 40, 55);
    size(grandChildren[1], 43, 65);
    size(children[1], 51, 60);
    size(children[2], 52, 70);
    const std::vector<NodeBox> boxes = PlaceNodeTree(root, 10, 10);

    struct Row {
        const FunctionNode* node;
        std::int32_t left, top, height, fromX, fromY, toX, toY;
    };
    const Row rows[] = {
        {&root, 10, 10, 61, 0, 0, 0, 0},
        {&children[0], 195, 10, 50, 170, 40, 195, 35},
        {&grandChildren[0], 380, 10, 40, 355, 35, 380, 30},
        {&grandChildren[1], 380, 65, 43, 355, 35, 380, 86},
        {&children[1], 195, 130, 51, 170, 40, 195, 155},
        {&children[2], 195, 190, 52, 170, 40, 195, 216},
    };
    ASSERT_EQ(boxes.size(), std::size(rows));
    for (std::size_t at = 0; at < boxes.size(); ++at) {
        SCOPED_TRACE(at);
        const NodeBox& box = boxes[at];
        EXPECT_EQ(box.node, rows[at].node);
        EXPECT_EQ(box.left, rows[at].left);
        EXPECT_EQ(box.top, rows[at].top);
        EXPECT_EQ(box.height, rows[at].height);
        ASSERT_EQ(box.line.has_value(), at > 0);
        if (at == 0) continue;
        EXPECT_EQ(box.line->fromX, rows[at].fromX);
        EXPECT_EQ(box.line->fromY, rows[at].fromY);
        EXPECT_EQ(box.line->toX, rows[at].toX);
        EXPECT_EQ(box.line->toY, rows[at].toY);
    }
}

TEST(Intersect, NeedsAPixelInCommon) {
    constexpr NodeRect rect = {10, 20, 30, 40};
    struct Row {
        NodeRect other;
        bool intersects;
    };
    constexpr Row rows[] = {
        {{10, 20, 30, 40}, true},  {{0, 0, 100, 100}, true},  {{15, 25, 16, 26}, true},
        {{29, 39, 50, 50}, true},  {{30, 20, 50, 40}, false}, {{0, 20, 10, 40}, false},
        {{10, 40, 30, 60}, false}, {{10, 0, 30, 20}, false},  {{0, 0, 11, 21}, true}};
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.other.left << ' ' << row.other.top);
        EXPECT_EQ(Intersect(rect, row.other), row.intersects);
        EXPECT_EQ(Intersect(row.other, rect), row.intersects);
    }
}

// The rectangle's pixels go from 0 to 99 and from 0 to 49.
TEST(ClipLine, KeepsThePartInTheRectangle) {
    constexpr NodeRect rect = {0, 0, 100, 50};
    constexpr std::int32_t far = 1'000'000'000;
    struct Row {
        NodeLine line;
        std::optional<NodeLine> part;
    };
    const Row rows[] = {
        {{3, 4, 90, 30}, NodeLine{3, 4, 90, 30}},
        {{0, 0, 99, 49}, NodeLine{0, 0, 99, 49}},
        {{7, 7, 7, 7}, NodeLine{7, 7, 7, 7}},
        {{-100, 10, 200, 10}, NodeLine{0, 10, 99, 10}},
        {{200, 10, -100, 10}, NodeLine{99, 10, 0, 10}},
        {{20, -30, 20, 80}, NodeLine{20, 0, 20, 49}},
        {{-10, -10, 200, 200}, NodeLine{0, 0, 49, 49}},
        {{10, 20, 10, far}, NodeLine{10, 20, 10, 49}},
        {{40, -far, 65, far}, NodeLine{53, 0, 53, 49}},  // 52.5, away from zero
        {{-far, -far, far, far}, NodeLine{0, 0, 49, 49}},
        {{-1, 0, -1, 49}, std::nullopt},
        {{100, 0, 100, 49}, std::nullopt},
        {{0, -1, 99, -1}, std::nullopt},
        {{0, 50, 99, 50}, std::nullopt},
        {{-30, 10, -2, 12}, std::nullopt},
        {{-20, 40, 20, 80}, std::nullopt},  // past the corner
        {{150, 150, 150, 150}, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.line.fromX << ' ' << row.line.fromY);
        EXPECT_EQ(ClipLine(row.line, rect), row.part);
    }
}

TEST(PlaceNodeTree, DrawsASubtreeOnItsOwn) {
    FunctionNode root;
    FunctionNode children[2];
    FunctionNode grandChild[1];
    Adopt(root, children);
    Adopt(children[0], grandChild);
    MeasureNodeTree(children[0], 12);
    const std::vector<NodeBox> boxes =
        PlaceNodeTree(children[0], nodeDrawingOrigin, nodeDrawingOrigin);
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_EQ(boxes[0].left, 10);
    EXPECT_EQ(boxes[0].top, 10);
    EXPECT_EQ(boxes[1].node, &grandChild[0]);
    EXPECT_EQ(children[1].boxHeight, 0);
}

TEST(PlaceNodeTree, TakesDeepAndWideTrees) {
    constexpr std::size_t count = 100'000;
    std::vector<FunctionNode> chain(count);
    for (std::size_t at = 0; at + 1 < count; ++at) Adopt(chain[at], {&chain[at + 1], 1});
    MeasureNodeTree(chain[0], 16);
    std::vector<NodeBox> boxes = PlaceNodeTree(chain[0], 10, 10);
    ASSERT_EQ(boxes.size(), count);
    EXPECT_EQ(boxes.back().left, 10 + 185 * (static_cast<std::int32_t>(count) - 1));
    EXPECT_EQ(boxes.back().top, 10);
    EXPECT_EQ(chain[0].treeHeight, chain[count - 1].treeHeight);

    FunctionNode root;
    std::vector<FunctionNode> row(count);
    Adopt(root, row);
    MeasureNodeTree(root, 16);
    boxes = PlaceNodeTree(root, 10, 10);
    ASSERT_EQ(boxes.size(), count + 1);
    EXPECT_EQ(boxes.back().top, 10 + row[0].treeHeight * (static_cast<std::int32_t>(count) - 1));
    EXPECT_EQ(root.treeHeight, row[0].treeHeight * static_cast<std::int32_t>(count));

    // Too high for any screen: places stop growing, and nothing overflows.
    MeasureNodeTree(root, 1'000'000'000);
    EXPECT_EQ(root.treeHeight, 1'000'000'000);
    EXPECT_EQ(PlaceNodeTree(root, 10, 10).back().top, 1'000'000'000);
}

}  // namespace
}  // namespace orvane
