#include "locus/plot_pictures.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <string>

#include "locus/plot_painter.h"
#include "tests/support/small_files.h"

// The files that hold the page of a curve.

namespace orvane {
namespace {

LocusSet Diagonal() {
    LocusSet set;
    set.kind = LocusKind::parametric;
    set.points = {{-300, -220, true}, {300, 220, false}};
    set.FindRanges(1920, 1080, 1);
    set.stoppedEarly = true;
    set.lastParameter = 0.5;
    return set;
}

QByteArray BytesOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

class PlotPictures : public testing::Test {
protected:
    QString PathOf(const char* name) const { return folder.filePath(name); }

    QByteArray Saved(const char* name, QSize size = {645, 485}) const {
        const QString path = PathOf(name);
        const auto reason = SavePlotPicture(Diagonal(), size, 2, *PictureFormatOf(path), path);
        EXPECT_FALSE(reason.has_value()) << reason->toStdString();
        return BytesOf(path);
    }

    QTemporaryDir folder;
};

struct EndingRow {
    const char* path;
    std::optional<PictureFormat> format;
};
const EndingRow endingRows[] = {
    {"a.png", PictureFormat::png},
    {"a.PNG", PictureFormat::png},
    {"/x/y.z/a.Svg", PictureFormat::svg},
    {"a.b.pdf", PictureFormat::pdf},
    {".svg", PictureFormat::svg},
    {"a", std::nullopt},
    {"png", std::nullopt},
    {"a.png.txt", std::nullopt},
    {"a.svgz", std::nullopt},
    {"x.png/a", std::nullopt},
    {"", std::nullopt},
};

TEST_F(PlotPictures, AreToldApartByTheEnding) {
    for (const EndingRow& row : endingRows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(PictureFormatOf(QString::fromLatin1(row.path)), row.format);
    }
}

TEST_F(PlotPictures, HoldThePagesPixelsAsPng) {
    Saved("a.png");
    const QImage image(PathOf("a.png"));
    EXPECT_EQ(image.convertToFormat(QImage::Format_RGB32), PlotImage(Diagonal(), {645, 485}, 2));
    // 96 pixels for an inch.
    EXPECT_EQ(image.dotsPerMeterX(), 3780);
}

TEST_F(PlotPictures, AreSharpImagesAtEveryScale) {
    const QImage image = PlotImage(Diagonal(), {645, 485}, 2, 1.5);
    EXPECT_EQ(image.size(), QSize(968, 728));
    EXPECT_EQ(image.devicePixelRatio(), 1.5);
}

TEST_F(PlotPictures, AreWellFormedSvg) {
    const QByteArray bytes = Saved("a.svg");
    QXmlStreamReader reader(bytes);
    int polylines = 0;
    QStringList texts;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) continue;
        if (reader.name() == QLatin1String("svg")) {
            EXPECT_EQ(reader.attributes().value("viewBox"), QLatin1String("0 0 645 485"));
        }
        if (reader.name() == QLatin1String("polyline")) ++polylines;
        if (reader.name() == QLatin1String("text")) texts.append(reader.readElementText());
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    EXPECT_EQ(polylines, 1 + 4);  // the curve and the arrows
    EXPECT_EQ(texts, (QStringList{"+300", "-300", "-220", "+220", "Last parameter: +0.5"}));
    EXPECT_TRUE(bytes.contains("font-family=\"Liberation Sans, Arial, Helvetica, sans-serif\""));
}

// Drawn at its own size, the lines stand where the page has them.
TEST_F(PlotPictures, ShowTheSamePageAsSvg) {
    Saved("a.svg");
    QSvgRenderer renderer(PathOf("a.svg"));
    ASSERT_TRUE(renderer.isValid());
    EXPECT_EQ(renderer.viewBox(), QRect(0, 0, 645, 485));
    QImage drawn(645, 485, QImage::Format_RGB32);
    drawn.fill(Qt::magenta);
    QPainter painter(&drawn);
    renderer.render(&painter, QRectF(0, 0, 645, 485));
    painter.end();
    const QImage page = PlotImage(Diagonal(), {645, 485}, 2);
    for (const QPoint at : {QPoint(2, 2), QPoint(5, 200), QPoint(641, 300), QPoint(100, 100),
                            QPoint(15, 250), QPoint(630, 250), QPoint(315, 20), QPoint(310, 30),
                            QPoint(615, 254), QPoint(311, 470), QPoint(638, 478)}) {
        EXPECT_EQ(drawn.pixelColor(at).name(), page.pixelColor(at).name())
            << at.x() << ' ' << at.y();
    }
    EXPECT_NE(drawn.pixel(165, 360), page.pixel(100, 100));  // on the curve
}

TEST_F(PlotPictures, AreOnePageOfPdf) {
    const QByteArray bytes = Saved("a.pdf", {800, 400});
    EXPECT_TRUE(bytes.startsWith("%PDF-1."));
    EXPECT_TRUE(bytes.trimmed().endsWith("%%EOF"));
    EXPECT_TRUE(bytes.contains("/MediaBox [0 0 600.000000 300.000000]"));
    EXPECT_TRUE(bytes.contains("/Count 1"));
    // The table of contents of the file is where its end says.
    const QRegularExpression startOfTable("startxref\\s+(\\d+)\\s+%%EOF");
    const auto match = startOfTable.match(QString::fromLatin1(bytes));
    ASSERT_TRUE(match.hasMatch());
    EXPECT_EQ(bytes.mid(match.captured(1).toInt(), 4), "xref");
}

TEST_F(PlotPictures, ReplaceAFileAndLeaveNothingBeside) {
    for (const char* name : {"a.png", "a.svg", "a.pdf"}) {
        SCOPED_TRACE(name);
        QFile before(PathOf(name));
        ASSERT_TRUE(before.open(QIODevice::WriteOnly));
        before.write("before");
        before.close();
        EXPECT_NE(Saved(name), "before");
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
              (QStringList{"a.pdf", "a.png", "a.svg"}));
}

TEST_F(PlotPictures, TellWhyTheyCanNotBeWritten) {
    const LocusSet set = Diagonal();
    const auto reasonAt = [&](const QString& path) {
        return SavePlotPicture(set, {100, 100}, 2, PictureFormat::png, path).value_or(QString());
    };
    EXPECT_NE(reasonAt(PathOf("none/a.png")), QString());
    EXPECT_EQ(reasonAt("/dev/null"), "it is no plain file");
    EXPECT_EQ(reasonAt(folder.path()), "it is no plain file");
    EXPECT_NE(reasonAt(QString()), QString());
    for (const QSize size : {QSize(16385, 1), QSize(1, 16385), QSize(2000000000, 2000000000)}) {
        EXPECT_EQ(SavePlotPicture(set, size, 2, PictureFormat::png, PathOf("a.png")),
                  "a picture has at most 16384 pixels a side");
        EXPECT_TRUE(PlotImage(set, size, 2).isNull());
    }
    EXPECT_TRUE(PlotImage(set, {10000, 10}, 2, 2.0).isNull());
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST_F(PlotPictures, LeaveWhatWasThereWhereTheDiskIsFull) {
    for (const char* name : {"a.png", "a.svg", "a.pdf"}) {
        SCOPED_TRACE(name);
        const QByteArray before = Saved(name);
        const QString path = PathOf(name);
        std::optional<QString> reason;
        {
            const test::SmallFiles small(1000);
            reason = SavePlotPicture(Diagonal(), {300, 300}, 2, *PictureFormatOf(path), path);
        }
        EXPECT_TRUE(reason.has_value());
        EXPECT_NE(reason.value_or(QString()), QString());
        EXPECT_EQ(BytesOf(path), before);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 3);
}

}  // namespace
}  // namespace orvane
