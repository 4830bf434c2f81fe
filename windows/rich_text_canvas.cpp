#include "windows/rich_text_canvas.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "storage/qt_bytes.h"

namespace orvane {

namespace {

// Faces that look alike, the wanted one first.
struct FaceRow {
    const char* face;
    const char* others[6];
};
constexpr FaceRow faceRows[] = {
    {"Arial", {"Liberation Sans", "Helvetica", "Nimbus Sans"}},
    {"Arial Rounded MT Bold",
     {"Nunito", "Varela Round", "Comfortaa", "Quicksand", "URW Gothic", "Liberation Sans"}},
};

// Far outside every canvas, and small enough to be added to any place of a layout.
constexpr std::int32_t widestBorder = 1'000'000'000;

QRect RectOf(const LabelRect& rect) { return {rect.left, rect.top, rect.width, rect.height}; }

class PicturePainter {
public:
    PicturePainter(QPainter& target, const LabelDocument& wholeDocument,
                   const LabelCanvas& wholeCanvas, const BitmapSource& source)
        : painter(target), document(wholeDocument), canvas(wholeCanvas), bitmaps(source) {}

    void Draw(const LabelPiece& piece) {
        const LabelItem& item = document.items[piece.item];
        switch (item.kind) {
            case LabelItemKind::run:
                return DrawRun(item, piece.rect);
            case LabelItemKind::picture:
                return DrawPicture(item, piece.rect);
            case LabelItemKind::rule:
                return Fill(RectOf(piece.rect), item.colour);
            default:
                return;
        }
    }

private:
    void DrawRun(const LabelItem& item, const LabelRect& rect) {
        const bool isHot = canvas.look == LabelLook::underPointer && item.link != noLink;
        const LabelFont& font = document.fonts[isHot ? item.hotFont : item.font];
        const QFont screenFont = ScreenFont(font);
        const QFontMetrics metrics(screenFont);
        const QString text = QStringFrom(item.text);
        // The rectangle may be larger, for the other look.
        if (font.background != noColour) {
            Fill({rect.left, rect.top, metrics.horizontalAdvance(text), metrics.height()},
                 font.background);
        }
        if (font.colour == noColour) return;
        painter.setFont(screenFont);
        painter.setPen(ColourOn(font.colour));
        painter.drawText(QPoint(rect.left, rect.top + metrics.ascent()), text);
    }

    // The border is seen only where it has a colour; its room is there in any case.
    void DrawPicture(const LabelItem& item, const LabelRect& rect) {
        const QRect outside = RectOf(rect);
        const int border = std::clamp(item.border, -widestBorder, widestBorder);
        const QRect inside = outside.adjusted(border, border, -border, -border);
        if (item.border > 0) Fill(outside, item.colour);
        painter.drawPixmap(inside, bitmaps(item.amount));
    }

    void Fill(const QRect& rect, LabelColour colour) {
        if (colour != noColour) painter.fillRect(rect, ColourOn(colour));
    }

    QColor ColourOn(LabelColour colour) const {
        if (colour == buttonShadowColour) return canvas.buttonShadow;
        return QColor(colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
    }

    QPainter& painter;
    const LabelDocument& document;
    const LabelCanvas& canvas;
    const BitmapSource& bitmaps;
};

}  // namespace

QFont ScreenFont(const LabelFont& font) {
    QStringList families(QStringFrom(font.face));
    for (const FaceRow& row : faceRows) {
        if (families.front().compare(QLatin1String(row.face), Qt::CaseInsensitive) != 0) continue;
        for (const char* const other : row.others) {
            if (other != nullptr) families += QLatin1String(other);
        }
    }
    QFont screenFont;
    screenFont.setFamilies(families);
    screenFont.setStyleHint(QFont::SansSerif);
    screenFont.setPixelSize(font.size);
    screenFont.setBold(font.bold);
    screenFont.setItalic(font.italic);
    screenFont.setUnderline(font.underline);
    screenFont.setStrikeOut(font.strikeThrough);
    return screenFont;
}

LabelSize ScreenMeasure::TextSize(const LabelFont& font, std::string_view text) {
    const QFontMetrics metrics(ScreenFont(font));
    return {metrics.horizontalAdvance(QStringFrom(text)), metrics.height()};
}

std::optional<LabelSize> ScreenMeasure::BitmapSize(std::int32_t number) {
    const QPixmap bitmap = bitmaps(number);
    if (bitmap.isNull()) return std::nullopt;
    const QSize size = bitmap.deviceIndependentSize().toSize();
    return LabelSize{size.width(), size.height()};
}

QPixmap DrawRichText(const LabelDocument& document, const LabelLayout& layout,
                     const LabelCanvas& canvas, const BitmapSource& bitmaps) {
    const std::int32_t rows = std::clamp(layout.totalHeight, 0, labelCanvasRows);
    const auto pixels = [&canvas](std::int32_t length) {
        return static_cast<int>(std::ceil(length * canvas.scale));
    };
    if (rows == 0 || canvas.width <= 0) return {};
    QPixmap picture(pixels(canvas.width), pixels(rows));
    picture.fill(canvas.background);
    QPainter painter(&picture);
    painter.scale(canvas.scale, canvas.scale);
    PicturePainter piecePainter(painter, document, canvas, bitmaps);
    const QRect area(0, 0, canvas.width, rows);
    for (const LabelPiece& piece : layout.pieces) {
        if (RectOf(piece.rect).intersects(area)) piecePainter.Draw(piece);
    }
    return picture;
}

}  // namespace orvane
