#include "core/function_node.h"

#include <memory>

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
    blocks.emplace_back(count);
    unused = blocks.back();
}

std::span<FunctionNode> NodePool::Take(std::size_t count) {
    const std::span<FunctionNode> taken = unused.first(count);
    unused = unused.subspan(count);
    return taken;
}

void NodePool::Reset() {
    if (blocks.empty()) return;
    const bool isFirst = blocks.size() == 1;
    blocks.resize(1);
    std::span<FunctionNode> used = blocks.front();
    if (isFirst) used = used.first(used.size() - unused.size());
    std::ranges::destroy(used);
    std::ranges::uninitialized_default_construct(used);
    unused = blocks.front();
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
