#include "windows/look.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QPixmap>

namespace orvane {
namespace {

TEST(Look, PinsTheInterfaceFontInPixels) {
    const QFontInfo font(QApplication::font());
    EXPECT_EQ(font.pixelSize(), 11);
    EXPECT_EQ(font.family().toStdString(), "Liberation Sans");
}

TEST(Look, HasAFixedPitchFont) {
    const QFontMetrics metrics(FixedFont());
    EXPECT_EQ(metrics.horizontalAdvance("iiii"), metrics.horizontalAdvance("MMMM"));
}

TEST(Look, GivesEveryCharacterACellOfWholePixels) {
    const QFontMetricsF metrics(FixedFont());
    const int cell = qRound(metrics.horizontalAdvance("0"));
    EXPECT_GT(cell, 4);
    for (const int count : {1, 10, 1000}) {
        const QString text(count, QLatin1Char('m'));
        EXPECT_NEAR(metrics.horizontalAdvance(text), cell * count, 0.5) << count;
    }
}

struct FitRow {
    const char* text;
    int width;
    int height;
};

// The rectangles of the main window that hold a text.
constexpr FitRow checkRows[] = {{"Show sign", 101, 16},
                                {"Position line", 101, 16},
                                {"Break + text", 101, 16},
                                {"Formula + break", 101, 16}};
constexpr FitRow labelRows[] = {{"Calculation", 70, 16}, {"Result output", 70, 16}};

TEST(Look, LetsEveryCheckBoxFitItsRectangle) {
    for (const auto& [text, width, height] : checkRows) {
        SCOPED_TRACE(text);
        QCheckBox box(text);
        EXPECT_LE(box.sizeHint().width(), width);
        EXPECT_LE(box.fontMetrics().height(), height);
    }
}

TEST(Look, LetsEveryLabelFitItsRectangle) {
    for (const auto& [text, width, height] : labelRows) {
        SCOPED_TRACE(text);
        QLabel label(text);
        EXPECT_LE(label.sizeHint().width(), width);
        EXPECT_LE(label.fontMetrics().height(), height);
    }
}

// What a group box holds is placed for a frame that begins in the middle of the title.
TEST(Look, RunsTheFrameOfAGroupBoxThroughItsTitle) {
    QGroupBox box("System bits");
    box.resize(103, 55);
    const QImage picture = box.grab().toImage();
    const int middle = box.fontMetrics().height() / 2;
    for (int y = 0; y < middle; ++y) EXPECT_EQ(picture.pixelColor(100, y), windowColour) << y;
    EXPECT_NE(picture.pixelColor(100, middle), windowColour);
    EXPECT_EQ(picture.pixelColor(50, middle + 10), windowColour);
    EXPECT_NE(picture.pixelColor(50, 54), windowColour);
    EXPECT_NE(picture.pixelColor(0, 30), windowColour);
}

TEST(Look, PaintsEveryWindowInOneColourWithBlackText) {
    const QPalette palette = QApplication::palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        EXPECT_EQ(palette.color(group, QPalette::Window), QColor(191, 223, 223));
    }
    EXPECT_EQ(palette.color(QPalette::WindowText), QColor(Qt::black));
    EXPECT_EQ(palette.color(QPalette::Text), QColor(Qt::black));
    EXPECT_EQ(palette.color(QPalette::Base), QColor(Qt::white));
}

TEST(Look, RoundsDialogUnitsOfTheFont) {
    const QFontMetrics metrics(InterfaceFont());
    const QRect whole = DialogRect(metrics, 4, 8, 8, 16);
    EXPECT_EQ(whole.left() * 2, whole.width());
    EXPECT_EQ(whole.top() * 2, whole.height());
    EXPECT_EQ(whole.top(), metrics.height());
    EXPECT_EQ(DialogRect(metrics, 0, 0, 2, 4).height(), (metrics.height() + 1) / 2);
}

TEST(Look, FramesARectangleInOnePixel) {
    QPixmap picture(6, 5);
    picture.fill(Qt::red);
    QPainter painter(&picture);
    PaintThinFrame(painter, QRect(1, 1, 4, 3));
    painter.end();
    const QImage image = picture.toImage();
    EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(2, 1), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(1, 2), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(4, 3), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(2, 3), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(5, 4), QColor(Qt::red));
}

}  // namespace
}  // namespace orvane
