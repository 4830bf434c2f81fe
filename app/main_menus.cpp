#include "app/main_menus.h"

#include <QAction>
#include <QActionGroup>
#include <QIcon>
#include <string_view>

#include "app/command_rows.h"
#include "app/main_layout.h"
#include "core/calc_parameters.h"
#include "storage/qt_bytes.h"
#include "windows/control_ids.h"
#include "windows/look.h"

namespace orvane {

namespace {

// The submenu of this title, made on its first row.
QMenu& SubmenuOf(QMenu& popup, const char* title) {
    for (QAction* action : popup.actions()) {
        if (action->menu() != nullptr && action->text() == QLatin1String(title)) {
            return *action->menu();
        }
    }
    return *popup.addMenu(QLatin1String(title));
}

QMenu& MenuOf(QMenu& popup, const CommandRow& row) {
    return row.submenu == nullptr ? popup : SubmenuOf(popup, row.submenu);
}

bool IsMarked(const CommandRow& row, const CalcParameters& parameters) {
    if (row.mark == MenuMark::radio) {
        return HeightEighths(row.id) == HeightEighths(parameters.calcHeightCommand);
    }
    return row.id == ids::command::blackOutput ? parameters.blackOutput : parameters.alwaysOnTop;
}

}  // namespace

MainMenus::MainMenus() {
    for (int popup = 0; popup < menuLabelCount; ++popup) {
        popups.push_back(std::make_unique<QMenu>(QStringFrom(PopupTitle(popup))));
    }
    for (const CommandRow& row : CommandRows()) {
        QAction* action = MenuOf(*popups[row.popup], row).addAction(QLatin1String(row.text));
        NameControl(*action, row.id);
        action->setData(row.id);
        action->setCheckable(row.mark != MenuMark::none);
        if (row.image != nullptr) {
            action->setIcon(QIcon(QStringLiteral(":/menu/%1.png").arg(QLatin1String(row.image))));
        }
    }
    // Exactly one height is marked.
    for (const auto& popup : popups) {
        for (QAction* action : popup->actions()) {
            if (action->menu() == nullptr) continue;
            auto* group = new QActionGroup(action->menu());
            for (QAction* height : action->menu()->actions()) group->addAction(height);
        }
    }
}

void MainMenus::ShowMarks(const CalcParameters& parameters) {
    for (const CommandRow& row : CommandRows()) {
        if (row.mark == MenuMark::none) continue;
        QAction* action = popups[row.popup]->findChild<QAction*>(QString::number(row.id));
        if (action != nullptr) action->setChecked(IsMarked(row, parameters));
    }
}

int MainMenus::Choose(int popup, const QPoint& screenPosition) {
    const QAction* chosen = popups[popup]->exec(screenPosition);
    return chosen == nullptr ? 0 : chosen->data().toInt();
}

}  // namespace orvane
