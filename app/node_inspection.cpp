#include "app/node_inspection.h"

#include <utility>

#include "core/sheet_cutter.h"
#include "core/text_scan.h"
#include "editor/editor_model.h"
#include "locus/locus_store.h"

namespace orvane {

namespace {

class KeptMessage : public MessageDisplay {
public:
    explicit KeptMessage(std::string& keptText) : text(keptText) {}
    void ShowMessage(std::string_view message, std::string_view) override { text = message; }

private:
    std::string& text;
};

class NoDisplay : public ResultDisplay {
public:
    void ShowTexts(const ColouredText&, const ColouredText&) override {}
};

// Puts the curves of the last run back, whatever a run in between has recorded.
class CurvesAside {
public:
    CurvesAside() : curves(std::exchange(locusStore, Empty())) {}
    ~CurvesAside() { locusStore = std::move(curves); }
    CurvesAside(const CurvesAside&) = delete;
    CurvesAside& operator=(const CurvesAside&) = delete;

private:
    // For the same screen, so that the run is the same.
    static LocusStore Empty() {
        LocusStore empty;
        empty.screenWidth = locusStore.screenWidth;
        empty.screenHeight = locusStore.screenHeight;
        return empty;
    }

    LocusStore curves;
};

// Why the sentence has no tree; empty where it has one.
std::string ReasonAgainst(const Sentence& sentence, int index) {
    if (sentence.IsCalculation()) return {};
    return "Sentence " + std::to_string(index + 1) + " is a " + std::string(sentence.header) +
           ". Only formulas have nodes.";
}

void TakeRun(FinishedRun run, int index, InspectedSentence& inspected) {
    if (!run.errorText.empty()) {
        inspected.message = "There are no nodes, since the sheet has an error.\n\n" + run.errorText;
        return;
    }
    inspected.sentences = std::move(run.sentences);
    Sentence& sentence = inspected.sentences[index];
    for (Sentence* other : inspected.sentences) {
        if (other != &sentence) other->DropTree();
    }
    inspected.message = ReasonAgainst(sentence, index);
    if (inspected.message.empty()) inspected.root = &sentence.root;
}

}  // namespace

std::size_t CaretOffset(const EditorModel& editor) {
    std::size_t offset = 0;
    for (std::int32_t line = 0; line < editor.caretLine; ++line) {
        offset += editor.text.GetLine(line).size() + 1;
    }
    return offset + static_cast<std::size_t>(editor.caretCol);
}

std::optional<int> SentenceAt(std::string_view sheet, std::size_t place) {
    std::string text(sheet.substr(0, sheet.find('\0')));
    if (place > text.size()) return std::nullopt;
    BlankComments(text);
    SentenceList sentences;
    CutSentences(sentences, text);
    sentences.RemoveBlank();
    const auto startOf = [&](int index) {
        return static_cast<std::size_t>(sentences[index].source.data() - text.data());
    };
    for (int index = 0; index < sentences.Count(); ++index) {
        const std::size_t end = startOf(index) + sentences[index].source.size();
        if (place > end + 1) continue;
        const bool isAhead = place == end + 1 && index + 1 < sentences.Count() &&
                             startOf(index + 1) == place && SkipWhite(text, place) == place;
        return isAhead ? index + 1 : index;
    }
    return std::nullopt;
}

InspectedSentence InspectSentence(std::string_view sheet, std::size_t place,
                                  CalcParameters parameters, ProgressDisplay& progress) {
    InspectedSentence inspected;
    // A sheet that no run takes is not cut: the run says what is the matter with it.
    sheet = sheet.substr(0, sheet.find('\0'));
    const bool isTaken = !sheet.empty() && sheet.size() <= largestSheet;
    const std::optional<int> index = isTaken ? SentenceAt(sheet, place) : std::nullopt;
    if (isTaken && !index) {
        inspected.message = "There is no sentence at the caret.";
        return inspected;
    }
    const CurvesAside aside;
    KeptMessage message(inspected.message);
    NoDisplay display;
    CalculationTexts texts;
    RunWatchers watchers;
    watchers.wishes.keepTrees = true;
    watchers.finished = [&](const FinishedRun& run) { TakeRun(run, *index, inspected); };
    RunCalculation(sheet, parameters, {message, progress, display}, texts, watchers);
    return inspected;
}

}  // namespace orvane
