#pragma once

#include <QApplication>
#include <QTest>
#include <QWidget>

namespace orvane::test {

// Waits until the window has the focus of the keyboard, and asks for it meanwhile: a window manager
// may forget to give it back when another window goes.
inline bool MakeActive(QWidget& window) {
    return QTest::qWaitFor(
        [&window] {
            if (QApplication::activeWindow() == &window) return true;
            window.activateWindow();
            return false;
        },
        10'000);
}

}  // namespace orvane::test
