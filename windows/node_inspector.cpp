#include "windows/node_inspector.h"

#include <QAbstractScrollArea>
#include <QDialog>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QScrollBar>
#include <algorithm>
#include <string_view>
#include <vector>

#include "storage/option_settings.h"
#include "storage/qt_bytes.h"
#include "storage/settings_file.h"
#include "windows/look.h"
#include "windows/node_drawing.h"
#include "windows/window_placement.h"

namespace orvane {

namespace {

constexpr int scrollStep = 30;
// No box has room for more characters, however narrow they are.
constexpr std::size_t longestLine = 200;

QRect RectOf(const NodeRect& rect) {
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

NodeRect Moved(const NodeRect& rect, QPoint by) {
    return {rect.left + by.x(), rect.top + by.y(), rect.right + by.x(), rect.bottom + by.y()};
}

// The tree as far as it is in view. It may be larger than any widget, so the boxes are moved and
// not the widget that they are drawn in.
class NodeTreeView : public QAbstractScrollArea {
public:
    NodeTreeView(FunctionNode& root, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QPoint Origin() const {
        return {-horizontalScrollBar()->value(), -verticalScrollBar()->value()};
    }
    void PaintLines(QPainter& painter, const NodeRect& shown) const;
    void PaintBox(QPainter& painter, const NodeBox& box, const NodeRect& shown) const;
    void PaintText(QPainter& painter, const NodeBox& box, const NodeRect& shown) const;

    int lineHeight;
    std::vector<NodeBox> boxes;
    QSize extent;
};

NodeTreeView::NodeTreeView(FunctionNode& root, QWidget* parent)
    : QAbstractScrollArea(parent), lineHeight(QFontMetrics(InterfaceFont()).height()) {
    MeasureNodeTree(root, lineHeight);
    boxes = PlaceNodeTree(root, nodeDrawingOrigin, nodeDrawingOrigin);
    int right = 0;
    for (const NodeBox& box : boxes) right = std::max(right, box.Outer().right);
    extent = QSize(right + nodeDrawingOrigin, root.treeHeight + 2 * nodeDrawingOrigin);
    setFrameShape(NoFrame);
    setFont(InterfaceFont());
    viewport()->setBackgroundRole(QPalette::Window);
}

// Which bars there are follows from the window's size alone. Bars that come and go by their ranges
// would keep each other by the room that they take.
void NodeTreeView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    QScrollBar& across = *horizontalScrollBar();
    QScrollBar& down = *verticalScrollBar();
    bool isTooHigh = extent.height() > height();
    const bool isTooWide = extent.width() > width() - (isTooHigh ? down.sizeHint().width() : 0);
    isTooHigh = extent.height() > height() - (isTooWide ? across.sizeHint().height() : 0);
    setHorizontalScrollBarPolicy(isTooWide ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(isTooHigh ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);

    const auto setRange = [](QScrollBar& bar, int whole, int shown) {
        bar.setRange(0, std::max(whole - shown, 0));
        bar.setPageStep(shown);
        bar.setSingleStep(scrollStep);
    };
    setRange(across, extent.width(), viewport()->width());
    setRange(down, extent.height(), viewport()->height());
}

void NodeTreeView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setFont(InterfaceFont());
    const QRect area = event->rect();
    const NodeRect shown =
        Moved({area.left(), area.top(), area.right() + 1, area.bottom() + 1}, -Origin());
    painter.setPen(Qt::black);
    PaintLines(painter, shown);
    for (const NodeBox& box : boxes) {
        if (Intersect(box.Outer(), shown)) PaintBox(painter, box, shown);
    }
}

// Of the many lines that run side by side from a node with many children, those that show as one
// are drawn once.
void NodeTreeView::PaintLines(QPainter& painter, const NodeRect& shown) const {
    const QPoint origin = Origin();
    std::optional<NodeLine> last;
    for (const NodeBox& box : boxes) {
        const auto line = box.line ? ClipLine(*box.line, shown) : std::nullopt;
        if (!line || line == last) continue;
        painter.drawLine(QPoint(line->fromX, line->fromY) + origin,
                         QPoint(line->toX, line->toY) + origin);
        last = line;
    }
}

void NodeTreeView::PaintBox(QPainter& painter, const NodeBox& box, const NodeRect& shown) const {
    if (const std::optional<NodeFrame> frame = FrameOf(box.node->kind)) {
        for (const NodeRect& rect : {box.Outer(), box.Inner()}) {
            PaintFrame(painter, RectOf(Moved(rect, Origin())), ColourOf(frame->topLeft),
                       ColourOf(frame->bottomRight));
        }
    }
    PaintText(painter, box, shown);
}

void NodeTreeView::PaintText(QPainter& painter, const NodeBox& box, const NodeRect& shown) const {
    const std::string text = NodeText(*box.node);
    NodeRect line = box.TextArea();
    painter.save();
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setClipRect(RectOf(Moved(line, Origin())));
    std::string_view rest = text;
    for (; !rest.empty() && line.top < shown.bottom; line.top += lineHeight) {
        const std::size_t end = rest.find('\n');
        line.bottom = line.top + lineHeight;
        if (Intersect(line, shown)) {
            painter.drawText(RectOf(Moved(line, Origin())), Qt::AlignLeft | Qt::TextSingleLine,
                             QStringFrom(rest.substr(0, std::min(end, longestLine))));
        }
        rest.remove_prefix(end + 1);  // every line ends with a line feed
    }
    painter.restore();
}

class NodeInspector : public QDialog {
public:
    NodeInspector(QWidget* owner, FunctionNode& root, const std::string& settings)
        : QDialog(owner), settingsPath(settings), view(root, this) {
        setWindowTitle("Show func-node");
        resize(DialogRect(QFontMetrics(InterfaceFont()), 0, 0, 494, 358).size());
        view.setFocus();
    }

    // Closing, in whatever way. A hidden window no longer tells where it stood.
    void done(int result) override {
        SettingsFile settings(settingsPath);
        if (settings.Open()) {
            settings.SetPlacement(mainSection, nodeWindowPlacementKey, PlacementOf(*this));
        }
        QDialog::done(result);
    }

protected:
    void resizeEvent(QResizeEvent*) override { view.setGeometry(rect()); }

private:
    std::string settingsPath;
    NodeTreeView view;
};

}  // namespace

void ShowNodeInspector(QWidget* owner, FunctionNode& root, const std::string& settingsPath) {
    NodeInspector(owner, root, settingsPath).exec();
}

}  // namespace orvane
