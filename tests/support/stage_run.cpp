#include "tests/support/stage_run.h"

#include <array>

#include "core/compile_stages.h"

namespace orvane::test {

namespace {

constexpr std::array<Stage, 4> stagesBehindTheFirst = {StringFunctionPass, CheckNumbersAndPoints,
                                                       RewriteOperators, CheckSymbols};

std::string_view KindWord(NodeKind kind) {
    switch (kind) {
        case NodeKind::number:
            return "number ";
        case NodeKind::function:
            return "function ";
        case NodeKind::brace:
            return "brace";
        case NodeKind::formulaReference:
            return "reference ";
        case NodeKind::variable:
            return "variable ";
        default:
            return "none";
    }
}

std::string_view WordOf(const FunctionNode& node) {
    switch (node.kind) {
        case NodeKind::function:
            return node.functionName;
        case NodeKind::variable:
            return node.variableName;
        case NodeKind::number:
        case NodeKind::formulaReference:
            return node.text;
        default:
            return {};
    }
}

}  // namespace

StagedSheet RunStages(std::string_view sheet, int last) {
    StagedSheet staged;
    std::string text(sheet);
    AnalyseSentences(staged.sentences, text.data(), text.data() + text.size(), staged.errorText);
    for (int stage = 2; stage <= last && staged.errorText.empty(); ++stage) {
        stagesBehindTheFirst[static_cast<std::size_t>(stage - 2)](staged.sentences,
                                                                  staged.errorText, nullptr);
    }
    return staged;
}

StagedText RunStage(Stage stage, std::string_view formula) {
    SentenceList sentences;
    sentences.Add(formula);
    StagedText staged;
    stage(sentences, staged.error, nullptr);
    staged.text = sentences[0].text.View();
    return staged;
}

StagedText LastText(std::string_view sheet, int last) {
    const StagedSheet staged = RunStages(sheet, last);
    if (staged.sentences.IsEmpty()) return {{}, staged.errorText};
    const Sentence& sentence = staged.sentences[staged.sentences.Count() - 1];
    return {std::string(sentence.text.View()), staged.errorText};
}

std::string TreeText(const FunctionNode& root) {
    std::string text;
    // The walk only looks, but its form is made for callers that write.
    auto* top = const_cast<FunctionNode*>(&root);
    for (FunctionNode* node = top; node != nullptr; node = NextInTree(top, node)) {
        int depth = 0;
        for (const FunctionNode* at = node; at != top; at = at->parent) ++depth;
        if (!text.empty()) text += ", ";
        text += std::to_string(depth) + ' ';
        text.append(KindWord(node->kind)).append(WordOf(*node));
    }
    return text;
}

std::string Repeat(std::string_view piece, int count) {
    std::string text;
    text.reserve(piece.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) text += piece;
    return text;
}

}  // namespace orvane::test
