#include "core/sheet_cutter.h"

#include <algorithm>
#include <optional>

#include "core/run_stop.h"
#include "core/text_scan.h"

namespace orvane {

namespace {

constexpr CharacterSet quoteOrSlash("\"/");
constexpr CharacterSet quoteOrSemicolon("\";");
constexpr CharacterSet quoteOrTab("\"\t");

// A word at the start of a sentence with the sign that gives it its role.
struct LeadingWord {
    std::string_view word;
    std::size_t end;  // behind the sign
};

// The word that the text starts with, white space apart, when `sign` follows it.
std::optional<LeadingWord> FindLeadingWord(std::string_view text, char sign) {
    const std::size_t start = SkipWhite(text, 0);
    if (start == text.size() || !IsWordStart(text[start])) return std::nullopt;
    const std::size_t wordEnd = FindWordEnd(text, start);
    const std::size_t at = SkipWhite(text, wordEnd);
    if (at == text.size() || text[at] != sign) return std::nullopt;
    return LeadingWord{text.substr(start, wordEnd - start), at + 1};
}

// Up to here a sentence's text is the end of its source: the word as it stands there.
std::string_view InSource(const Sentence& sentence, std::string_view word) {
    const std::string_view text = sentence.text.View();
    const auto place = static_cast<std::size_t>(word.data() - text.data());
    return sentence.source.substr(sentence.source.size() - text.size() + place, word.size());
}

}  // namespace

void BlankComments(std::span<char> text) {
    std::replace(text.begin(), text.end(), '\r', ' ');
    const std::string_view view(text.data(), text.size());
    if (view.find("//") == std::string_view::npos) return;
    std::size_t at = 0;
    while ((at = quoteOrSlash.Find(view, at)) < view.size()) {
        if (view[at] == '"') {
            at = view.find('"', at + 1);
            if (at == std::string_view::npos) return;
            ++at;
        } else if (view.substr(at, 2) == "//") {
            const std::size_t lineEnd = std::min(view.find('\n', at), view.size());
            std::fill(text.begin() + at, text.begin() + lineEnd, ' ');
            at = lineEnd;
        } else {
            ++at;
        }
    }
}

bool CutSentences(SentenceList& sentences, std::string_view text, const RunStop* stop) {
    std::size_t start = 0;
    std::size_t at = 0;
    const auto cut = [&] {
        if (at == start) return true;
        if (sentences.Count() == mostSentences) return false;
        sentences.Add(text.substr(start, at - start));
        return true;
    };
    while ((at = quoteOrSemicolon.Find(text, at)) < text.size()) {
        if (text[at] == '"') {
            at = SkipString(text, at);
            continue;
        }
        if (IsStopAsked(stop) || !cut()) return false;
        start = ++at;
    }
    return cut();
}

void FindHeader(Sentence& sentence) {
    const auto found = FindLeadingWord(sentence.text.View(), ':');
    if (!found) return;
    sentence.header = InSource(sentence, found->word);
    sentence.text.Remove(0, found->end);
}

void FindName(Sentence& sentence) {
    const auto found = FindLeadingWord(sentence.text.View(), '=');
    if (!found) return;
    sentence.name = InSource(sentence, found->word);
    char* const data = sentence.text.Data();
    char* const word = data + (found->word.data() - data);
    std::fill_n(word, found->word.size(), ' ');
    data[found->end - 1] = ' ';
}

void TrimText(Sentence& sentence) { sentence.text.Remove(0, SkipWhite(sentence.text.View(), 0)); }

void FindLeadingWords(SentenceList& sentences, const RunStop* stop) {
    for (Sentence* sentence : sentences) {
        if (IsStopAsked(stop)) return;
        FindHeader(*sentence);
        if (sentence->IsText()) continue;
        FindName(*sentence);
        TrimText(*sentence);
    }
}

void BlankLineFeeds(Sentence& sentence) {
    if (sentence.IsText()) return;
    char* const data = sentence.text.Data();
    std::replace(data, data + sentence.text.length, '\n', ' ');
}

void BlankTabs(EditBuffer& text) {
    const std::string_view view = text.View();
    if (view.find('\t') == std::string_view::npos) return;
    std::size_t at = 0;
    while ((at = quoteOrTab.Find(view, at)) < view.size()) {
        if (view[at] == '"') {
            at = SkipString(view, at);
        } else {
            text.Data()[at++] = ' ';
        }
    }
}

}  // namespace orvane
