#include "editor/formula_painter.h"

#include <QFontMetrics>
#include <QGlyphRun>
#include <QPainter>
#include <algorithm>
#include <limits>

#include "editor/view_geometry.h"
#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr QColor selectionColour(0, 255, 0);

// The whole rows that an area touches, as far as there are any.
RowSpan RowsIn(const QRect& area, const CellGrid& grid, int viewHeight, std::int32_t count) {
    const std::int32_t shown = viewHeight / grid.lineHeight + 1;
    const std::int32_t last = std::min(area.bottom() / grid.lineHeight, shown - 1);
    return {grid.topLine + std::max(area.top(), 0) / grid.lineHeight,
            std::min(grid.topLine + last, count - 1)};
}

QRect StretchRect(const CellStretch& cells, const CellGrid& grid, std::int32_t line) {
    const std::int32_t left = grid.LeftOf(cells.from);
    return {left, grid.TopOf(line), grid.LeftOf(cells.to) - left, grid.lineHeight};
}

}  // namespace

FormulaPainter::FormulaPainter() : font(FixedFont()), rawFont(QRawFont::fromFont(font)) {
    const QFontMetrics metrics(font);
    cellWidth = std::max(metrics.horizontalAdvance("1234567890") / 10, 1);
    lineHeight = metrics.height() + 1;
    ascent = metrics.ascent();
    for (std::size_t byte = 0; byte < glyphOf.size(); ++byte) {
        const char ch = static_cast<char>(byte);
        const auto glyphs = rawFont.glyphIndexesForString(QStringFrom({&ch, 1}));
        if (glyphs.size() == 1) glyphOf[byte] = glyphs.front();
    }
}

void FormulaPainter::Paint(QPainter& painter, const EditorModel& model, const TextColours& colours,
                           const CellGrid& grid, const QRect& area, int viewHeight) {
    painter.setClipRect(area);
    painter.fillRect(area, Qt::white);
    const RowSpan rows = RowsIn(area, grid, viewHeight, model.text.count);
    const Cells shown = {grid.leftCell + area.left() / cellWidth - 1,
                         grid.leftCell + area.right() / cellWidth + 1};
    for (std::int32_t line = rows.first; line <= rows.last; ++line) {
        const auto selected = SelectedCells(model.text, model.selection, line);
        if (selected) painter.fillRect(StretchRect(*selected, grid, line), selectionColour);
        const double baseline = (line - grid.topLine) * lineHeight + ascent;
        GatherRow(model.text.GetLine(line), grid, shown, baseline);
    }
    Draw(painter, colours);
}

void FormulaPainter::GatherRow(std::string_view row, const CellGrid& grid, Cells shown,
                               double baseline) {
    ScanLine(row, LanguageWords(), pieces);
    for (const ColouredPiece& piece : pieces) {
        if (piece.cell > shown.to) break;
        GatherPiece(row, piece, grid, shown, baseline);
    }
    pieces.clear();
}

void FormulaPainter::GatherPiece(std::string_view row, const ColouredPiece& piece,
                                 const CellGrid& grid, Cells shown, double baseline) {
    Ink& ink = inks[static_cast<std::size_t>(piece.textClass)];
    std::int32_t cell = piece.cell;
    for (const char ch : row.substr(static_cast<std::size_t>(piece.start),
                                    static_cast<std::size_t>(piece.length))) {
        const std::int32_t at = cell;
        cell = NextCell(ch, cell);
        if (at > shown.to) return;
        if (at < shown.from || ch == ' ' || ch == '\t') continue;
        const QPointF place((at - grid.leftCell) * cellWidth, baseline);
        const quint32 glyph = glyphOf[static_cast<unsigned char>(ch)];
        if (glyph == 0) {
            strangers.push_back({place, piece.textClass, ch});
        } else {
            ink.glyphs.append(glyph);
            ink.places.append(place);
        }
    }
}

void FormulaPainter::Draw(QPainter& painter, const TextColours& colours) {
    for (std::size_t index = 0; index < inks.size(); ++index) {
        Ink& ink = inks[index];
        if (ink.glyphs.isEmpty()) continue;
        QGlyphRun run;
        run.setRawFont(rawFont);
        run.setGlyphIndexes(ink.glyphs);
        run.setPositions(ink.places);
        painter.setPen(ColourOf(colours[index]));
        painter.drawGlyphRun(QPointF(), run);
        run.clear();
        ink.glyphs.clear();
        ink.places.clear();
    }
    painter.setFont(font);
    for (const Stranger& stranger : strangers) {
        painter.setPen(ColourOf(colours[static_cast<std::size_t>(stranger.textClass)]));
        painter.drawText(stranger.place, QStringFrom({&stranger.ch, 1}));
    }
    strangers.clear();
}

}  // namespace orvane
