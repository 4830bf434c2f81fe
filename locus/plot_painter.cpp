#include "locus/plot_painter.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPaintEngine>
#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <cmath>
#include <span>

#include "locus/plot_scene.h"
#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {
namespace {

constexpr std::size_t pointsPerPiece = 4096;       // of a polyline, at most
constexpr std::size_t smoothPointsPerPiece = 128;  // the toolkit is slow with long crossing lines
constexpr double smoothParts = 8.0;                // of a pixel, where lines are smooth
constexpr double longestSmooth = 1e6;  // pixels; a longer curve fills its page and is never smooth

QFont PageFont() {
    QFont font = InterfaceFont();
    // The same picture on every screen, whatever the order of its colours.
    font.setStyleStrategy(QFont::NoSubpixelAntialias);
    return font;
}

bool IsWhole(qreal number) { return number == std::floor(number); }

// Of all strokes together, in the steps of the curve.
double LengthOf(const PlotCurve& curve) {
    double length = 0.0;
    for (std::size_t at = 0; at < curve.StrokeCount(); ++at) {
        const auto stroke = curve.Stroke(at);
        for (std::size_t i = 1; i < stroke.size(); ++i) {
            length += std::max(std::abs(stroke[i].x - stroke[i - 1].x),
                               std::abs(stroke[i].y - stroke[i - 1].y));
        }
    }
    return length;
}

// Paints the shapes of a scene. On a screen or a picture of scale 1 each line is exactly the pixels
// that the scene names. Elsewhere, lines that run along an axis begin at a pixel's edge and are a
// whole number of pixels thick, and all other lines are smooth.
class PagePainter {
public:
    explicit PagePainter(QPainter& target)
        : painter(target),
          isPixels(target.paintEngine()->type() == QPaintEngine::Raster),
          scale(std::max(std::abs(target.deviceTransform().m11()), 1e-3)),
          isExact(isPixels && IsExact(target.deviceTransform())),
          thickness(isPixels ? std::max(1.0, std::round(scale)) / scale : 1.0) {}

    double CurveParts() const { return isExact ? 1.0 : smoothParts; }

    // A curve that is too long to be smooth, in the steps of the picture's own pixels.
    bool WantsCoarse(const PlotScene& scene) const {
        return isPixels && !isExact && LengthOf(scene.curve) > longestSmooth * scene.curveParts;
    }
    double CoarseParts() const { return std::clamp(scale, 1.0, 16.0); }

    void PaintCurve(const PlotScene& scene) {
        painter.save();
        const bool isSmooth = !isExact && scene.curveParts == smoothParts;
        UsePen(ColourOf(plotColours::curve), isSmooth);
        if (!isSmooth) painter.scale(1 / scene.curveParts, 1 / scene.curveParts);
        for (std::size_t at = 0; at < scene.curve.StrokeCount(); ++at) {
            if (isSmooth) {
                PaintSmoothStroke(scene.curve.Stroke(at));
            } else {
                PaintStroke(scene.curve.Stroke(at));
            }
        }
        painter.restore();
    }

    void PaintLine(const PlotLine& line, const QColor& colour) {
        const qreal left = std::min(line.from.x, line.to.x);
        const qreal top = std::min(line.from.y, line.to.y);
        const qreal width = std::abs(static_cast<qreal>(line.from.x) - line.to.x);
        const qreal height = std::abs(static_cast<qreal>(line.from.y) - line.to.y);
        if (height == 0.0) {
            painter.fillRect(QRectF(left, top, width + 1.0, thickness), colour);
        } else if (width == 0.0) {
            painter.fillRect(QRectF(left, top, thickness, height + 1.0), colour);
        } else {
            PaintSlope(line, colour);
        }
    }

    // The four sides of a frame, one pixel thick; the lower and the right one lie on top.
    void PaintRing(const PlotRect& ring, const QBrush& aboveAndLeft, const QBrush& belowAndRight) {
        if (ring.Width() < 1 || ring.Height() < 1) return;
        painter.fillRect(QRect(ring.left, ring.top, ring.Width(), 1), aboveAndLeft);
        painter.fillRect(QRect(ring.left, ring.top, 1, ring.Height()), aboveAndLeft);
        painter.fillRect(QRect(ring.left, ring.bottom - 1, ring.Width(), 1), belowAndRight);
        painter.fillRect(QRect(ring.right - 1, ring.top, 1, ring.Height()), belowAndRight);
    }

    void PaintText(const PlotText& text, const QFontMetrics& metrics) {
        painter.setPen(ColourOf(text.colour));
        painter.drawText(text.at.x, text.at.y + metrics.ascent(), QStringFrom(text.text));
    }

private:
    static bool IsExact(const QTransform& transform) {
        return transform.type() <= QTransform::TxTranslate && IsWhole(transform.dx()) &&
               IsWhole(transform.dy());
    }

    void UsePen(const QColor& colour, bool isSmooth) {
        painter.setRenderHint(QPainter::Antialiasing, isSmooth);
        if (isSmooth) {
            painter.setPen(QPen(colour, thickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        } else {
            painter.setPen(QPen(colour, 0));  // one pixel of the picture
        }
    }

    // The middle of a pixel, where a smooth line goes through.
    QPointF Middle(PlotPoint point, double parts) const {
        return {point.x / parts + thickness / 2, point.y / parts + thickness / 2};
    }

    void PaintSlope(const PlotLine& line, const QColor& colour) {
        painter.save();
        UsePen(colour, !isExact);
        if (isExact) {
            painter.drawLine(line.from.x, line.from.y, line.to.x, line.to.y);
        } else {
            painter.drawLine(Middle(line.from, 1.0), Middle(line.to, 1.0));
        }
        painter.restore();
    }

    // Both piece by piece, so that a long stroke does not need its own size in memory once more.
    void PaintStroke(std::span<const PlotPoint> stroke) {
        QPolygon line;
        for (std::size_t from = 0; from + 1 < stroke.size(); from += pointsPerPiece - 1) {
            line.clear();
            const std::size_t count = std::min(pointsPerPiece, stroke.size() - from);
            for (const PlotPoint point : stroke.subspan(from, count)) {
                line.append({point.x, point.y});
            }
            painter.drawPolyline(line);
        }
    }

    void PaintSmoothStroke(std::span<const PlotPoint> stroke) {
        const std::size_t mostPoints = isPixels ? smoothPointsPerPiece : pointsPerPiece;
        QPolygonF line;
        for (std::size_t from = 0; from + 1 < stroke.size(); from += mostPoints - 1) {
            line.clear();
            const std::size_t count = std::min(mostPoints, stroke.size() - from);
            for (const PlotPoint point : stroke.subspan(from, count)) {
                line.append(Middle(point, smoothParts));
            }
            painter.drawPolyline(line);
        }
    }

    QPainter& painter;
    const bool isPixels;  // and no drawing that is kept as lines
    const double scale;   // pixels of the picture for one of the page
    const bool isExact;
    const qreal thickness;  // of a line
};

}  // namespace

void PaintPlotPage(QPainter& painter, const QRect& rect, const LocusSet* set, int labelPrecision) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setClipRect(rect, painter.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    const QFont font = PageFont();
    painter.setFont(font);
    painter.setBackgroundMode(Qt::TransparentMode);
    painter.fillRect(rect, ColourOf(plotColours::page));

    PagePainter page(painter);
    const QFontMetrics metrics(font);
    const auto measure = [&metrics](std::string_view text) {
        return PlotTextSize{metrics.horizontalAdvance(QStringFrom(text)), metrics.height()};
    };
    const PlotRect client{rect.left(), rect.top(), rect.left() + rect.width(),
                          rect.top() + rect.height()};
    PlotScene scene = BuildPlotScene(set, client, labelPrecision, measure, page.CurveParts());
    if (page.WantsCoarse(scene)) {
        scene = BuildPlotScene(set, client, labelPrecision, measure, page.CoarseParts());
    }

    page.PaintCurve(scene);
    for (const PlotLine& line : scene.lines) page.PaintLine(line, ColourOf(plotColours::axes));
    for (const PlotText& text : scene.texts) page.PaintText(text, metrics);
    const QPalette palette = QGuiApplication::palette();
    for (const PlotRect& ring : scene.rings) {
        page.PaintRing(ring, palette.button(), palette.button());
    }
    for (const PlotRect& edge : scene.sunkenEdges) {
        page.PaintRing(edge, palette.dark(), palette.light());
    }
    painter.restore();
}

}  // namespace orvane
