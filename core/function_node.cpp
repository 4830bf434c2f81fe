#include "core/function_node.h"

namespace orvane {

FunctionNode* NextInTree(const FunctionNode* top, FunctionNode* node, bool intoChildren) {
    if (intoChildren && !node->children.empty()) return &node->children.front();
    while (node != top) {
        if (node != &node->parent->children.back()) return node + 1;
        node = node->parent;
    }
    return nullptr;
}

void NodePool::Reserve(std::size_t count) {
    if (count <= unused.size()) return;
    blocks.push_back(std::make_unique<FunctionNode[]>(count));
    unused = {blocks.back().get(), count};
}

std::span<FunctionNode> NodePool::Take(std::size_t count) {
    const std::span<FunctionNode> taken = unused.first(count);
    unused = unused.subspan(count);
    return taken;
}

void ExpandVariable(FunctionNode& node, std::string_view variableName, double value) {
    FunctionNode* at = &node;
    while (at != nullptr) {
        const bool fixed = at->kind == NodeKind::number || at->kind == NodeKind::formulaReference;
        if (at->kind == NodeKind::variable) {
            if (at->variableName == variableName) {
                at->staged.Clear();
                at->result.SetReal(value);
                at->evaluated = true;
            }
        } else if (!fixed) {
            at->result.Clear();
            at->staged.Clear();
            at->evaluated = false;
        }
        at = NextInTree(&node, at, !fixed);
    }
}

void MarkStepTerm(FunctionNode& node) {
    for (FunctionNode* at = NextInTree(&node, &node); at != nullptr; at = NextInTree(&node, at)) {
        at->keepNonFinite = true;
    }
}

}  // namespace orvane
