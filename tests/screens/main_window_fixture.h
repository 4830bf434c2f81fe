#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "app/main_window.h"

// A main window in a program folder of its own. Each window shares the process-wide options, so
// one lives at a time.

namespace orvane {

inline QPoint MiddleOf(const EdgeRect& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

template <typename Control = QWidget>
Control& ControlOf(MainWindow& window, int id) {
    Control* control = window.findChild<Control*>(QString::number(id));
    EXPECT_NE(control, nullptr) << id;
    return *control;
}

class MainWindowTest : public testing::Test {
protected:
    MainWindowTest() {
        QDir(folder.path()).mkdir(QStringLiteral("Setting"));
        Write("Setting/Orvane.set", "");
    }

    // Starts the program as a user does, and waits until it can be seen.
    MainWindow& Start();
    // Ends it, which writes the settings.
    void End() { window.reset(); }

    // Makes it a normal window of this size.
    void Resize(QSize size);
    // Runs the button by the mouse.
    void PressButton(MainButton button);
    MainLayout Layout() const;

    std::string Path(const std::string& name) const;
    void Write(const std::string& name, const std::string& bytes);
    std::string Read(const std::string& name) const;

    QTemporaryDir folder;
    std::unique_ptr<MainWindow> window;
};

}  // namespace orvane
