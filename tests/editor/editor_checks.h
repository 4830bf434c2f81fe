#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "editor/editor_model.h"

// What the tests of the editor's model share.

namespace orvane {

inline bool operator==(const UndoRecord& a, const UndoRecord& b) {
    return a.line == b.line && a.col == b.col && a.removed == b.removed && a.inserted == b.inserted;
}

// How a failed comparison shows these.
inline void PrintTo(const TextPosition& position, std::ostream* out) {
    *out << "(" << position.line << ", " << position.col << ")";
}
inline void PrintTo(const SelRange& range, std::ostream* out) {
    *out << "(" << range.startLine << ", " << range.startCol << ") to (" << range.endLine << ", "
         << range.endCol << ")";
}
inline void PrintTo(const RowSpan& rows, std::ostream* out) {
    *out << "rows " << rows.first << " to " << rows.last;
}
inline void PrintTo(const UndoRecord& record, std::ostream* out) {
    *out << "at (" << record.line << ", " << record.col << ") \"" << record.removed << "\" -> \""
         << record.inserted << "\"";
}
inline void PrintTo(const EditOutcome& outcome, std::ostream* out) {
    *out << (outcome.textChanged ? "text changed, " : "") << (outcome.caretMoved ? "moved, " : "")
         << "area " << static_cast<int>(outcome.area.kind) << " of line " << outcome.area.line
         << " from cell " << outcome.area.cell << ", rows " << outcome.rows.first << " to "
         << outcome.rows.last;
}

namespace test {

// A model with this text, and with the caret at the end of a selection that starts at `from`.
inline EditorModel ModelWith(std::string_view text, TextPosition from, TextPosition caret) {
    EditorModel model;
    model.SetText(text);
    model.PlaceCaret(from, false);
    model.PlaceCaret(caret, true);
    return model;
}

inline EditorModel ModelWith(std::string_view text, TextPosition caret) {
    return ModelWith(text, caret, caret);
}

inline SelRange Range(TextPosition from, TextPosition to) {
    SelRange range;
    range.SetRange(from.line, from.col, to.line, to.col);
    return range;
}

}  // namespace test
}  // namespace orvane
