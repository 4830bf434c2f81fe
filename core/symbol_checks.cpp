#include <algorithm>
#include <optional>
#include <span>
#include <string_view>

#include "core/compile_stages.h"
#include "core/error_text.h"
#include "core/first_message.h"
#include "core/number_literal.h"
#include "core/run_stop.h"
#include "core/text_scan.h"

namespace orvane {

namespace {

// The fault of one sentence: what a message quotes. Nothing when the text passes.
using Fault = std::optional<std::string>;

// One check over all formulas. The form takes the quoted text, if it has a place for it, and the
// number of the sentence.
struct SymbolCheck {
    Fault (*find)(std::string_view text);
    std::string_view form;
};

bool Pass(std::span<const SymbolCheck> checks, const SentenceList& sentences,
          std::string& errorText, const RunStop* stop) {
    errorText = FirstMessage(checks, sentences, stop, [&](const SymbolCheck& check, int index) {
        if (!sentences[index].IsCalculation()) return std::string();
        const Fault fault = check.find(sentences[index].text.View());
        if (!fault) return std::string();
        const bool quotes = check.form.find("%s") != std::string_view::npos;
        return quotes ? FillForm(check.form, {*fault, NumberOf(index)})
                      : FillForm(check.form, {NumberOf(index)});
    });
    return errorText.empty();
}

Fault FindString(std::string_view text) {
    if (text.find('"') == std::string_view::npos) return std::nullopt;
    return std::string();
}

// The second of two words with only blanks between them.
Fault FindWordBehindWord(std::string_view text) {
    bool behindWord = false;
    std::size_t at = 0;
    while ((at = SkipSpaces(text, at)) < text.size()) {
        if (!IsWordChar(text[at])) {
            behindWord = false;
            ++at;
            continue;
        }
        const std::size_t end = FindWordEnd(text, at);
        if (behindWord) return std::string(text.substr(at, end - at));
        behindWord = true;
        at = end;
    }
    return std::nullopt;
}

// The text from `start` to the first blank at or behind `from`.
std::string Quote(std::string_view text, std::size_t start, std::size_t from) {
    const std::size_t end = std::min(text.find(' ', from), text.size());
    return ShortenForMessage(text.substr(start, end - start));
}

// The start of the run without blanks that ends at `position`.
std::size_t RunStart(std::string_view text, std::size_t position) {
    const std::size_t blank = text.substr(0, position).rfind(' ');
    return blank == std::string_view::npos ? 0 : blank + 1;
}

bool IsDigitAt(std::string_view text, std::size_t at) {
    return at < text.size() && IsDigit(text[at]);
}

// A point needs a digit on each side, and a number in front of it.
Fault FindWrongPoint(std::string_view text) {
    if (text.starts_with('.')) return Quote(text, 0, 0);
    for (std::size_t point = text.find('.'); point != std::string_view::npos;
         point = text.find('.', point + 1)) {
        if (!IsDigitAt(text, point - 1) || !IsDigitAt(text, point + 1)) {
            return Quote(text, RunStart(text, point), point);
        }
        std::size_t word = point;
        while (word > 0 && IsWordChar(text[word - 1])) --word;
        if (IsWordStart(text[word])) return Quote(text, word, point);
    }
    return std::nullopt;
}

Fault FindWrongNumber(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        if (!IsWordChar(text[at])) {
            ++at;
            continue;
        }
        const std::size_t end = FindNumberEnd(text, at);
        const std::string_view run = text.substr(at, end - at);
        if (IsDigit(run.front()) && !IsNumberShape(run)) return std::string(run);
        at = end;
    }
    return std::nullopt;
}

constexpr CharacterSet signs("+-");

// One sign for each run of signs and blanks, where the first of them stood.
void CollapseSigns(EditBuffer& text) {
    const std::string_view view = text.View();
    char* const data = text.Data();
    std::size_t at = signs.Find(view, 0);
    while (at < view.size()) {
        std::size_t end = at;
        while (end < view.size() && (signs.Has(view[end]) || view[end] == ' ')) ++end;
        const auto minusCount = std::count(data + at, data + end, '-');
        std::fill(data + at, data + end, ' ');
        data[at] = minusCount % 2 != 0 ? '-' : '+';
        at = signs.Find(view, end);
    }
}

// Every operator has been rewritten by the time this looks, so any other character is foreign.
Fault FindForeignSymbol(std::string_view text) {
    static constexpr CharacterSet allowed(" +-(),.");
    for (const char c : text) {
        if (!IsWordChar(c) && !allowed.Has(c)) return std::string(1, c);
    }
    return std::nullopt;
}

constexpr CharacterSet neighbourSymbols("()+-*/^,");
constexpr CharacterSet openingSymbols("(*+,-/^");  // can't stand in front of a closing one
constexpr CharacterSet closingSymbols(")*,/^");

// Symbols that can't stand side by side, and a symbol other than `)` at the end.
Fault FindWrongNeighbours(std::string_view text) {
    std::size_t current = neighbourSymbols.Find(text, 0);
    while (current < text.size()) {
        const std::size_t next = SkipSpaces(text, current + 1);
        if (next == text.size()) {
            if (text[current] == ')') return std::nullopt;
            return std::string("last ") + text[current];
        }
        if (openingSymbols.Has(text[current]) && closingSymbols.Has(text[next])) {
            return std::string(text.substr(current, next - current + 1));
        }
        current = neighbourSymbols.Find(text, next);
    }
    return std::nullopt;
}

constexpr SymbolCheck checksBeforeRewriting[] = {
    {FindString, "C002-01: string can not be used out of string function in sentence %d."},
    {FindWordBehindWord, "C002-03: \"%s\" is used incorrect in sentence %d."},
    {FindWrongPoint, "C002-04: decimal point around \"%s\" is incorrect in sentence %d."},
    {FindWrongNumber, "C002-06: the number \"%s\" is unrecognized in sentence %d."},
};

constexpr SymbolCheck checksBehindRewriting[] = {
    {FindForeignSymbol, "C002-02: the symbol \"%s\" is unrecognized in sentence %d."},
    {FindWrongNeighbours, "C002-05: symbol \"%s\" is incorrect in sentence %d."},
};

}  // namespace

void CheckNumbersAndPoints(SentenceList& sentences, std::string& errorText, const RunStop* stop) {
    if (!Pass(checksBeforeRewriting, sentences, errorText, stop)) return;
    for (Sentence* sentence : sentences) {
        if (IsStopAsked(stop)) return;
        if (sentence->IsCalculation()) CollapseSigns(sentence->text);
    }
}

void CheckSymbols(SentenceList& sentences, std::string& errorText, const RunStop* stop) {
    Pass(checksBehindRewriting, sentences, errorText, stop);
}

}  // namespace orvane
