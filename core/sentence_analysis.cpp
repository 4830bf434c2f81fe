#include <string>

#include "core/compile_stages.h"
#include "core/sentence_checks.h"
#include "core/sheet_cutter.h"
#include "core/substitution.h"

namespace orvane {

namespace {

using Check = std::string (*)(const SentenceList& sentences);

// The checks that the names of a sheet must pass, in the order in which their messages win.
constexpr Check nameChecks[] = {CheckHeaders, CheckUniqueNames, CheckReservedNames,
                                CheckSentenceStrings};
constexpr Check orderChecks[] = {CheckDefineOrder, CheckFormulaOrder};

template <typename Checks>
bool Pass(const Checks& checks, const SentenceList& sentences, std::string& errorText) {
    for (const Check check : checks) {
        errorText = check(sentences);
        if (!errorText.empty()) return false;
    }
    return true;
}

}  // namespace

void AnalyseSentences(SentenceList& sentences, char* textBegin, char* textEnd,
                      std::string& errorText) {
    const std::span<char> text(textBegin, textEnd);
    const std::string_view sheet(text.data(), text.size());
    BlankComments(text);
    errorText = CheckLineStrings(sheet);
    if (!errorText.empty()) return;

    CutSentences(sentences, sheet);
    sentences.RemoveBlank();
    FindHeaders(sentences);
    FindNames(sentences);
    TrimTexts(sentences);
    sentences.IndexNames();
    if (!Pass(nameChecks, sentences, errorText)) return;

    BlankLineFeeds(sentences);
    if (!Pass(orderChecks, sentences, errorText)) return;

    SubstituteDefines(sentences, errorText);
    if (!errorText.empty()) return;
    BlankTabs(sentences);
    errorText = CheckAndUnifyBrackets(sentences);
}

}  // namespace orvane
