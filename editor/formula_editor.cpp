#include "editor/formula_editor.h"

#include <QPalette>

namespace orvane {

namespace {

constexpr int edgeWidth = 2;
constexpr int stripWidth = 0;
constexpr QColor stripColour(220, 220, 220);

void FillWith(QWidget& widget, const QColor& colour) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Window, colour);
    widget.setPalette(palette);
    widget.setAutoFillBackground(true);
}

}  // namespace

FormulaEditor::FormulaEditor(QWidget* parent) : QFrame(parent), strip(this), view(this) {
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setLineWidth(edgeWidth);
    FillWith(*this, Qt::white);
    FillWith(strip, stripColour);
    setFocusProxy(&view);
    connect(&view, &FormulaView::HelpWanted, this, &FormulaEditor::HelpWanted);
}

// One pixel stays free above and to the left of the text.
void FormulaEditor::resizeEvent(QResizeEvent*) {
    const QRect client = contentsRect();
    const int top = client.top() + 1;
    const int height = client.height() - 1;
    const int viewLeft = client.left() + stripWidth + 1;
    strip.setGeometry(client.left(), top, stripWidth, height);
    view.setGeometry(viewLeft, top, client.width() - stripWidth - 1, height);
}

}  // namespace orvane
