#include "core/compile_sheet.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "core/compile_stages.h"
#include "core/evaluation.h"
#include "core/node_builder.h"
#include "core/run_stop.h"
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

    const RunStop* Stop() const { return parameters.stop; }
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
         AnalyseSentences(compile.sentences, compile.textBegin, compile.textEnd, compile.errorText,
                          compile.Stop());
     }},
    {"StringFunctionPass",
     [](CompileRun& compile) {
         StringFunctionPass(compile.sentences, compile.errorText, compile.Stop());
     }},
    {"CheckNumbersAndPoints",
     [](CompileRun& compile) {
         CheckNumbersAndPoints(compile.sentences, compile.errorText, compile.Stop());
     }},
    {"RewriteOperators",
     [](CompileRun& compile) {
         RewriteOperators(compile.sentences, compile.errorText, compile.Stop());
     }},
    {"CheckSymbols",
     [](CompileRun& compile) {
         CheckSymbols(compile.sentences, compile.errorText, compile.Stop());
     }},
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

// One formula of the last stage.
void BuildAndEvaluateOne(SentenceList& sentences, int index, const CalcParameters& parameters,
                         bool keepTrees, std::string& errorText) {
    Sentence& sentence = sentences[index];
    FoldConstants(sentence.text, parameters.stop);
    RemoveDoubledBrackets(sentence.text);
    RemoveBlanks(sentence.text);
    sentence.text.Fit();
    BuildNode(sentence.root, sentences, index, parameters, sentence.text.View(), errorText);
    EvaluateNode(sentence.root, index, parameters, errorText, keepTrees);
}

// Whether the run had to end in the last stage, which leaves the finished sentences, or before,
// which leaves none.
bool EndStopped(CompileRun& compile, bool isLast, int countBefore) {
    const bool isCut =
        isLast ? compile.sentences.Count() < countBefore : IsStopAsked(compile.Stop());
    if (!isCut) return false;
    if (!isLast) compile.sentences.KeepFirst(0);
    compile.errorText = stoppedMessage;
    return true;
}

}  // namespace

bool BuildAndEvaluate(SentenceList& sentences, const CalcParameters& parameters, bool keepTrees,
                      std::string& errorText) {
    bool succeeded = true;
    // Where trees go, one pool serves one after the other; most find room in its first block.
    constexpr std::size_t usualTree = 32;
    std::unique_ptr<NodePool> spare;
    if (!keepTrees) {
        spare = std::make_unique<NodePool>();
        spare->Reserve(usualTree);
    }
    for (int index = 0; index < sentences.Count(); ++index) {
        Sentence& sentence = sentences[index];
        if (sentence.IsCalculation()) {
            sentence.nodes = std::move(spare);
            BuildAndEvaluateOne(sentences, index, parameters, keepTrees, errorText);
        }
        if (IsStopAsked(parameters.stop)) {
            sentences.KeepFirst(index);
            errorText.clear();
            return false;
        }
        if (!keepTrees && sentence.nodes) {
            spare = sentence.DropTree();
            spare->Reset();
        }
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
        const int count = sentences.Count();
        stage.run(compile);
        if (EndStopped(compile, &stage == std::end(compileStages) - 1, count)) return false;
        if (wishes.watcher) wishes.watcher({++number, stage.name, sentences, errorText});
        if (!errorText.empty()) return false;
    }
    return !compile.anyFailed;
}

}  // namespace orvane
