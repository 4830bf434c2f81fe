#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "app/widget_place.h"
#include "tests/screens/main_window_fixture.h"
#include "windows/control_ids.h"

// The keys, and the controls at the right.

namespace orvane {
namespace {

TEST_F(MainWindowTest, MovesTheFocusByNoKey) {
    MainWindow& shown = Start();
    QWidget* const controls[] = {&ControlOf(shown, ids::mainWindow::floatPrecisionBox),
                                 &ControlOf(shown, ids::mainWindow::systemBitsList),
                                 &ControlOf(shown, ids::mainWindow::showSignCheck),
                                 &shown.Result()};
    for (QWidget* control : controls) {
        SCOPED_TRACE(control->objectName().toStdString());
        control->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([&] { return control->hasFocus(); }));
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Return, Qt::Key_Enter,
                                  Qt::Key_Escape, Qt::Key_Left, Qt::Key_Up}) {
            QTest::keyClick(control, key);
            EXPECT_TRUE(control->hasFocus()) << key;
        }
        EXPECT_TRUE(shown.isVisible());
    }
}

TEST_F(MainWindowTest, TakesOnlyDigitsForThePrecision) {
    MainWindow& shown = Start();
    auto& box = ControlOf<QLineEdit>(shown, ids::mainWindow::floatPrecisionBox);
    box.clear();
    QTest::keyClicks(&box, "-1a.2,e +3");
    EXPECT_EQ(box.text(), "123");
    QTest::keyClick(&box, Qt::Key_Tab);
    EXPECT_EQ(box.text(), "123");
    EXPECT_EQ(box.alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
}

TEST_F(MainWindowTest, DropsTheSystemBitsDownBelowTheirBox) {
    MainWindow& shown = Start();
    auto& list = ControlOf<QComboBox>(shown, ids::mainWindow::systemBitsList);
    ASSERT_EQ(list.count(), 52);
    EXPECT_EQ(list.itemText(0), "2");
    EXPECT_EQ(list.itemText(51), "53");
    EXPECT_EQ(list.currentText(), "32");
    QTest::mouseClick(&list, Qt::LeftButton);
    QWidget* rows = list.view()->window();
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows->isVisible(); }));
    const QRect place = QRectFrom(Layout().systemBitsList);
    const int below = list.mapToGlobal(QPoint(0, list.height())).y();
    EXPECT_NEAR(rows->mapToGlobal(QPoint(0, 0)).y(), below, 1);
    EXPECT_LE(list.height() + rows->height(), place.height());
    EXPECT_GT(list.height() + rows->height(), place.height() - 20);
    EXPECT_EQ(rows->width(), 67);
    QTest::keyClick(list.view(), Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !rows->isVisible(); }));
}

// Right-presses the report and plays the menu that comes up.
template <typename Played>
void WithReportMenu(ResultPane& pane, Played played) {
    bool isDone = false;
    QTimer timer;
    QElapsedTimer waited;
    waited.start();
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (menu == nullptr) return;
        timer.stop();
        isDone = true;
        played(*menu);
        menu->close();
    });
    timer.start(5);
    const QPoint at(40, 30);
    QContextMenuEvent press(QContextMenuEvent::Mouse, at, pane.viewport()->mapToGlobal(at));
    QApplication::sendEvent(pane.viewport(), &press);
    EXPECT_TRUE(isDone);
}

TEST_F(MainWindowTest, OffersToCopyOnlyWhatIsSelected) {
    MainWindow& shown = Start();
    shown.Editor().SetText("a = 2;\nb = 3;");
    PressButton(MainButton::calculate);
    const auto actionOf = [](QMenu& menu, int id) {
        return menu.findChild<QAction*>(QString::number(id));
    };
    WithReportMenu(shown.Result(), [&](QMenu& menu) {
        ASSERT_EQ(menu.actions().size(), 2);
        EXPECT_EQ(menu.actions()[0]->text(), "Copy");
        EXPECT_EQ(menu.actions()[1]->text(), "Select all");
        EXPECT_FALSE(actionOf(menu, 32803)->isEnabled());
        EXPECT_EQ(menu.pos(), shown.Result().viewport()->mapToGlobal(QPoint(40, 30)));
        QTest::keyClick(&menu, Qt::Key_Up);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    EXPECT_TRUE(shown.Result().textCursor().hasSelection());
    QGuiApplication::clipboard()->clear();
    WithReportMenu(shown.Result(), [&](QMenu& menu) {
        EXPECT_TRUE(actionOf(menu, 32803)->isEnabled());
        QTest::keyClick(&menu, Qt::Key_Down);
        QTest::keyClick(&menu, Qt::Key_Return);
    });
    EXPECT_EQ(QGuiApplication::clipboard()->text(), shown.Result().toPlainText());
}

TEST_F(MainWindowTest, MovesInTheReportByKeys) {
    MainWindow& shown = Start();
    std::string sheet;
    for (int line = 0; line < 200; ++line) sheet += "1;\n";
    shown.Editor().SetText(sheet);
    PressButton(MainButton::calculate);
    ResultPane& pane = shown.Result();
    pane.setFocus();
    const auto lineAfter = [&](Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(&pane, key, with);
        return pane.textCursor().blockNumber();
    };
    EXPECT_EQ(lineAfter(Qt::Key_Down), 1);
    EXPECT_GT(lineAfter(Qt::Key_PageDown), 5);
    EXPECT_EQ(lineAfter(Qt::Key_Home, Qt::ControlModifier), 0);
    EXPECT_GT(lineAfter(Qt::Key_End, Qt::ControlModifier), 199);
}

}  // namespace
}  // namespace orvane
