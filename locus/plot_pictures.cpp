#include "locus/plot_pictures.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileInfo>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <array>
#include <utility>

#include "locus/locus_layout.h"
#include "locus/plot_painter.h"
#include "locus/whole_file.h"
#include "storage/qt_bytes.h"

namespace orvane {
namespace {

constexpr int pixelsPerInch = 96;
constexpr qreal pointsPerInch = 72.0;
constexpr int pdfStepsPerInch = 1200;  // fine enough for letters to stand where they belong

// The bytes of the picture's file into `bytes`, or why there are none.
using MakePicture = std::optional<QString> (*)(const LocusSet& set, QSize size, int labelPrecision,
                                               QByteArray& bytes);

struct FormatRow {
    PictureFormat format;
    const char* ending;
    MakePicture make;
};

constexpr const char* cantPaint = "the picture can't be painted";

std::optional<QString> MakePng(const LocusSet& set, QSize size, int labelPrecision,
                               QByteArray& bytes) {
    const QImage image = PlotImage(set, size, labelPrecision);
    if (image.isNull()) return QStringLiteral("there is no memory for a picture of this size");
    QBuffer buffer(&bytes);
    if (!image.save(&buffer, "PNG")) return cantPaint;
    return std::nullopt;
}

// The generator names one font. On a computer without it the picture shows the next of the same
// kind.
void NameOtherFonts(QByteArray& svg) {
    svg.replace("font-family=\"Liberation Sans\"",
                "font-family=\"Liberation Sans, Arial, Helvetica, sans-serif\"");
}

std::optional<QString> MakeSvg(const LocusSet& set, QSize size, int labelPrecision,
                               QByteArray& bytes) {
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    generator.setResolution(pixelsPerInch);
    generator.setTitle(QStringFrom(TabTitle(set)));
    QPainter painter;
    if (!painter.begin(&generator)) return cantPaint;
    PaintPlotPage(painter, QRect(QPoint(), size), &set, labelPrecision);
    if (!painter.end()) return cantPaint;
    NameOtherFonts(bytes);
    return std::nullopt;
}

std::optional<QString> MakePdf(const LocusSet& set, QSize size, int labelPrecision,
                               QByteArray& bytes) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    const QSizeF points = QSizeF(size) * pointsPerInch / pixelsPerInch;
    const QPageSize page(points, QPageSize::Point, QString(), QPageSize::ExactMatch);
    writer.setPageLayout(QPageLayout(page, QPageLayout::Portrait, QMarginsF()));
    writer.setResolution(pdfStepsPerInch);
    writer.setTitle(QStringFrom(TabTitle(set)));
    QPainter painter;
    if (!painter.begin(&writer)) return cantPaint;
    constexpr qreal scale = static_cast<qreal>(pdfStepsPerInch) / pixelsPerInch;
    painter.scale(scale, scale);
    PaintPlotPage(painter, QRect(QPoint(), size), &set, labelPrecision);
    if (!painter.end()) return cantPaint;
    return std::nullopt;
}

constexpr std::array<FormatRow, 3> formatRows{{
    {PictureFormat::png, "png", MakePng},
    {PictureFormat::svg, "svg", MakeSvg},
    {PictureFormat::pdf, "pdf", MakePdf},
}};

bool IsTooLarge(QSize size) {
    return size.width() > longestPictureSide || size.height() > longestPictureSide;
}

}  // namespace

std::optional<PictureFormat> PictureFormatOf(const QString& path) {
    const QString ending = QFileInfo(path).suffix();
    for (const FormatRow& row : formatRows) {
        if (ending.compare(QLatin1String(row.ending), Qt::CaseInsensitive) == 0) return row.format;
    }
    return std::nullopt;
}

QImage PlotImage(const LocusSet& set, QSize size, int labelPrecision, qreal scale) {
    const QSize pixels = (QSizeF(size) * scale).toSize();
    if (IsTooLarge(pixels)) return {};
    QImage image(pixels, QImage::Format_RGB32);
    if (image.isNull()) return image;
    image.setDevicePixelRatio(scale);
    // A clear print of one page pixel for each picture pixel, whatever the screen's own density.
    image.setDotsPerMeterX(qRound(pixelsPerInch * scale / 0.0254));
    image.setDotsPerMeterY(qRound(pixelsPerInch * scale / 0.0254));
    QPainter painter(&image);
    PaintPlotPage(painter, QRect(QPoint(), size), &set, labelPrecision);
    return image;
}

std::optional<QString> SavePlotPicture(const LocusSet& set, QSize size, int labelPrecision,
                                       PictureFormat format, const QString& path) {
    if (IsTooLarge(size)) {
        return QStringLiteral("a picture has at most %1 pixels a side").arg(longestPictureSide);
    }
    QByteArray bytes;
    for (const FormatRow& row : formatRows) {
        if (row.format != format) continue;
        if (const auto reason = row.make(set, size, labelPrecision, bytes)) return reason;
    }
    return WriteWholeFile(path, [&bytes, next = qsizetype{0}]() mutable {
        constexpr qsizetype pieceSize = 1 << 20;
        return bytes.mid(std::exchange(next, next + pieceSize), pieceSize).toStdString();
    });
}

}  // namespace orvane
