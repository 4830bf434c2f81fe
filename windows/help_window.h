#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QWidget>
#include <functional>

#include "windows/help_browser.h"

class QKeySequence;

// The window that the help is read in. It stands beside the other windows and can be used while a
// dialog waits for its answer.

namespace orvane {

class HelpWindow : public QWidget {
    Q_OBJECT

public:
    // `main` is the window that it closes with; without one it goes when it is closed.
    HelpWindow(const QString& pages, QWidget* main);

    // Shows pages unseen, and leaves none of them in the way back.
    void ShowUnseen(const QString& topic);
    // Shows the topic and brings the window up, on the owner's screen when it was closed. Without a
    // page for the topic nothing changes.
    void ShowTopic(const QString& topic, const QWidget* owner);

    HelpBrowser& Browser() { return browser; }

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void LayOut();
    void AddKeys();
    void AddKey(const QKeySequence& keys, const std::function<void()>& action);
    void ShowContents();
    void ShowTitle();
    void PlaceOnScreenOf(const QWidget* owner);
    void StayUsable();
    void FindNext(bool backward);
    void ShowFound(bool isFound);

    HelpBrowser browser;
    QPushButton back;
    QPushButton forward;
    QPushButton contents;
    QLabel findLabel;
    QLineEdit findBox;
    QLabel notFound;
};

}  // namespace orvane
