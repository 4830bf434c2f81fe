#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "functions/value.h"

// The tree that a calculation sentence becomes. All walks over a tree go by `parent` and by the
// order of the children, never by recursion: a sentence may nest as deep as memory allows.

namespace orvane {

struct KeywordEntry;

enum class NodeKind : std::int32_t {
    none = 0,  // not built yet, or not built because of an error
    number = 10,
    function = 20,  // a word with a bracket behind it
    brace = 30,     // a bracket with no word in front
    formulaReference = 40,
    variable = 50,
};

struct FunctionNode {
    // Views into the sentence's text, which stands still from the moment the tree is built.
    std::string_view text;
    std::string_view functionName;  // empty for every kind but function
    std::string_view variableName;  // empty for every kind but variable

    // The row that the name stands for, found once when the node is built. None for an unknown
    // name and for the words that can't be called.
    const KeywordEntry* keyword = nullptr;
    FunctionNode* parent = nullptr;
    std::span<FunctionNode> children;  // owned by the pool of the sentence

    Value result;
    Value staged;  // the family's parameter staging area

    NodeKind kind = NodeKind::none;
    std::int32_t cursor = 0;                     // private to a walk that is under way
    std::int32_t boxHeight = 0, treeHeight = 0;  // for the node inspector alone
    bool evaluated = false;                      // `result` is valid
    bool keepNonFinite = false;                  // the families' finite test is off for this node
};

// The node behind `node` in the walk that meets a parent before its children, inside the tree of
// `top`; null at the end. With `intoChildren` clear, what lies under `node` is left out.
FunctionNode* NextInTree(const FunctionNode* top, FunctionNode* node, bool intoChildren = true);

// Owns the nodes below a sentence's root. Room is taken once for a whole tree, whose size is known
// from its text; children of one node are neighbours. When the tree is no longer needed, the pool
// can serve the next one.
class NodePool {
public:
    // Room for this many more nodes. Nodes handed out before stay where they are.
    void Reserve(std::size_t count);
    // That many fresh nodes in a row; no more than were reserved.
    std::span<FunctionNode> Take(std::size_t count);
    // Takes all nodes back, and makes them fresh. Room beyond the first block goes.
    void Reset();

private:
    std::vector<std::vector<FunctionNode>> blocks;  // none ever grows
    std::span<FunctionNode> unused;                 // the tail of the newest block
};

// One step of a sweep: every variable node of this name takes the value and counts as evaluated;
// numbers and formula references stay, with what lies under them, and so do other variables; all
// other nodes are cleared and must be evaluated again.
void ExpandVariable(FunctionNode& node, std::string_view variableName, double value);

// Switches the finite test of the normal, bit and point functions off for everything below the
// node, and not for the node itself. Other tests for what is not finite stay.
void MarkStepTerm(FunctionNode& node);

}  // namespace orvane
