#include "editor/parameter_hint.h"

#include <QFontMetrics>
#include <QPainter>
#include <algorithm>

#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr int frameHeight = 2 * FloatingWindow::frameWidth;
constexpr QPoint firstText(2, 1);  // from the inner corner

// Runs are measured one by one, as they are drawn, so that the window is never too narrow.
int WidthOf(const std::vector<HintRun>& runs, const QFontMetrics& metrics) {
    int width = 0;
    for (const HintRun& run : runs) width += metrics.horizontalAdvance(QStringFrom(run.text));
    return width;
}

// Draws runs one behind the other and gives the x at which they end.
int DrawRuns(QPainter& painter, const std::vector<HintRun>& runs, QPoint baseline) {
    for (const HintRun& run : runs) {
        const QString text = QStringFrom(run.text);
        painter.setPen(ColourOf(run.colour));
        painter.drawText(baseline, text);
        baseline.rx() += painter.fontMetrics().horizontalAdvance(text);
    }
    return baseline.x();
}

}  // namespace

ParameterHint::ParameterHint(QWidget& owner) : FloatingWindow(owner) {
    setFont(InterfaceFont());
    rowHeight = QFontMetrics(InterfaceFont()).height() + 1;
}

void ParameterHint::ShowFor(const KeywordEntry& entry, const QRect& caret) {
    hint = HintFor(entry);
    const QFontMetrics metrics(InterfaceFont());
    const int rowCount = static_cast<int>(hint.parameterRows.size());
    int widest = 0;
    for (int row = 0; row < rowCount; ++row) {
        widest = std::max(widest, WidthOf(hint.RowRuns(static_cast<std::size_t>(row)), metrics));
    }
    const int width = WidthOf(hint.HeadRuns(), metrics) + widest + frameHeight + 6;
    const int height = rowCount * rowHeight + frameHeight + 3;
    ShowAt(caret.topLeft() - QPoint(0, height), QSize(width, height), caret);
}

void ParameterHint::Hide() { hide(); }

void ParameterHint::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintGround(painter, ColourOf(hintColours::background));
    QPoint baseline = InnerRect().topLeft() + firstText + QPoint(0, fontMetrics().ascent());
    baseline.setX(DrawRuns(painter, hint.HeadRuns(), baseline));
    for (std::size_t row = 0; row < hint.parameterRows.size(); ++row) {
        DrawRuns(painter, hint.RowRuns(row), baseline);
        baseline.ry() += rowHeight;
    }
}

}  // namespace orvane
