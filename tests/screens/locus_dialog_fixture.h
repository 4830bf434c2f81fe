#pragma once

#include <gtest/gtest.h>

#include <QScreen>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "locus/locus_dialog.h"
#include "storage/file_bytes.h"
#include "tests/support/modal_player.h"

// The plot window above an owner, with curves and a settings file of the test's own.

namespace orvane {

struct CurveRow {
    int sentence;  // from 0
    LocusKind kind;
    std::vector<std::pair<double, double>> points;
};

class LocusDialogFixture : public testing::Test {
protected:
    using Step = test::ModalPlayer::Step;

    LocusDialogFixture() {
        Write("settings", "");
        owner.resize(900, 700);
        owner.show();
        // A window manager that has just started may miss its first window.
        while (!QTest::qWaitForWindowExposed(&owner, 2000)) {
            owner.hide();
            owner.show();
        }
    }

    // One stroke.
    LocusSet& Add(const CurveRow& row) {
        LocusSet& set = *store.Add(row.sentence, row.kind);
        for (const auto& [x, y] : row.points) set.AddPoint(x, y, set.points.empty());
        set.FindRanges(1920, 1080, 1);
        return set;
    }
    void AddThree() {
        Add({0, LocusKind::xy, {{1, 2}, {3, 4}, {5, 1}}});
        Add({2, LocusKind::polar, {{-5, -5}, {5, 5}, {5, -5}}});
        Add({11, LocusKind::parametric, {{-3, 0}, {-1, 7}}});
    }

    // Opens the window and plays the user, who closes it.
    void Run(const Step& step, int labelPrecision = 2) {
        player.Then(step);
        LocusDialog(&owner, store, Path("settings"), [this](QWidget* asking, const QString& topic) {
            asked.emplace_back(asking, topic.toStdString());
        }).Run(labelPrecision);
    }
    static void Escape(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }

    // The window takes the new size at once, the screen later, and word of an older size may come
    // in between: both must have it, at two looks.
    static void Resize(QWidget& window, QSize size) {
        window.resize(size);
        int looks = 0;
        ASSERT_TRUE(QTest::qWaitFor([&] {
            const QSize onScreen = window.screen()->grabWindow(window.winId()).size();
            const bool isThere = window.size() == size && onScreen == size;
            looks = isThere ? looks + 1 : 0;
            return looks > 1;
        }));
    }

    // The window manager may have had another place in mind, and is asked again then.
    static void MoveTo(QWidget& window, const QRect& place) {
        int looks = 0;
        ASSERT_TRUE(QTest::qWaitFor([&] {
            const QSize onScreen = window.screen()->grabWindow(window.winId()).size();
            const bool isThere = window.geometry() == place && onScreen == place.size();
            if (window.geometry() != place) window.setGeometry(place);
            looks = isThere ? looks + 1 : 0;
            return looks > 2;
        }));
    }

    template <typename Control = QWidget>
    static Control& ControlOf(QWidget& window, int id) {
        auto* const control = window.findChild<Control*>(QString::number(id));
        EXPECT_NE(control, nullptr) << id;
        return *control;
    }
    static QTabBar& TabsOf(QWidget& window) { return *window.findChild<QTabBar*>(); }
    static std::vector<LocusPage*> ShownPages(QWidget& window) {
        std::vector<LocusPage*> pages;
        for (QWidget* child : window.findChildren<QWidget*>()) {
            auto* const page = dynamic_cast<LocusPage*>(child);
            if (page != nullptr && page->isVisible()) pages.push_back(page);
        }
        return pages;
    }
    // The only one that can be seen.
    static LocusPage& PageOf(QWidget& window) {
        const std::vector<LocusPage*> pages = ShownPages(window);
        EXPECT_EQ(pages.size(), 1U);
        return *pages.at(0);
    }

    std::string Path(const std::string& name) const {
        return folder.path().toStdString() + "/" + name;
    }
    void Write(const std::string& name, const std::string& bytes) {
        std::string rest = bytes;
        std::string reason;
        const auto nextPiece = [&rest] { return std::exchange(rest, std::string()); };
        ASSERT_TRUE(WriteFile(Path(name), nextPiece, reason)) << reason;
    }
    std::string Read(const std::string& name) const {
        std::string reason;
        return ReadFile(Path(name), reason).value_or("unreadable: " + reason);
    }

    QTemporaryDir folder;
    LocusStore store;
    QWidget owner;
    test::ModalPlayer player;
    std::vector<std::pair<QWidget*, std::string>> asked;  // help topics, and for which window
};

}  // namespace orvane
