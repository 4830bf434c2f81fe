#include "core/compile_sheet.h"

#include <algorithm>

#include "core/compile_stages.h"
#include "core/evaluation.h"
#include "core/node_builder.h"
#include "core/substitution.h"

namespace orvane {

namespace {

struct CompileRun {
    SentenceList& sentences;
    char* textBegin;
    char* textEnd;
    const CalcParameters& parameters;
    bool keepTrees;
    std::string& errorText;
    bool anyFailed = false;  // of the sentences, in the last stage
};

struct CompileStage {
    std::string_view name;
    void (*run)(CompileRun& compile);
};

// The sheet is read stage by stage, each over all sentences, so that a fault of an early kind in
// the last sentence still comes before a fault of a later kind in the first.
constexpr CompileStage compileStages[] = {
    {"AnalyseSentences",
     [](CompileRun& compile) {
         AnalyseSentences(compile.sentences, compile.textBegin, compile.textEnd, compile.errorText);
     }},
    {"StringFunctionPass",
     [](CompileRun& compile) { StringFunctionPass(compile.sentences, compile.errorText); }},
    {"CheckNumbersAndPoints",
     [](CompileRun& compile) { CheckNumbersAndPoints(compile.sentences, compile.errorText); }},
    {"RewriteOperators",
     [](CompileRun& compile) { RewriteOperators(compile.sentences, compile.errorText); }},
    {"CheckSymbols",
     [](CompileRun& compile) { CheckSymbols(compile.sentences, compile.errorText); }},
    {"BuildAndEvaluate",
     [](CompileRun& compile) {
         compile.anyFailed = !BuildAndEvaluate(compile.sentences, compile.parameters,
                                               compile.keepTrees, compile.errorText);
     }},
};

void RemoveBlanks(EditBuffer& text) {
    char* const data = text.Data();
    char* const end = std::remove(data, data + text.length, ' ');
    text.Remove(static_cast<std::size_t>(end - data), static_cast<std::size_t>(text.length));
}

}  // namespace

bool BuildAndEvaluate(SentenceList& sentences, const CalcParameters& parameters, bool keepTrees,
                      std::string& errorText) {
    bool succeeded = true;
    for (int index = 0; index < sentences.Count(); ++index) {
        Sentence& sentence = sentences[index];
        if (!sentence.IsCalculation()) continue;
        FoldConstants(sentence.text);
        RemoveDoubledBrackets(sentence.text);
        RemoveBlanks(sentence.text);
        sentence.text.Fit();
        BuildNode(sentence.root, sentences, index, parameters, sentence.text.View(), errorText);
        EvaluateNode(sentence.root, index, parameters, errorText);
        if (!keepTrees) sentence.DropTree();
        if (errorText.empty()) continue;
        sentence.error = std::move(errorText);
        errorText.clear();
        succeeded = false;
    }
    return succeeded;
}

bool CompileSheet(SentenceList& sentences, char* textBegin, char* textEnd,
                  const CalcParameters& parameters, std::string& errorText,
                  const CompileWishes& wishes) {
    CompileRun compile{sentences, textBegin, textEnd, parameters, wishes.keepTrees, errorText};
    int number = 0;
    for (const CompileStage& stage : compileStages) {
        stage.run(compile);
        if (wishes.watcher) wishes.watcher({++number, stage.name, sentences, errorText});
        if (!errorText.empty()) return false;
    }
    return !compile.anyFailed;
}

}  // namespace orvane
