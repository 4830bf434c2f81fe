#include <QFile>
#include <QProcess>
#include <QTest>

#include "core/calc_parameters.h"
#include "tests/screens/main_window_fixture.h"
#include "tests/support/archive_folder.h"
#include "windows/control_ids.h"

// What the window keeps from one start to the next, and what it makes of files that it can't use.

namespace orvane {
namespace {

constexpr int patience = 20'000;  // milliseconds

// What the window manager knows of the window.
QString StateOf(const QWidget& window) {
    QProcess tool;
    tool.start("xprop", {"-id", QString::number(window.winId()), "_NET_WM_STATE"});
    tool.waitForFinished(patience);
    return QString::fromUtf8(tool.readAllStandardOutput());
}

class WindowPlace : public MainWindowTest {
protected:
    void WriteRecord(const std::string& record) {
        Write("Setting/Orvane.set",
              "{SECT_MAIN}\r\n<KEY>\r\n[KEY_WNDPLACE]" + record + "\r\n<LIST>\r\n");
    }
    // As a user ends it.
    void Close() {
        window->close();
        QCoreApplication::processEvents();
        End();
    }
    // Waits until the window manager has nothing more to say.
    void WaitForGeometry(const QRect& wanted) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return window->geometry() == wanted; }, patience))
            << window->x() << "," << window->y() << " " << window->width() << "x"
            << window->height();
    }
};

TEST_F(WindowPlace, StaysTheSameFromStartToStart) {
    MainWindow& first = Start();
    Resize({700, 555});
    const QRect place(140, 120, 700, 555);
    first.setGeometry(place);
    WaitForGeometry(place);
    Close();
    for (int start = 0; start < 3; ++start) {
        SCOPED_TRACE(start);
        MainWindow& next = Start();
        EXPECT_FALSE(next.isMaximized());
        WaitForGeometry(place);
        EXPECT_NE(Read("Setting/Orvane.set").find("[KEY_WNDPLACE]1/0/140/120/840/675/"),
                  std::string::npos);
        Close();
    }
}

TEST_F(WindowPlace, ComesBackMaximisedAndStillKnowsItsNormalPlace) {
    const QRect place(140, 120, 700, 555);
    WriteRecord("1/0/140/120/840/675/-1/-1/-1/-1/");
    MainWindow& first = Start();
    WaitForGeometry(place);
    first.showMaximized();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return first.isMaximized() && first.width() > 900; }, patience));
    Close();
    for (int start = 0; start < 2; ++start) {
        SCOPED_TRACE(start);
        EXPECT_NE(Read("Setting/Orvane.set").find("[KEY_WNDPLACE]3/0/140/120/840/675/"),
                  std::string::npos)
            << Read("Setting/Orvane.set");
        MainWindow& next = Start();
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return next.isMaximized() && next.width() > 900; }, patience));
        Close();
    }
    Start().showNormal();
    WaitForGeometry(place);
}

struct PlacementRow {
    const char* record;
    QSize size;
};
// Records that no window can have, and very small ones.
constexpr PlacementRow placementRows[] = {
    {"1/0/200/200/250/240/-1/-1/-1/-1/", {50, 40}},
    {"1/0/500/500/400/400/-1/-1/-1/-1/", {1, 1}},
    {"1/0/-2147483648/-2147483648/2147483647/2147483647/-1/-1/-1/-1/", {0, 0}},
    {"1/0/30000/30000/30700/30500/-1/-1/-1/-1/", {700, 500}},
    {"2/0/200/200/900/700/-1/-1/-1/-1/", {700, 500}},
};

TEST_F(WindowPlace, StandsAnyRecord) {
    for (const auto& [record, size] : placementRows) {
        SCOPED_TRACE(record);
        Write("Setting/Orvane.set",
              "{SECT_MAIN}\r\n<KEY>\r\n[KEY_WNDPLACE]" + std::string(record) + "\r\n<LIST>\r\n");
        MainWindow& shown = Start();
        EXPECT_TRUE(shown.isVisible());
        EXPECT_FALSE(shown.isMinimized());
        // The window manager may keep room for its own buttons.
        if (size.width() >= 700) {
            EXPECT_EQ(shown.size(), size);
        } else if (size.width() == 50) {
            EXPECT_LE(shown.height(), 60);
        }
        EXPECT_TRUE(shown.screen()->geometry().intersects(shown.frameGeometry()));
        End();
    }
}

TEST_F(MainWindowTest, StandsAnySize) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 1;\nb = 2;");
    shown.showNormal();
    for (const QSize size : {QSize(50, 50), QSize(1, 1), QSize(150, 60), QSize(5000, 4000)}) {
        SCOPED_TRACE(testing::Message() << size.width() << "x" << size.height());
        shown.resize(size);
        QCoreApplication::processEvents();
        for (const int height : {ids::command::height1, ids::command::height7}) {
            shown.RunCommand(height);
            EXPECT_FALSE(shown.grab(QRect(0, 0, 300, 300)).isNull());
            shown.RunButton(MainButton::calculate);
        }
    }
    EXPECT_EQ(shown.Result().toPlainText().toStdString(), "a = +1 \t\nb = +2 \t\n");
}

class BlinkWatcher : public QObject {
public:
    int blinks = 0;

    bool eventFilter(QObject*, QEvent* event) override {
        const QEvent::Type type = event->type();
        blinks += type == QEvent::Hide || type == QEvent::Show || type == QEvent::WinIdChange;
        return false;
    }
};

TEST_F(MainWindowTest, StaysAboveOtherWindowsWithoutBlinking) {
    MainWindow& shown = Start();
    const auto isAbove = [&] { return StateOf(shown).contains("_NET_WM_STATE_ABOVE"); };
    EXPECT_FALSE(isAbove());
    BlinkWatcher watcher;
    shown.installEventFilter(&watcher);
    const WId id = shown.winId();
    shown.RunCommand(ids::command::alwaysOnTop);
    EXPECT_TRUE(QTest::qWaitFor(isAbove, patience));
    shown.RunCommand(ids::command::alwaysOnTop);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isAbove(); }, patience));
    shown.RunCommand(ids::command::alwaysOnTop);
    EXPECT_TRUE(QTest::qWaitFor(isAbove, patience));
    EXPECT_EQ(watcher.blinks, 0);
    EXPECT_EQ(shown.winId(), id);
    EXPECT_TRUE(shown.isVisible() && shown.isMaximized());
    End();
    MainWindow& next = Start();
    EXPECT_TRUE(calcParameters.alwaysOnTop);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return StateOf(next).contains("_NET_WM_STATE_ABOVE"); }, patience));
}

TEST_F(MainWindowTest, TellsWhenTheUserClosesIt) {
    MainWindow& shown = Start();
    int closed = 0;
    QObject::connect(&shown, &MainWindow::Closed, [&] { ++closed; });
    EXPECT_TRUE(shown.close());
    EXPECT_EQ(closed, 1);
}

TEST_F(MainWindowTest, TakesSettingsThatItMayNotWriteForMissing) {
    Write("Setting/Orvane.set",
          "{SECT_MAIN}\r\n<KEY>\r\n[KEY_PRECISION]7\r\n[KEY_MAINBOOLS]37\r\n<LIST>\r\n");
    Write("Setting/user.file", "\xB6One\xE6x = 1;\n");
    const std::string before = Read("Setting/Orvane.set");
    folder.setAutoRemove(false);
    {
        const auto read = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
        const auto enter = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
        QFile::setPermissions(folder.path(), read | enter | QFile::WriteOwner);
        QFile::setPermissions(folder.filePath("Setting/Orvane.set"), read);
        QFile::setPermissions(folder.filePath("Setting/user.file"), read);
        QFile::setPermissions(folder.filePath("Setting"), read | enter);
        const test::WithoutRights withoutRights;
        MainWindow& shown = Start();
        EXPECT_EQ(calcParameters.floatPrecision, 0);
        EXPECT_FALSE(calcParameters.showSign);
        shown.Editor().SetText("a = 2;");
        PressButton(MainButton::calculate);
        EXPECT_EQ(shown.Result().toPlainText().toStdString(), "a = 2 \t\n");
        End();
    }
    const auto all = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QFile::setPermissions(folder.filePath("Setting"), all);
    folder.setAutoRemove(true);
    EXPECT_EQ(Read("Setting/Orvane.set"), before);
    EXPECT_FALSE(QFile::exists(folder.filePath("Setting/sample.file")));
}

TEST_F(MainWindowTest, StartsWithArchivesOfAnyBytes) {
    std::uint32_t state = 1;
    for (int trial = 0; trial < 4; ++trial) {
        SCOPED_TRACE(trial);
        std::string bytes;
        for (int at = 0; at < 20'000; ++at) {
            state = state * 1664525 + 1013904223;
            // Marks are as frequent as in no archive, and NUL bytes are among them.
            constexpr char marks[] = {'\xB6', '\xE6', '\0', '\n', 'O'};
            bytes += state >> 31 ? marks[(state >> 16) % 5] : static_cast<char>(state >> 24);
        }
        Write("Setting/user.file", bytes + "\xB6O\xE6" + bytes);
        Write("Setting/Orvane.set",
              "{SECT_MAIN}\r\n<KEY>\r\n[KEY_FILETYPE]0\r\n[KEY_SECTNAME]O\r\n"
              "<LIST>\r\n" +
                  bytes);
        MainWindow& shown = Start();
        EXPECT_FALSE(shown.grab().isNull());
        // A sheet that was not found would be asked for its name.
        if (shown.windowTitle() == "Orvane: O") shown.RunButton(MainButton::save);
        End();
    }
}

}  // namespace
}  // namespace orvane
