#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <deque>
#include <functional>
#include <utility>
#include <vector>

namespace orvane::test {

// Presses a button that the user can see. Not with the mouse: a button lets go when the window
// manager moves the focus between press and release, as it may while a window comes up.
inline void Press(QAbstractButton* button) {
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->isVisible() && button->isEnabled()) << button->text().toStdString();
    button->click();
}

// Plays the user of modal windows: each step gets the next one that comes up, also one that comes
// up while an earlier step is still at work. A window that does not come up, a step that leaves its
// window open and a window that no step waits for fail the test; the window is closed then, so that
// nothing hangs.
class ModalPlayer {
public:
    using Step = std::function<void(QWidget& window)>;

    ModalPlayer() {
        QObject::connect(&guard, &QTimer::timeout, [this] { CloseUnexpected(); });
        guard.start(500);
    }
    ~ModalPlayer() { EXPECT_TRUE(steps.empty()) << steps.size() << " windows did not come up"; }

    void Then(Step step) {
        steps.push_back(std::move(step));
        if (steps.size() == 1) Restart();
    }
    bool IsDone() const { return steps.empty(); }

private:
    static constexpr int patience = 20'000;  // milliseconds

    void Restart() {
        waited.start();
        LookLater();
    }
    // A timer of its own each time: one that is at work does not fire again in a nested loop.
    void LookLater() {
        QTimer::singleShot(5, &context, [this] { Look(); });
    }
    bool IsBusy(QWidget* window) const {
        return std::find(busy.begin(), busy.end(), window) != busy.end();
    }
    // A window manager that has just started may forget to give a window the focus.
    static bool IsReady(QWidget& window) {
        if (!QTest::qWaitForWindowExposed(&window)) return false;
        if (!window.isActiveWindow()) window.activateWindow();
        return QTest::qWaitForWindowActive(&window, 1000);
    }
    // A window may be on its way out when it is first seen: it counts when it is seen again.
    void CloseUnexpected() {
        QWidget* const window = QApplication::activeModalWidget();
        const bool isUnexpected = window != nullptr && steps.empty() && !IsBusy(window);
        if (isUnexpected && window == suspect) {
            ADD_FAILURE() << "nobody expects the window " << window->windowTitle().toStdString();
            window->hide();
        }
        suspect = isUnexpected ? window : nullptr;
    }
    void Look() {
        if (steps.empty()) return;
        QWidget* const window = QApplication::activeModalWidget();
        if (window != nullptr && !IsBusy(window) && IsReady(*window)) {
            Play(window);
        } else if (waited.elapsed() > patience) {
            ADD_FAILURE() << "no window came up";
            steps.clear();
            if (window != nullptr) window->hide();
        } else {
            LookLater();
        }
    }
    void Play(QWidget* window) {
        const Step step = std::move(steps.front());
        steps.pop_front();
        busy.push_back(window);
        if (!steps.empty()) Restart();
        step(*window);
        busy.pop_back();
        if (window != QApplication::activeModalWidget() || !window->isVisible()) return;
        ADD_FAILURE() << "the window is still open";
        window->hide();
    }

    QObject context;
    QTimer guard;
    QWidget* suspect = nullptr;
    std::deque<Step> steps;
    std::vector<QWidget*> busy;
    QElapsedTimer waited;
};

}  // namespace orvane::test
