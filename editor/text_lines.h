#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

// The text under the formula editor: an array of lines that are allocated one by one, the ranges
// that select in it, and the operations that edit it. Nothing here touches the screen. Text is
// single bytes, a NUL like any other; a line holds no line break and "\r" never gets in. Positions
// are a line and a column, both counted from 0 in characters. An operation that can't be done does
// nothing and says so.

namespace orvane {

struct TextPosition {
    std::int32_t line = 0;
    std::int32_t col = 0;

    bool operator==(const TextPosition&) const = default;
};

// One line, with a NUL behind its last character. It starts with room for 1000 characters more
// than it has, and so much is spare again whenever it must grow; it never shrinks. The room that a
// line starts with costs no memory until the line first gets longer: a sheet may have millions of
// lines, and few are ever typed in. Columns handed to it lie in 0 to `length`, it gets no longer
// than `largestLength`, and no text handed to it lies in it.
struct TextLine {
    static constexpr std::int32_t spareRoom = 1000;
    static constexpr std::int32_t largestLength =
        std::numeric_limits<std::int32_t>::max() - spareRoom;

    std::int32_t length = 0;
    std::int32_t capacity = spareRoom;  // characters that fit, the NUL not counted
    std::int32_t allocated = 0;         // of those: at first `length`, later all
    std::unique_ptr<char[]> chars;      // allocated + 1 bytes

    TextLine() : TextLine(std::string_view()) {}
    explicit TextLine(std::string_view text);

    std::string_view View() const { return {chars.get(), static_cast<std::size_t>(length)}; }
    void InsertChar(std::int32_t col, char ch) { InsertText(col, {&ch, 1}); }
    void InsertText(std::int32_t col, std::string_view text);
    // Takes [from, to) away.
    void Remove(std::int32_t from, std::int32_t to);
};

// A selection. Start is the anchor and end follows the caret, so start may lie behind end.
struct SelRange {
    std::int32_t startLine = 0;
    std::int32_t endLine = 0;
    std::int32_t startCol = 0;
    std::int32_t endCol = 0;

    bool operator==(const SelRange&) const = default;

    bool IsEmpty() const { return startLine == endLine && startCol == endCol; }
    void SetCaret(TextPosition position);
    void SetRange(std::int32_t fromLine, std::int32_t fromCol, std::int32_t toLine,
                  std::int32_t toCol);
    // The two ends in the order of the text.
    void Normalise(std::int32_t& outStartLine, std::int32_t& outStartCol, std::int32_t& outEndLine,
                   std::int32_t& outEndCol) const;
};

// There is always at least one line: an empty sheet is one empty line. No text handed to an
// operation lies in this store. Lines, and texts handed in, have at most TextLine::largestLength
// characters; what would get larger is refused.
class TextLines {
public:
    TextLines();

    // Replaces everything, with every "\r" left out. Lines end at "\n"; the piece behind the last
    // one is a line too.
    bool SetText(std::string_view text);
    // Lines joined by "\n", none behind the last line.
    void AppendTextTo(std::string& out) const;

    // `index` must be in range.
    std::string_view GetLine(std::int32_t index) const { return lines[index]->View(); }
    const TextLine& LineAt(std::int32_t index) const { return *lines[index]; }
    // Refreshes `longestLine` and `lineCountSeen`.
    void Measure();

    // Refuses a position that is not in the text, and "\n" and "\r", which no line may hold.
    bool InsertChar(std::int32_t line, std::int32_t col, char ch);
    // The character that stood there, or 0 where there was none.
    char DeleteChar(std::int32_t line, std::int32_t col);
    // What stands behind `col` becomes a line of its own; columns past the end count as the end.
    bool SplitLine(std::int32_t line, std::int32_t col);
    bool JoinWithNext(std::int32_t line);

    // Ranges in any order of their ends; columns past a line's end count as its end. A range with
    // a line that is not there or with a column below 0 selects nothing, and deleting it fails.
    std::string GetSelected(const SelRange& range) const;
    bool DeleteSelected(const SelRange& range);

    // Puts `text` in, with every "\r" left out. `outEnd` is the position behind it. Fails where the
    // position is not in the text; both results are set all the same, as if nothing had to be done.
    bool InsertText(std::int32_t line, std::int32_t col, std::string_view text,
                    TextPosition& outEnd, std::int32_t& outLinesAdded);
    // Takes away exactly this text: each run of characters between line breaks must stand at the
    // position. Stops at the first run that does not and at a line break where no line follows,
    // with what it has already done left as it is; `outLinesRemoved` then counts that.
    bool RemoveExact(std::int32_t line, std::int32_t col, std::string_view text,
                     TextPosition& outPos, std::int32_t& outLinesRemoved);
    // InsertText, but fails on an empty text.
    bool RestoreText(std::int32_t line, std::int32_t col, std::string_view text,
                     TextPosition& outPos, std::int32_t& outLinesAdded);

    static constexpr std::int32_t slotStep = 100;

    std::int32_t count = 0;
    std::int32_t capacity = slotStep;  // slots for lines; 100 more whenever they are full
    std::int32_t longestLine = 0;      // as of the last Measure
    std::int32_t lineCountSeen = 0;    // the same

private:
    struct ExactWalk;

    bool IsLine(std::int32_t line) const { return line >= 0 && line < count; }
    bool IsPosition(std::int32_t line, std::int32_t col) const;
    bool OrderInText(const SelRange& range, TextPosition& start, TextPosition& end) const;
    void OpenSlots(std::int32_t at, std::int32_t added);
    void FillLines(std::int32_t at, std::int32_t end, std::string_view& text);
    void RemoveLines(std::int32_t from, std::int32_t to);
    bool CloseUp(std::int32_t line, std::int32_t col, std::string_view rest, std::int32_t last);
    bool PassRun(std::string_view run, ExactWalk& walk) const;
    bool PassLineBreak(ExactWalk& walk) const;
    void TakeAway(TextPosition from, const ExactWalk& walk);

    std::unique_ptr<std::unique_ptr<TextLine>[]> lines;
};

}  // namespace orvane
