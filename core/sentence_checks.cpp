#include "core/sentence_checks.h"

#include <algorithm>
#include <optional>

#include "core/error_text.h"
#include "core/text_scan.h"
#include "functions/keyword_table.h"

namespace orvane {

namespace {

// The number of the first line with an odd count of '"', from zero.
std::optional<int> FindOddLine(std::string_view text) {
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

struct ForwardUse {
    std::string_view word;
    int later;
};

// The first word outside strings of a text that `laterIndex` knows as the name of a sentence below.
template <typename LaterIndex>
std::optional<ForwardUse> FindForwardUse(std::string_view text, int own, LaterIndex laterIndex) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] == '"') {
            at = SkipString(text, at);
        } else if (IsWordChar(text[at])) {
            const std::size_t end = FindWordEnd(text, at);
            const std::string_view word = text.substr(at, end - at);
            if (IsWordStart(word.front())) {
                const int later = laterIndex(word);
                if (later > own) return ForwardUse{word, later};
            }
            at = end;
        } else {
            ++at;
        }
    }
    return std::nullopt;
}

char RoundBracket(char c) {
    if (c == '[' || c == '{') return '(';
    if (c == ']' || c == '}') return ')';
    return c;
}

// Rewrites the brackets outside strings to round ones; false at the first one that closes nothing,
// and for a text that leaves one open.
bool UnifyBrackets(EditBuffer& text) {
    const std::string_view view = text.View();
    char* const data = text.Data();
    std::int64_t open = 0;
    std::size_t at = 0;
    while (at < view.size()) {
        if (view[at] == '"') {
            at = SkipString(view, at);
            continue;
        }
        data[at] = RoundBracket(data[at]);
        if (data[at] == '(') ++open;
        if (data[at] == ')' && --open < 0) return false;
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
    const std::string& header = sentences[index].header;
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
    const std::string& name = sentences[index].name;
    if (name.empty() || !keywordTable.IsKnown(name)) return {};
    return FillForm("C001-04: name \"%s\" of sentence %d is reserved keyword.",
                    {name, NumberOf(index)});
}

std::string CheckSentenceStrings(const SentenceList& sentences, int index) {
    if (!FindOddLine(sentences[index].text.View())) return {};
    return FillForm("C001-05: string in sentence %d is not matched properly.", {NumberOf(index)});
}

std::string CheckDefineOrder(const SentenceList& sentences, int index) {
    if (!sentences[index].IsDefine()) return {};
    const auto use =
        FindForwardUse(sentences[index].text.View(), index,
                       [&](std::string_view word) { return sentences.FirstDefine(word); });
    if (!use) return {};
    return FillForm("C001-06: define %d uses name \"%s\" of sub-define %d.",
                    {NumberOf(index), use->word, NumberOf(use->later)});
}

std::string CheckFormulaOrder(const SentenceList& sentences, int index) {
    if (!sentences[index].IsCalculation()) return {};
    const auto use =
        FindForwardUse(sentences[index].text.View(), index,
                       [&](std::string_view word) { return sentences.FirstFormula(word); });
    if (!use) return {};
    return FillForm("C001-07: formula %d uses name \"%s\" of sub-formula %d.",
                    {NumberOf(index), use->word, NumberOf(use->later)});
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
