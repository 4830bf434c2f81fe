#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QRegion>
#include <QScrollBar>
#include <QTest>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/screens/formula_view_fixture.h"
#include "windows/look.h"

// Pixels of the view, and which of them an edit paints.

namespace orvane {
namespace {

constexpr QRgb white = qRgb(255, 255, 255);
constexpr QRgb green = qRgb(0, 255, 0);
constexpr QRgb black = qRgb(0, 0, 0);

// Gathers the areas that a widget paints.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget& watched) { watched.installEventFilter(this); }
    QRegion painted;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            painted += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
};

class FormulaViewPaint : public FormulaViewTest {
protected:
    QRect CellRect(int line, int cell, int cells = 1) const {
        return {(cell - view.Scroll().horizontal.position) * view.CellWidth(),
                (line - view.Scroll().vertical.position) * view.LineHeight(),
                cells * view.CellWidth(), view.LineHeight()};
    }
    QRect RowFrom(int line, int cell) const {
        QRect rect = CellRect(line, cell);
        rect.setRight(viewport.width() - 1);
        return rect;
    }
    void HideCaret() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return !view.Blink().IsShown(); }));
        Settle();
    }
    void ShowCaret() {
        ASSERT_TRUE(QTest::qWaitFor([this] { return view.Blink().IsShown(); }));
        Settle();
    }
    // What a key paints, the caret's two places left out where they lie in other rows.
    QRegion PaintedBy(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                      const QString& text = QString()) {
        Settle();
        const QRect before = CaretArea();
        PaintWatch watch(viewport);
        QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
        QApplication::sendEvent(&view, &press);
        Settle();
        return watch.painted - before - CaretArea();
    }
    QRect CaretArea() const {
        QRect area = view.CaretCell();
        area.setWidth(2);
        return area;
    }
};

bool IsAll(const QImage& image, const QRect& rect, QRgb colour) {
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (image.pixel(x, y) != colour) return false;
        }
    }
    return true;
}

// How much of a rectangle is a colour.
int CountIn(const QImage& image, const QRect& rect, QRgb colour) {
    int count = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) count += image.pixel(x, y) == colour;
    }
    return count;
}

// Caret.

TEST_F(FormulaViewPaint, DrawsTheCaretAsALineOfOnePixel) {
    editor.SetText("\t\n\n");
    PutCaret({0, 1});
    ShowCaret();
    const QRect cell = CellRect(0, 4);
    const QImage image = Shown();
    EXPECT_TRUE(IsAll(image, {cell.left(), cell.top(), 1, view.LineHeight()}, black));
    EXPECT_TRUE(
        IsAll(image, {cell.left() + 1, cell.top(), view.CellWidth(), view.LineHeight()}, white));
    EXPECT_TRUE(IsAll(image, {0, 0, cell.left(), view.LineHeight()}, white));
    EXPECT_EQ(CountIn(image, image.rect(), black), view.LineHeight());
    HideCaret();
    EXPECT_TRUE(IsAll(Shown(), Shown().rect(), white));
}

TEST_F(FormulaViewPaint, TakesTheCaretAwayWhereItGoes) {
    editor.SetText("\n\n\n");
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Up}) Press(key);
    Settle();
    EXPECT_EQ(CountIn(Shown(), viewport.rect(), black), view.LineHeight());
    EXPECT_TRUE(IsAll(Shown(), {0, view.LineHeight(), 1, view.LineHeight()}, black));
}

// Selection.

TEST_F(FormulaViewPaint, FillsTheSelectionInGreen) {
    editor.SetText("     \n   \n\n      ");
    Select({0, 2}, {3, 1});
    HideCaret();
    const QImage image = Shown();
    EXPECT_TRUE(IsAll(image, CellRect(0, 0, 2), white));
    EXPECT_TRUE(IsAll(image, CellRect(0, 2, 3), green));
    EXPECT_TRUE(IsAll(image, RowFrom(0, 5), white));
    EXPECT_TRUE(IsAll(image, CellRect(1, 0, 3), green));
    EXPECT_TRUE(IsAll(image, RowFrom(1, 3), white));
    EXPECT_TRUE(IsAll(image, RowFrom(2, 0), white));
    EXPECT_TRUE(IsAll(image, CellRect(3, 0, 1), green));
    EXPECT_TRUE(IsAll(image, RowFrom(3, 1), white));
    Press(Qt::Key_Left);
    HideCaret();
    EXPECT_TRUE(IsAll(Shown(), viewport.rect(), white));
}

TEST_F(FormulaViewPaint, TakesTheGreenAwayWhereTheSelectionEnds) {
    QLineEdit other(&window);
    other.setGeometry(520, 30, 100, 30);
    other.show();
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"a press", [this] { Click(CellPoint(2, 1)); }},
        {"a key", [this] { Press(Qt::Key_Up); }},
        {"the focus goes", [&other] { other.setFocus(); }},
        {"another text", [this] { editor.SetText("     \n   "); }}};
    for (const auto& [name, end] : ends) {
        SCOPED_TRACE(name);
        editor.SetText("     \n   \n   ");
        Select({0, 2}, {2, 1});
        EXPECT_GT(CountIn(Shown(), viewport.rect(), green), 0);
        end();
        Settle();
        EXPECT_EQ(CountIn(Shown(), viewport.rect(), green), 0);
        EXPECT_FALSE(Model().HasSelection());
    }
}

TEST_F(FormulaViewPaint, ShowsWhatADoubleClickSelects) {
    editor.SetText("  abc  ");
    Settle();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, OnScreen(CellPoint(0, 3)));
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, OnScreen(CellPoint(0, 3)));
    HideCaret();
    const QImage image = Shown();
    EXPECT_GT(CountIn(image, CellRect(0, 2, 3), green), 0);
    EXPECT_EQ(CountIn(image, CellRect(0, 2, 3), white), 0);
    EXPECT_EQ(CountIn(image, image.rect(), green), CountIn(image, CellRect(0, 2, 3), green));
}

TEST_F(FormulaViewPaint, LeavesTheColoursOfSelectedText) {
    TextColours colours;
    colours.fill(ColourFrom(0, 0, 0));
    view.SetColours(colours);
    editor.SetText("MMMM");
    view.SelectAll();
    HideCaret();
    const QImage image = Shown();
    EXPECT_GT(CountIn(image, CellRect(0, 0, 4), green), 0);
    int dark = 0;
    for (int x = 0; x < CellRect(0, 0, 4).width(); ++x) {
        for (int y = 0; y < view.LineHeight(); ++y) {
            const QColor pixel(image.pixel(x, y));
            dark += pixel.red() < 40 && pixel.green() < 120 && pixel.blue() < 40;
        }
    }
    EXPECT_GT(dark, 10);
}

// Colours.

TEST_F(FormulaViewPaint, ColoursEveryClassOfPieces) {
    struct Row {
        TextClass textClass;
        int cell, cells;
    };
    editor.SetText("hex: sum xyz \"MM\" 4444 ++ // MMM");
    const Row rows[] = {{TextClass::headerKeyword, 0, 3}, {TextClass::commonKeyword, 5, 3},
                        {TextClass::normalText, 9, 3},    {TextClass::string, 13, 4},
                        {TextClass::number, 18, 4},       {TextClass::symbol, 23, 2},
                        {TextClass::comment, 26, 6}};
    HideCaret();
    for (const auto& [textClass, cell, cells] : rows) {
        SCOPED_TRACE(textClassNames[static_cast<std::size_t>(textClass)]);
        // All other classes white: only this one leaves ink. The colon behind the header is a
        // symbol as well and left out.
        TextColours colours;
        colours.fill(ColourFrom(255, 255, 255));
        colours[static_cast<std::size_t>(textClass)] = ColourFrom(255, 0, 0);
        editor.SetColours(colours);
        EXPECT_EQ(editor.Colours(), colours);
        HideCaret();
        const QImage image = Shown();
        int inside = 0;
        int outside = 0;
        const QRect rect = CellRect(0, cell, cells).adjusted(-1, 0, 1, 0);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (pixel == white || CellRect(0, 3).contains(x, y)) continue;
                ++(rect.contains(x, y) ? inside : outside);
                EXPECT_EQ(qRed(pixel), 255);
            }
        }
        EXPECT_GT(inside, 5);
        EXPECT_EQ(outside, 0);
    }
}

TEST_F(FormulaViewPaint, PutsEveryCharacterInItsCell) {
    editor.SetText("\tM M");
    HideCaret();
    const QImage image = Shown();
    EXPECT_TRUE(IsAll(image, CellRect(0, 0, 4).adjusted(0, 0, -1, 0), white));
    EXPECT_FALSE(IsAll(image, CellRect(0, 4), white));
    EXPECT_TRUE(IsAll(image, CellRect(0, 5).adjusted(1, 0, -1, 0), white));
    EXPECT_FALSE(IsAll(image, CellRect(0, 6), white));
}

TEST_F(FormulaViewPaint, DrawsTheWholeCodePage) {
    std::string text;
    for (int code = 0xA1; code < 0x100; ++code) text += static_cast<char>(code);
    editor.SetText("\n" + text);
    editor.resize(1100, 330);
    window.resize(1200, 420);
    Settle();
    HideCaret();
    const QImage image = Shown();
    for (int code = 0xA1; code < 0x100; ++code) {
        if (code == 0xAD) continue;  // the soft hyphen
        SCOPED_TRACE(code);
        EXPECT_FALSE(IsAll(image, CellRect(1, code - 0xA1), white));
    }
}

// Areas.

TEST_F(FormulaViewPaint, PaintsTheRestOfTheRowAfterACharacter) {
    editor.SetText("+++\n1+sin+2\n+++");
    PutCaret({1, 5});
    const QRegion painted = PaintedBy(Qt::Key_H, {}, "h");
    EXPECT_EQ(Text(), "+++\n1+sinh+2\n+++");
    EXPECT_EQ(painted.boundingRect(), RowFrom(1, 2));
}

TEST_F(FormulaViewPaint, PaintsTheWholeRowAfterAColon) {
    editor.SetText("+++\n  hex\n+++");
    PutCaret({1, 5});
    EXPECT_EQ(PaintedBy(Qt::Key_Colon, {}, ":").boundingRect(), RowFrom(1, 0));
}

TEST_F(FormulaViewPaint, PaintsAllAfterALineBreak) {
    editor.SetText("+++\n+++");
    PutCaret({0, 2});
    EXPECT_EQ(PaintedBy(Qt::Key_Return).boundingRect(), viewport.rect());
    EXPECT_EQ(PaintedBy(Qt::Key_Backspace).boundingRect(), viewport.rect());
}

TEST_F(FormulaViewPaint, PaintsAllWhereASelectionWentByAKey) {
    editor.SetText("+++\n+++");
    Select({0, 1}, {0, 2});
    EXPECT_EQ(PaintedBy(Qt::Key_A, {}, "a").boundingRect(), viewport.rect());
}

TEST_F(FormulaViewPaint, PaintsOneRowAfterAPasteOverSeveral) {
    editor.SetText("+++\n+++\n+++");
    Select({0, 1}, {2, 1});
    QGuiApplication::clipboard()->setText("-");
    EXPECT_EQ(PaintedBy(Qt::Key_V, Qt::ControlModifier).boundingRect(), RowFrom(0, 1));
    EXPECT_EQ(Text(), "+-++");
}

TEST_F(FormulaViewPaint, PaintsOnlyTheCaretWhereItMovesAlone) {
    editor.SetText("+++\n+++");
    EXPECT_TRUE(PaintedBy(Qt::Key_Down).isEmpty());
    EXPECT_TRUE(PaintedBy(Qt::Key_Right).isEmpty());
    EXPECT_TRUE(PaintedBy(Qt::Key_F2).isEmpty());
}

TEST_F(FormulaViewPaint, PaintsTheRowsThatAreSelectedOtherwise) {
    editor.SetText("+++\n+++\n+++\n+++");
    PutCaret({1, 1});
    EXPECT_EQ(PaintedBy(Qt::Key_Down, Qt::ShiftModifier).boundingRect(),
              RowFrom(1, 0).united(RowFrom(2, 0)));
    EXPECT_EQ(PaintedBy(Qt::Key_Right, Qt::ShiftModifier).boundingRect(), RowFrom(2, 0));
    EXPECT_EQ(PaintedBy(Qt::Key_Up).boundingRect(), RowFrom(1, 0).united(RowFrom(2, 0)));
}

// A scroll moves what is there and paints only what comes in.
TEST_F(FormulaViewPaint, ScrollsItsPixels) {
    std::string text;
    for (int line = 0; line < 100; ++line) text += std::to_string(line) + " sin\n";
    editor.SetText(text + std::string(300, 'y'));
    Settle();
    PaintWatch watch(viewport);
    view.verticalScrollBar()->setValue(2);
    Settle();
    const int strip = 2 * view.LineHeight();
    EXPECT_TRUE((watch.painted - QRegion(0, viewport.height() - strip, viewport.width(), strip) -
                 CaretArea())
                    .isEmpty());
    EXPECT_FALSE(watch.painted.isEmpty());
    view.horizontalScrollBar()->setValue(3);
    Settle();
    EXPECT_EQ(Shown(), Whole());
}

// Many edits, each painted in pieces, leave what a whole painting shows. Left out are the letters
// whose pieces keep their colour until they are painted for another reason, pastes over selections,
// and brackets, which bring the hint up.
TEST_F(FormulaViewPaint, LooksPaintedInOneGo) {
    std::mt19937 random(7);
    const auto pick = [&random](int below) {
        return static_cast<int>(random() % static_cast<unsigned>(below));
    };
    const std::string typed = "sincos12.+-*\" ,;=";
    const int keys[] = {Qt::Key_Left,      Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,
                        Qt::Key_Home,      Qt::Key_End,    Qt::Key_PageUp, Qt::Key_PageDown,
                        Qt::Key_Backspace, Qt::Key_Delete, Qt::Key_Return, Qt::Key_Tab};
    std::string text;
    for (int line = 0; line < 40; ++line) {
        text += std::to_string(line);
        text += " = sum{1,2} + \"str\t\"";
        text.append(static_cast<std::size_t>(line) * 3, '+') += '\n';
    }
    editor.SetText(text);
    Settle();
    for (int step = 0; step < 600; ++step) {
        SCOPED_TRACE(step);
        const int kind = pick(10);
        if (kind < 4) {
            const char ch = typed[static_cast<std::size_t>(pick(static_cast<int>(typed.size())))];
            QKeyEvent press(QEvent::KeyPress, 0, {}, QString(QChar(ch)));
            QApplication::sendEvent(&view, &press);
        } else if (kind < 9) {
            const Qt::KeyboardModifiers modifiers =
                pick(3) == 0 ? Qt::ShiftModifier : Qt::NoModifier;
            QKeyEvent press(QEvent::KeyPress, keys[pick(static_cast<int>(std::size(keys)))],
                            modifiers);
            QApplication::sendEvent(&view, &press);
        } else if (pick(2) == 0) {
            QKeyEvent press(QEvent::KeyPress, pick(2) == 0 ? Qt::Key_Z : Qt::Key_Y,
                            Qt::ControlModifier);
            QApplication::sendEvent(&view, &press);
        } else {
            view.verticalScrollBar()->setValue(pick(30));
            view.horizontalScrollBar()->setValue(pick(60));
        }
        Settle();
        const QImage shown = Shown();
        const QImage whole = Whole();
        if (shown != whole) FAIL() << "the screen shows something else";
    }
}

// The control around the view.

TEST_F(FormulaViewPaint, StandsInASunkenEdge) {
    EXPECT_EQ(editor.frameWidth(), 2);
    EXPECT_EQ(editor.frameShape(), QFrame::Panel);
    EXPECT_EQ(editor.frameShadow(), QFrame::Sunken);
    const QRect client = editor.contentsRect();
    EXPECT_EQ(client, editor.rect().adjusted(2, 2, -2, -2));
    EXPECT_EQ(view.geometry(), client.adjusted(1, 1, 0, 0));
    int strips = 0;
    for (const QWidget* const child :
         editor.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child == &view) continue;
        ++strips;
        EXPECT_EQ(child->geometry(), QRect(client.left(), client.top() + 1, 0, view.height()));
        EXPECT_EQ(child->palette().color(QPalette::Window), QColor(220, 220, 220));
    }
    EXPECT_EQ(strips, 1);
    const QImage image = editor.grab().toImage();
    EXPECT_LT(qGray(image.pixel(0, 100)), 160);
    EXPECT_LT(qGray(image.pixel(1, 100)), 160);
    EXPECT_EQ(image.pixel(2, 100), white);
    EXPECT_EQ(qGray(image.pixel(image.width() - 1, 100)), 255);
}

TEST_F(FormulaViewPaint, MeasuresTheFixedFont) {
    const QFontMetrics metrics(FixedFont());
    EXPECT_EQ(view.CellWidth(), metrics.horizontalAdvance("1234567890") / 10);
    EXPECT_EQ(view.LineHeight(), metrics.height() + 1);
}

}  // namespace
}  // namespace orvane
