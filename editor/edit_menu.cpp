#include "editor/edit_menu.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QString>

namespace orvane {

void FillEditMenu(QMenu& menu, const EditorModel& model, bool clipboardHasText) {
    for (const EditCommandRow& row : editCommandRows) {
        if (row.barAhead) menu.addSeparator();
        const QIcon image(QString(":/menu/%1.png").arg(row.image));
        QAction* const entry = menu.addAction(image, row.text);
        entry->setData(static_cast<int>(row.command));
        entry->setEnabled(row.isEnabled(model, clipboardHasText));
    }
}

std::optional<EditCommand> CommandOf(const QAction* entry) {
    if (entry == nullptr) return std::nullopt;
    return static_cast<EditCommand>(entry->data().toInt());
}

}  // namespace orvane
