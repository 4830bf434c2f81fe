#include <memory>

#include "cli/commands.h"
#include "cli/piecewise_text.h"
#include "cli/sheet_run.h"
#include "core/number_literal.h"

namespace orvane::cli {

namespace {

std::string_view KindName(NodeKind kind) {
    switch (kind) {
        case NodeKind::number:
            return "number";
        case NodeKind::function:
            return "function";
        case NodeKind::brace:
            return "brace";
        case NodeKind::formulaReference:
            return "formula";
        case NodeKind::variable:
            return "variable";
        case NodeKind::none:
            break;
    }
    return "none";
}

// The word that the node stands for; a number and a reference have only their text.
std::string_view NameOf(const FunctionNode& node) {
    if (!node.functionName.empty()) return node.functionName;
    if (!node.variableName.empty()) return node.variableName;
    return node.kind == NodeKind::formulaReference ? node.text : std::string_view();
}

// 3, (1, 2; 3, 4) or complex (1, 2)
void AppendValue(PiecewiseText& output, const Value& value) {
    if (value.complexMark) output.End() += "complex ";
    const bool bare = value.IsScalar();
    if (!bare) output.End() += '(';
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        if (row > 0) output.End() += "; ";
        const ConstValueRow cells = value.Row(row);
        for (std::size_t column = 0; column < cells.size(); ++column) {
            if (column > 0) output.End() += ", ";
            output.End() += FormatShortest(cells[column]);
            output.Offer();
        }
    }
    if (!bare) output.End() += ')';
}

// Two blanks for each level; a tree that is deeper than a page is wide shows its depth in figures.
void AppendIndent(std::string& output, int depth) {
    constexpr int deepestIndent = 40;
    if (depth <= deepestIndent) {
        output.append(static_cast<std::size_t>(depth) * 2, ' ');
    } else {
        output.append(static_cast<std::size_t>(deepestIndent) * 2, ' ');
        output += "[" + std::to_string(depth) + "] ";
    }
}

void AppendNode(PiecewiseText& output, const FunctionNode& node, int depth) {
    AppendIndent(output.End(), depth);
    output.End() += KindName(node.kind);
    if (const std::string_view name = NameOf(node); !name.empty()) {
        output.End().append(" ").append(name);
    }
    if (node.evaluated) {
        output.End() += " = ";
        AppendValue(output, node.result);
    } else {
        output.End() += ", not evaluated";
    }
    output.End() += '\n';
    output.Offer();
}

void AppendTree(PiecewiseText& output, FunctionNode& root) {
    int depth = 1;
    FunctionNode* node = &root;
    while (node != nullptr) {
        AppendNode(output, *node, depth);
        FunctionNode* const next = NextInTree(&root, node);
        if (!node->children.empty()) {
            ++depth;
        } else if (next != nullptr) {
            for (; node->parent != next->parent; node = node->parent) --depth;
        }
        node = next;
    }
}

void AppendSentence(PiecewiseText& output, Sentence& sentence, int number) {
    std::string& end = output.End();
    end += "Sentence " + std::to_string(number);
    if (!sentence.header.empty()) end.append(", ").append(sentence.header);
    if (!sentence.name.empty()) end.append(", ").append(sentence.name);
    end += '\n';
    AppendTree(output, sentence.root);
    if (!sentence.error.empty()) output.End().append("  ").append(sentence.error) += '\n';
}

void PrintTrees(const FinishedRun& run, PrintedOutput& output) {
    PiecewiseText text([&](std::string_view piece) { output.Print(piece); });
    if (!run.errorText.empty()) text.End() = run.errorText + "\n";  // no tree was built
    for (int index = 0; index < run.sentences.Count() && run.errorText.empty(); ++index) {
        if (!run.sentences[index].IsCalculation()) continue;
        AppendSentence(text, run.sentences[index], index + 1);
    }
    text.HandOn();
}

int ShowTrees(const RunOptions& options) {
    PrintedOutput output;
    RunWatchers watchers;
    watchers.wishes.keepTrees = true;
    watchers.finished = [&](const FinishedRun& run) { PrintTrees(run, output); };
    const int status = RunSheet(options, watchers);
    return output.Status(status);
}

}  // namespace

void AddTreeCommand(CLI::App& app, Action& action) {
    CLI::App& command = AddCommand(app, "tree", "Show the tree of every formula with its values");
    const auto options = std::make_shared<RunOptions>();
    AddSheetOptions(command, *options);
    command.callback([&action, options] { action = [options] { return ShowTrees(*options); }; });
}

}  // namespace orvane::cli
