#include "core/evaluation.h"

#include "core/error_text.h"
#include "core/run_stop.h"
#include "functions/keyword_table.h"

namespace orvane {

namespace {

// One walk over a tree, from the node that is asked for down to what it needs and back up.
class Evaluation {
public:
    Evaluation(int index, const CalcParameters& options, std::string& error, bool keepsValues)
        : sentence(index), parameters(options), errorText(error), keepValues(keepsValues) {}

    void Run(FunctionNode& top) {
        FunctionNode* node = Start(top) ? &top : nullptr;
        while (node != nullptr) {
            if (FunctionNode* needed = NextNeeded(*node)) {
                node = Start(*needed) ? needed : nullptr;
            } else if (!errorText.empty() || !Finish(*node) || node == &top) {
                node = nullptr;
            } else {
                node = node->parent;
            }
        }
    }

private:
    static bool IsOpen(const FunctionNode& node) {
        return !node.evaluated && node.kind != NodeKind::variable;
    }

    FamilyCall CallOf(FunctionNode& node) const {
        return {node, node.keyword, sentence, parameters, errorText};
    }

    // A bracket without a word is a list, which the vector builder serves.
    static const FamilyEntry& FamilyFor(const FunctionNode& node) {
        return FamilyOf(node.keyword != nullptr ? node.keyword->group : KeywordGroup::vector);
    }

    bool Start(FunctionNode& node) {
        node.cursor = 0;
        if (node.functionName.empty() || node.keyword != nullptr) return true;
        return FunctionErrorText({"E001-", "01"}, sentence, node.functionName, "unknown function",
                                 errorText);
    }

    // The child that must be evaluated before anything else can happen to the node; null when
    // there is none any more, and after an error.
    FunctionNode* NextNeeded(FunctionNode& node) {
        switch (FamilyFor(node).children) {
            case ChildRule::none:
                return nullptr;
            case ChildRule::chosen:
                return NextChosen(node);
            case ChildRule::all:
                break;
        }
        while (static_cast<std::size_t>(node.cursor) < node.children.size()) {
            FunctionNode& child = node.children[static_cast<std::size_t>(node.cursor++)];
            if (IsOpen(child)) return &child;
        }
        return nullptr;
    }

    // First the child that decides, then the one that it picks.
    FunctionNode* NextChosen(FunctionNode& node) {
        while (node.cursor < 2) {
            FunctionNode* child = FamilyFor(node).choose(CallOf(node), node.cursor++ > 0);
            if (child == nullptr || IsOpen(*child)) return child;
        }
        return nullptr;
    }

    // Gives the node its value, now that all it needs is there.
    bool Finish(FunctionNode& node) {
        const FamilyEntry& family = FamilyFor(node);
        if (family.choose != nullptr) {
            node.result.CopyFrom(family.choose(CallOf(node), true)->result);
        } else if (family.evaluate != nullptr) {
            family.evaluate(CallOf(node));
        } else {
            FunctionErrorText({"E001-", "05"}, sentence, node.functionName, "unknown function type",
                              errorText);
        }
        if (!keepValues) ReleaseTables(node);
        if (errorText.empty() && node.result.HasTable()) RequireRoom(node);
        // What was asked to stop has left half a value.
        TakeStop(parameters.stop, errorText);
        node.evaluated = errorText.empty();
        return node.evaluated;
    }

    // Nothing asks for these any more.
    static void ReleaseTables(FunctionNode& node) {
        node.staged.ReleaseTable();
        for (FunctionNode& child : node.children) child.result.ReleaseTable();
    }

    void RequireRoom(FunctionNode& node) {
        if (tableRoom.load(std::memory_order_relaxed) <= mostTableRoom) return;
        node.result.ReleaseTable();
        NodeErrorText({"E001-", "06"}, sentence, node, "values of the sheet are too large",
                      errorText);
    }

    int sentence;
    const CalcParameters& parameters;
    std::string& errorText;
    bool keepValues;
};

}  // namespace

void EvaluateNode(FunctionNode& node, int sentence, const CalcParameters& parameters,
                  std::string& errorText, bool keepValues) {
    if (!errorText.empty() || node.evaluated || node.kind == NodeKind::variable) return;
    Evaluation(sentence, parameters, errorText, keepValues).Run(node);
}

}  // namespace orvane
