#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "functions/keyword_table.h"
#include "storage/text_colours.h"

// What the hint over a call shows, and which calls are open at the caret. Columns count characters
// from 0.

namespace orvane {

namespace hintColours {
inline constexpr Colour background = ColourFrom(255, 255, 239);
inline constexpr Colour returnText = ColourFrom(128, 128, 128);
inline constexpr Colour plain = ColourFrom(0, 0, 0);
inline constexpr Colour mainType = ColourFrom(128, 0, 0);
inline constexpr Colour optionalType = ColourFrom(0, 128, 0);
}  // namespace hintColours

// A piece of a row in one colour.
struct HintRun {
    std::string text;  // never empty
    Colour colour = hintColours::plain;

    bool operator==(const HintRun&) const = default;
};

// A function with one row for each of its signatures.
struct CallHint {
    std::string prefix;  // the return text and a blank, or empty
    std::string name;
    std::vector<std::string> parameterRows;
    std::vector<std::string> optionalRows;  // as many; empty where a row has none

    // The runs of prefix and name, which stand on the first row alone. The runs of all rows begin
    // where they end.
    std::vector<HintRun> HeadRuns() const;
    // The runs of a row from its opening bracket to its closing one.
    std::vector<HintRun> RowRuns(std::size_t row) const;
};

CallHint HintFor(const KeywordEntry& entry);

// A call whose bracket is open.
struct OpenCall {
    std::int32_t column = 0;  // where the function's name starts
    const KeywordEntry* entry = nullptr;

    bool operator==(const OpenCall&) const = default;
};

// The call that the "(" directly ahead of the caret opens: the function's name stands in front of
// it, blanks and tabs between them allowed. None where it is no function's name.
std::optional<OpenCall> CallOpenedAt(std::string_view line, std::int32_t caretCol);

// What becomes of the hint.
enum class HintChange {
    stays,
    hides,
    showsNewest,  // for the last of the open calls, over its name
};

// The calls open at the caret, from the outermost to the innermost, so their columns rise; all on
// one line.
struct CallStack {
    std::vector<OpenCall> calls;
    std::int32_t line = -1;  // what the calls stand on

    void Clear() { calls.clear(); }
    void Push(const OpenCall& call, std::int32_t caretLine);
    // After the caret moved or the text changed while the hint shows: drops the calls that the
    // caret has left. `lineText` is the text of the caret's line, which is read once at most.
    HintChange Update(std::string_view lineText, std::int32_t caretLine, std::int32_t caretCol);
};

}  // namespace orvane
