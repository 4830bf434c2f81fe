#include <gtest/gtest.h>

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include "app/main_layout.h"
#include "storage/qt_bytes.h"
#include "tests/support/tool_run.h"

// The built program as a process of its own, driven by keys and mouse as a user does.

namespace orvane {
namespace {

// Runs xdotool to its end and gives what it printed; empty where it failed.
QString Drive(const QStringList& arguments) {
    QProcess tool;
    tool.start(QStringLiteral("xdotool"), arguments);
    if (!tool.waitForFinished(20'000) || tool.exitCode() != 0) return {};
    return QString::fromUtf8(tool.readAllStandardOutput()).trimmed();
}

class EndToEnd : public testing::Test {
protected:
    EndToEnd() {
        QDir(folder.path()).mkdir(QStringLiteral("Setting"));
        QFile settings(folder.filePath(QStringLiteral("Setting/Orvane.set")));
        EXPECT_TRUE(settings.open(QIODevice::WriteOnly));
        EXPECT_TRUE(QFile::copy(QStringLiteral(ORVANE_PROGRAM), Program()));
    }
    ~EndToEnd() override {
        if (program.state() == QProcess::NotRunning) return;
        program.kill();
        program.waitForFinished();
    }

    QString Program() const { return folder.filePath(QStringLiteral("orvane")); }

    // Starts the program from another folder and waits until its window has the keys.
    void Start(const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment()) {
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(QStringLiteral("/"));
        program.start(Program(), QStringList());
        ASSERT_TRUE(program.waitForStarted());
        // The window is maximised at a first start, which takes the window manager a moment.
        ASSERT_TRUE(QTest::qWaitFor([this] { return FindWindow(); }, 20'000));
        ASSERT_FALSE(Drive({"windowactivate", "--sync", window}).isEmpty() && !IsActive());
        ASSERT_TRUE(QTest::qWaitFor([this] { return IsActive() && IsSteady(); }, 20'000));
    }

    bool FindWindow() {
        window = Drive({"search", "--onlyvisible", "--pid", QString::number(program.processId()),
                        "--name", "^Orvane"});
        return !window.isEmpty() && !window.contains(QLatin1Char('\n'));
    }
    // Popups count.
    qsizetype VisibleWindows() const {
        return Drive({"search", "--onlyvisible", "--pid", QString::number(program.processId())})
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts)
            .size();
    }
    bool IsActive() { return Drive({"getactivewindow"}) == window; }
    bool IsSteady() {
        const QString before = geometry;
        geometry = Drive({"getwindowgeometry", "--shell", window});
        return geometry == before;
    }
    int Geometry(const QString& name) const {
        for (const QString& line : geometry.split(QLatin1Char('\n'))) {
            if (line.startsWith(name + QLatin1Char('='))) return line.mid(name.size() + 1).toInt();
        }
        return -1;
    }

    // A point of the window's client area, as it is painted.
    void Click(int x, int y, const QString& button = QStringLiteral("1")) {
        Drive({"mousemove", "--sync", "--window", window, QString::number(x), QString::number(y)});
        Drive({"click", button});
    }
    MainLayout Layout() const {
        return LayOutMainWindow(Geometry(QStringLiteral("WIDTH")),
                                Geometry(QStringLiteral("HEIGHT")), 32810);
    }
    // A line feed is typed as the Enter key.
    void Type(const QString& text) {
        QStringList lines = text.split(QLatin1Char('\n'));
        const QString last = lines.takeLast();
        for (const QString& line : lines) {
            Drive({"type", "--delay", "5", line});
            Drive({"key", "Return"});
        }
        if (!last.isEmpty()) Drive({"type", "--delay", "5", last});
    }
    void PressCalculate() {
        const EdgeRect rect = Layout().buttons[static_cast<int>(MainButton::calculate)];
        Click((rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
    }

    // The whole report, selected by the pane's menu, through the clipboard.
    std::string CopyReport() {
        QGuiApplication::clipboard()->clear();
        const EdgeRect pane = Layout().resultPane;
        const int x = pane.left + 60;
        const int y = pane.top + 30;
        Click(x, y, QStringLiteral("3"));
        EXPECT_TRUE(QTest::qWaitFor([this] { return VisibleWindows() > 1; }, 20'000));
        Drive({"key", "Up", "Return"});  // Select all is the last item
        EXPECT_TRUE(QTest::qWaitFor([this] { return VisibleWindows() == 1; }, 20'000));
        Drive({"key", "ctrl+c"});
        EXPECT_TRUE(QTest::qWaitFor([] { return !QGuiApplication::clipboard()->text().isEmpty(); },
                                    20'000));
        return BytesFrom(QGuiApplication::clipboard()->text());
    }

    QTemporaryDir folder;
    QProcess program;
    QString window;
    QString geometry;
};

constexpr const char* sheet =
    "text:A first report;\n"
    "hex: mask = 2^12 - 1;\n"
    "ratio = 22 / 7;\n"
    "walk = (3, -4, 12) * 1.5;\n";

TEST_F(EndToEnd, ShowsTheReportThatTheToolPrints) {
    Start();
    Type(QString::fromLatin1(sheet));
    PressCalculate();
    const test::ToolResult tool = test::RunTool({"calc"}, sheet);
    ASSERT_EQ(tool.status, 0);
    EXPECT_EQ(CopyReport(), tool.output);
}

TEST_F(EndToEnd, WritesNumbersWithPointsUnderEveryLocale) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LOCPATH"), QStringLiteral(ORVANE_LOCALES_FOLDER));
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("comma"));
    Start(environment);
    Type(QString::fromLatin1(sheet));
    PressCalculate();
    EXPECT_EQ(CopyReport(), test::RunTool({"calc"}, sheet).output);
}

TEST_F(EndToEnd, AsksBeforeItLosesASheetAndEndsWithoutSaving) {
    Start();
    Type(QStringLiteral("a = 1;"));
    Drive({"key", "--clearmodifiers", "alt+F4"});
    // The question is a window of its own.
    QString box;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            box = Drive({"search", "--onlyvisible", "--pid", QString::number(program.processId()),
                         "--name", "^Message$"});
            return !box.isEmpty();
        },
        20'000));
    EXPECT_EQ(program.state(), QProcess::Running);
    Drive({"key", "Escape"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return IsActive(); }, 20'000));
    EXPECT_EQ(program.state(), QProcess::Running);
    Drive({"key", "--clearmodifiers", "ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z"});
    Drive({"key", "--clearmodifiers", "alt+F4"});
    EXPECT_TRUE(program.waitForFinished(20'000));
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
}

}  // namespace
}  // namespace orvane
