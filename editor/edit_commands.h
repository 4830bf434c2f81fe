#pragma once

#include <array>

#include "editor/editor_model.h"

// The commands of the editor's context menu, in the order in which it shows them.

namespace orvane {

enum class EditCommand { cut, copy, paste, deleteSelection, undo, redo, selectAll };

struct EditCommandRow {
    EditCommand command;
    const char* text;
    const char* image;  // the name of its small picture
    bool barAhead;
    bool (*isEnabled)(const EditorModel& model, bool clipboardHasText);
};
extern const std::array<EditCommandRow, 7> editCommandRows;

}  // namespace orvane
