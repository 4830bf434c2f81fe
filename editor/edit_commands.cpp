#include "editor/edit_commands.h"

namespace orvane {

namespace {

bool WithSelection(const EditorModel& model, bool) { return model.HasSelection(); }
bool WithText(const EditorModel&, bool clipboardHasText) { return clipboardHasText; }
bool WithUndo(const EditorModel& model, bool) { return model.history.CanUndo(); }
bool WithRedo(const EditorModel& model, bool) { return model.history.CanRedo(); }
bool Always(const EditorModel&, bool) { return true; }

}  // namespace

const std::array<EditCommandRow, 7> editCommandRows = {{
    // command, text, image, bar ahead, enabled
    {EditCommand::cut, "Cut", "cut", false, WithSelection},
    {EditCommand::copy, "Copy", "copy", false, WithSelection},
    {EditCommand::paste, "Paste", "paste", false, WithText},
    {EditCommand::deleteSelection, "Delete", "delete", false, WithSelection},
    {EditCommand::undo, "Undo", "undo", true, WithUndo},
    {EditCommand::redo, "Redo", "redo", false, WithRedo},
    {EditCommand::selectAll, "Select all", "select_all", true, Always},
}};

}  // namespace orvane
