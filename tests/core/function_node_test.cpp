#include "core/function_node.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace orvane {
namespace {

// root ( a ( b, c ), d, e ( f ) )
struct SmallTree {
    NodePool pool;
    FunctionNode root;
    FunctionNode *a, *b, *c, *d, *e, *f;

    SmallTree() {
        pool.Reserve(6);
        AddChildren(root, 3);
        a = &root.children[0];
        d = &root.children[1];
        e = &root.children[2];
        AddChildren(*a, 2);
        b = &a->children[0];
        c = &a->children[1];
        AddChildren(*e, 1);
        f = &e->children[0];
    }

    void AddChildren(FunctionNode& node, std::size_t count) {
        node.children = pool.Take(count);
        for (FunctionNode& child : node.children) child.parent = &node;
    }
};

TEST(FunctionNode, IsEmptyWhenNew) {
    const FunctionNode node;
    EXPECT_EQ(node.text, "");
    EXPECT_EQ(node.functionName, "");
    EXPECT_EQ(node.variableName, "");
    EXPECT_EQ(node.keyword, nullptr);
    EXPECT_TRUE(node.children.empty());
    EXPECT_EQ(node.kind, NodeKind::none);
    EXPECT_FALSE(node.evaluated);
    EXPECT_FALSE(node.keepNonFinite);
    EXPECT_EQ(node.result.RowCount(), 0);
    EXPECT_EQ(node.staged.RowCount(), 0);
}

TEST(NodeKind, HasFixedValues) {
    EXPECT_EQ(static_cast<int>(NodeKind::none), 0);
    EXPECT_EQ(static_cast<int>(NodeKind::number), 10);
    EXPECT_EQ(static_cast<int>(NodeKind::function), 20);
    EXPECT_EQ(static_cast<int>(NodeKind::brace), 30);
    EXPECT_EQ(static_cast<int>(NodeKind::formulaReference), 40);
    EXPECT_EQ(static_cast<int>(NodeKind::variable), 50);
}

std::vector<const FunctionNode*> Walk(FunctionNode* top) {
    std::vector<const FunctionNode*> nodes;
    for (FunctionNode* node = top; node != nullptr; node = NextInTree(top, node)) {
        nodes.push_back(node);
    }
    return nodes;
}

TEST(NextInTree, MeetsParentsBeforeTheirChildrenInOrder) {
    SmallTree tree;
    const std::vector<const FunctionNode*> all = {&tree.root, tree.a, tree.b, tree.c,
                                                  tree.d,     tree.e, tree.f};
    EXPECT_EQ(Walk(&tree.root), all);
}

TEST(NextInTree, StaysInsideTheTreeOfItsTop) {
    SmallTree tree;
    EXPECT_EQ(Walk(tree.a), (std::vector<const FunctionNode*>{tree.a, tree.b, tree.c}));
    EXPECT_EQ(Walk(tree.d), (std::vector<const FunctionNode*>{tree.d}));
    EXPECT_EQ(Walk(tree.e), (std::vector<const FunctionNode*>{tree.e, tree.f}));
}

TEST(NextInTree, LeavesOutWhatLiesUnderANode) {
    SmallTree tree;
    EXPECT_EQ(NextInTree(&tree.root, tree.a, false), tree.d);
    EXPECT_EQ(NextInTree(&tree.root, tree.c, false), tree.d);
    EXPECT_EQ(NextInTree(&tree.root, tree.e, false), nullptr);
    EXPECT_EQ(NextInTree(&tree.root, &tree.root, false), nullptr);
}

TEST(NodePool, GivesNeighboursAndMovesNothing) {
    NodePool pool;
    pool.Reserve(3);
    const std::span<FunctionNode> first = pool.Take(2);
    first[0].cursor = 7;
    first[1].cursor = 8;
    pool.Reserve(100);
    const std::span<FunctionNode> second = pool.Take(100);
    EXPECT_EQ(second.size(), 100u);
    EXPECT_EQ(first[0].cursor, 7);
    EXPECT_EQ(first[1].cursor, 8);
    EXPECT_EQ(pool.Take(0).size(), 0u);
}

TEST(NodePool, HandsOutFreshNodesAgainWhenItIsReset) {
    NodePool pool;
    pool.Reset();
    pool.Reserve(4);
    const FunctionNode* const place = pool.Take(1).data();
    for (int round = 0; round < 3; ++round) {
        pool.Reset();
        pool.Reserve(4);
        const std::span<FunctionNode> nodes = pool.Take(4);
        EXPECT_EQ(nodes.data(), place);
        for (FunctionNode& node : nodes) {
            EXPECT_EQ(node.kind, NodeKind::none);
            EXPECT_EQ(node.result.RowCount(), 0);
            EXPECT_FALSE(node.evaluated);
            EXPECT_TRUE(node.children.empty());
            node.kind = NodeKind::brace;
            node.evaluated = true;
            node.children = nodes;
            node.result.AppendRow(5);
        }
        pool.Reserve(100);
        for (FunctionNode& node : pool.Take(100)) node.result.AppendRow(5);
    }
    pool.Reset();
    EXPECT_EQ(tableRoom.load(), 0);
}

void MakeEvaluated(FunctionNode& node, NodeKind kind, double value) {
    node.kind = kind;
    node.result.SetReal(value);
    node.staged.SetReal(value);
    node.evaluated = true;
}

TEST(ExpandVariable, SetsItsVariableAndClearsWhatMayDependOnIt) {
    SmallTree tree;
    MakeEvaluated(tree.root, NodeKind::function, 1);
    MakeEvaluated(*tree.a, NodeKind::brace, 2);
    MakeEvaluated(*tree.b, NodeKind::variable, 3);
    tree.b->variableName = "x";
    MakeEvaluated(*tree.c, NodeKind::variable, 4);
    tree.c->variableName = "y";
    MakeEvaluated(*tree.d, NodeKind::number, 5);
    MakeEvaluated(*tree.e, NodeKind::formulaReference, 6);
    MakeEvaluated(*tree.f, NodeKind::variable, 7);
    tree.f->variableName = "x";

    ExpandVariable(tree.root, "x", 0.5);

    for (const FunctionNode* cleared : {&tree.root, tree.a}) {
        EXPECT_FALSE(cleared->evaluated);
        EXPECT_EQ(cleared->result.RowCount(), 0);
        EXPECT_EQ(cleared->staged.RowCount(), 0);
    }
    EXPECT_TRUE(tree.b->evaluated);
    EXPECT_TRUE(tree.b->result.IsScalar());
    EXPECT_EQ(tree.b->result.At(0, 0), 0.5);
    EXPECT_EQ(tree.b->staged.RowCount(), 0);
    // Another variable, a number and a reference stay, and so does what lies under them.
    EXPECT_EQ(tree.c->result.At(0, 0), 4);
    EXPECT_TRUE(tree.c->evaluated);
    EXPECT_EQ(tree.d->result.At(0, 0), 5);
    EXPECT_TRUE(tree.d->evaluated);
    EXPECT_EQ(tree.e->result.At(0, 0), 6);
    EXPECT_TRUE(tree.e->evaluated);
    EXPECT_EQ(tree.f->result.At(0, 0), 7);
}

TEST(ExpandVariable, ComparesNamesExactly) {
    FunctionNode node;
    node.kind = NodeKind::variable;
    node.variableName = "x";
    ExpandVariable(node, "X", 1);
    EXPECT_FALSE(node.evaluated);
    ExpandVariable(node, "xx", 1);
    EXPECT_FALSE(node.evaluated);
    ExpandVariable(node, "x", 1);
    EXPECT_TRUE(node.evaluated);
    EXPECT_EQ(node.result.At(0, 0), 1);
    // The value of the next step takes the place of the last one.
    ExpandVariable(node, "x", 2);
    EXPECT_TRUE(node.result.IsScalar());
    EXPECT_EQ(node.result.At(0, 0), 2);
}

TEST(ExpandVariable, StaysInItsOwnTree) {
    SmallTree tree;
    for (FunctionNode* node : {&tree.root, tree.a, tree.b, tree.c, tree.d, tree.e, tree.f}) {
        MakeEvaluated(*node, NodeKind::function, 1);
    }
    ExpandVariable(*tree.a, "x", 1);
    EXPECT_FALSE(tree.a->evaluated);
    EXPECT_FALSE(tree.c->evaluated);
    EXPECT_TRUE(tree.root.evaluated);
    EXPECT_TRUE(tree.d->evaluated);
}

TEST(MarkStepTerm, MarksAllDescendantsAndNotTheNodeItself) {
    SmallTree tree;
    MarkStepTerm(tree.root);
    EXPECT_FALSE(tree.root.keepNonFinite);
    for (const FunctionNode* node : {tree.a, tree.b, tree.c, tree.d, tree.e, tree.f}) {
        EXPECT_TRUE(node->keepNonFinite);
    }
}

TEST(MarkStepTerm, StaysBelowItsNode) {
    SmallTree tree;
    MarkStepTerm(*tree.a);
    EXPECT_TRUE(tree.b->keepNonFinite);
    EXPECT_TRUE(tree.c->keepNonFinite);
    for (const FunctionNode* node : {&tree.root, tree.a, tree.d, tree.e, tree.f}) {
        EXPECT_FALSE(node->keepNonFinite);
    }
}

}  // namespace
}  // namespace orvane
