#include "editor/line_scanner.h"

#include <algorithm>
#include <cstddef>

#include "editor/view_geometry.h"
#include "functions/keyword_table.h"

namespace orvane {

namespace {

constexpr std::size_t wordSetGrowth = 10;

constexpr bool IsBlankOrTab(char c) { return c == ' ' || c == '\t'; }

std::string InByteOrder(std::string_view characters) {
    std::string sorted(characters);
    std::sort(sorted.begin(), sorted.end(), std::char_traits<char>::lt);
    return sorted;
}

std::string WithoutSlash(std::string_view characters) {
    std::string left(characters);
    std::erase(left, '/');
    return left;
}

WordSets WordsOf(const KeywordTable& table) {
    WordSets words(KeywordTable::symbolChars);
    for (const KeywordEntry* row : table.Sorted()) {
        WordSet& set = row->group == KeywordGroup::header ? words.headerWords : words.commonWords;
        set.Insert(row->name);
    }
    return words;
}

// A header is one only in front of its ':', so that `hex` may be anybody's name.
bool ColonFollows(std::string_view line, std::size_t at) {
    while (at < line.size() && IsBlankOrTab(line[at])) ++at;
    return at < line.size() && line[at] == ':';
}

TextClass ClassOfWord(std::string_view line, std::size_t start, std::size_t end,
                      const WordSets& words) {
    const std::string_view word = line.substr(start, end - start);
    if (words.commonWords.Contains(word)) return TextClass::commonKeyword;
    if (words.headerWords.Contains(word) && ColonFollows(line, end)) {
        return TextClass::headerKeyword;
    }
    return TextClass::normalText;
}

std::size_t FindSymbolRunEnd(std::string_view line, std::size_t at, const CharacterSet& run) {
    while (at < line.size() && run.Has(line[at])) ++at;
    return at;
}

struct FoundPiece {
    TextClass textClass;
    std::size_t end;
};

// The piece that starts at `at`, where neither a blank nor a tab stands.
FoundPiece FindPiece(std::string_view line, std::size_t at, const WordSets& words) {
    const char first = line[at];
    if (first == '/') {
        const bool doubled = at + 1 < line.size() && line[at + 1] == '/';
        if (doubled) return {TextClass::comment, line.size()};
        return {TextClass::symbol, at + 1};
    }
    if (first == '"') return {TextClass::string, SkipString(line, at)};
    if (IsWordStart(first)) {
        const std::size_t end = FindWordEnd(line, at);
        return {ClassOfWord(line, at, end, words), end};
    }
    if (IsDigit(first)) return {TextClass::number, FindNumberEnd(line, at)};
    if (words.SymbolRun().Has(first)) {
        return {TextClass::symbol, FindSymbolRunEnd(line, at, words.SymbolRun())};
    }
    return {TextClass::normalText, at + 1};
}

}  // namespace

WordSet::WordSet() { words.reserve(wordSetGrowth); }

void WordSet::Insert(std::string_view word) {
    if (words.size() == words.capacity()) words.reserve(words.size() + wordSetGrowth);
    const auto slot = std::find_if(words.begin(), words.end(),
                                   [word](const std::string& held) { return held >= word; });
    words.emplace(slot, word);
}

bool WordSet::Contains(std::string_view word) const {
    const auto found = std::lower_bound(words.begin(), words.end(), word);
    return found != words.end() && *found == word;
}

WordSets::WordSets(std::string_view symbols)
    : symbolChars(InByteOrder(symbols)), symbolRun(WithoutSlash(symbols)) {}

const WordSets& LanguageWords() {
    static const WordSets words = WordsOf(keywordTable);
    return words;
}

void ScanLine(std::string_view line, const WordSets& words, std::vector<ColouredPiece>& pieces) {
    pieces.clear();
    std::int32_t cell = 0;
    std::size_t at = 0;
    while (at < line.size()) {
        if (IsBlankOrTab(line[at])) {
            cell = NextCell(line[at], cell);
            ++at;
            continue;
        }
        const FoundPiece found = FindPiece(line, at, words);
        const std::int32_t length = static_cast<std::int32_t>(found.end - at);
        pieces.push_back({found.textClass, static_cast<std::int32_t>(at), length, cell});
        cell = CellBehind(line.substr(at, found.end - at), cell);
        at = found.end;
    }
}

std::vector<ColouredPiece> ScanLine(std::string_view line, const WordSets& words) {
    std::vector<ColouredPiece> pieces;
    ScanLine(line, words, pieces);
    return pieces;
}

void AppendStretches(std::string_view line, const ColouredPiece& piece,
                     std::vector<ColouredPiece>& stretches) {
    const std::size_t end = static_cast<std::size_t>(piece.start + piece.length);
    std::size_t at = static_cast<std::size_t>(piece.start);
    std::int32_t cell = piece.cell;
    while (at < end) {
        if (line[at] == '\t') {
            cell = NextCell('\t', cell);
            ++at;
            continue;
        }
        const std::size_t stop = std::min(line.find('\t', at), end);
        const std::int32_t length = static_cast<std::int32_t>(stop - at);
        stretches.push_back({piece.textClass, static_cast<std::int32_t>(at), length, cell});
        cell = CellBehind(line.substr(at, stop - at), cell);
        at = stop;
    }
}

}  // namespace orvane
