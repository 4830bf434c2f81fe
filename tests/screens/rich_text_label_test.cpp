#include "windows/rich_text_label.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "storage/qt_bytes.h"

namespace orvane {
namespace {

constexpr QRect place(20, 10, 200, 100);
constexpr QColor ground(51, 51, 51);

// Lines of full width, each in a colour of its own: line 0 has 10, 0, 100, line 1 has 20, 0, 100.
QColor LineColour(int line) { return QColor(10 * (line + 1), 0, 100); }
std::string ColouredLines(int count) {
    std::string text = "<font color='none' align='left'>";
    for (int line = 0; line < count; ++line) {
        text += "<font background='" + std::to_string(LineColour(line).red()) + ",0,100'>";
        text += std::string(300, 'm') + "</font>" + (line + 1 < count ? "<br>" : "");
    }
    return text;
}
int LineHeight() { return QFontMetrics(ScreenFont(LabelFont{})).height(); }

class RichTextLabelTest : public testing::Test {
protected:
    RichTextLabelTest() {
        window.resize(240, 120);
        window.move(300, 300);
        label.SetBackground(ground);
        label.SetScrollDelay(100'000);  // no step comes by itself
        label.openTarget = [this](const QString& target) { opened += target; };
    }

    void Show() {
        window.show();
        while (!QTest::qWaitForWindowExposed(&window, 2000)) {
            window.hide();
            window.show();
        }
    }
    QTimer& Timer() { return *label.findChild<QTimer*>(); }
    int Offset() { return label.Scroller().scrollOffset; }
    // The next step comes now, and no further one.
    void Step() {
        const int before = Offset();
        Timer().start(0);
        ASSERT_TRUE(QTest::qWaitFor([&] { return Offset() != before; }));
    }
    QImage Picture(qreal scale = 1) {
        QImage image((QSizeF(place.size()) * scale).toSize(), QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        image.fill(Qt::magenta);
        label.render(&image);
        return image;
    }
    void PointAt(const QPoint& point) { QCursor::setPos(label.mapToGlobal(point)); }
    void Click(const QPoint& point) { QTest::mouseClick(&label, Qt::LeftButton, {}, point); }
    QPoint MiddleOfLink(std::size_t link) {
        const LabelRect& rect = label.Placement().links[link].rect;
        return {rect.left + rect.width / 2, rect.top + rect.height / 2};
    }

    QWidget window;
    RichTextLabel label{&window, place};
    QStringList opened;
};

TEST_F(RichTextLabelTest, TakesThePlaceAndGivesTheOldTextBack) {
    EXPECT_EQ(label.geometry(), place);
    EXPECT_EQ(label.SetText("first"), "");
    EXPECT_EQ(label.SetText("second"), "first");
    EXPECT_EQ(label.SetText(""), "second");
    EXPECT_EQ(label.Placement().totalHeight, LineHeight());
}

TEST_F(RichTextLabelTest, StartsWithFortyMillisecondsAtTheTop) {
    RichTextLabel fresh(&window, place);
    EXPECT_EQ(fresh.Scroller().scrollDelay, 40);
    EXPECT_EQ(fresh.Scroller().scrollOffset, 0);
    EXPECT_FALSE(fresh.Scroller().dragEnabled);
}

// Time

TEST_F(RichTextLabelTest, WaitsTenDelaysFirstAndOneFromThenOn) {
    label.SetScrollDelay(3000);
    label.SetText(ColouredLines(20));
    EXPECT_FALSE(Timer().isActive());
    Show();
    EXPECT_TRUE(Timer().isActive());
    EXPECT_EQ(Timer().interval(), 30'000);
    Step();
    EXPECT_EQ(Offset(), 1);
    EXPECT_EQ(Timer().interval(), 3000);
    EXPECT_TRUE(Timer().isActive());
}

TEST_F(RichTextLabelTest, RunsOnlyWhileItIsSeen) {
    label.SetScrollDelay(3000);
    label.SetText(ColouredLines(20));
    Show();
    window.hide();
    EXPECT_FALSE(Timer().isActive());
    Show();
    EXPECT_TRUE(Timer().isActive());
    EXPECT_EQ(Timer().interval(), 3000);
    label.hide();
    EXPECT_FALSE(Timer().isActive());
}

TEST_F(RichTextLabelTest, ScrollsByItselfFromBelowTheTopAndRoundToOne) {
    label.SetText(ColouredLines(8));
    label.SetScrollDelay(1);
    ASSERT_GT(label.Placement().totalHeight, place.height());
    Show();
    label.SetScrollOffset(-3);
    int last = Offset();
    int highest = last;
    // From one step to the next.
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            const int now = Offset();
            const bool isRound = now < last;
            last = now;
            highest = std::max(highest, now);
            return isRound;
        },
        20'000));
    EXPECT_GT(highest, 0);
    EXPECT_LE(highest, label.Placement().totalHeight);
    EXPECT_GE(last, 1);
}

TEST_F(RichTextLabelTest, GoesBackToOneBehindTheLastRow) {
    label.SetText(ColouredLines(8));
    Show();
    label.SetScrollOffset(label.Placement().totalHeight - 1);
    Step();
    EXPECT_EQ(Offset(), label.Placement().totalHeight);
    Step();
    EXPECT_EQ(Offset(), 1);
}

// Pixels

TEST_F(RichTextLabelTest, LoopsWithoutAGapAtEveryScale) {
    constexpr int lines = 12;
    label.SetText(ColouredLines(lines));
    const int total = label.Placement().totalHeight;
    ASSERT_EQ(total, lines * LineHeight());
    Show();
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        for (const int offset : {0, 1, 7, LineHeight(), total - 101, total - 100, total - 51,
                                 total - 50, total - 1, total}) {
            SCOPED_TRACE(std::to_string(scale) + " at " + std::to_string(offset));
            label.SetScrollOffset(offset);
            const QImage image = Picture(scale);
            for (int row = 0; row < image.height(); ++row) {
                // Where a line ends between two rows of the screen, the row is on either side.
                const auto colourAt = [&](qreal shift) {
                    const int shown = static_cast<int>(std::floor(row / scale + shift)) + offset;
                    return LineColour((shown + total) % total / LineHeight());
                };
                const QColor there = image.pixelColor(100, row);
                const bool isExact = scale == std::floor(scale);
                const bool fits =
                    there == colourAt(0) ||
                    (!isExact && (there == colourAt(-0.67) || there == colourAt(0.67)));
                ASSERT_TRUE(fits) << row << " is " << there.name().toStdString();
            }
        }
    }
}

TEST_F(RichTextLabelTest, StartsBelowTheTopEdge) {
    label.SetText(ColouredLines(12));
    label.SetScrollOffset(-50);
    const QImage image = Picture();
    EXPECT_EQ(image.pixelColor(5, 0), ground);
    EXPECT_EQ(image.pixelColor(5, 49), ground);
    EXPECT_EQ(image.pixelColor(5, 50), LineColour(0));
    EXPECT_EQ(image.pixelColor(199, 99), LineColour(49 / LineHeight()));
}

TEST_F(RichTextLabelTest, LeavesAShortTextWhereItIs) {
    label.SetText(ColouredLines(2) +
                  "<br><font align='left'><a href='http://x.org'>link</a></font>");
    ASSERT_LE(label.Placement().totalHeight, place.height());
    label.SetDragEnabled(true);
    Show();
    const QImage before = Picture();
    EXPECT_EQ(before.pixelColor(100, 0), LineColour(0));
    label.SetScrollOffset(-50);
    EXPECT_EQ(Picture(), before);
    Step();
    EXPECT_EQ(Picture(), before);

    const int offset = Offset();
    for (const QPoint& point : {QPoint(100, 5), QPoint(100, 99), QPoint(199, 50)}) {
        QTest::mousePress(&label, Qt::LeftButton, {}, point);
        EXPECT_FALSE(label.Scroller().dragging);
        QTest::mouseMove(&label, point - QPoint(0, 5));
        QTest::mouseRelease(&label, Qt::LeftButton, {}, point);
    }
    EXPECT_EQ(Offset(), offset);
    EXPECT_TRUE(opened.isEmpty());
    Click(MiddleOfLink(0));
    EXPECT_EQ(opened, QStringList{"http://x.org"});
}

TEST_F(RichTextLabelTest, ATextAsHighAsTheControlStandsStill) {
    label.SetText("<vspace size='60'>");
    label.SetText("<vspace size='" + std::to_string(place.height() - LineHeight()) + "'>");
    ASSERT_EQ(label.Placement().totalHeight, place.height());
    EXPECT_FALSE(LabelScroller::Scrolls(label.Placement(), label.height()));
    label.SetText("<vspace size='" + std::to_string(place.height() - LineHeight() + 1) + "'>");
    EXPECT_TRUE(LabelScroller::Scrolls(label.Placement(), label.height()));
}

// At a place between two rows of the screen the control has a row less than the text.
TEST_F(RichTextLabelTest, ATextThatJustFitsStandsStillBetweenRowsOfTheScreen) {
    label.resize(200, 101);
    label.SetText("<hr size='" + std::to_string(101 - LineHeight() - 4) + "' color='9,9,9'>");
    ASSERT_EQ(label.Placement().totalHeight, 101);
    const auto picture = [this] {
        QImage image(300, 160, QImage::Format_RGB32);
        image.setDevicePixelRatio(1.5);
        image.fill(Qt::magenta);
        label.render(&image, QPoint(0, 1));
        return image;
    };
    const QImage before = picture();
    label.SetScrollOffset(50);
    EXPECT_EQ(picture(), before);
}

// The first and the last column of a colour in a row of the picture.
struct Columns {
    int first = -1, last = -1;
    bool operator==(const Columns&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Columns& columns) {
    return out << columns.first << " to " << columns.last;
}
Columns ColumnsOf(const QImage& image, int row, const QColor& colour) {
    Columns columns;
    for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, row) != colour) continue;
        if (columns.first < 0) columns.first = x;
        columns.last = x;
    }
    return columns;
}

TEST_F(RichTextLabelTest, DrawsRules) {
    const QColor shadow(label.palette().color(QPalette::Dark).rgb());
    struct Row {
        const char* text;
        QColor colour;
        int firstRow, lastRow;
        Columns columns;
    };
    const Row rows[] = {
        {"<hr>", shadow, 2, 3, {50, 149}},
        {"<hr size='5'>", shadow, 2, 6, {5, 194}},
        {"<hr size='5' color='1,2,3'>", QColor(1, 2, 3), 2, 6, {5, 194}},
        {"<hr width='40' align='left'>", shadow, 2, 3, {0, 39}},
        {"<hr width='40' align='right'>", shadow, 2, 3, {160, 199}},
        {"<hr width='40' align='middle'>", shadow, 2, 3, {80, 119}},
        {"<hr width='400'>", shadow, 2, 3, {0, 199}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        label.SetText(row.text);
        const QImage image = Picture();
        EXPECT_EQ(ColumnsOf(image, row.firstRow - 1, row.colour), Columns{});
        EXPECT_EQ(ColumnsOf(image, row.firstRow, row.colour), row.columns);
        EXPECT_EQ(ColumnsOf(image, row.lastRow, row.colour), row.columns);
        EXPECT_EQ(ColumnsOf(image, row.lastRow + 1, row.colour), Columns{});
    }
}

TEST_F(RichTextLabelTest, DrawsTextInItsColours) {
    label.SetText("<font size='40' color='255,204,51' background='0,0,9' style='b'>HI</font>");
    const LabelRect rect = label.Placement().pieces.at(0).rect;
    const QImage image = Picture();
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (rect.Holds(x, y)) {
                colours.insert(image.pixel(x, y));
            } else {
                ASSERT_EQ(image.pixelColor(x, y), ground) << x << ", " << y;
            }
        }
    }
    EXPECT_TRUE(colours.contains(qRgb(255, 204, 51)));
    EXPECT_TRUE(colours.contains(qRgb(0, 0, 9)));
    EXPECT_FALSE(colours.contains(ground.rgb()));
}

TEST_F(RichTextLabelTest, CutsALineThatIsTooWide) {
    label.SetText("<font background='0,0,9' color='none' align='right'>" + std::string(500, 'x'));
    EXPECT_LT(label.Placement().pieces.at(0).rect.left, 0);
    EXPECT_EQ(ColumnsOf(Picture(), 3, QColor(0, 0, 9)), (Columns{0, 199}));
}

TEST_F(RichTextLabelTest, DrawsPicturesInTheirBorders) {
    QPixmap bitmap(30, 20);
    bitmap.fill(Qt::yellow);
    label.SetBitmaps([&](std::int32_t number) { return number == 7 ? bitmap : QPixmap(); });
    label.SetText(
        "<font align='left' color='none'><img src='#7' color='0,0,255' border='3'><img "
        "src='#8'><img src='#7'>x");
    const QImage image = Picture();
    EXPECT_EQ(label.Placement().pieces.size(), 3U);
    EXPECT_EQ(ColumnsOf(image, 1, Qt::blue), (Columns{0, 35}));
    EXPECT_EQ(ColumnsOf(image, 13, Qt::blue), (Columns{0, 35}));
    EXPECT_EQ(ColumnsOf(image, 2, Qt::yellow), Columns{});
    EXPECT_EQ(ColumnsOf(image, 13, Qt::yellow), (Columns{3, 36 + 2 + 29}));
    EXPECT_EQ(image.pixelColor(37, 13), ground);
}

TEST_F(RichTextLabelTest, TakesAnotherBackground) {
    label.SetText("<hr>");
    EXPECT_EQ(Picture().pixelColor(100, 20), ground);
    EXPECT_EQ(Picture().pixelColor(5, 2), ground);
    label.SetBackground(Qt::green);
    EXPECT_EQ(Picture().pixelColor(100, 20), QColor(Qt::green));
    EXPECT_EQ(Picture().pixelColor(5, 2), QColor(Qt::green));
}

TEST_F(RichTextLabelTest, PlacesTheTextAnewInAnotherWidth) {
    label.SetText("<hr size='5'>");
    const QColor shadow(label.palette().color(QPalette::Dark).rgb());
    EXPECT_EQ(ColumnsOf(Picture(), 3, shadow), (Columns{5, 194}));
    Show();
    label.resize(120, 100);
    EXPECT_EQ(ColumnsOf(Picture(), 3, shadow), (Columns{5, 114}));
}

TEST_F(RichTextLabelTest, LosesTheTextBelowTheLastRowOfTheCanvas) {
    std::string text;
    for (int line = 0; line < 40; ++line) text += "<hr size='196' width='200' color='9,9,9'>";
    label.SetText(text);
    ASSERT_EQ(label.Placement().totalHeight, 40 * 200 + LineHeight());
    label.SetScrollOffset(labelCanvasRows - 50);
    const QImage image = Picture();
    EXPECT_EQ(image.pixelColor(100, 47), QColor(9, 9, 9));
    EXPECT_EQ(image.pixelColor(100, 70), ground);
    EXPECT_EQ(image.pixelColor(100, 99), ground);
    // Then it goes on with the first row, as far down as the text is long.
    label.SetScrollOffset(label.Placement().totalHeight - 10);
    EXPECT_EQ(Picture().pixelColor(100, 13), QColor(9, 9, 9));
}

TEST(DrawRichText, TakesTheRowsThatTheTextNeedsAndNoMore) {
    struct Row {
        const char* text;
        double scale;
        QSize size;
    };
    const Row rows[] = {
        {"<vspace size='1000'><hr>", 1, {200, 1006}},
        {"<vspace size='1001'><hr>", 1.5, {300, 1511}},
        {"<vspace size='9000'><hr>", 1, {200, 5000}},
        {"<vspace size='9000'><hr>", 2, {400, 10'000}},
        {"<vspace size='-100'>", 1, {0, 0}},
    };
    ScreenMeasure measure([](std::int32_t) { return QPixmap(); });
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const LabelDocument document = ParseRichText(std::string(row.text) + "<br");
        const LabelLayout layout = LayOutRichText(document, 200, measure);
        const LabelCanvas canvas{200, row.scale, Qt::white, Qt::gray, LabelLook::normal};
        EXPECT_EQ(DrawRichText(document, layout, canvas, {}).size(), row.size);
    }
}

// Links

constexpr const char* linkText =
    "<font align='left' color='none'><a href='one' background='200,0,0'>first link</a><br>"
    "<a href='#two#0'>second</a><br><font background='0,9,0'><a href='http://x.org/?a=b&amp;c' "
    "background='0,0,200'>third link</a></font></font><vspace size='200'>";

TEST_F(RichTextLabelTest, ShowsTheOtherLookAndTheHandUnderThePointer) {
    label.SetText(linkText);
    ASSERT_EQ(label.Placement().links.size(), 3U);
    PointAt({190, 90});
    Show();
    Step();
    EXPECT_FALSE(label.Scroller().hotLink);
    EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
    const QImage plain = Picture();
    const QPoint third = MiddleOfLink(2);
    EXPECT_EQ(plain.pixelColor(third), QColor(0, 9, 0));

    PointAt(third);
    Step();
    ASSERT_EQ(label.Scroller().hotLink, 2U);
    EXPECT_EQ(label.cursor().shape(), Qt::BitmapCursor);
    EXPECT_EQ(label.cursor().hotSpot(), QPoint(9, 1));
    const LabelRect& rect = label.Placement().links[2].rect;
    const QImage hot = Picture();
    for (int y = 0; y < hot.height(); ++y) {
        for (int x = 0; x < hot.width(); ++x) {
            const bool isLink = rect.Holds(x, y + Offset());
            const QColor wanted = isLink ? QColor(0, 0, 200) : ground;
            if (isLink || y + Offset() < rect.top) {
                ASSERT_EQ(hot.pixelColor(x, y), wanted) << x << ", " << y;
            }
        }
    }

    PointAt(MiddleOfLink(0) - QPoint(0, Offset()));
    Step();
    EXPECT_EQ(label.Scroller().hotLink, 0U);
    EXPECT_EQ(Picture().pixelColor(third - QPoint(0, Offset())), QColor(0, 9, 0));

    PointAt({-5, 3});
    Step();
    EXPECT_FALSE(label.Scroller().hotLink);
    EXPECT_EQ(label.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(RichTextLabelTest, OpensALinkAndLeavesFunctionAddressesAlone) {
    label.SetText(linkText);
    Show();
    struct Row {
        std::size_t link;
        QStringList opened;
    };
    const Row rows[] = {{0, {"one"}}, {1, {}}, {2, {"http://x.org/?a=b&amp;c"}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.link);
        opened.clear();
        PointAt(MiddleOfLink(row.link) - QPoint(0, Offset() + 1));
        Step();
        ASSERT_EQ(label.Scroller().hotLink, row.link);
        Click(MiddleOfLink(row.link) - QPoint(0, Offset()));
        EXPECT_EQ(opened, row.opened);
        EXPECT_FALSE(label.Scroller().hotLink);
        EXPECT_FALSE(label.Scroller().dragging);
    }
    opened.clear();
    QTest::mouseClick(&label, Qt::RightButton, {}, MiddleOfLink(0));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(RichTextLabelTest, FindsLinksInTheNextRoundOfTheText) {
    label.SetText(linkText);
    Show();
    const int total = label.Placement().totalHeight;
    label.SetScrollOffset(total - 40);
    Click(MiddleOfLink(0) + QPoint(0, 40));
    EXPECT_EQ(opened, QStringList{"one"});
    label.SetScrollOffset(-40);
    Click(MiddleOfLink(0) + QPoint(0, 40));
    EXPECT_EQ(opened, (QStringList{"one", "one"}));
    Click(MiddleOfLink(0));
    EXPECT_EQ(opened.size(), 2);
}

// Dragging

TEST_F(RichTextLabelTest, IsDraggedAndGoesOnWithAStepAtOnce) {
    label.SetText(ColouredLines(12));
    const int total = label.Placement().totalHeight;
    label.SetDragEnabled(true);
    label.SetScrollOffset(5);
    Show();
    QTest::mousePress(&label, Qt::LeftButton, {}, {100, 60});
    EXPECT_TRUE(label.Scroller().dragging);
    EXPECT_EQ(label.Scroller().dragOrigin, 65);
    EXPECT_FALSE(Timer().isActive());
    struct Row {
        int y, offset;
    };
    for (const Row& row : {Row{50, 15}, Row{65, 0}, Row{66, total - 1}, Row{90, total - 25},
                           Row{-40, 105}, Row{65 - total - 3, 3}}) {
        SCOPED_TRACE(row.y);
        QMouseEvent move(QEvent::MouseMove, QPointF(100, row.y),
                         label.mapToGlobal(QPointF(100, row.y)), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&label, &move);
        EXPECT_EQ(Offset(), row.offset);
        EXPECT_EQ(Picture().pixelColor(100, 0), LineColour(row.offset / LineHeight()));
    }
    QTest::mouseRelease(&label, Qt::LeftButton, {}, {100, 50});
    EXPECT_FALSE(label.Scroller().dragging);
    EXPECT_EQ(Offset(), 4);
    EXPECT_TRUE(Timer().isActive());
    EXPECT_EQ(Timer().interval(), label.Scroller().scrollDelay);
}

TEST_F(RichTextLabelTest, StaysWhereItIsWhenItMayNotBeDragged) {
    label.SetText(ColouredLines(12));
    Show();
    QTest::mousePress(&label, Qt::LeftButton, {}, {100, 60});
    EXPECT_FALSE(label.Scroller().dragging);
    EXPECT_TRUE(Timer().isActive());
    QTest::mouseMove(&label, {100, 20});
    QTest::mouseRelease(&label, Qt::LeftButton, {}, {100, 20});
    EXPECT_EQ(Offset(), 0);
}

TEST_F(RichTextLabelTest, ForgetsADragWhenItIsHidden) {
    label.SetText(ColouredLines(12));
    label.SetDragEnabled(true);
    Show();
    QTest::mousePress(&label, Qt::LeftButton, {}, {100, 60});
    ASSERT_TRUE(label.Scroller().dragging);
    window.hide();
    EXPECT_FALSE(label.Scroller().dragging);
    Show();
    EXPECT_TRUE(Timer().isActive());
}

// A text from anywhere, in a control that may have no room.
TEST_F(RichTextLabelTest, DrawsAnyText) {
    QPixmap bitmap(30, 20);
    bitmap.fill(Qt::yellow);
    label.SetBitmaps([&](std::int32_t) { return bitmap; });
    Show();
    const std::string texts[] = {"",
                                 std::string("a\0b\xFF\r\t", 6),
                                 "<hr width='2000000000' size='2000000000'>",
                                 "<hr width='-5' size='-5'>x",
                                 "<vspace size='-500'>x",
                                 "<font size='1999'>X",
                                 "<img src='#1' border='-9'>",
                                 "<font align='left'><hspace size='5'><img src='#1' "
                                 "border='2147483647' color='1,2,3'>x",
                                 "<font align='left'><hspace size='-5'><img src='#1' "
                                 "border='-2147483647' color='1,2,3'>x",
                                 "<hspace size='-2147483647'>x<br>y"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        label.SetText(text);
        for (const QSize& size : {QSize(0, 0), QSize(1, 1), place.size()}) {
            label.resize(size);
            label.SetScrollOffset(3);
            EXPECT_FALSE(Picture(1.5).isNull());
        }
    }
}

}  // namespace
}  // namespace orvane
