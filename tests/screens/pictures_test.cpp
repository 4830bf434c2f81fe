#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <set>
#include <string>

#include "app/command_rows.h"
#include "windows/look.h"

namespace orvane {
namespace {

// Whether the picture is there with this width and height and shows something: parts of it are
// clear, and the rest has at least two colours.
testing::AssertionResult IsDrawn(const QString& path, int size) {
    const QImage image(path);
    if (image.isNull()) return testing::AssertionFailure() << path.toStdString() << " is missing";
    if (image.size() != QSize(size, size)) {
        return testing::AssertionFailure() << path.toStdString() << " is " << image.width()
                                           << " wide and " << image.height() << " high";
    }
    std::set<QRgb> colours;
    bool isClear = false;
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qAlpha(pixel) == 0) isClear = true;
            if (qAlpha(pixel) == 255) colours.insert(pixel);
        }
    }
    if (isClear && colours.size() >= 2) return testing::AssertionSuccess();
    return testing::AssertionFailure() << path.toStdString() << " shows nothing";
}

void ExpectBothSizes(const QString& folder, const char* name, int size) {
    const QString path = QStringLiteral(":/%1/%2%3.png").arg(folder, QLatin1String(name));
    EXPECT_TRUE(IsDrawn(path.arg(QString()), size));
    EXPECT_TRUE(IsDrawn(path.arg(QStringLiteral("@2x")), 2 * size));
}

TEST(Pictures, HoldTheImageOfEveryCommand) {
    int images = 0;
    for (const CommandRow& row : CommandRows()) {
        if (row.image == nullptr) continue;
        SCOPED_TRACE(row.text);
        ExpectBothSizes(QStringLiteral("menu"), row.image, 16);
        ++images;
    }
    EXPECT_EQ(images, 27);
}

TEST(Pictures, DifferFromCommandToCommand) {
    std::set<std::string> pictures;
    for (const CommandRow& row : CommandRows()) {
        if (row.image == nullptr) continue;
        SCOPED_TRACE(row.text);
        const QImage image(QStringLiteral(":/menu/%1.png").arg(QLatin1String(row.image)));
        const std::string bytes(reinterpret_cast<const char*>(image.constBits()),
                                static_cast<std::size_t>(image.sizeInBytes()));
        EXPECT_TRUE(pictures.insert(bytes).second);
    }
}

TEST(Pictures, HoldTheImagesOfTheEditorsMenu) {
    for (const char* name : {"cut", "copy", "paste", "delete", "undo", "redo", "select_all"}) {
        ExpectBothSizes(QStringLiteral("menu"), name, 16);
    }
}

TEST(Pictures, HoldTheColourButtonsUpAndDown) {
    for (const char* name : {"colour_up", "colour_down"}) {
        ExpectBothSizes(QStringLiteral("buttons"), name, 22);
    }
    EXPECT_NE(QImage(":/buttons/colour_up.png"), QImage(":/buttons/colour_down.png"));
}

TEST(Pictures, HoldTheArrowsAndTheHand) {
    for (const char* name : {"up", "down"}) ExpectBothSizes(QStringLiteral("arrows"), name, 16);
    ExpectBothSizes(QStringLiteral("cursors"), "hand", 24);
}

TEST(Pictures, GiveTheProgramAnIconInEverySize) {
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        SCOPED_TRACE(size);
        EXPECT_TRUE(IsDrawn(QStringLiteral(":/icon/orvane_%1.png").arg(size), size));
        EXPECT_TRUE(ProgramIcon().availableSizes().contains(QSize(size, size)));
    }
    EXPECT_TRUE(IsDrawn(QStringLiteral(":/icon/orvane.png"), 256));
}

}  // namespace
}  // namespace orvane
