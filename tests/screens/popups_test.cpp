#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QtTest>
#include <set>
#include <string>

#include "editor/keyword_popup.h"
#include "editor/parameter_hint.h"
#include "tests/support/active_window.h"
#include "windows/look.h"

namespace orvane {
namespace {

constexpr int frame = FloatingWindow::frameWidth;

// A place to write that counts the presses it gets.
class TextArea : public QWidget {
public:
    explicit TextArea(QWidget* parent) : QWidget(parent) { setFocusPolicy(Qt::StrongFocus); }
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

// A window with a text that owns the two pop-ups, and a button beside it.
class Popups : public testing::Test {
protected:
    void SetUp() override {
        window.move(200, 150);
        window.resize(500, 400);
        text.setGeometry(10, 20, 400, 300);
        button.setGeometry(420, 350, 70, 30);
        window.show();
        text.setFocus();
        window.activateWindow();
        ASSERT_TRUE(test::MakeActive(window));
        ASSERT_TRUE(QTest::qWaitFor([&] { return text.hasFocus(); }));
    }

    void Open(const std::string& word) {
        popup.Open(caret, text.rect(), word);
        ASSERT_TRUE(popup.IsShowing());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&popup));
    }

    // A place of the list's inner area in the window that the list is.
    QPoint InList(int x, int y) const { return {x + frame, y + frame}; }
    int StripX() const { return popup.List().layout.StripLeft() + 6; }

    // Presses as they come from the screen, through the window.
    void PressList(QPoint point) {
        QTest::mousePress(popup.windowHandle(), Qt::LeftButton, {}, point);
    }
    void ReleaseList(QPoint point) {
        QTest::mouseRelease(popup.windowHandle(), Qt::LeftButton, {}, point);
    }
    void ClickWindow(QWidget& target) {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, target.geometry().center());
    }

    void ExpectFocusInText() const {
        EXPECT_TRUE(text.hasFocus());
        EXPECT_TRUE(window.isActiveWindow());
        EXPECT_EQ(QGuiApplication::focusWindow(), window.windowHandle());
    }

    const QRect caret = QRect(40, 32, 8, 16);
    QWidget window;
    TextArea text{&window};
    QPushButton button{"Press", &window};
    KeywordPopup popup{text};
    ParameterHint hint{text};
};

std::set<QRgb> ColoursIn(const QImage& image, const QRect& rect) {
    std::set<QRgb> colours;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) colours.insert(image.pixel(x, y));
    }
    return colours;
}

// Whether text of this colour stands there and none of a darker one. The strokes of small letters
// are paler than their colour.
testing::AssertionResult HasTextIn(const QImage& image, const QRect& rect, const QColor& colour) {
    QColor darkest = Qt::white;
    for (const QRgb pixel : ColoursIn(image, rect)) {
        const QColor next(pixel);
        if (next.red() + next.green() + next.blue() <
            darkest.red() + darkest.green() + darkest.blue()) {
            darkest = next;
        }
    }
    constexpr int paler = 70;
    const auto isNear = [](int value, int wanted) {
        return value >= wanted && value <= wanted + paler;
    };
    if (isNear(darkest.red(), colour.red()) && isNear(darkest.green(), colour.green()) &&
        isNear(darkest.blue(), colour.blue())) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "the darkest is " << darkest.name().toStdString();
}

std::string NameOfSelected(const KeywordPopup& popup) {
    const int row = popup.List().selected;
    return row < 0 ? "" : keywordTable.Sorted()[static_cast<std::size_t>(row)]->name;
}

TEST_F(Popups, LeaveTheFocusWhereItIs) {
    Open("sq");
    ExpectFocusInText();
    hint.ShowFor(*keywordTable.Find("sin"), caret);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&hint));
    ExpectFocusInText();

    PressList(InList(20, 20));
    ReleaseList(InList(20, 20));
    ExpectFocusInText();
    QTest::mouseClick(hint.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
    ExpectFocusInText();
}

TEST_F(Popups, HideUntilTheyAreNeeded) {
    EXPECT_FALSE(popup.IsShowing());
    EXPECT_FALSE(popup.isVisible());
    EXPECT_FALSE(hint.IsShowing());
}

TEST_F(Popups, ShowTheArrowOverTheText) {
    text.setCursor(Qt::IBeamCursor);
    EXPECT_EQ(popup.cursor().shape(), Qt::ArrowCursor);
    EXPECT_EQ(hint.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Popups, OpenTheListUnderTheCaret) {
    Open("sq");
    EXPECT_EQ(popup.pos(), text.mapToGlobal(QPoint(40, 48)));
    EXPECT_EQ(popup.frameGeometry(), popup.geometry());
    EXPECT_EQ(NameOfSelected(popup), "sqrt");
    EXPECT_EQ(popup.List().topRow, popup.List().selected);

    const QFontMetrics metrics(InterfaceFont());
    const int nameColumn = metrics.horizontalAdvance("integral_area_parametric_polar") + 30;
    const int width = nameColumn + metrics.horizontalAdvance("condition") + 33;
    EXPECT_EQ(popup.size(), QSize(width, 12 * (metrics.height() + 1) + 2 * frame));
}

TEST_F(Popups, OpenTheListToTheLeftAtTheRightEdge) {
    popup.Open(QRect(390, 32, 8, 16), text.rect(), "");
    EXPECT_EQ(popup.pos(), text.mapToGlobal(QPoint(390 - popup.width(), 48)));
}

TEST_F(Popups, ReckonTheListsPlaceInTheAreaThatShowsText) {
    popup.Open(QRect(390, 32, 8, 16), QRect(380, 0, 400, 300), "");
    EXPECT_EQ(popup.pos(), text.mapToGlobal(QPoint(390, 48)));
    popup.Hide();
    popup.Open(caret, QRect(0, 40, 400, 260), "");
    EXPECT_FALSE(popup.IsShowing());
}

TEST_F(Popups, DoNotOpenTheListForACaretOutOfView) {
    for (const int y : {-16, 300}) {
        popup.Open(QRect(40, y, 8, 16), text.rect(), "sin");
        EXPECT_FALSE(popup.IsShowing());
        EXPECT_FALSE(popup.isVisible());
    }
}

TEST_F(Popups, LetTheListFollowTheCaret) {
    popup.Follow(caret, text.rect(), "sin");
    EXPECT_FALSE(popup.IsShowing());
    Open("sq");
    popup.Follow(QRect(56, 64, 8, 16), text.rect(), "med");
    EXPECT_EQ(popup.pos(), text.mapToGlobal(QPoint(56, 80)));
    EXPECT_EQ(NameOfSelected(popup), "median");
    // Out of view: everything stays as it was.
    popup.Follow(QRect(56, 400, 8, 16), text.rect(), "sin");
    EXPECT_TRUE(popup.IsShowing());
    EXPECT_EQ(popup.pos(), text.mapToGlobal(QPoint(56, 80)));
    EXPECT_EQ(NameOfSelected(popup), "median");
    popup.Follow(caret, text.rect(), "");
    EXPECT_EQ(NameOfSelected(popup), "");
}

TEST_F(Popups, StayOnTheScreen) {
    const QRect screen = window.screen()->availableGeometry();
    const QPoint low = text.mapFromGlobal(QPoint(screen.left() + 100, screen.bottom() - 40));
    const QRect view(QPoint(0, 0), QSize(2000, 2000));
    popup.Open(QRect(low, QSize(8, 16)), view, "");
    EXPECT_EQ(popup.geometry().bottom() + 1, text.mapToGlobal(low).y());
    hint.ShowFor(
        *keywordTable.Find("if"),
        QRect(text.mapFromGlobal(QPoint(screen.right() - 20, screen.top() + 5)), QSize(8, 16)));
    EXPECT_EQ(hint.geometry().right(), screen.right());
    EXPECT_EQ(hint.y(), screen.top() + 5 + 16);
}

TEST_F(Popups, PaintTheSelectedRowAndTheStrip) {
    Open("sq");
    const QImage image = popup.grab().toImage();
    const KeywordListLayout& layout = popup.List().layout;
    const auto at = [&](int x, int y) { return image.pixelColor(InList(x, y)); };
    const QColor background(255, 255, 247);
    const QColor green(0, 255, 0);
    const int stripLeft = layout.StripLeft();
    const int bottom = layout.inner.height;
    EXPECT_EQ(layout.inner.width - stripLeft, 13);

    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(at(0, 0), background);
    EXPECT_EQ(at(0, 1), green);
    EXPECT_EQ(at(0, layout.rowHeight - 1), green);
    EXPECT_EQ(at(0, layout.rowHeight), background);
    EXPECT_EQ(at(stripLeft - 2, 1), green);
    EXPECT_EQ(at(stripLeft - 1, 1), background);
    EXPECT_EQ(at(2, layout.rowHeight + 3), background);

    EXPECT_EQ(at(stripLeft + 6, 13), QColor(210, 210, 210));
    EXPECT_EQ(at(stripLeft, 13), QColor(210, 210, 210));
    EXPECT_EQ(at(stripLeft + 12, bottom - 14), QColor(210, 210, 210));
    for (const int top : {0, popup.List().ThumbTop(), bottom - 13}) {
        SCOPED_TRACE(top);
        EXPECT_EQ(at(stripLeft + 2, top + 2), QColor(192, 192, 192));
        EXPECT_EQ(at(stripLeft + 1, top + 1), QColor(Qt::white));
        EXPECT_EQ(at(stripLeft + 12, top + 12), QColor(64, 64, 64));
    }
    EXPECT_EQ(at(stripLeft + 6, 6), QColor(Qt::black));
    EXPECT_EQ(at(stripLeft + 6, bottom - 7), QColor(Qt::black));
    EXPECT_EQ(at(stripLeft + 6, popup.List().ThumbTop() + 6), QColor(192, 192, 192));
}

struct TextColourRow {
    const char* word;
    QColor name;
    bool hasGroupWord;
};

TEST_F(Popups, ColourNamesByTheirKind) {
    const TextColourRow rows[] = {{"pi", QColor(255, 0, 0), false},
                                  {"hex", QColor(0, 128, 0), false},
                                  {"sin", QColor(0, 0, 0), true}};
    for (const auto& [word, colour, hasGroupWord] : rows) {
        SCOPED_TRACE(word);
        Open(word);
        popup.PressKey(ListKey::down);  // so that the row is not filled
        const KeywordListLayout& layout = popup.List().layout;
        const QImage image = popup.grab().toImage();
        const int height = layout.rowHeight - 1;
        const QRect name(InList(0, 1), QSize(layout.nameColumn, height));
        const QRect group(InList(layout.nameColumn + 4, 1),
                          QSize(layout.StripLeft() - layout.nameColumn - 5, height));
        EXPECT_TRUE(HasTextIn(image, name, colour));
        if (hasGroupWord) {
            EXPECT_TRUE(HasTextIn(image, group, QColor(96, 96, 96)));
        } else {
            EXPECT_EQ(ColoursIn(image, group), std::set<QRgb>{qRgb(255, 255, 247)});
        }
    }
}

// The left end of what is drawn in the rectangle, from the rectangle's own.
int InkLeft(const QImage& image, const QRect& rect) {
    const QRgb ground = image.pixel(rect.topLeft());
    for (int x = 0; x < rect.width(); ++x) {
        const QRect line(rect.left() + x, rect.top(), 1, rect.height());
        if (ColoursIn(image, line) != std::set<QRgb>{ground}) return x;
    }
    return -1;
}

// The same of a text drawn with its origin at x.
int InkLeft(const QString& drawn, int x) {
    QImage image(300, 40, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(InterfaceFont());
    painter.drawText(x, 25, drawn);
    return InkLeft(image, image.rect());
}

TEST_F(Popups, BeginNamesAndGroupWordsInTwoColumns) {
    Open("sin");
    popup.PressKey(ListKey::down);  // so that the row is not filled
    const KeywordListLayout& layout = popup.List().layout;
    const QImage image = popup.grab().toImage();
    const QSize column(layout.nameColumn - 1, layout.rowHeight - 1);
    EXPECT_EQ(InkLeft(image, QRect(InList(0, 1), column)), InkLeft("sin", 4));
    const int width = layout.StripLeft() - layout.nameColumn;
    EXPECT_EQ(
        InkLeft(image, QRect(InList(layout.nameColumn, 1), QSize(width, layout.rowHeight - 1))),
        InkLeft("normal", 4));
}

TEST_F(Popups, LetAPressElsewhereHideTheListAndStillReachItsGoal) {
    QSignalSpy dismissed(&popup, &KeywordPopup::Dismissed);
    QSignalSpy clicked(&button, &QPushButton::clicked);
    Open("sq");
    ClickWindow(button);
    EXPECT_FALSE(popup.IsShowing());
    EXPECT_FALSE(popup.isVisible());
    EXPECT_EQ(dismissed.count(), 1);
    EXPECT_EQ(clicked.count(), 1);

    Open("sq");
    ClickWindow(text);
    EXPECT_FALSE(popup.IsShowing());
    EXPECT_EQ(dismissed.count(), 2);
    EXPECT_EQ(text.presses, 1);

    // The same for a press that is handed straight to a control.
    Open("sq");
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_FALSE(popup.IsShowing());
    EXPECT_EQ(dismissed.count(), 3);
    EXPECT_EQ(clicked.count(), 2);

    ClickWindow(button);
    EXPECT_EQ(dismissed.count(), 3) << "a hidden list hears of no press";
}

TEST_F(Popups, HideWithoutAWordWhenTheOwnerSaysSo) {
    QSignalSpy dismissed(&popup, &KeywordPopup::Dismissed);
    Open("sq");
    popup.Hide();
    EXPECT_FALSE(popup.IsShowing());
    EXPECT_EQ(popup.EntryToAccept(std::nullopt), nullptr);
    EXPECT_EQ(dismissed.count(), 0);
}

TEST_F(Popups, SelectThePressedRowAndAcceptItAtADoubleClick) {
    QSignalSpy accepted(&popup, &KeywordPopup::Accepted);
    QSignalSpy dismissed(&popup, &KeywordPopup::Dismissed);
    Open("sq");
    const int row = popup.List().topRow + 3;
    const QPoint point = InList(20, 3 * popup.List().layout.rowHeight + 5);
    PressList(point);
    ReleaseList(point);
    EXPECT_EQ(popup.List().selected, row);
    EXPECT_EQ(accepted.count(), 0);

    QTest::mouseDClick(popup.windowHandle(), Qt::LeftButton, {}, point);
    EXPECT_EQ(accepted.count(), 1);
    EXPECT_EQ(popup.EntryToAccept(std::nullopt),
              keywordTable.Sorted()[static_cast<std::size_t>(row)]);
    EXPECT_EQ(dismissed.count(), 0);
    EXPECT_TRUE(popup.IsShowing()) << "hiding the list is its owner's step";
}

TEST_F(Popups, ScrollTwiceAtADoubleClickOnAButton) {
    QSignalSpy accepted(&popup, &KeywordPopup::Accepted);
    Open("");
    const QPoint point = InList(StripX(), popup.List().layout.inner.height - 4);
    QTest::mouseClick(&popup, Qt::LeftButton, {}, point);
    QMouseEvent again(QEvent::MouseButtonDblClick, point, popup.mapToGlobal(point), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&popup, &again);
    QTest::mouseRelease(&popup, Qt::LeftButton, {}, point);
    EXPECT_EQ(popup.List().topRow, 2);
    EXPECT_EQ(accepted.count(), 0);
}

TEST_F(Popups, GoOnScrollingWhileAButtonIsHeld) {
    Open("");
    const QPoint point = InList(StripX(), popup.List().layout.inner.height - 4);
    PressList(point);
    EXPECT_EQ(popup.List().topRow, 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return popup.List().topRow >= 3; }));
    ReleaseList(point);
    EXPECT_EQ(popup.List().scrollState, ScrollState::idle);
}

TEST_F(Popups, LetTheThumbBeDragged) {
    Open("");
    const int thumb = popup.List().ThumbTop();
    PressList(InList(StripX(), thumb + 4));
    QTest::mouseMove(popup.windowHandle(), InList(StripX(), thumb + 4 + 50));
    const int wanted = qRound(50 / popup.List().pixelsPerRow);
    EXPECT_GT(wanted, 0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return popup.List().topRow == wanted; }));
    const QImage image = popup.grab().toImage();
    EXPECT_EQ(image.pixelColor(InList(StripX(), thumb)), QColor(210, 210, 210));
    EXPECT_EQ(image.pixelColor(InList(StripX(), popup.List().ThumbTop() + 6)),
              QColor(192, 192, 192));
    ReleaseList(InList(StripX(), thumb + 54));
    EXPECT_EQ(popup.List().scrollState, ScrollState::idle);
}

TEST_F(Popups, ForgetAHeldButtonWhenTheListHides) {
    Open("");
    PressList(InList(StripX(), 4));
    EXPECT_EQ(popup.List().scrollState, ScrollState::upHeld);
    popup.Hide();
    EXPECT_EQ(popup.List().scrollState, ScrollState::idle);
}

TEST_F(Popups, GoAwayWhenTheirWindowIsLeft) {
    QSignalSpy listDismissed(&popup, &KeywordPopup::Dismissed);
    QSignalSpy hintDismissed(&hint, &ParameterHint::Dismissed);
    Open("sq");
    hint.ShowFor(*keywordTable.Find("sin"), caret);
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !popup.IsShowing() && !hint.IsShowing(); }));
    EXPECT_EQ(listDismissed.count(), 1);
    EXPECT_EQ(hintDismissed.count(), 1);
}

TEST_F(Popups, GoAwayWithTheirWindow) {
    Open("sq");
    hint.ShowFor(*keywordTable.Find("sin"), caret);
    window.hide();
    EXPECT_FALSE(popup.isVisible());
    EXPECT_FALSE(hint.isVisible());
}

TEST_F(Popups, GoAlongWithTheirWindow) {
    Open("sq");
    hint.ShowFor(*keywordTable.Find("sin"), caret);
    const QPoint listPlace = popup.pos() - text.mapToGlobal(QPoint(0, 0));
    const QPoint hintPlace = hint.pos() - text.mapToGlobal(QPoint(0, 0));
    const QPoint before = popup.pos();
    window.move(window.pos() + QPoint(30, 20));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const QPoint corner = text.mapToGlobal(QPoint(0, 0));
        return popup.pos() != before && popup.pos() == corner + listPlace &&
               hint.pos() == corner + hintPlace;
    }));
}

struct HintRow {
    const char* name;
    const char* head;
    QStringList rows;
};

TEST_F(Popups, PutTheHintAboveTheLineInTheSizeOfItsRows) {
    const HintRow rows[] = {
        {"sin", "float sin", {" ( float radian )"}},
        {"sum", "float sum", {" ( float ,float ,... )"}},
        {"length", "float length", {" ( float ,float ,... )", " ( point )"}},
    };
    const QFontMetrics metrics(InterfaceFont());
    for (const auto& [name, head, texts] : rows) {
        SCOPED_TRACE(name);
        hint.ShowFor(*keywordTable.Find(name), QRect(40, 160, 8, 16));
        const int rowsHeight = static_cast<int>(texts.size()) * (metrics.height() + 1);
        EXPECT_EQ(hint.height(), rowsHeight + 2 * frame + 3);
        EXPECT_EQ(hint.pos(), text.mapToGlobal(QPoint(40, 160 - 2 * frame - rowsHeight - 3)));
        int widest = 0;
        for (const QString& row : texts) {
            widest = std::max(widest, metrics.horizontalAdvance(head + row));
        }
        // Run by run a row may differ from the whole by a pixel here and there.
        EXPECT_NEAR(hint.width(), widest + 2 * frame + 6, 4);
    }
}

TEST_F(Popups, PaintTheHintInItsColours) {
    hint.ShowFor(*keywordTable.Find("length"), QRect(40, 160, 8, 16));
    const QImage image = hint.grab().toImage();
    const QFontMetrics metrics(InterfaceFont());
    const int rowHeight = metrics.height() + 1;
    const QRgb background = qRgb(255, 255, 239);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(image.pixel(frame, frame), background);

    struct Piece {
        const char* text;
        QColor colour;
    };
    const Piece pieces[] = {
        {"float ", QColor(128, 128, 128)}, {"length", Qt::black},        {" ( ", Qt::black},
        {"float", QColor(128, 0, 0)},      {" ", QColor(255, 255, 239)}, {",", Qt::black},
        {"float", QColor(0, 128, 0)}};
    int x = frame + 2;
    for (const auto& [text, colour] : pieces) {
        SCOPED_TRACE(text);
        const int width = metrics.horizontalAdvance(text);
        EXPECT_TRUE(HasTextIn(image, QRect(x, frame + 1, width, rowHeight - 1), colour));
        x += width;
    }

    // The second row begins where the name above it ends.
    const int top = frame + 1 + rowHeight;
    const int headWidth = metrics.horizontalAdvance("float ") + metrics.horizontalAdvance("length");
    EXPECT_EQ(ColoursIn(image, QRect(frame, top, 2 + headWidth, rowHeight - 1)),
              std::set<QRgb>{background});
    const int typeLeft = frame + 2 + headWidth + metrics.horizontalAdvance(" ( ");
    const int typeWidth = metrics.horizontalAdvance("point");
    EXPECT_TRUE(
        HasTextIn(image, QRect(typeLeft, top, typeWidth, rowHeight - 1), QColor(128, 0, 0)));
}

TEST_F(Popups, LeaveRoomBehindEveryHint) {
    for (const KeywordEntry& entry : keywordRows) {
        if (keywordTable.FindFunction(entry.name) == nullptr) continue;
        SCOPED_TRACE(entry.name);
        hint.ShowFor(entry, QRect(0, 160, 8, 16));
        const QImage image = hint.grab().toImage();
        EXPECT_EQ(
            ColoursIn(image, QRect(hint.width() - frame - 3, frame, 3, hint.height() - 2 * frame)),
            std::set<QRgb>{qRgb(255, 255, 239)});
    }
}

}  // namespace
}  // namespace orvane
