#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "locus/plot_painter.h"
#include "locus/plot_pictures.h"
#include "windows/look.h"

// The page of a curve, pixel by pixel as it is painted.

namespace orvane {
namespace {

constexpr QRgb pageColour = 0xffe0e0d0;   // 224, 224, 208
constexpr QRgb curveColour = 0xff800000;  // 128, 0, 0
constexpr QRgb black = 0xff000000;
constexpr QRgb outside = 0xffff00ff;

// The plot stands 15 from the left, 30 from the top, 30 from the right and 15 from the bottom.
struct Sizes {
    QSize page;
    int Left() const { return 15; }
    int Top() const { return 30; }
    int Right() const { return page.width() - 30; }
    int Bottom() const { return page.height() - 15; }
    int Width() const { return Right() - Left(); }
    int Height() const { return Bottom() - Top(); }
};

constexpr Sizes allSizes[] = {{{800, 600}}, {{645, 485}}, {{333, 257}}, {{1201, 300}}};

LocusSet SetOf(const std::vector<LocusPoint>& points, LocusKind kind = LocusKind::xy) {
    LocusSet set;
    set.kind = kind;
    set.points = points;
    set.FindRanges(1920, 1080, 1);
    return set;
}

// The ends of the ranges as two strokes of a single point each: a page without a curve.
LocusSet RangesAlone(double minX, double maxX, double minY, double maxY) {
    return SetOf({{minX, minY, true}, {maxX, maxY, true}});
}

int CountOf(const QImage& image, QRgb colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == colour ? 1 : 0;
    }
    return count;
}

bool HasPixel(const QImage& image, int x, int y, QRgb colour) {
    return image.valid(x, y) && image.pixel(x, y) == colour;
}

QFont LabelFont() {
    QFont font = InterfaceFont();
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

QSize TextSize(const QString& text) {
    const QFontMetrics metrics(LabelFont());
    return {metrics.horizontalAdvance(text), metrics.height()};
}

// Whether the text stands with its upper left corner here: each pixel that it darkens is as dark
// on the page, unless black lies over it.
testing::AssertionResult HasText(const QImage& image, QPoint at, const QString& text,
                                 const QColor& colour = Qt::black) {
    QImage wanted(image.size(), QImage::Format_RGB32);
    wanted.fill(pageColour);
    QPainter painter(&wanted);
    painter.setFont(LabelFont());
    painter.setPen(colour);
    painter.drawText(at.x(), at.y() + QFontMetrics(LabelFont()).ascent(), text);
    painter.end();
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (wanted.pixel(x, y) == pageColour) continue;
            ++ink;
            const QRgb there = image.pixel(x, y);
            if (there == wanted.pixel(x, y) || there == black) continue;
            return testing::AssertionFailure()
                   << '"' << text.toStdString() << "\" is not at " << at.x() << ", " << at.y();
        }
    }
    if (ink > 0) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "nothing to see at " << at.x() << ", " << at.y();
}

// One row of the table of a direction. Where the origin stands is told in plot sizes.
struct AxisRow {
    const char* name;
    double smallest, largest;
    double origin;  // from the low edge, of the plot's size
    bool marksSmallest, marksLargest;
};
constexpr AxisRow axisRows[] = {
    {"positive alone", 2.0, 10.0, 0.0, true, true},
    {"from zero", 0.0, 10.0, 0.0, false, true},
    {"zero alone", 0.0, 0.0, 0.0, false, false},
    {"negative alone", -10.0, -2.0, 1.0, true, true},
    {"up to zero", -10.0, 0.0, 1.0, true, false},
    {"both", -4.0, 12.0, 0.25, true, true},
    {"both, more below", -12.0, 4.0, 0.75, true, true},
    {"both, one of them near", -0.5, 19.5, 0.025, false, true},
};

// A distance from the origin in pixels, halves away from zero.
int PixelsOf(double value, const AxisRow& row, int length) {
    if (row.smallest >= 0.0 && row.largest <= 0.0) return 0;
    const double span = row.smallest >= 0.0  ? row.largest
                        : row.largest <= 0.0 ? -row.smallest
                                             : row.largest - row.smallest;
    return static_cast<int>(std::round(value / (span / length)));
}

struct Page {
    const AxisRow& across;
    const AxisRow& upward;
    Sizes sizes;
    QImage image;

    int OriginX() const {
        return across.origin == 1.0
                   ? sizes.Right()
                   : sizes.Left() + PixelsOf(across.origin == 0.0 ? 0.0 : -across.smallest, across,
                                             sizes.Width());
    }
    int OriginY() const {
        return upward.origin == 0.0 ? sizes.Bottom()
               : upward.origin == 1.0
                   ? sizes.Top()
                   : sizes.Top() + PixelsOf(upward.largest, upward, sizes.Height());
    }
    int X(double value) const { return OriginX() + PixelsOf(value, across, sizes.Width()); }
    int Y(double value) const { return OriginY() - PixelsOf(value, upward, sizes.Height()); }
};

// Every pair of rows, one for each direction, at every size.
template <typename Check>
void ForEachPage(const Check& check) {
    for (const Sizes& sizes : allSizes) {
        for (const AxisRow& across : axisRows) {
            for (const AxisRow& upward : axisRows) {
                SCOPED_TRACE(std::string("x ") + across.name + ", y " + upward.name + ", width " +
                             std::to_string(sizes.page.width()));
                const LocusSet set =
                    RangesAlone(across.smallest, across.largest, upward.smallest, upward.largest);
                check(Page{across, upward, sizes, PlotImage(set, sizes.page, 2)});
                if (testing::Test::HasFailure()) return;
            }
        }
    }
}

TEST(PlotPage, RunsItsAxesThroughTheOriginWithArrowsAtTheirEnds) {
    ForEachPage([](const Page& page) {
        const QImage& image = page.image;
        const int x = page.OriginX();
        const int y = page.OriginY();
        const int right = page.sizes.Right() + 15;
        for (int at = page.sizes.Left() - 5; at <= right; ++at) {
            ASSERT_TRUE(HasPixel(image, at, y, black)) << at;
        }
        EXPECT_FALSE(HasPixel(image, page.sizes.Left() - 6, y, black));
        EXPECT_TRUE(HasPixel(image, right + 1, y, pageColour));
        const int top = page.sizes.Top() - 15;
        for (int at = top; at <= page.sizes.Bottom() + 5; ++at) {
            ASSERT_TRUE(HasPixel(image, x, at, black)) << at;
        }
        EXPECT_TRUE(HasPixel(image, x, top - 1, pageColour));
        EXPECT_FALSE(HasPixel(image, x, page.sizes.Bottom() + 6, black));
        for (int step = 1; step <= 5; ++step) {
            EXPECT_TRUE(HasPixel(image, right - step, y - step, black)) << step;
            EXPECT_TRUE(HasPixel(image, right - step, y + step, black)) << step;
            EXPECT_TRUE(HasPixel(image, x - step, top + step, black)) << step;
            EXPECT_TRUE(HasPixel(image, x + step, top + step, black)) << step;
        }
        EXPECT_TRUE(HasPixel(image, right - 6, y - 6, pageColour));
        EXPECT_TRUE(HasPixel(image, x + 6, top + 6, pageColour));
        EXPECT_EQ(CountOf(image, curveColour), 0);
    });
}

// A mark of five pixels beside the axis, or none.
void ExpectMarkX(const Page& page, double value, bool isThere) {
    const int x = page.X(value);
    if (x == page.OriginX()) return;  // below the other axis
    for (int step = 1; step <= 5; ++step) {
        EXPECT_EQ(HasPixel(page.image, x, page.OriginY() + step, black), isThere) << x << step;
    }
    EXPECT_FALSE(HasPixel(page.image, x, page.OriginY() + 6, black)) << x;
}

void ExpectMarkY(const Page& page, double value, bool isThere) {
    const int y = page.Y(value);
    if (y == page.OriginY()) return;
    for (int step = 1; step <= 5; ++step) {
        EXPECT_EQ(HasPixel(page.image, page.OriginX() - step, y, black), isThere) << y << step;
    }
    EXPECT_FALSE(HasPixel(page.image, page.OriginX() - 6, y, black)) << y;
}

TEST(PlotPage, MarksTheEndsOfTheRangesThatAreNotNearZero) {
    ForEachPage([](const Page& page) {
        ExpectMarkX(page, page.across.smallest, page.across.marksSmallest);
        ExpectMarkX(page, page.across.largest, page.across.marksLargest);
        ExpectMarkY(page, page.upward.smallest, page.upward.marksSmallest);
        ExpectMarkY(page, page.upward.largest, page.upward.marksLargest);
    });
}

QString LabelOf(double value) {
    const QString digits = QString::number(std::abs(value));
    return (value < 0 ? "-" : "+") + digits;
}

TEST(PlotPage, LabelsTheMarks) {
    ForEachPage([](const Page& page) {
        const int x = page.OriginX();
        const int y = page.OriginY();
        const int height = TextSize("+").height();
        const int top = page.sizes.Bottom() - y <= 30 ? y - (height + 7) : y + 7;
        if (page.across.marksLargest) {
            const QString label = LabelOf(page.across.largest);
            const int left = page.X(page.across.largest) - TextSize(label).width();
            EXPECT_TRUE(HasText(page.image, {left, top}, label));
        }
        if (page.across.marksSmallest) {
            const QString label = LabelOf(page.across.smallest);
            EXPECT_TRUE(HasText(page.image, {page.X(page.across.smallest), top}, label));
        }
        const bool isRight = x - page.sizes.Left() > page.sizes.Right() - x;
        const auto expectBeside = [&](double value) {
            const QString label = LabelOf(value);
            const int left = isRight ? x - 9 - TextSize(label).width() : x + 4;
            EXPECT_TRUE(HasText(page.image, {left, page.Y(value) - height / 2}, label));
        };
        if (page.upward.marksSmallest) expectBeside(page.upward.smallest);
        if (page.upward.marksLargest) expectBeside(page.upward.largest);
    });
}

TEST(PlotPage, FindsLabelsOnlyWhereTheyStand) {
    const LocusSet set = RangesAlone(-10, 10, -10, 10);
    const QImage image = PlotImage(set, {645, 485}, 2);
    const QSize size = TextSize("+10");
    const QPoint corner(615 - size.width(), 250 + 7);
    EXPECT_TRUE(HasText(image, corner, "+10"));
    for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
        EXPECT_FALSE(HasText(image, corner + step, "+10"));
    }
    EXPECT_FALSE(HasText(image, corner, "+11"));
}

TEST(PlotPage, WritesLabelsWithTheGivenPrecision) {
    const LocusSet set = RangesAlone(0, 100.0 / 3, 0, 100);
    const auto endsAt615 = [&](int precision, const QString& label) {
        const QSize size = TextSize(label);
        return HasText(PlotImage(set, {645, 485}, precision),
                       {615 - size.width(), 470 - size.height() - 7}, label);
    };
    EXPECT_TRUE(endsAt615(2, "+33.33"));
    EXPECT_TRUE(endsAt615(5, "+33.33333"));
    EXPECT_TRUE(endsAt615(0, "+33"));
    EXPECT_TRUE(endsAt615(-1, "+33.333333"));
    // Kept: without decimals the zeros of the whole part go.
    EXPECT_TRUE(
        HasText(PlotImage(set, {645, 485}, 0), {19, 30 - TextSize("+").height() / 2}, "+1"));
}

struct NoteRow {
    const char* name;
    double minX, maxX, minY, maxY;
    double centreX, centreY;  // of the plot's size, from the upper left corner
};
constexpr NoteRow noteRows[] = {
    {"even: right and below", -10, 10, -10, 10, 0.75, 0.75},
    {"first quadrant", 0, 10, 0, 10, 0.5, 0.5},
    {"third quadrant", -10, 0, -10, 0, 0.5, 0.5},
    {"more on the left and above", -15, 5, -5, 15, 0.375, 0.375},
    {"more on the right and below", -5, 15, -15, 5, 0.625, 0.625},
};

TEST(PlotPage, WritesTheNoteIntoTheLargestFreeArea) {
    const Sizes sizes{{845, 645}};  // a plot of 800 by 600
    for (const NoteRow& row : noteRows) {
        SCOPED_TRACE(row.name);
        LocusSet set = RangesAlone(row.minX, row.maxX, row.minY, row.maxY);
        set.stoppedEarly = true;
        set.lastParameter = 3.0 * M_PI / 2;
        const QPoint centre(15 + static_cast<int>(800 * row.centreX),
                            30 + static_cast<int>(600 * row.centreY));
        const QColor green(0, 128, 0);
        const auto hasNote = [&](const QString& note) {
            const QSize size = TextSize(note);
            return HasText(PlotImage(set, sizes.page, 2),
                           {centre.x() - size.width() / 2, centre.y() - size.height()}, note,
                           green);
        };
        set.kind = LocusKind::polar;
        EXPECT_TRUE(hasNote("Last angle: +4.71 or +1.5*pi"));
        set.kind = LocusKind::parametric;
        EXPECT_TRUE(hasNote("Last parameter: +4.71"));
        set.kind = LocusKind::xy;
        EXPECT_EQ(PlotImage(set, sizes.page, 2),
                  PlotImage(RangesAlone(row.minX, row.maxX, row.minY, row.maxY), sizes.page, 2));
        set.kind = LocusKind::polar;
        set.stoppedEarly = false;
        EXPECT_EQ(PlotImage(set, sizes.page, 2),
                  PlotImage(RangesAlone(row.minX, row.maxX, row.minY, row.maxY), sizes.page, 2));
    }
}

// One unit for each pixel, the origin at 15, 470.
TEST(PlotPage, DrawsStrokesOnePixelWideAndNothingBetweenThem) {
    const LocusSet set = SetOf({{0, 0, true},
                                {100, 100, false},
                                {200, 100, false},
                                {300, 100, true},
                                {300, 200, false},
                                {400, 300, true},  // a point alone is no line
                                {600, 440, true}});
    const QImage image = PlotImage(set, {645, 485}, 2);
    for (int step = 1; step <= 100; ++step) {
        EXPECT_TRUE(HasPixel(image, 15 + step, 470 - step, curveColour)) << step;
        EXPECT_TRUE(HasPixel(image, 115 + step, 370, curveColour)) << step;
        EXPECT_TRUE(HasPixel(image, 315, 370 - step, curveColour)) << step;
        EXPECT_TRUE(HasPixel(image, 215 + step, 370, step == 100 ? curveColour : pageColour));
    }
    // The first point lies below the axes.
    EXPECT_TRUE(HasPixel(image, 15, 470, black));
    EXPECT_TRUE(HasPixel(image, 415, 170, pageColour));
    EXPECT_EQ(CountOf(image, curveColour), 100 + 100 + 101);
}

TEST(PlotPage, RoundsPointsToPixelsHalvesAwayFromZero) {
    const LocusSet set = SetOf({{-300, -220, true},
                                {300, 220, true},
                                {10.5, 20.5, true},
                                {10.5, 30.49, false},
                                {-10.5, -20.5, true},
                                {-10.5, -30.49, false}});
    const QImage image = PlotImage(set, {645, 485}, 2);
    EXPECT_EQ(CountOf(image, curveColour), 10 + 10);
    for (int step = 0; step < 10; ++step) {
        EXPECT_TRUE(HasPixel(image, 315 + 11, 250 - 21 - step, curveColour)) << step;
        EXPECT_TRUE(HasPixel(image, 315 - 11, 250 + 21 + step, curveColour)) << step;
    }
}

TEST(PlotPage, HasAFrameOfFiveRingsAndTwoSunkenEdges) {
    const QPalette palette = QGuiApplication::palette();
    const QRgb face = palette.button().color().rgb();
    const QRgb dark = palette.dark().color().rgb();
    const QRgb light = palette.light().color().rgb();
    ASSERT_NE(dark, light);
    // A stroke that runs through all of the page ends at the frame.
    LocusSet set = SetOf({{0, 0, true}, {600, 440, true}, {-1000, 220, true}, {1000, 220, false}});
    set.minX = 0;
    set.maxX = 600;
    const QImage image = PlotImage(set, {645, 485}, 2);
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(HasPixel(image, i, 250, face)) << i;
        EXPECT_TRUE(HasPixel(image, 644 - i, 250, face)) << i;
        EXPECT_TRUE(HasPixel(image, 300, i, face)) << i;
        EXPECT_TRUE(HasPixel(image, 300, 484 - i, face)) << i;
        EXPECT_TRUE(HasPixel(image, i, i, face)) << i;
    }
    for (int i = 5; i < 7; ++i) {
        EXPECT_TRUE(HasPixel(image, i, 250, dark)) << i;
        EXPECT_TRUE(HasPixel(image, 300, i, dark)) << i;
        EXPECT_TRUE(HasPixel(image, 644 - i, 250, light)) << i;
        EXPECT_TRUE(HasPixel(image, 300, 484 - i, light)) << i;
    }
    EXPECT_TRUE(HasPixel(image, 7, 250, curveColour));
    EXPECT_TRUE(HasPixel(image, 637, 250, curveColour));
    EXPECT_TRUE(HasPixel(image, 7, 251, pageColour));
    EXPECT_TRUE(HasPixel(image, 637, 249, pageColour));
}

TEST(PlotPage, StaysInItsRectangleAndLeavesThePainterAsItWas) {
    const LocusSet set = SetOf({{-300, 0, true}, {1e300, 1e300, false}, {300, 220, false}});
    QImage image(700, 600, QImage::Format_RGB32);
    image.fill(outside);
    QPainter painter(&image);
    painter.setPen(Qt::blue);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFont font = painter.font();
    PaintPlotPage(painter, QRect(20, 30, 400, 300), &set, 2);
    EXPECT_EQ(painter.pen().color(), QColor(Qt::blue));
    EXPECT_TRUE(painter.testRenderHint(QPainter::Antialiasing));
    EXPECT_EQ(painter.font(), font);
    EXPECT_FALSE(painter.hasClipping());
    painter.end();
    EXPECT_EQ(image.copy(20, 30, 400, 300), PlotImage(set, {400, 300}, 2));
    EXPECT_EQ(CountOf(image, outside), 700 * 600 - 400 * 300);
}

TEST(PlotPage, PaintsOnlyTheBackgroundWithoutASet) {
    QImage image(300, 200, QImage::Format_RGB32);
    QPainter painter(&image);
    PaintPlotPage(painter, image.rect(), nullptr, 2);
    painter.end();
    EXPECT_EQ(CountOf(image, pageColour), 300 * 200);
}

// Sets that no sheet or only an odd one makes.
struct HostileRow {
    const char* name;
    std::vector<LocusPoint> points;
    int curvePixels;  // -1: any number
};
const std::vector<HostileRow>& HostileRows() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double smallest = std::numeric_limits<double>::denorm_min();
    static const std::vector<HostileRow> rows = {
        {"no points", {}, 0},
        {"a single point at zero", {{0, 0, true}}, 0},
        {"a single point", {{5, -7, true}}, 0},
        {"one point twice", {{5, 7, true}, {5, 7, false}}, 0},
        {"near the range of a double",
         {{-8e307, -8e307, true}, {0, 0, false}, {8e307, 8e307, false}},
         -1},
        {"wider than a double", {{-1.7e308, -1.7e308, true}, {1.7e308, 1.7e308, false}}, 0},
        {"the least there is", {{-smallest, 0, true}, {smallest, smallest, false}}, -1},
        {"no numbers", {{notANumber, notANumber, true}, {notANumber, 1, false}}, -1},
        {"endless", {{-infinity, infinity, true}, {infinity, -infinity, false}, {1, 2, false}}, -1},
        {"one far away", {{1, 1, true}, {-infinity, 5, false}, {2, 1e300, false}}, -1},
    };
    return rows;
}

TEST(PlotPage, StandsEveryCurveAtEverySizeAndScale) {
    for (const HostileRow& row : HostileRows()) {
        SCOPED_TRACE(row.name);
        LocusSet found = SetOf(row.points, LocusKind::polar);
        found.stoppedEarly = true;
        found.lastParameter = -1.7e308;
        LocusSet failed;  // its ranges were never found
        failed.points = row.points;
        for (const LocusSet* set : {&std::as_const(found), &std::as_const(failed)}) {
            for (const QSize size : {QSize(1, 1), QSize(10, 200), QSize(45, 45), QSize(46, 46),
                                     QSize(645, 485), QSize(3000, 20)}) {
                for (const double scale : {1.0, 1.5, 2.0}) {
                    const QImage image = PlotImage(*set, size, 2147483647, scale);
                    EXPECT_EQ(image.size(), (QSizeF(size) * scale).toSize());
                }
            }
        }
        const QImage image = PlotImage(found, {645, 485}, 2);
        EXPECT_GT(CountOf(image, black), 600);
        if (row.curvePixels >= 0) {
            EXPECT_EQ(CountOf(image, curveColour), row.curvePixels);
        }
    }
}

TEST(PlotPage, DrawsAFailedSweepInTheRangesOfItsPoints) {
    LocusSet failed;
    failed.points = {{-4, 1, true}, {2, -3, false}, {3, 5, false}};
    LocusSet whole = failed;
    whole.FindRanges(1920, 1080, 1);
    EXPECT_EQ(PlotImage(failed, {645, 485}, 2), PlotImage(whole, {645, 485}, 2));
}

// Up and down from edge to edge: every column of the plot is full.
TEST(PlotPage, DrawsTenMillionPointsAtEveryScale) {
    constexpr std::size_t count = 10000000;
    LocusSet set;
    set.points.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = static_cast<double>(i) * 600 / (count - 1);
        set.points.push_back({x, i % 2 == 0 ? 0.0 : 440.0, i == 0});
    }
    set.maxX = 600;
    set.maxY = 440;
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        const QImage image = PlotImage(set, {645, 485}, 2, scale);
        for (int x = 50; x < 600; x += 7) {
            for (int y = 60; y < 440; y += 7) {
                const QPoint at = QPointF(x * scale, y * scale).toPoint();
                ASSERT_TRUE(HasPixel(image, at.x(), at.y(), curveColour)) << x << ", " << y;
            }
        }
    }
}

struct ScaleRow {
    double scale;
    int thickness;  // of the axes, in pixels of the picture
};
constexpr ScaleRow scaleRows[] = {{1.0, 1}, {1.5, 2}, {2.0, 2}, {3.0, 3}};

TEST(PlotPage, HasSharpAxesAtEveryScale) {
    for (const auto& [scale, thickness] : scaleRows) {
        // An origin on even and on odd pixels.
        for (const QSize size : {QSize(645, 485), QSize(644, 484), QSize(647, 487)}) {
            SCOPED_TRACE(std::to_string(scale) + " " + std::to_string(size.width()));
            const QImage image = PlotImage(RangesAlone(-10, 10, -10, 10), size, 2, scale);
            // Across each axis, a third of the way along the plot.
            std::vector<QRgb> down;
            std::vector<QRgb> across;
            for (int at = 30; at < image.height() - 30; ++at) {
                down.push_back(image.pixel(image.width() / 3, at));
            }
            for (int at = 30; at < image.width() - 30; ++at) {
                across.push_back(image.pixel(at, image.height() / 3));
            }
            for (const std::vector<QRgb>& line : {down, across}) {
                EXPECT_EQ(std::count(line.begin(), line.end(), black), thickness);
                EXPECT_EQ(std::count(line.begin(), line.end(), pageColour),
                          static_cast<std::ptrdiff_t>(line.size()) - thickness);
            }
        }
    }
}

TEST(PlotPage, IsSmoothOnlyWhereItIsScaled) {
    const LocusSet set = SetOf({{-300, -200, true}, {300, 220, false}});
    const auto hasHalfTones = [&](double scale) {
        const QImage image = PlotImage(set, {645, 485}, 2, scale);
        const QRect area(QPointF(400 * scale, 100 * scale).toPoint(),
                         (QSizeF(150, 100) * scale).toSize());
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (pixel != pageColour && pixel != curveColour) return true;
            }
        }
        return false;
    };
    EXPECT_FALSE(hasHalfTones(1.0));
    EXPECT_TRUE(hasHalfTones(1.5));
    EXPECT_TRUE(hasHalfTones(2.0));
}

}  // namespace
}  // namespace orvane
