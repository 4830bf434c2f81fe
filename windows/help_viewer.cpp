#include "windows/help_viewer.h"

#include <QCoreApplication>
#include <utility>

#include "storage/qt_bytes.h"
#include "windows/help_topics.h"

namespace orvane {

namespace {

// The window that all windows above this one belong to.
QWidget* MainWindowOf(QWidget* owner) {
    if (owner == nullptr) return nullptr;
    QWidget* main = owner->window();
    while (main->parentWidget() != nullptr) main = main->parentWidget()->window();
    return main;
}

}  // namespace

void HelpViewer::ShowTopic(QWidget* owner, const QString& topic) {
    HelpWindow& shown = WindowFor(owner);
    if (!std::exchange(isOpened, true)) {
        for (const std::string_view opening : openingTopics) {
            shown.ShowUnseen(QStringFrom(opening));
        }
    }
    shown.ShowTopic(topic, owner);
}

HelpWindow& HelpViewer::WindowFor(QWidget* owner) {
    if (window == nullptr) {
        const QString pages =
            folder.isEmpty() ? QCoreApplication::applicationDirPath() + "/help/html" : folder;
        // Its main window owns it, or it goes when it is closed.
        window = new HelpWindow(pages, MainWindowOf(owner));
    }
    return *window;
}

HelpViewer& ProgramHelp() {
    static HelpViewer viewer;
    return viewer;
}

void ShowHelpTopic(QWidget* owner, const QString& topic) { ProgramHelp().ShowTopic(owner, topic); }

}  // namespace orvane
