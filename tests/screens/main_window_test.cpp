#include "app/main_window.h"

#include <QApplication>
#include <QClipboard>
#include <QIcon>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "app/widget_place.h"
#include "core/calc_parameters.h"
#include "storage/option_settings.h"
#include "storage/qt_bytes.h"
#include "tests/screens/main_window_fixture.h"
#include "windows/control_ids.h"
#include "windows/look.h"

namespace orvane {
namespace {

TEST_F(MainWindowTest, IsMaximisedAtAFirstStart) {
    MainWindow& shown = Start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.isMaximized(); }));
    EXPECT_EQ(shown.windowTitle(), "Orvane");
}

TEST_F(MainWindowTest, PlacesEveryControlAtEveryHeight) {
    MainWindow& shown = Start();
    constexpr int heights[] = {32807, 32809, 32808, 32810, 32811, 32806, 32812};
    for (const QSize size : {QSize(640, 520), QSize(800, 600), QSize(1111, 777)}) {
        Resize(size);
        for (const int height : heights) {
            SCOPED_TRACE(testing::Message() << size.width() << " " << height);
            shown.RunCommand(height);
            const MainLayout layout = LayOutMainWindow(size.width(), size.height(), height);
            using namespace ids::mainWindow;
            const std::pair<int, EdgeRect> places[] = {
                {calculationLabel, layout.calculationLabel},
                {resultLabel, layout.resultLabel},
                {resultPane, layout.resultPane},
                {progressBar, layout.progressBar},
                {systemBitsGroup, layout.systemBitsGroup},
                {floatPrecisionGroup, layout.floatPrecisionGroup},
                {floatPrecisionBox, layout.floatPrecisionBox},
                {showSignCheck, layout.showSignCheck},
                {positionLineCheck, layout.positionLineCheck},
                {breakTextCheck, layout.breakTextCheck},
                {formulaBreakCheck, layout.formulaBreakCheck}};
            for (const auto& [id, rect] : places) {
                EXPECT_EQ(ControlOf(shown, id).geometry(), QRectFrom(rect)) << id;
            }
            EXPECT_EQ(shown.Editor().geometry(), QRectFrom(layout.editor));
            const QRect list = ControlOf(shown, systemBitsList).geometry();
            EXPECT_EQ(list.topLeft(), QRectFrom(layout.systemBitsList).topLeft());
            EXPECT_EQ(list.width(), 67);
        }
    }
}

TEST_F(MainWindowTest, HasItsIconOnceItIsPainted) {
    QApplication::setWindowIcon(QIcon());
    MainWindow& shown = Start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shown.windowIcon().isNull(); }));
    EXPECT_EQ(QApplication::windowIcon().availableSizes(), ProgramIcon().availableSizes());
}

TEST_F(MainWindowTest, CalculatesAtAPressOnTheButton) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 1 + 1;\nb = a * 2.5;");
    PressButton(MainButton::calculate);
    EXPECT_EQ(shown.Result().toPlainText().toStdString(), "a = +2 \t\nb = +5 \t\n");
}

TEST_F(MainWindowTest, TakesOptionsAtTheNextCalculateOnly) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 2;");
    PressButton(MainButton::calculate);
    const QString before = shown.Result().toPlainText();
    ControlOf<QCheckBox>(shown, ids::mainWindow::showSignCheck).click();
    EXPECT_EQ(shown.Result().toPlainText(), before);
    PressButton(MainButton::calculate);
    EXPECT_EQ(shown.Result().toPlainText().toStdString(), "a = 2 \t\n");
}

TEST_F(MainWindowTest, TakesAnEmptyPrecisionForNone) {
    MainWindow& shown = Start();
    ControlOf<QLineEdit>(shown, ids::mainWindow::floatPrecisionBox).clear();
    shown.Editor().SetText("a = 2.6;");
    PressButton(MainButton::calculate);
    EXPECT_EQ(calcParameters.floatPrecision, 0);
    EXPECT_EQ(shown.Result().toPlainText().toStdString(), "a = +3 \t\n");
}

TEST_F(MainWindowTest, ShowsTheReportInTheOtherColoursFromItsFirstLine) {
    MainWindow& shown = Start();
    std::string sheet;
    for (int line = 0; line < 200; ++line) sheet += "1 + " + std::to_string(line) + ";\n";
    shown.Editor().SetText(sheet);
    PressButton(MainButton::calculate);
    const QString report = shown.Result().toPlainText();
    EXPECT_EQ(shown.Result().palette().color(QPalette::Base), QColor(Qt::black));
    shown.Result().verticalScrollBar()->setValue(100);
    shown.RunCommand(ids::command::blackOutput);
    EXPECT_EQ(shown.Result().toPlainText(), report);
    EXPECT_EQ(shown.Result().palette().color(QPalette::Base), QColor(Qt::white));
    EXPECT_EQ(shown.Result().verticalScrollBar()->value(), 0);
    QTextCursor first(shown.Result().document());
    first.movePosition(QTextCursor::NextBlock);
    first.movePosition(QTextCursor::Right);
    EXPECT_EQ(first.charFormat().foreground().color(), QColor(Qt::black));
}

TEST_F(MainWindowTest, PaintsThePositionLineInGrey) {
    MainWindow& shown = Start();
    ControlOf<QCheckBox>(shown, ids::mainWindow::positionLineCheck).click();
    shown.Editor().SetText("a = 12.5;");
    PressButton(MainButton::calculate);
    QTextCursor cursor(shown.Result().document());
    cursor.movePosition(QTextCursor::End);
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(Qt::white));
    cursor.setPosition(1);
    EXPECT_EQ(cursor.charFormat().foreground().color(), QColor(0xC0, 0xC0, 0xC0));
}

TEST_F(MainWindowTest, DropsTypedCharactersInTheReport) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 2;\nb = 3;");
    PressButton(MainButton::calculate);
    const QString report = shown.Result().toPlainText();
    shown.Result().setFocus();
    QTest::keyClicks(&shown.Result(), "xyz 123");
    for (const int key : {Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_Return, Qt::Key_Tab}) {
        QTest::keyClick(&shown.Result(), static_cast<Qt::Key>(key));
    }
    QTest::keyClick(&shown.Result(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_FALSE(shown.Result().textCursor().hasSelection());
    EXPECT_EQ(shown.Result().toPlainText(), report);
    shown.Result().selectAll();
    QTest::keyClick(&shown.Result(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), report);
}

TEST_F(MainWindowTest, CopiesFixedBlanksAndAccentsAsTheyAre) {
    MainWindow& shown = Start();
    shown.Editor().SetText("text:na\xEFve\xA0\x80;");
    PressButton(MainButton::calculate);
    shown.Result().selectAll();
    shown.Result().copy();
    EXPECT_EQ(BytesFrom(QGuiApplication::clipboard()->text()), "\nna\xEFve\xA0\x80\n");
}

TEST_F(MainWindowTest, RunsNoButtonThatTheMouseLeft) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 2;");
    const MainLayout layout = Layout();
    const EdgeRect& button = layout.buttons[static_cast<int>(MainButton::calculate)];
    const QPoint inside = MiddleOf(button);
    const QPoint outside = inside + QPoint(0, 60);
    QTest::mousePress(&shown, Qt::LeftButton, {}, inside);
    QTest::mouseMove(&shown, outside);
    QTest::mouseRelease(&shown, Qt::LeftButton, {}, outside);
    EXPECT_EQ(shown.Result().toPlainText(), "");
    QTest::mousePress(&shown, Qt::LeftButton, {}, QPoint(button.right, inside.y()));
    QTest::mouseRelease(&shown, Qt::LeftButton, {}, QPoint(button.right, inside.y()));
    EXPECT_EQ(shown.Result().toPlainText(), "");
    QTest::mousePress(&shown, Qt::LeftButton, {}, inside);
    QTest::mouseMove(&shown, outside);
    QTest::mouseMove(&shown, inside);
    QTest::mouseRelease(&shown, Qt::LeftButton, {}, inside);
    EXPECT_EQ(shown.Result().toPlainText().toStdString(), "a = +2 \t\n");
}

TEST_F(MainWindowTest, LeavesTabAndEnterToTheEditor) {
    MainWindow& shown = Start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown.isActiveWindow(); }));
    QTest::keyClick(shown.focusWidget(), Qt::Key_A);
    QTest::keyClick(shown.focusWidget(), Qt::Key_Tab);
    QTest::keyClick(shown.focusWidget(), Qt::Key_B);
    QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
    QTest::keyClick(shown.focusWidget(), Qt::Key_Escape);
    EXPECT_TRUE(shown.isVisible());
    EXPECT_EQ(shown.Editor().GetText(), "a\tb\n");
}

constexpr const char* settingsOfAFirstRun =
    "\r\n\r\n{SECT_MAIN}\r\n<KEY>\r\n"
    "[KEY_MAINCLRS]00008000000000FF000000000000000000800080"
    "00FF000000808080"
    "0000000000000000000000000000000000000000000000000000000000000000"
    "0000000000000000000000000000000000000000000000000000000000000000"
    "0000000000000000000000000000000000000000000000000000000000000000"
    "00000000\r\n"
    "[KEY_SYSBITS]30\r\n[KEY_PRECISION]2\r\n[KEY_MUCALCH]32810\r\n[KEY_LOCUSFINE]0\r\n"
    "[KEY_MAINBOOLS]37\r\n[KEY_FILETYPE]-1\r\n[KEY_SECTNAME]\r\n[KEY_WNDPLACE]";

TEST_F(MainWindowTest, WritesTheSettingsInTheirOrder) {
    Start();
    End();
    const std::string settings = Read("Setting/Orvane.set");
    EXPECT_EQ(settings.substr(0, std::string_view(settingsOfAFirstRun).size()),
              settingsOfAFirstRun);
    EXPECT_EQ(Read("Setting/user.file"), "do not modify the file manually\r\n\r\n");
    EXPECT_EQ(Read("Setting/sample.file"), "do not modify the file manually\r\n\r\n");
}

TEST_F(MainWindowTest, ComesBackAsItWas) {
    MainWindow& first = Start();
    Resize({700, 555});
    first.RunCommand(ids::command::height2);
    first.RunCommand(ids::command::blackOutput);
    ControlOf<QComboBox>(first, ids::mainWindow::systemBitsList).setCurrentIndex(6);
    ControlOf<QLineEdit>(first, ids::mainWindow::floatPrecisionBox).setText("7");
    ControlOf<QCheckBox>(first, ids::mainWindow::formulaBreakCheck).click();
    End();
    MainWindow& second = Start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return second.size() == QSize(700, 555); }));
    EXPECT_FALSE(second.isMaximized());
    EXPECT_EQ(calcParameters.calcHeightCommand, ids::command::height2);
    EXPECT_FALSE(calcParameters.blackOutput);
    EXPECT_EQ(ControlOf<QComboBox>(second, ids::mainWindow::systemBitsList).currentText(), "8");
    EXPECT_EQ(ControlOf<QLineEdit>(second, ids::mainWindow::floatPrecisionBox).text(), "7");
    EXPECT_TRUE(ControlOf<QCheckBox>(second, ids::mainWindow::formulaBreakCheck).isChecked());
}

TEST_F(MainWindowTest, StartsWithoutAnyOfItsFiles) {
    QDir(folder.path() + "/Setting").removeRecursively();
    MainWindow& shown = Start();
    EXPECT_EQ(calcParameters.floatPrecision, 0);
    EXPECT_FALSE(calcParameters.showSign);
    EXPECT_FALSE(shown.isMaximized());
    shown.Editor().SetText("a = 2;");
    PressButton(MainButton::calculate);
    EXPECT_EQ(shown.Result().toPlainText().toStdString(), "a = 2 \t\n");
    End();
    EXPECT_FALSE(QDir(folder.path() + "/Setting").exists());
}

TEST_F(MainWindowTest, ReopensTheLastSheet) {
    Write("Setting/user.file", "\xB6One\xE6x = 1;\xB6Two\xE6y = 2;\n");
    Write("Setting/Orvane.set",
          "{SECT_MAIN}\r\n<KEY>\r\n[KEY_FILETYPE]0\r\n[KEY_SECTNAME]Two\r\n<LIST>\r\n");
    MainWindow& shown = Start();
    EXPECT_EQ(shown.windowTitle(), "Orvane: Two");
    EXPECT_EQ(shown.Editor().GetText(), "y = 2;\n");
}

TEST_F(MainWindowTest, StartsUnnamedWhereTheLastSheetIsGone) {
    Write("Setting/Orvane.set",
          "{SECT_MAIN}\r\n<KEY>\r\n[KEY_FILETYPE]0\r\n[KEY_SECTNAME]Gone\r\n<LIST>\r\n");
    MainWindow& shown = Start();
    EXPECT_EQ(shown.windowTitle(), "Orvane");
    EXPECT_EQ(shown.Editor().GetText(), "");
}

TEST_F(MainWindowTest, StaysOnTopWhenAskedTo) {
    MainWindow& shown = Start();
    shown.RunCommand(ids::command::alwaysOnTop);
    EXPECT_TRUE(shown.isVisible());
    EXPECT_TRUE(shown.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    shown.RunCommand(ids::command::alwaysOnTop);
    EXPECT_FALSE(shown.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

TEST_F(MainWindowTest, MarksTheOptionsInTheirMenu) {
    MainWindow& shown = Start();
    const auto isChecked = [&](int id) {
        return shown.Menus().Popup(0).findChild<QAction*>(QString::number(id))->isChecked();
    };
    shown.Menus().ShowMarks(calcParameters);
    EXPECT_TRUE(isChecked(ids::command::blackOutput));
    EXPECT_TRUE(isChecked(ids::command::height4));
    EXPECT_FALSE(isChecked(ids::command::alwaysOnTop));
    shown.RunCommand(ids::command::height7);
    shown.RunCommand(ids::command::blackOutput);
    shown.Menus().ShowMarks(calcParameters);
    EXPECT_FALSE(isChecked(ids::command::blackOutput));
    EXPECT_FALSE(isChecked(ids::command::height4));
    EXPECT_TRUE(isChecked(ids::command::height7));
}

}  // namespace
}  // namespace orvane
