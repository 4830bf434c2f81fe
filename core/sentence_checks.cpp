#include "core/sentence_checks.h"

#include <algorithm>
#include <optional>

#include "core/error_text.h"
#include "core/run_stop.h"
#include "core/text_scan.h"
#include "functions/keyword_table.h"

namespace orvane {

namespace {

// The number of the first line with an odd count of '"', from zero.
std::optional<int> FindOddLine(std::string_view text) {
    if (text.find('"') == std::string_view::npos) return std::nullopt;
    int line = 0;
    bool odd = false;
    for (const char c : text) {
        if (c == '"') odd = !odd;
        if (c != '\n') continue;
        if (odd) return line;
        ++line;
    }
    return odd ? std::optional<int>(line) : std::nullopt;
}

// The message for the first word outside strings that `laterIndex` knows as the name of a sentence
// below. The form takes the sentence's number, the word, and the number of the sentence below.
template <typename LaterIndex>
std::string CheckOrder(const SentenceList& sentences, int index, std::string_view form,
                       const RunStop* stop, LaterIndex laterIndex) {
    const std::string_view word = FindWord(sentences[index].text.View(), [&](auto found) {
        return IsStopAsked(stop) || (IsWordStart(found.front()) && laterIndex(found) > index);
    });
    if (word.empty() || IsStopAsked(stop)) return {};
    return FillForm(form, {NumberOf(index), word, NumberOf(laterIndex(word))});
}

constexpr CharacterSet openBrackets("([{");
constexpr CharacterSet bracketsAndQuotes("([{)]}\"");

// Rewrites the brackets outside strings to round ones; false at the first one that closes nothing,
// and for a text that leaves one open.
bool UnifyBrackets(EditBuffer& text) {
    const std::string_view view = text.View();
    char* const data = text.Data();
    std::int64_t open = 0;
    std::size_t at = 0;
    while ((at = bracketsAndQuotes.Find(view, at)) < view.size()) {
        if (view[at] == '"') {
            at = SkipString(view, at);
            continue;
        }
        const bool opens = openBrackets.Has(view[at]);
        data[at] = opens ? '(' : ')';
        open += opens ? 1 : -1;
        if (open < 0) return false;
        ++at;
    }
    return open == 0;
}

}  // namespace

std::string CheckLineStrings(std::string_view sheet) {
    const std::optional<int> line = FindOddLine(sheet);
    if (!line) return {};
    return FillForm("C001-01: string in line %d is not matched properly.", {NumberOf(*line)});
}

std::string CheckHeader(const SentenceList& sentences, int index) {
    const std::string_view header = sentences[index].header;
    if (header.empty() || keywordTable.IsHeader(header)) return {};
    return FillForm("C001-02: header \"%s\" of sentence %d is unrecognized.",
                    {header, NumberOf(index)});
}

std::string CheckUniqueName(const SentenceList& sentences, int index) {
    const int second = sentences.NextOfSameName(index);
    if (second < 0) return {};
    return FillForm("C001-03: name \"%s\" is used in sentences %d and %d.",
                    {sentences[index].name, NumberOf(index), NumberOf(second)});
}

std::string CheckReservedName(const SentenceList& sentences, int index) {
    const std::string_view name = sentences[index].name;
    if (name.empty() || !keywordTable.IsKnown(name)) return {};
    return FillForm("C001-04: name \"%s\" of sentence %d is reserved keyword.",
                    {name, NumberOf(index)});
}

std::string CheckSentenceStrings(const SentenceList& sentences, int index) {
    if (!FindOddLine(sentences[index].text.View())) return {};
    return FillForm("C001-05: string in sentence %d is not matched properly.", {NumberOf(index)});
}

std::string CheckDefineOrder(const SentenceList& sentences, int index, const RunStop* stop) {
    if (!sentences[index].IsDefine()) return {};
    return CheckOrder(sentences, index, "C001-06: define %d uses name \"%s\" of sub-define %d.",
                      stop, [&](std::string_view word) { return sentences.FirstDefine(word); });
}

std::string CheckFormulaOrder(const SentenceList& sentences, int index, const RunStop* stop) {
    if (!sentences[index].IsCalculation()) return {};
    return CheckOrder(sentences, index, "C001-07: formula %d uses name \"%s\" of sub-formula %d.",
                      stop, [&](std::string_view word) { return sentences.FirstFormula(word); });
}

std::string CheckAndUnifyBrackets(SentenceList& sentences, int index) {
    Sentence& sentence = sentences[index];
    if (!sentence.IsCalculation()) return {};
    if (!UnifyBrackets(sentence.text)) {
        return FillForm("C001-08: brace in sentence %d is not matched properly.",
                        {NumberOf(index)});
    }
    char* const data = sentence.text.Data();
    std::replace(data, data + sentence.text.length, '\n', ' ');
    return {};
}

}  // namespace orvane
