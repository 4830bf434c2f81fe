#include <span>
#include <string>

#include "core/compile_stages.h"
#include "core/error_text.h"
#include "core/first_message.h"
#include "core/run_stop.h"
#include "core/sentence_checks.h"
#include "core/sheet_cutter.h"
#include "core/substitution.h"

namespace orvane {

namespace {

using SentenceCheck = std::string (*)(const SentenceList& sentences, int index);

// What sentences are called, in the order in which the messages win.
constexpr SentenceCheck nameChecks[] = {CheckHeader, CheckUniqueName, CheckReservedName,
                                        CheckSentenceStrings};
using OrderCheck = std::string (*)(const SentenceList& sentences, int index, const RunStop* stop);
constexpr OrderCheck orderChecks[] = {CheckDefineOrder, CheckFormulaOrder};

std::string FirstMessageOf(std::span<const SentenceCheck> checks, const SentenceList& sentences,
                           const RunStop* stop) {
    return FirstMessage(checks, sentences, stop,
                        [&](SentenceCheck check, int index) { return check(sentences, index); });
}

// Line feeds go from all sentences but texts. Whether a name is used ahead of its sentence is asked
// of each sentence while it is at hand.
std::string CheckOrders(SentenceList& sentences, const RunStop* stop) {
    std::string message = FirstMessage(std::span<const OrderCheck>(orderChecks), sentences, stop,
                                       [&](OrderCheck check, int index) {
                                           if (check == orderChecks[0])
                                               BlankLineFeeds(sentences[index]);
                                           return check(sentences, index, stop);
                                       });
    if (message.empty()) return message;
    for (Sentence* sentence : sentences) BlankLineFeeds(*sentence);
    return message;
}

// Tabs go from all sentences; the first formula whose brackets do not match gives its message.
std::string CheckBrackets(SentenceList& sentences, const RunStop* stop) {
    std::string message;
    for (int index = 0; index < sentences.Count() && !IsStopAsked(stop); ++index) {
        if (!sentences[index].IsText()) BlankTabs(sentences[index].text);
        if (message.empty()) message = CheckAndUnifyBrackets(sentences, index);
    }
    return message;
}

}  // namespace

void AnalyseSentences(SentenceList& sentences, char* textBegin, char* textEnd,
                      std::string& errorText, const RunStop* stop) {
    const std::span<char> text(textBegin, textEnd);
    const std::string_view sheet(text.data(), text.size());
    BlankComments(text);
    errorText = CheckLineStrings(sheet);
    if (!errorText.empty()) return;

    if (IsStopAsked(stop)) return;
    if (!CutSentences(sentences, sentences.KeepSheet(sheet), stop)) {
        sentences.KeepFirst(0);
        errorText = FillForm("C001-10: the sheet has more than %d sentences.",
                             {std::to_string(mostSentences)});
        return;
    }
    sentences.RemoveBlank();
    FindLeadingWords(sentences, stop);
    if (IsStopAsked(stop)) return;
    sentences.IndexNames();
    errorText = FirstMessageOf(nameChecks, sentences, stop);
    if (!errorText.empty()) return;

    errorText = CheckOrders(sentences, stop);
    if (!errorText.empty()) return;

    SubstituteDefines(sentences, errorText, stop);
    if (!errorText.empty()) return;
    errorText = CheckBrackets(sentences, stop);
}

}  // namespace orvane
