#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QMenu>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <functional>

#include "app/command_rows.h"
#include "app/widget_place.h"
#include "core/calc_parameters.h"
#include "tests/screens/main_window_fixture.h"
#include "tests/support/active_window.h"
#include "windows/control_ids.h"
#include "windows/help_viewer.h"
#include "windows/look.h"

// What the mouse does to the menu strip and the painted buttons, and what the user sees of it.

namespace orvane {
namespace {

constexpr int patience = 20'000;  // milliseconds

// Plays the user of the next popup that comes up; a popup that stays open is closed.
class PopupPlayer {
public:
    explicit PopupPlayer(std::function<void(QWidget& popup)> played) : step(std::move(played)) {
        waited.start();
        timer.setInterval(5);
        QObject::connect(&timer, &QTimer::timeout, [this] { Look(); });
        timer.start();
    }
    ~PopupPlayer() { EXPECT_TRUE(isDone) << "no popup came up"; }

private:
    void Look() {
        QWidget* popup = QApplication::activePopupWidget();
        if (popup == nullptr && waited.elapsed() < patience) return;
        timer.stop();
        if (popup == nullptr) return;
        isDone = true;
        step(*popup);
        while (QWidget* open = QApplication::activePopupWidget()) open->close();
    }

    std::function<void(QWidget& popup)> step;
    QTimer timer;
    QElapsedTimer waited;
    bool isDone = false;
};

// Closes each dialog that comes up while it lives and keeps its title.
class DialogCloser {
public:
    DialogCloser() {
        timer.setInterval(5);
        QObject::connect(&timer, &QTimer::timeout, [this] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (dialog == nullptr || !dialog->isVisible()) return;
            titles << dialog->windowTitle();
            dialog->close();
        });
        timer.start();
    }
    QStringList titles;

private:
    QTimer timer;
};

// Moves the pointer there until the condition holds. Once would not do: the window manager may
// still be moving the window.
template <typename Condition>
bool PointAt(const QWidget& window, QPoint at, Condition condition) {
    return QTest::qWaitFor(
        [&] {
            QCursor::setPos(window.mapToGlobal(at));
            return condition();
        },
        patience);
}

bool HoverOver(const MainWindow& window, QPoint at, std::optional<int> label) {
    return PointAt(window, at, [&] { return window.Strip().Hovered() == label; });
}

// Walks from the closed popup to the item as the keys do, and chooses it.
void ChooseByKeys(QMenu& popup, const QAction& wanted) {
    QMenu* menu = &popup;
    QAction* inPopup = nullptr;
    for (QAction* action : popup.actions()) {
        const bool isParent = action->menu() && action->menu()->actions().contains(&wanted);
        if (action == &wanted || isParent) inPopup = action;
    }
    ASSERT_NE(inPopup, nullptr);
    for (int tries = 0; popup.activeAction() != inPopup && tries < 50; ++tries) {
        QTest::keyClick(menu, Qt::Key_Down);
    }
    ASSERT_EQ(popup.activeAction(), inPopup);
    if (inPopup->menu() != nullptr) {
        QTest::keyClick(menu, Qt::Key_Right);
        menu = inPopup->menu();
        ASSERT_TRUE(QTest::qWaitFor([&] { return menu->isVisible(); }, patience));
        for (int tries = 0; menu->activeAction() != &wanted && tries < 50; ++tries) {
            QTest::keyClick(menu, Qt::Key_Down);
        }
    }
    QTest::keyClick(menu, Qt::Key_Return);
}

TEST_F(MainWindowTest, FramesTheLabelUnderThePointer) {
    MainWindow& shown = Start();
    Resize({700, 555});
    for (const int label : {0, 3, 4}) {
        SCOPED_TRACE(label);
        const QRect rect = QRectFrom(shown.Strip().LabelRect(label));
        ASSERT_TRUE(HoverOver(shown, rect.center(), label));
        const QImage picture = shown.grab().toImage();
        EXPECT_EQ(picture.pixelColor(rect.topLeft()), QColor(Qt::white));
        EXPECT_EQ(picture.pixelColor(rect.left(), rect.bottom() - 1), QColor(Qt::white));
        EXPECT_EQ(picture.pixelColor(rect.bottomRight()), QColor(Qt::black));
        EXPECT_EQ(picture.pixelColor(rect.right(), rect.top() + 1), QColor(Qt::black));
        EXPECT_EQ(picture.pixelColor(QRectFrom(shown.Strip().LabelRect(1)).topLeft()),
                  windowColour);
    }
    // Not by way of the strip's edge.
    EXPECT_TRUE(HoverOver(shown, QRectFrom(Layout().editor).center(), std::nullopt));
}

TEST_F(MainWindowTest, OpensEachPopupUnderItsHoveredLabel) {
    MainWindow& shown = Start();
    for (int label = 0; label < menuLabelCount; ++label) {
        SCOPED_TRACE(label);
        const QRect rect = QRectFrom(shown.Strip().LabelRect(label));
        ASSERT_TRUE(HoverOver(shown, rect.center(), label));
        PopupPlayer player([&](QWidget& popup) {
            EXPECT_EQ(&popup, &shown.Menus().Popup(label));
            EXPECT_EQ(popup.pos(), shown.mapToGlobal(rect.topLeft() + QPoint(0, rect.height())));
            // The popup takes the mouse, of which the window is told as of leaving.
            ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
            const auto& menu = static_cast<QMenu&>(popup);
            EXPECT_TRUE(PointAt(popup, popup.rect().center(),
                                [&] { return menu.activeAction() != nullptr; }));
            EXPECT_EQ(shown.Strip().Hovered(), label);
        });
        QTest::mouseClick(&shown, Qt::LeftButton, {}, rect.center());
        EXPECT_EQ(shown.Strip().Hovered(), std::nullopt);
    }
}

// What a menu item opens: a dialog of this title, or this page of the help.
struct Opened {
    int id;
    const char* dialog;
    const char* page;
};

constexpr Opened openedByItems[] = {
    {ids::command::textColours, "Text color options", ""},
    {ids::command::generalOptions, "Options", ""},
    {ids::command::locus, "Locus", ""},
    {ids::command::allKeywords, "All keywords", ""},
    {ids::command::openSamples, "Sample files", ""},
    {ids::command::softwareNews, "Software news", ""},
    {ids::command::about, "About", ""},
    {ids::command::helpContents, "", "about/about.htm"},
    {32850, "", "sentence/number.htm"},
    {32851, "", "sentence/operator.htm"},
    {32852, "", "sentence/formula/outputkey.htm"},
    {32824, "", "function/function.htm"},
    {32825, "", "function/string.htm"},
    {32826, "", "function/bits.htm"},
    {32827, "", "function/logic.htm"},
    {32828, "", "function/condition.htm"},
    {32829, "", "function/normal.htm"},
    {32830, "", "function/statistics.htm"},
    {32831, "", "function/point.htm"},
    {32832, "", "function/vectormatrix.htm"},
    {32833, "", "function/variable/integral.htm"},
    {32834, "", "function/variable/series.htm"},
    {32835, "", "function/variable/product.htm"},
    {32836, "", "function/variable/equation.htm"},
    {32837, "", "function/variable/locus.htm"},
    {32838, "", "function/complex.htm"},
    {32839, "", "function/operator.htm"},
};

Opened OpenedBy(int id) {
    for (const Opened& opened : openedByItems) {
        if (opened.id == id) return opened;
    }
    return {id, "", ""};
}

// The page in the help window, which is closed then.
QString ClosedHelpPage() {
    HelpWindow* const help = ProgramHelp().Window();
    if (help == nullptr || !help->isVisible()) return {};
    help->close();
    return help->Browser().ShownTopic();
}

TEST_F(MainWindowTest, RunsTheCommandOfEveryMenuItem) {
    ProgramHelp().SetFolder(QStringLiteral(ORVANE_HELP_FOLDER));
    MainWindow& shown = Start();
    for (const CommandRow& row : CommandRows()) {
        SCOPED_TRACE(row.text);
        QMenu& popup = shown.Menus().Popup(row.popup);
        auto* action = popup.findChild<QAction*>(QString::number(row.id));
        ASSERT_NE(action, nullptr);
        const QSignalSpy chosen(action, &QAction::triggered);
        const CalcParameters before = calcParameters;
        DialogCloser dialogs;
        {
            PopupPlayer player(
                [&](QWidget& open) { ChooseByKeys(static_cast<QMenu&>(open), *action); });
            QTest::mouseClick(&shown, Qt::LeftButton, {},
                              MiddleOf(shown.Strip().LabelRect(row.popup)));
        }
        EXPECT_EQ(chosen.size(), 1);
        EXPECT_EQ(calcParameters.calcHeightCommand,
                  row.submenu != nullptr ? row.id : before.calcHeightCommand);
        EXPECT_EQ(calcParameters.blackOutput != before.blackOutput,
                  row.id == ids::command::blackOutput);
        EXPECT_EQ(calcParameters.alwaysOnTop != before.alwaysOnTop,
                  row.id == ids::command::alwaysOnTop);
        const Opened opened = OpenedBy(row.id);
        EXPECT_EQ(dialogs.titles.join('|'), opened.dialog);
        EXPECT_EQ(ClosedHelpPage(), opened.page);
        ASSERT_TRUE(test::MakeActive(shown));
    }
}

TEST_F(MainWindowTest, LeavesUnknownCommandsAlone) {
    MainWindow& shown = Start();
    for (const int command : {ids::command::test, 0, -1, 32822, 40000}) {
        shown.RunCommand(command);
        EXPECT_EQ(calcParameters.calcHeightCommand, ids::command::height4) << command;
    }
}

TEST_F(MainWindowTest, PaintsItsGroovesInFourLines) {
    MainWindow& shown = Start();
    Resize({700, 555});
    const MainLayout layout = Layout();
    const QImage picture = shown.grab().toImage();
    for (const int top : {layout.editor.top - 12, layout.resultPane.top - 12}) {
        for (const int x : {85, 300, layout.editor.right - 1}) {
            SCOPED_TRACE(testing::Message() << x << "," << top);
            const QColor light(Qt::white);
            const QColor dark(128, 128, 128);
            const QColor lines[] = {light,        windowColour, dark,         windowColour,
                                    windowColour, light,        windowColour, dark};
            for (int line = 0; line < 8; ++line) {
                EXPECT_EQ(picture.pixelColor(x, top + line), lines[line]) << line;
            }
        }
        EXPECT_EQ(picture.pixelColor(84, top), windowColour);
        EXPECT_EQ(picture.pixelColor(layout.editor.right, top), windowColour);
    }
}

// The rows and columns of a button that its text touches.
QRect TextRect(const QImage& picture) {
    QRect rect;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qGray(picture.pixel(x, y)) < 64) rect |= QRect(x, y, 1, 1);
        }
    }
    return rect;
}

TEST_F(MainWindowTest, PaintsAPressedButtonUntilItIsReleased) {
    QDir(folder.path()).mkdir("Bitmaps");
    for (const auto& [name, colour] :
         {std::pair("up", QColor(200, 220, 220)), std::pair("dn", QColor(150, 170, 170))}) {
        QImage picture(111, 28, QImage::Format_RGB888);
        picture.fill(colour);
        ASSERT_TRUE(picture.save(folder.path() + "/Bitmaps/Base_111" + name + ".bmp"));
    }
    MainWindow& shown = Start();
    Resize({700, 555});
    const QRect button = QRectFrom(Layout().buttons[static_cast<int>(MainButton::calculate)]);
    const auto grabbed = [&] { return shown.grab(button).toImage(); };

    const QImage resting = grabbed();
    EXPECT_EQ(resting.pixelColor(0, 0), QColor(200, 220, 220));
    EXPECT_EQ(resting.pixelColor(110, 27), QColor(200, 220, 220));
    const QPoint outside = button.center() + QPoint(0, 100);
    QTest::mousePress(&shown, Qt::LeftButton, {}, button.center());
    const QImage pressed = grabbed();
    EXPECT_EQ(pressed.pixelColor(0, 0), QColor(150, 170, 170));
    EXPECT_FALSE(TextRect(resting).isEmpty());
    EXPECT_EQ(TextRect(pressed), TextRect(resting).translated(1, 1));
    QTest::mouseMove(&shown, outside);
    EXPECT_EQ(grabbed(), pressed);
    QTest::mouseRelease(&shown, Qt::LeftButton, {}, outside);
    EXPECT_EQ(grabbed(), resting);
}

TEST_F(MainWindowTest, HasItsButtonsWithoutPictures) {
    MainWindow& shown = Start();
    const QRect button = QRectFrom(Layout().buttons[0]);
    const QImage resting = shown.grab(button).toImage();
    EXPECT_FALSE(TextRect(resting).isEmpty());
    QTest::mousePress(&shown, Qt::LeftButton, {}, button.center());
    EXPECT_NE(shown.grab(button).toImage(), resting);
    QTest::mouseRelease(&shown, Qt::LeftButton, {}, QPoint(0, 0));
}

// Takes what the screen shows each time the watched widget paints itself.
class ScreenWatcher : public QObject {
public:
    std::vector<QImage> pictures;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && pictures.size() < 8) {
            const QWidget* window = static_cast<QWidget*>(watched)->window();
            pictures.push_back(window->screen()
                                   ->grabWindow(window->winId())
                                   .toImage()
                                   .convertToFormat(QImage::Format_RGB32));
        }
        return false;
    }
};

TEST_F(MainWindowTest, ShowsTheWaitingTextAndTheBarMovingWhileARunHoldsTheThread) {
    MainWindow& shown = Start();
    Resize({700, 555});
    auto& bar = ControlOf(shown, ids::mainWindow::progressBar);
    EXPECT_FALSE(bar.isVisible());
    shown.Editor().SetText("series(k, 1, 1, 20000000, tan(sin(k)));");
    shown.Result().ShowTexts({"", 0}, {"", 0});
    ScreenWatcher watcher;
    bar.installEventFilter(&watcher);
    PressButton(MainButton::calculate);
    bar.removeEventFilter(&watcher);
    EXPECT_FALSE(bar.isVisible());
    EXPECT_NE(shown.Result().toPlainText(), "");

    // Each picture shows what the paintings before had brought to the screen.
    ASSERT_GE(watcher.pictures.size(), 6u);
    const QRect barRect = QRectFrom(Layout().progressBar);
    const QImage early = watcher.pictures[2].copy(barRect);
    EXPECT_NE(early, watcher.pictures[5].copy(barRect));
    const QRect firstLine(Layout().resultPane.left + 4, Layout().resultPane.top + 4, 300, 16);
    const QImage waiting = watcher.pictures[5].copy(firstLine);
    int lightPixels = 0;
    for (int y = 0; y < waiting.height(); ++y) {
        for (int x = 0; x < waiting.width(); ++x) lightPixels += qGray(waiting.pixel(x, y)) > 128;
    }
    EXPECT_GT(lightPixels, 200);
    EXPECT_LT(lightPixels, 3000);
}

}  // namespace
}  // namespace orvane
