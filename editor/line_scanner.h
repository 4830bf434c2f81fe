#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/text_scan.h"
#include "storage/text_colours.h"

// One line of sheet text to its coloured pieces. No piece spans lines, so nothing is carried from
// one line to the next, and colours are worked out each time a line is painted.

namespace orvane {

// Names in byte order, searched by bisection. Names that are put in twice are held twice.
class WordSet {
public:
    WordSet();
    void Insert(std::string_view word);
    bool Contains(std::string_view word) const;
    const std::vector<std::string>& Words() const { return words; }

private:
    std::vector<std::string> words;  // room for 10 at first, and 10 more whenever it is full
};

// What a scan knows of the language.
struct WordSets {
    WordSet headerWords;      // words that are headers when a ':' follows
    WordSet commonWords;      // every other keyword, constants and functions; asked first
    std::string symbolChars;  // in byte order

    explicit WordSets(std::string_view symbols);
    // What a run of symbols goes on over: all of symbolChars but '/', which may open a comment.
    const CharacterSet& SymbolRun() const { return symbolRun; }

private:
    CharacterSet symbolRun;
};

// What the keyword table says.
const WordSets& LanguageWords();

struct ColouredPiece {
    TextClass textClass = TextClass::normalText;
    std::int32_t start = 0;   // column of the first character
    std::int32_t length = 0;  // in characters, at least 1; a string or comment may hold tabs
    std::int32_t cell = 0;    // where it starts on the screen, counted from the line's first cell

    bool operator==(const ColouredPiece&) const = default;
};

// The pieces from left to right; blanks and tabs between them belong to none. `pieces` is cleared
// first: who scans row after row keeps one for all of them. Takes time in proportion to the line.
void ScanLine(std::string_view line, const WordSets& words, std::vector<ColouredPiece>& pieces);
std::vector<ColouredPiece> ScanLine(std::string_view line, const WordSets& words);

// Adds the stretches of a piece of this line between its tabs, each with its own start, length and
// cell. A piece without a tab is one stretch.
void AppendStretches(std::string_view line, const ColouredPiece& piece,
                     std::vector<ColouredPiece>& stretches);

}  // namespace orvane
