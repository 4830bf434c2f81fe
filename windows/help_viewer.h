#pragma once

#include <QPointer>
#include <QString>
#include <functional>

#include "windows/help_window.h"

class QWidget;

// How every window opens the help.

namespace orvane {

// Shows a topic, as windows/help_topics.h spells them, to the user of the owner's window. Windows
// that open help take this as a parameter, so that they can be used without pages.
using ShowTopic = std::function<void(QWidget* owner, const QString& topic)>;

// The help of one run of the program: one window, which is made when it is first asked for.
class HelpViewer {
public:
    explicit HelpViewer(const QString& pages = {}) : folder(pages) {}

    // The folder with the pages; an empty one stands for help/html beside the program. A window
    // that was made before keeps its own.
    void SetFolder(const QString& pages) { folder = pages; }

    // Shows the topic in the window and brings it up. A page that is not there shows nothing and
    // changes nothing; no message is given. The first request of a run displays the opening topics
    // ahead of its own: nobody sees them, and they leave nothing behind.
    void ShowTopic(QWidget* owner, const QString& topic);

    // The window as long as there is one.
    HelpWindow* Window() const { return window; }

private:
    HelpWindow& WindowFor(QWidget* owner);

    QString folder;
    QPointer<HelpWindow> window;
    bool isOpened = false;
};

// The viewer of this run.
HelpViewer& ProgramHelp();

// The topic in the viewer of this run. The window closes with the main window of the owner.
void ShowHelpTopic(QWidget* owner, const QString& topic);

}  // namespace orvane
