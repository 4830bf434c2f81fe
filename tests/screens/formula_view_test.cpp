#include "editor/formula_view.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <string>
#include <vector>

#include "tests/screens/formula_view_fixture.h"

namespace orvane {

inline void PrintTo(const TextPosition& position, std::ostream* out) {
    *out << "(" << position.line << ", " << position.col << ")";
}

namespace {

SelRange Range(TextPosition from, TextPosition to) {
    SelRange range;
    range.SetRange(from.line, from.col, to.line, to.col);
    return range;
}

// Keys.

struct KeyCase {
    const char* name;
    const char* text;
    TextPosition caret;
    int key;
    Qt::KeyboardModifiers modifiers;
    const char* newText;
    TextPosition newCaret;
};

TEST_F(FormulaViewTest, TakesTheKeysThatEditAndMove) {
    const KeyCase rows[] = {
        {"Backspace", "ab", {0, 1}, Qt::Key_Backspace, {}, "b", {0, 0}},
        {"Delete", "ab", {0, 1}, Qt::Key_Delete, {}, "a", {0, 1}},
        {"Enter", "ab", {0, 1}, Qt::Key_Return, {}, "a\nb", {1, 0}},
        {"Enter of the number pad",
         "ab",
         {0, 1},
         Qt::Key_Enter,
         Qt::KeypadModifier,
         "a\nb",
         {1, 0}},
        {"Tab", "ab", {0, 1}, Qt::Key_Tab, {}, "a\tb", {0, 2}},
        {"Shift+Tab", "ab", {0, 1}, Qt::Key_Backtab, Qt::ShiftModifier, "a\tb", {0, 2}},
        {"Left", "ab", {0, 1}, Qt::Key_Left, {}, "ab", {0, 0}},
        {"Right", "ab", {0, 1}, Qt::Key_Right, {}, "ab", {0, 2}},
        {"Up", "ab\ncd", {1, 1}, Qt::Key_Up, {}, "ab\ncd", {0, 1}},
        {"Down", "ab\ncd", {0, 1}, Qt::Key_Down, {}, "ab\ncd", {1, 1}},
        {"Home", "ab", {0, 1}, Qt::Key_Home, {}, "ab", {0, 0}},
        {"End", "ab", {0, 0}, Qt::Key_End, {}, "ab", {0, 2}},
        {"Page Up", "ab\ncd\nef", {2, 1}, Qt::Key_PageUp, {}, "ab\ncd\nef", {0, 1}},
        {"Page Down", "ab\ncd\nef", {0, 1}, Qt::Key_PageDown, {}, "ab\ncd\nef", {2, 1}},
        {"Alt calls menus", "ab", {0, 1}, Qt::Key_A, Qt::AltModifier, "ab", {0, 1}},
        {"Alt with an arrow", "ab", {0, 1}, Qt::Key_Left, Qt::AltModifier, "ab", {0, 1}},
        {"Ctrl with another letter", "ab", {0, 1}, Qt::Key_A, Qt::ControlModifier, "ab", {0, 1}},
        {"Insert", "ab", {0, 1}, Qt::Key_Insert, {}, "ab", {0, 1}},
        {"a function key", "ab", {0, 1}, Qt::Key_F5, {}, "ab", {0, 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        editor.SetText(row.text);
        PutCaret(row.caret);
        Press(row.key, row.modifiers);
        EXPECT_EQ(Text(), row.newText);
        EXPECT_EQ(Model().Caret(), row.newCaret);
        EXPECT_FALSE(Model().HasSelection());
        EXPECT_TRUE(view.hasFocus());
    }
}

TEST_F(FormulaViewTest, ExtendsTheSelectionWithShift) {
    editor.SetText("abc\ndef\nghi");
    PutCaret({1, 1});
    const std::pair<Qt::Key, TextPosition> moves[] = {
        {Qt::Key_Left, {1, 0}}, {Qt::Key_Left, {0, 3}},     {Qt::Key_Right, {1, 0}},
        {Qt::Key_End, {1, 3}},  {Qt::Key_Down, {2, 3}},     {Qt::Key_Home, {2, 0}},
        {Qt::Key_Up, {1, 0}},   {Qt::Key_PageDown, {2, 0}}, {Qt::Key_PageUp, {0, 0}}};
    for (const auto& [key, caret] : moves) {
        Press(key, Qt::ShiftModifier);
        EXPECT_EQ(Model().selection, Range({1, 1}, caret));
    }
    Press(Qt::Key_Right);
    EXPECT_EQ(Model().selection, Range({0, 1}, {0, 1}));
}

TEST_F(FormulaViewTest, TypesPlainCharactersAlone) {
    QString text;
    std::string expected;
    for (int code = 32; code <= 126; ++code) {
        text += QChar(code);
        expected += static_cast<char>(code);
    }
    Type(text);
    EXPECT_EQ(Text(), expected);

    editor.SetText("");
    for (const char16_t code :
         {u'\x01', u'\x02', u'\x08', u'\x0A', u'\x0D', u'\x7F', u'\xE4', u'\x20AC'}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, {}, QString(QChar(code)));
        QApplication::sendEvent(&view, &press);
        EXPECT_FALSE(press.isAccepted());
    }
    EXPECT_EQ(Text(), "");
    for (const char16_t code : {u'\x03', u'~'}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, {}, QString(QChar(code)));
        QApplication::sendEvent(&view, &press);
        EXPECT_TRUE(press.isAccepted());
    }
    EXPECT_EQ(Text(), "\x03~");
}

// A dead key brings its character this way; what is no plain character is left out.
TEST_F(FormulaViewTest, TakesPlainCharactersOfAnInputMethod) {
    QInputMethodEvent commit;
    commit.setCommitString(QString::fromUtf8("2^x\xC3\xA9\xE2\x82\xAC\n1"));
    QApplication::sendEvent(&view, &commit);
    EXPECT_EQ(Text(), "2^x1");
    QInputMethodEvent started(QStringLiteral("abc"), {});
    QApplication::sendEvent(&view, &started);
    EXPECT_EQ(Text(), "2^x1");
}

TEST_F(FormulaViewTest, LeavesEscapeToTheWindow) {
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, {}, QStringLiteral("\x1B"));
    QApplication::sendEvent(&view, &press);
    EXPECT_FALSE(press.isAccepted());
    EXPECT_EQ(Text(), "");
}

TEST_F(FormulaViewTest, TakesBackAndMakesAgain) {
    Type("ab");
    Press(Qt::Key_Return);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(), "ab");
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Text(), "a");
    Press(Qt::Key_Y, Qt::ControlModifier);
    Press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Text(), "ab\n");
    EXPECT_EQ(Model().Caret(), (TextPosition{1, 0}));
}

// Clipboard.

TEST_F(FormulaViewTest, CopiesCutsAndPastes) {
    editor.SetText("one\ntwo");
    Select({0, 1}, {1, 1});
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "ne\nt");
    EXPECT_EQ(Text(), "one\ntwo");
    Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Text(), "owo");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "ne\nt");
    Press(Qt::Key_V, Qt::ControlModifier);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(), "one\ntne\ntwo");
    EXPECT_EQ(Model().Caret(), (TextPosition{2, 1}));
}

TEST_F(FormulaViewTest, LeavesTheClipboardWithoutASelection) {
    editor.SetText("one");
    QGuiApplication::clipboard()->setText("kept");
    Press(Qt::Key_C, Qt::ControlModifier);
    Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "kept");
    EXPECT_EQ(Text(), "one");
}

TEST_F(FormulaViewTest, SpeaksItsCodePageToTheClipboard) {
    QGuiApplication::clipboard()->setText(QString::fromUtf8("\xE2\x82\xAC\xC3\xA4\xCE\xA9\r\nx\r"));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(), "\x80\xE4?\nx");
    view.SelectAll();
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toUtf8().toStdString(),
              "\xE2\x82\xAC\xC3\xA4?\nx");
}

TEST_F(FormulaViewTest, PastesNothingWhereTheClipboardHoldsNoText) {
    editor.SetText("one");
    Select({0, 0}, {0, 3});
    QGuiApplication::clipboard()->setText("\r\r");
    Press(Qt::Key_V, Qt::ControlModifier);
    auto* const data = new QMimeData;  // the clipboard owns it
    data->setData("application/octet-stream", "bytes");
    QGuiApplication::clipboard()->setMimeData(data);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(), "one");
    EXPECT_TRUE(Model().HasSelection());
    EXPECT_FALSE(Model().history.CanUndo());
}

TEST_F(FormulaViewTest, PastesUpToTheFirstNul) {
    QString text = QStringLiteral("ab");
    text += QChar(u'\0');
    text += QStringLiteral("cd");
    QGuiApplication::clipboard()->setText(text);
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(), "ab");

    Select({0, 0}, {0, 2});
    QGuiApplication::clipboard()->setText(text.mid(2));
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Text(), "ab");
    EXPECT_TRUE(Model().HasSelection());
}

// Context menu.

struct MenuEntry {
    std::string text;
    bool enabled;
    bool operator==(const MenuEntry&) const = default;
};

void PrintTo(const MenuEntry& entry, std::ostream* out) {
    *out << entry.text << (entry.enabled ? "" : " (disabled)");
}

class FormulaViewMenu : public FormulaViewTest {
protected:
    // Opens the menu by the right button and chooses an entry, or none.
    std::vector<MenuEntry> Open(const char* choice = nullptr) {
        std::vector<MenuEntry> entries;
        bool hadSelection = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu == nullptr || !menu->isVisible()) return;
            poll.stop();
            hadSelection = Model().HasSelection();
            QAction* chosen = nullptr;
            for (QAction* const entry : menu->actions()) {
                if (entry->isSeparator()) {
                    entries.push_back({"-", true});
                    continue;
                }
                entries.push_back({entry->text().toStdString(), entry->isEnabled()});
                EXPECT_FALSE(entry->icon().pixmap(16, 16).isNull());
                if (choice != nullptr && entry->text() == choice) chosen = entry;
            }
            if (chosen != nullptr) {
                QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(chosen).center());
            } else {
                menu->close();
            }
        });
        poll.start(5);
        const bool selected = Model().HasSelection();
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(60, 60),
                                viewport.mapToGlobal(QPoint(60, 60)));
        QApplication::sendEvent(&viewport, &event);
        // A menu takes no focus from the view.
        EXPECT_EQ(hadSelection, selected);
        return entries;
    }

    static std::vector<MenuEntry> Expected(bool selection, bool paste, bool undo, bool redo) {
        return {{"Cut", selection},    {"Copy", selection}, {"Paste", paste},
                {"Delete", selection}, {"-", true},         {"Undo", undo},
                {"Redo", redo},        {"-", true},         {"Select all", true}};
    }
};

TEST_F(FormulaViewMenu, OffersWhatCanBeDone) {
    EXPECT_EQ(Open(), Expected(false, false, false, false));
    Type("ab");
    EXPECT_EQ(Open(), Expected(false, false, true, false));
    QGuiApplication::clipboard()->setText("\r");
    EXPECT_EQ(Open(), Expected(false, false, true, false));
    QGuiApplication::clipboard()->setText("x\r");
    EXPECT_EQ(Open(), Expected(false, true, true, false));
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Open(), Expected(false, true, true, true));
    Press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(Open(), Expected(true, true, true, true));
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Open(), Expected(false, true, false, true));
}

TEST_F(FormulaViewMenu, DoesWhatIsChosen) {
    editor.SetText("abc");
    Open("Select all");
    EXPECT_EQ(Model().selection, Range({0, 0}, {0, 3}));
    Open("Copy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "abc");
    Open("Delete");
    EXPECT_EQ(Text(), "");
    Open("Undo");
    EXPECT_EQ(Text(), "abc");
    Open("Redo");
    EXPECT_EQ(Text(), "");
    Open("Paste");
    Open("Paste");
    EXPECT_EQ(Text(), "abcabc");
    QGuiApplication::clipboard()->clear();
    Open("Select all");
    Open("Cut");
    EXPECT_EQ(Text(), "");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "abcabc");
}

TEST_F(FormulaViewMenu, SelectsNothingInAnEmptySheet) {
    Open("Select all");
    EXPECT_EQ(Open(), Expected(false, false, false, false));
}

// Mouse.

TEST_F(FormulaViewTest, PutsTheCaretWhereItIsPressed) {
    editor.SetText("abc\n\tdef\n");
    Click(CellPoint(1, 5));
    EXPECT_EQ(Model().Caret(), (TextPosition{1, 2}));
    EXPECT_EQ(Model().caretCell, 5);
    Click({400, 250});
    EXPECT_EQ(Model().Caret(), (TextPosition{2, 0}));
    Click(CellPoint(0, 2) + QPoint(view.CellWidth() / 2, 0));
    EXPECT_EQ(Model().Caret(), (TextPosition{0, 3}));
}

TEST_F(FormulaViewTest, PutsTheCaretInAScrolledText) {
    std::string text;
    for (int line = 0; line < 100; ++line) text += std::string(200, 'x') + "\n";
    editor.SetText(text);
    Settle();
    view.verticalScrollBar()->setValue(3);
    view.horizontalScrollBar()->setValue(5);
    Click({9 * view.CellWidth(), 6 * view.LineHeight()});
    EXPECT_EQ(Model().Caret(), (TextPosition{9, 14}));
}

TEST_F(FormulaViewTest, TakesTheFocusByAPress) {
    QLineEdit other(&window);
    other.setGeometry(520, 30, 100, 30);
    other.show();
    other.setFocus();
    ASSERT_FALSE(view.hasFocus());
    EXPECT_FALSE(view.Blink().IsShown());
    Click({5, 5});
    EXPECT_TRUE(view.hasFocus());
    EXPECT_TRUE(view.Blink().IsShown());
}

TEST_F(FormulaViewTest, SelectsWhereTheMouseIsDragged) {
    editor.SetText("abc\ndef\nghi");
    Select({2, 1}, {0, 2});
    EXPECT_EQ(Model().selection, Range({2, 1}, {0, 2}));
    // The button is up: a move changes nothing.
    QTest::mouseMove(window.windowHandle(), OnScreen(CellPoint(1, 1)));
    Settle();
    EXPECT_EQ(Model().selection, Range({2, 1}, {0, 2}));
    Click(CellPoint(1, 1));
    EXPECT_EQ(Model().selection, Range({1, 1}, {1, 1}));
}

TEST_F(FormulaViewTest, ScrollsWhereTheMouseIsDraggedOut) {
    std::string text;
    for (int line = 0; line < 100; ++line) text += std::string(200, 'x') + "\n";
    editor.SetText(text);
    Settle();
    const int rows = viewport.height() / view.LineHeight();
    const int columns = viewport.width() / view.CellWidth();
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, OnScreen(CellPoint(3, 3)));
    const QPoint below(CellPoint(3, 3).x(), viewport.height());
    QTest::mouseMove(window.windowHandle(), OnScreen(below));
    Settle();
    const int distance = (viewport.height() + view.LineHeight() - 1) / view.LineHeight();
    EXPECT_EQ(view.Scroll().vertical.position, distance - rows + 1);
    EXPECT_EQ(view.Scroll().horizontal.position, 0);
    EXPECT_EQ(Model().Caret(), (TextPosition{viewport.height() / view.LineHeight(), 3}));
    EXPECT_EQ(Model().selection.startLine, 3);

    const int before = view.Scroll().vertical.position;
    QTest::mouseMove(window.windowHandle(), OnScreen({CellPoint(3, 3).x(), -1}));
    Settle();
    EXPECT_EQ(view.Scroll().vertical.position, before - 1);
    QTest::mouseMove(window.windowHandle(), OnScreen({viewport.width() + 3, 5}));
    Settle();
    const int reached = (viewport.width() + 3 + view.CellWidth() - 1) / view.CellWidth();
    EXPECT_EQ(view.Scroll().horizontal.position, reached - columns + 1);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, OnScreen({5, 5}));
}

TEST_F(FormulaViewTest, SelectsAWordByADoubleClick) {
    editor.SetText("a + sin.x(1)");
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, OnScreen(CellPoint(0, 5)));
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, OnScreen(CellPoint(0, 5)));
    EXPECT_EQ(Model().selection, Range({0, 4}, {0, 9}));
    // A hand that shakes leaves it alone; a real move drags on.
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, OnScreen(CellPoint(0, 11)));
    EXPECT_FALSE(Model().HasSelection());
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, OnScreen(CellPoint(0, 11)));
}

TEST_F(FormulaViewTest, KeepsADoubleClickedWordUnderAShakingHand) {
    editor.SetText("a + sin(1)");
    const QPoint place = CellPoint(0, 5);
    const auto send = [this](QEvent::Type type, QPoint point) {
        QMouseEvent event(type, point, viewport.mapToGlobal(point), Qt::LeftButton, Qt::LeftButton,
                          {});
        QApplication::sendEvent(&viewport, &event);
    };
    send(QEvent::MouseButtonPress, place);
    send(QEvent::MouseButtonRelease, place);
    send(QEvent::MouseButtonDblClick, place);
    EXPECT_EQ(Model().selection, Range({0, 4}, {0, 7}));
    send(QEvent::MouseMove, place + QPoint(1, 1));
    EXPECT_EQ(Model().selection, Range({0, 4}, {0, 7}));
    send(QEvent::MouseMove, CellPoint(0, 9));
    EXPECT_EQ(Model().selection, Range({0, 4}, {0, 9}));
    send(QEvent::MouseButtonRelease, place);
}

TEST_F(FormulaViewTest, LeavesTheCaretToTheOtherButtons) {
    editor.SetText("abc");
    Select({0, 0}, {0, 2});
    QTest::mouseClick(window.windowHandle(), Qt::MiddleButton, {}, OnScreen(CellPoint(0, 1)));
    EXPECT_EQ(Model().selection, Range({0, 0}, {0, 2}));
}

// Scrolling.

TEST_F(FormulaViewTest, HasTheRangesOfItsText) {
    std::string text;
    for (int line = 0; line < 99; ++line) text += "x\n";
    editor.SetText(text + std::string(150, 'y'));
    Settle();
    const int rows = viewport.height() / view.LineHeight();
    const int columns = viewport.width() / view.CellWidth();
    EXPECT_TRUE(view.verticalScrollBar()->isVisible());
    EXPECT_TRUE(view.horizontalScrollBar()->isVisible());
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 100 + 5 - rows + 1);
    EXPECT_EQ(view.verticalScrollBar()->pageStep(), rows);
    EXPECT_EQ(view.horizontalScrollBar()->maximum(), 150 + 36 - columns + 1);
    EXPECT_EQ(view.horizontalScrollBar()->pageStep(), columns);
    EXPECT_EQ(view.verticalScrollBar()->singleStep(), 1);
    EXPECT_EQ(view.horizontalScrollBar()->singleStep(), 1);

    Press(Qt::Key_Return);
    EXPECT_EQ(view.verticalScrollBar()->maximum(), 101 + 5 - rows + 1);
    editor.resize(300, 200);
    Settle();
    EXPECT_EQ(view.verticalScrollBar()->pageStep(), viewport.height() / view.LineHeight());
    editor.resize(480, 330);
    editor.SetText("");
    Settle();
    EXPECT_FALSE(view.verticalScrollBar()->isVisible());
    EXPECT_FALSE(view.horizontalScrollBar()->isVisible());
}

TEST_F(FormulaViewTest, ScrollsByItsBars) {
    std::string text;
    for (int line = 0; line < 100; ++line) text += "x\n";
    editor.SetText(text);
    Settle();
    QScrollBar& bar = *view.verticalScrollBar();
    const int rows = viewport.height() / view.LineHeight();
    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(view.Scroll().vertical.position, 1);
    bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(view.Scroll().vertical.position, 1 + rows);
    bar.setSliderDown(true);
    bar.setSliderPosition(40);
    EXPECT_EQ(view.Scroll().vertical.position, 40);
    bar.setSliderDown(false);
    EXPECT_EQ(view.Scroll().vertical.position, 40);
    EXPECT_EQ(Model().Caret(), (TextPosition{0, 0}));
    // A key that moves the caret brings it back into view.
    Press(Qt::Key_Down);
    EXPECT_EQ(view.Scroll().vertical.position, 1);
    EXPECT_EQ(bar.value(), 1);
}

TEST_F(FormulaViewTest, FollowsTheCaret) {
    std::string text;
    for (int line = 0; line < 100; ++line) text += "x\n";
    editor.SetText(text + std::string(150, 'y'));
    Settle();
    const int rows = viewport.height() / view.LineHeight();
    const int columns = viewport.width() / view.CellWidth();
    for (int page = 0; page < 20; ++page) Press(Qt::Key_PageDown);
    EXPECT_EQ(view.Scroll().vertical.position, 100 - rows + 1);
    Press(Qt::Key_End);
    EXPECT_EQ(view.Scroll().horizontal.position, 150 - columns + 37);
    Press(Qt::Key_Home);
    EXPECT_EQ(view.Scroll().horizontal.position, 0);
    editor.SetText(text);
    EXPECT_EQ(view.Scroll().vertical.position, 0);
}

TEST_F(FormulaViewTest, ScrollsBothWaysAtOnce) {
    std::string text;
    for (int line = 0; line < 100; ++line) text += std::string(200, 'x') + "\n";
    editor.SetText(text);
    Settle();
    const int rows = viewport.height() / view.LineHeight();
    Click(CellPoint(rows - 1, 0));
    Press(Qt::Key_End);
    ASSERT_GT(view.Scroll().horizontal.position, 0);
    Press(Qt::Key_Right);
    EXPECT_EQ(Model().Caret(), (TextPosition{rows, 0}));
    EXPECT_EQ(view.Scroll().vertical.position, 1);
    EXPECT_EQ(view.Scroll().horizontal.position, 0);
    EXPECT_EQ(view.verticalScrollBar()->value(), 1);
    EXPECT_EQ(view.horizontalScrollBar()->value(), 0);

    const QPoint corner(viewport.width(), viewport.height());
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, OnScreen({5, 5}));
    QTest::mouseMove(window.windowHandle(), OnScreen(corner));
    Settle();
    EXPECT_GT(view.Scroll().vertical.position, 1);
    EXPECT_GT(view.Scroll().horizontal.position, 0);
    QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, OnScreen({5, 5}));
}

// Caret.

TEST_F(FormulaViewTest, BlinksWithTheFocusOnly) {
    EXPECT_TRUE(view.Blink().IsShown());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !view.Blink().IsShown(); }));
    Type("a");
    EXPECT_TRUE(view.Blink().IsShown());
    EXPECT_TRUE(QTest::qWaitFor([this] { return !view.Blink().IsShown(); }));
    EXPECT_TRUE(QTest::qWaitFor([this] { return view.Blink().IsShown(); }));
}

TEST_F(FormulaViewTest, CollapsesTheSelectionWhereTheFocusGoes) {
    editor.SetText("abc");
    Select({0, 0}, {0, 2});
    QLineEdit other(&window);
    other.show();
    other.setFocus();
    EXPECT_FALSE(view.Blink().IsShown());
    EXPECT_EQ(Model().selection, Range({0, 2}, {0, 2}));
    editor.SetFocus();
    EXPECT_TRUE(view.Blink().IsShown());
}

// Help.

TEST_F(FormulaViewTest, AsksForHelpOnTheWord) {
    QSignalSpy wanted(&editor, &FormulaEditor::HelpWanted);
    editor.SetText("sin(qqq) + \nx");
    const std::pair<TextPosition, const char*> rows[] = {
        {{0, 2}, "function/normal.htm#sin"}, {{0, 6}, "tools/fasthelp.htm"}, {{0, 9}, nullptr}};
    for (const auto& [caret, topic] : rows) {
        PutCaret(caret);
        wanted.clear();
        Press(Qt::Key_F2);
        ASSERT_EQ(wanted.count(), topic == nullptr ? 0 : 1);
        if (topic != nullptr) {
            EXPECT_EQ(wanted[0][0].toString(), topic);
        }
    }
    wanted.clear();
    Select({0, 0}, {0, 3});
    Press(Qt::Key_F2);
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toString(), "function/normal.htm#sin");
    Select({0, 0}, {1, 1});
    Press(Qt::Key_F2);
    EXPECT_EQ(wanted.count(), 1);
}

}  // namespace
}  // namespace orvane
