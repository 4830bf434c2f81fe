#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "storage/questions.h"
#include "storage/text_colours.h"

// What the dialogs "Text color options" and "Options" show and decide: the rows of the seven
// colours with what OK makes of them, and the rows of the list "Fine".

namespace orvane {

// The picture buttons of the colours, one below the other, in dialog units. Each is as large as its
// picture. Rows are indices of TextColours.
inline constexpr int colourButtonLeft = 151;
inline constexpr std::array<int, textClassCount> colourButtonTops = {7, 24, 41, 58, 75, 92, 109};
constexpr int ColourButtonId(std::size_t row) { return 1027 + static_cast<int>(row); }

// The colour in hexadecimal, red first: "80 00 80".
std::string ColourCode(Colour colour);

// What is painted in front of a colour's button. Pixels of the client area; `right` and `bottom`
// are the first pixels outside.
struct ColourRowLayout {
    struct Area {
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;

        bool operator==(const Area&) const = default;
    };

    Area label;      // aligned to the left
    Area swatch;     // the colour, in a sunken well
    Area code;       // centred
    Area repainted;  // all that changes with the colour
};
ColourRowLayout LayOutColourRow(int clientLeft, const ColourRowLayout::Area& button);

inline constexpr std::string_view restoreColoursQuestion = "Restore to default colors?";

// The colours as they are chosen, beside those that the editor has. Nothing reaches the editor
// before the choice is confirmed.
class TextColourChoice {
public:
    explicit TextColourChoice(const TextColours& editorColours)
        : start(editorColours), working(editorColours) {}

    const TextColours& Colours() const { return working; }
    // What the colour chooser was accepted with; true when the row must be painted anew.
    bool Choose(std::size_t row, Colour colour);
    // Asks, and goes back to the defaults on Yes; true when all rows must be painted anew.
    bool Restore(Questions& questions);
    // What OK gives the editor. Nothing where all seven colours are those of the start: OK is then
    // the same as Cancel.
    std::optional<TextColours> Confirmed() const;

private:
    TextColours start;
    TextColours working;
};

// The list "Fine": the index of a row is CalcParameters::locusFine.
inline constexpr int fineRowCount = 20;
inline constexpr int noFineRow = -1;
// "0 - best", then the row's number alone.
std::string FineRowText(int row);
// The row that is selected at the start. Settings may hold a number that has no row, and then none
// is selected.
int FineRowOf(std::int32_t locusFine);

}  // namespace orvane
