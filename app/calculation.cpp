#include "app/calculation.h"

#include <algorithm>

#include "core/run_stop.h"
#include "locus/locus_store.h"
#include "output/report_builder.h"

namespace orvane {

namespace {

constexpr std::uint32_t greyOnBlack = 0xC0C0C0, textOnBlack = 0xFFFFFF;
constexpr std::uint32_t greyOnWhite = 0x808080, textOnWhite = 0x000000;

}  // namespace

void ShowResult(const CalculationTexts& texts, const CalcParameters& parameters,
                ResultDisplay& display) {
    const bool black = parameters.blackOutput;
    display.ShowTexts({texts.positionText, black ? greyOnBlack : greyOnWhite},
                      {texts.resultText, black ? textOnBlack : textOnWhite});
}

bool RunCalculation(std::string_view sheet, CalcParameters& parameters,
                    const CalculationDisplays& displays, CalculationTexts& texts,
                    const RunWatchers& watchers) {
    std::string text(sheet.substr(0, sheet.find('\0')));
    if (text.empty() || text.size() > largestSheet) {
        displays.message.ShowMessage(text.empty() ? emptySheetMessage : largeSheetMessage,
                                     messageCaption);
        return false;
    }
    parameters.progress = &displays.progress;
    // A settings file may hold any row, and a word beyond what a double can hold would be given
    // digits without end.
    parameters.systemBitsIndex = std::clamp(parameters.systemBitsIndex, 0, lastWordBitsRow);
    parameters.SetWordLimits();
    parameters.floatPrecision = std::min(parameters.floatPrecision, largestFloatPrecision);

    displays.progress.Show();
    texts.positionText.clear();
    texts.resultText = waitingText;
    ShowResult(texts, parameters, displays.result);

    std::string errorText;
    locusStore.Clear();
    SentenceList sentences;
    const bool succeeded = CompileSheet(sentences, text.data(), text.data() + text.size(),
                                        parameters, errorText, watchers.wishes);
    text = std::string();  // the sentences have their own; a large report takes its place
    displays.progress.Hide();
    parameters.progress = nullptr;
    const bool stopped = errorText == stoppedMessage;
    if (stopped) {
        errorText.clear();
        locusStore.DropFrom(sentences.Count());
    }

    ReportBuilder builder;
    texts.resultText = builder.Build(sentences, parameters, FindNumberLimits(), texts.positionText);
    texts.resultText += errorText;
    ShowResult(texts, parameters, displays.result);
    if (watchers.finished) {
        watchers.finished({sentences, errorText, texts, succeeded && !builder.IsCut(), stopped});
    }
    return true;
}

}  // namespace orvane
