#pragma once

#include <cstdint>
#include <string_view>

// Which part of the view an edit must repaint. There is no stored colour map: choosing the area is
// all there is to recolouring.

namespace orvane {

enum class RepaintKind { none, restOfRow, wholeRow, wholeWindow };

struct RepaintArea {
    RepaintKind kind = RepaintKind::none;
    std::int32_t line = 0;  // the row; 0 for the whole window
    std::int32_t cell = 0;  // the first cell to paint, for the rest of a row; else 0

    bool operator==(const RepaintArea&) const = default;
};

// What an edit did, as far as painting must know. An edit that did nothing has no effect to tell:
// nothing is repainted after it.
struct EditEffect {
    std::int32_t line = 0;           // the row of a change within one row
    bool linesChanged = false;       // lines were split, joined, put in or taken out
    bool selectionReplaced = false;  // by Backspace, Delete, Enter, a typed character, cut or the
                                     // menu's Delete
    char typed = 0;                  // the typed character, if it was one

    // Kept: a paste is judged by the pasted text alone. Without a line break in it the rest of the
    // row is enough for it, also where it replaced a selection of several lines.
    static EditEffect OfPaste(std::int32_t line, std::string_view pasted);
    // Undo and redo count the line breaks that they take out and put in.
    static EditEffect OfHistoryStep(std::int32_t line, std::int32_t linesRemoved,
                                    std::int32_t linesAdded);

    bool operator==(const EditEffect&) const = default;
};

// `before` and `now` are the row's text before and after the edit; the whole window asks for
// neither.
RepaintArea ChooseRepaint(const EditEffect& effect, std::string_view before, std::string_view now);

// Where the rest of the row begins: at the first difference or, where a word is or was there,
// ahead of it by the character in front and the word in front of that. Every tab stepped over
// counts as four cells, so the answer may lie further left than need be, even below 0.
//
// Kept: only words are thought of. Where "//" comes or goes behind its first '/', and where a word
// becomes or is no longer a header through what stands behind it (but for a typed ':'), what is
// in front of the change keeps its colour until it is painted for another reason.
std::int32_t FirstChangedCell(std::string_view before, std::string_view now);

// What of an area shows in a view scrolled to that row and cell: a row above the view is not
// painted at all, and the rest of a row that begins left of the view begins at its edge.
RepaintArea ClipToView(RepaintArea area, std::int32_t topLine, std::int32_t leftCell);

}  // namespace orvane
