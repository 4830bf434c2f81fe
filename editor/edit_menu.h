#pragma once

#include <optional>

#include "editor/edit_commands.h"

class QAction;
class QMenu;

// The context menu of the formula editor.

namespace orvane {

void FillEditMenu(QMenu& menu, const EditorModel& model, bool clipboardHasText);

// The command of an entry of that menu; none for null, which stands for a menu that was left.
std::optional<EditCommand> CommandOf(const QAction* entry);

}  // namespace orvane
