#include "core/substitution.h"

#include <optional>
#include <vector>

#include "core/error_text.h"
#include "core/number_literal.h"
#include "core/run_stop.h"
#include "core/text_scan.h"
#include "functions/keyword_table.h"

namespace orvane {

namespace {

// While one sentence's defines are substituted. Only a sheet whose defines use themselves, or
// double each other over and over, comes near.
constexpr std::size_t longestText = 1'000'000;
constexpr int mostReplacements = 100'000;

// By which a sheet may grow as a whole: a long define may stand in very many sentences.
constexpr std::size_t mostGrowth = std::size_t{64} << 20;

// The length of what stands at the start of a text and is passed over as one piece: a string, a
// number with all that hangs on it, a word, or a single character.
std::size_t PieceLength(std::string_view rest) {
    if (rest.front() == '"') return SkipString(rest, 0);
    if (IsDigit(rest.front())) return FindNumberEnd(rest, 0);
    if (IsWordStart(rest.front())) return FindWordEnd(rest, 0);
    return 1;
}

// Whether a text holds the word where a substitution would replace it.
bool UsesWord(std::string_view text, std::string_view word) {
    while (!text.empty()) {
        const std::size_t length = PieceLength(text);
        if (text.substr(0, length) == word) return true;
        text.remove_prefix(length);
    }
    return false;
}

class Substitution {
public:
    Substitution(SentenceList& list, const RunStop* runStop)
        : sentences(list),
          stop(runStop),
          endless(static_cast<std::size_t>(list.Count()), unknown) {}

    // Replaces until no name of a define below `limit` is left. False when that does not end.
    bool Run(int index, int limit) {
        ForwardEdit edit(sentences[index].text);
        bool ends = true;
        int replacements = 0;
        while (ends && !edit.AtEnd() && !IsStopAsked(stop)) ends = Step(edit, limit, replacements);
        return ends;
    }

private:
    bool Step(ForwardEdit& edit, int limit, int& replacements) {
        const std::string_view rest = edit.Rest();
        const std::size_t length = PieceLength(rest);
        const int define =
            IsWordStart(rest.front()) ? FindDefine(sentences, rest.substr(0, length), limit) : -1;
        if (define < 0) {
            edit.Pass(length);
            return true;
        }
        if (UsesItself(define) || ++replacements > mostReplacements) return false;
        const std::string_view text = sentences[define].text.View();
        const bool grows = text.size() > length;
        if (grows && edit.Length() - length + text.size() > longestText) return false;
        if (grows) growth += text.size() - length;
        if (growth > mostGrowth) return false;
        edit.Replace(length, text);
        return true;
    }

    // A define that holds its own name brings the name back each time it goes in, so the end need
    // not be waited for. Asked only where it is a candidate, when its text no longer changes.
    bool UsesItself(int define) {
        signed char& known = endless[static_cast<std::size_t>(define)];
        if (known == unknown) {
            const Sentence& sentence = sentences[define];
            known = UsesWord(sentence.text.View(), sentence.name) ? 1 : 0;
        }
        return known == 1;
    }

    static constexpr signed char unknown = -1;
    SentenceList& sentences;
    const RunStop* stop;
    std::vector<signed char> endless;
    std::size_t growth = 0;  // of all sentences
};

struct FoundConstant {
    std::size_t start;
    std::size_t length;
    double value;
};

// The first word that is a constant.
std::optional<FoundConstant> FindConstant(std::string_view text) {
    const auto valueOf = [](std::string_view word) {
        return IsWordStart(word.front()) ? KeywordTable::ConstantValue(word) : std::nullopt;
    };
    const std::string_view word =
        FindWord(text, [&](std::string_view found) { return valueOf(found).has_value(); });
    if (word.empty()) return std::nullopt;
    const auto start = static_cast<std::size_t>(word.data() - text.data());
    return FoundConstant{start, word.size(), *valueOf(word)};
}

}  // namespace

int FindDefine(const SentenceList& sentences, std::string_view word, int limit) {
    const int found = sentences.FirstDefine(word);
    return found < limit ? found : -1;
}

int FindFormula(const SentenceList& sentences, std::string_view word, int limit) {
    const int found = sentences.FirstFormula(word);
    return found < limit ? found : -1;
}

void SubstituteDefines(SentenceList& sentences, std::string& errorText, const RunStop* stop) {
    if (!sentences.HasNamedDefines()) return;
    Substitution substitution(sentences, stop);
    const auto run = [&](int index, int limit) {
        if (!errorText.empty() || IsStopAsked(stop) || substitution.Run(index, limit)) return;
        errorText = FillForm("C001-09: define substitution in sentence %d does not end.",
                             {NumberOf(index)});
    };
    for (int index = 0; index < sentences.Count(); ++index) {
        if (sentences[index].IsDefine()) run(index, index);
    }
    for (int index = 0; index < sentences.Count(); ++index) {
        if (sentences[index].IsCalculation()) run(index, sentences.Count());
    }
}

bool FoldConstantOnce(SentenceList& sentences, int index) {
    EditBuffer& text = sentences[index].text;
    const std::optional<FoundConstant> found = FindConstant(text.View());
    return found && text.ReplaceByNumber(found->start, found->start + found->length, found->value);
}

void FoldConstants(EditBuffer& text, const RunStop* stop) {
    if (!FindConstant(text.View())) return;
    ForwardEdit edit(text);
    while (const std::optional<FoundConstant> found = FindConstant(edit.Rest())) {
        if (IsStopAsked(stop)) return;
        edit.Pass(found->start);
        edit.Replace(found->length, *FormatForSentence(found->value));
    }
}

}  // namespace orvane
