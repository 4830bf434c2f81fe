#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "functions/keyword_table.h"
#include "storage/text_colours.h"

// The list of keywords that completes a word, without its window: which row is selected, which one
// stands on top, what a press hits, where the list opens and what it inserts. The list always holds
// all keywords in the table's order; typing only makes it jump. Lengths are pixels, rows count from
// 0, and positions have their origin in the upper left corner of the list's inner area.

namespace orvane {

struct PixelPoint {
    int x = 0;
    int y = 0;

    bool operator==(const PixelPoint&) const = default;
};

struct PixelSize {
    int width = 0;
    int height = 0;

    bool operator==(const PixelSize&) const = default;
};

struct PixelRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelRect&) const = default;
};

// How a row of the list looks.
struct KeywordRowLook {
    std::string_view word;  // beside the name; empty for constants and headers
    Colour nameColour = 0;
};
KeywordRowLook LookOf(const KeywordEntry& entry);

namespace keywordListColours {
inline constexpr Colour background = ColourFrom(255, 255, 247);
inline constexpr Colour selectedRow = ColourFrom(0, 255, 0);
inline constexpr Colour groupWord = ColourFrom(96, 96, 96);
inline constexpr Colour strip = ColourFrom(210, 210, 210);
inline constexpr Colour button = ColourFrom(192, 192, 192);
}  // namespace keywordListColours

// The sizes of the list, from those of its font.
struct KeywordListLayout {
    static constexpr int rowsShown = 12;
    static constexpr int stripWidth = 13;  // also the height of its buttons and of its thumb
    static constexpr int textLeft = 4;

    int rowHeight = 1;   // at least 1
    int nameColumn = 0;  // from a name's left end to that of the word beside it
    PixelSize outer;     // with the frame around it
    PixelSize inner;

    // The height of a text, the widths of the longest name and of the longest group word, and the
    // width of the frame on each side.
    static KeywordListLayout From(int textHeight, int longestName, int longestWord, int frame);

    int StripLeft() const { return inner.width - stripWidth; }
    // What is filled of the selected row that stands `rowsDown` rows below the top one.
    PixelRect FillOf(int rowsDown) const;
};

enum class ListKey { up, down, pageUp, pageDown, home, end };

// What stands at a place of the list.
enum class ListPart { row, upButton, trackAbove, thumb, trackBelow, downButton };

// What the pressed mouse is doing.
enum class ScrollState : std::int32_t { idle = 0, upHeld = 1, thumbDragged = 2, downHeld = 3 };

struct KeywordList {
    static constexpr int repeatMilliseconds = 150;

    explicit KeywordList(const KeywordListLayout& layout);

    KeywordListLayout layout;
    bool visible = false;
    int selected = -1;  // row, or -1 for none
    int topRow = 0;     // 0 to maxTop
    int maxTop = 0;
    int pageRows = 0;
    ScrollState scrollState = ScrollState::idle;
    bool firstTickSkipped = false;  // set by a press on a button, taken back by the tick it eats
    int grabOffset = 0;             // of the press in the thumb
    double pixelsPerRow = 0;        // of the thumb; 0 where there is nothing to scroll

    // Selects the row that the characters of `word` lead to and puts it on top; a word that leads
    // nowhere selects nothing and shows the list from its start.
    void JumpTo(std::string_view word);
    // Moves the selection and scrolls just as far as that needs.
    void PressKey(ListKey key);
    // Positive rows scroll toward the end.
    void ScrollBy(int rows);

    int ThumbTop() const;
    ListPart PartAt(PixelPoint point) const;
    // The row at this height, or -1 where none stands.
    int RowAt(int y) const;

    void Press(PixelPoint point);
    void Drag(PixelPoint point);  // with the button held
    void Release() { scrollState = ScrollState::idle; }
    // One tick of the timer that runs while a button of the strip is held.
    void Tick();

    // The keyword to put into the text: for Enter and a double click, which bring no character with
    // them, the selected one; for a typed character the selected one where it can be followed by
    // that character. Null where nothing is to be put in, so the character is typed.
    const KeywordEntry* EntryToAccept(std::optional<char> trigger) const;
};

// The characters that may accept a row while the list shows.
inline constexpr std::string_view acceptTriggers = ":(+-*/,;)";
// Whether a keyword can be followed by this character: a header by ':', a constant by an operator
// or what ends an operand, a function by its bracket.
bool AcceptsTrigger(const KeywordEntry& entry, char trigger);

// Where the list opens: under the caret's line, to the right of the caret, or to its left where it
// fits only there. All positions are those of the text view. Nowhere when the caret is scrolled out
// of the view's top or bottom.
std::optional<PixelPoint> PlaceList(PixelPoint caret, int lineHeight, PixelSize view,
                                    PixelSize list);

// Brings a window beside a line of text back onto the screen, all in screen positions. One that
// would reach over the bottom goes above the line and one over the top goes under it, where it fits
// there, so that the line stays readable. What is larger than the screen loses its right and lower
// ends.
PixelPoint KeepOnScreen(PixelRect window, PixelRect line, PixelRect screen);

}  // namespace orvane
