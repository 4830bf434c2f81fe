#pragma once

#include <QFont>
#include <QPointF>
#include <QRawFont>
#include <QRect>
#include <QVector>
#include <array>
#include <vector>

#include "editor/caret_moves.h"
#include "editor/line_scanner.h"
#include "storage/text_colours.h"

class QPainter;

// Paints rows of the sheet: selection, then text. Every character is put at its own cell, so no
// text is measured while painting, and a row that is painted in pieces looks as if painted whole.

namespace orvane {

class FormulaPainter {
public:
    FormulaPainter();

    int CellWidth() const { return cellWidth; }
    int LineHeight() const { return lineHeight; }

    // Clears the area, which lies in a view of this size, and paints what stands in it. The grid
    // says where the view is scrolled to.
    void Paint(QPainter& painter, const EditorModel& model, const TextColours& colours,
               const CellGrid& grid, const QRect& area, int viewHeight);

private:
    // What is drawn in one colour.
    struct Ink {
        QVector<quint32> glyphs;
        QVector<QPointF> places;
    };
    // A character that the font lacks and another font draws.
    struct Stranger {
        QPointF place;
        TextClass textClass;
        char ch;
    };
    // The cells of a row that an area shows, with one more on each side: letters may reach over.
    struct Cells {
        std::int32_t from, to;
    };

    void GatherRow(std::string_view row, const CellGrid& grid, Cells shown, double baseline);
    void GatherPiece(std::string_view row, const ColouredPiece& piece, const CellGrid& grid,
                     Cells shown, double baseline);
    void Draw(QPainter& painter, const TextColours& colours);

    QFont font;
    QRawFont rawFont;
    std::array<quint32, 256> glyphOf{};  // 0: the font has none
    int cellWidth;
    int lineHeight;
    double ascent;

    std::vector<ColouredPiece> pieces;  // these are empty between paintings and keep their room
    std::array<Ink, textClassCount> inks;
    std::vector<Stranger> strangers;
};

}  // namespace orvane
