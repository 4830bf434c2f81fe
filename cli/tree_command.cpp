#include <memory>

#include "cli/commands.h"
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
void AppendValue(std::string& output, const Value& value) {
    if (value.complexMark) output += "complex ";
    const bool bare = value.IsScalar();
    if (!bare) output += '(';
    for (std::int32_t row = 0; row < value.RowCount(); ++row) {
        if (row > 0) output += "; ";
        const ConstValueRow cells = value.Row(row);
        for (std::size_t column = 0; column < cells.size(); ++column) {
            if (column > 0) output += ", ";
            output += FormatShortest(cells[column]);
        }
    }
    if (!bare) output += ')';
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

void AppendNode(std::string& output, const FunctionNode& node, int depth) {
    AppendIndent(output, depth);
    output += KindName(node.kind);
    if (const std::string_view name = NameOf(node); !name.empty()) output.append(" ").append(name);
    if (node.evaluated) {
        output += " = ";
        AppendValue(output, node.result);
    } else {
        output += ", not evaluated";
    }
    output += '\n';
}

void AppendTree(std::string& output, FunctionNode& root) {
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

void AppendSentence(std::string& output, Sentence& sentence, int number) {
    output += "Sentence " + std::to_string(number);
    if (!sentence.header.empty()) output += ", " + sentence.header;
    if (!sentence.name.empty()) output += ", " + sentence.name;
    output += '\n';
    AppendTree(output, sentence.root);
    if (!sentence.error.empty()) output += "  " + sentence.error + "\n";
}

int ShowTrees(const RunOptions& options) {
    std::string output;
    RunWatchers watchers;
    watchers.wishes.keepTrees = true;
    watchers.finished = [&](const FinishedRun& run) {
        if (!run.errorText.empty()) {  // no tree was built
            output = run.errorText + "\n";
            return;
        }
        for (int index = 0; index < run.sentences.Count(); ++index) {
            if (!run.sentences[index].IsCalculation()) continue;
            AppendSentence(output, run.sentences[index], index + 1);
        }
    };
    const int status = RunSheet(options, watchers);
    return status == exitUsage ? exitUsage : PrintOutput(output, status);
}

}  // namespace

void AddTreeCommand(CLI::App& app, Action& action) {
    CLI::App& command = AddCommand(app, "tree", "Show the tree of every formula with its values");
    const auto options = std::make_shared<RunOptions>();
    AddSheetOptions(command, *options);
    command.callback([&action, options] { action = [options] { return ShowTrees(*options); }; });
}

}  // namespace orvane::cli
