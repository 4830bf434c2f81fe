#include "editor/keyword_popup.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QTimerEvent>
#include <QWindow>
#include <algorithm>

#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr int stripWidth = KeywordListLayout::stripWidth;

KeywordListLayout MeasuredLayout() {
    const QFontMetrics metrics(InterfaceFont());
    const KeywordTable::WidestTexts widest = keywordTable.LongestNames();
    return KeywordListLayout::From(
        metrics.height(), metrics.horizontalAdvance(QStringFrom(widest.name)),
        metrics.horizontalAdvance(QStringFrom(widest.groupWord)), FloatingWindow::frameWidth);
}

PixelPoint InnerPoint(const QMouseEvent& event) {
    const QPoint point = event.position().toPoint();
    return {point.x() - FloatingWindow::frameWidth, point.y() - FloatingWindow::frameWidth};
}

// Two rings of light from the upper left.
void PaintRaisedEdge(QPainter& painter, const QRect& rect) {
    struct Ring {
        QColor light;
        QColor shade;
    };
    const Ring rings[] = {{ColourOf(ColourFrom(224, 224, 224)), ColourOf(ColourFrom(64, 64, 64))},
                          {Qt::white, ColourOf(ColourFrom(128, 128, 128))}};
    QRect ring = rect;
    for (const auto& [light, shade] : rings) {
        painter.fillRect(ring.left(), ring.top(), ring.width() - 1, 1, light);
        painter.fillRect(ring.left(), ring.top(), 1, ring.height() - 1, light);
        painter.fillRect(ring.left(), ring.bottom(), ring.width(), 1, shade);
        painter.fillRect(ring.right(), ring.top(), 1, ring.height(), shade);
        ring.adjust(1, 1, -1, -1);
    }
}

// A piece of the strip as high as wide.
void PaintButton(QPainter& painter, int left, int top) {
    const QRect rect(left, top, stripWidth, stripWidth);
    painter.fillRect(rect, ColourOf(keywordListColours::button));
    PaintRaisedEdge(painter, rect);
}

// A triangle in a button's middle, made of bars so that it is sharp at any scale.
void PaintTriangle(QPainter& painter, int left, int top, bool pointsUp) {
    constexpr int bars = 4;
    const int middle = stripWidth / 2;
    for (int bar = 0; bar < bars; ++bar) {
        const int reach = pointsUp ? bar : bars - 1 - bar;
        painter.fillRect(left + middle - reach, top + middle - bars / 2 + bar, 2 * reach + 1, 1,
                         Qt::black);
    }
}

}  // namespace

KeywordPopup::KeywordPopup(QWidget& owner) : FloatingWindow(owner), list(KeywordListLayout()) {
    setFont(InterfaceFont());
}

// Not until the list is wanted: measuring all names would hold up the start of the program.
void KeywordPopup::Measure() {
    if (isMeasured) return;
    isMeasured = true;
    list = KeywordList(MeasuredLayout());
    resize(list.layout.outer.width, list.layout.outer.height);
}

void KeywordPopup::Open(const QRect& caret, const QRect& view, std::string_view word) {
    Measure();
    const std::optional<PixelPoint> place =
        PlaceList({caret.left() - view.left(), caret.top() - view.top()}, caret.height(),
                  {view.width(), view.height()}, list.layout.outer);
    if (!place) return;
    if (!list.visible) QCoreApplication::instance()->installEventFilter(this);
    list.visible = true;
    list.JumpTo(word);
    ShowAt(view.topLeft() + QPoint(place->x, place->y), size(), caret);
}

void KeywordPopup::Follow(const QRect& caret, const QRect& view, std::string_view word) {
    if (list.visible) Open(caret, view, word);
}

void KeywordPopup::Hide() { hide(); }

void KeywordPopup::PressKey(ListKey key) {
    list.PressKey(key);
    update();
}

// Presses come by here once for the window and once more for the widget in it; either will do.
bool KeywordPopup::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::MouseButtonPress ||
                         event->type() == QEvent::NonClientAreaMouseButtonPress;
    if (!isPress || !list.visible) return FloatingWindow::eventFilter(watched, event);
    const bool isElsewhere =
        (watched->isWindowType() && watched != windowHandle()) ||
        (watched->isWidgetType() && static_cast<QWidget*>(watched)->window() != this);
    if (isElsewhere) Dismiss();
    return false;
}

void KeywordPopup::hideEvent(QHideEvent* event) {
    FloatingWindow::hideEvent(event);
    QCoreApplication::instance()->removeEventFilter(this);
    repeatTimer.stop();
    list.Release();
    list.visible = false;
}

void KeywordPopup::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    list.Press(InnerPoint(*event));
    repeatTimer.start(KeywordList::repeatMilliseconds, this);
    update();
}

void KeywordPopup::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const PixelPoint point = InnerPoint(*event);
    const bool isOnRow = list.PartAt(point) == ListPart::row && list.RowAt(point.y) >= 0;
    mousePressEvent(event);
    if (isOnRow) emit Accepted();
}

void KeywordPopup::mouseMoveEvent(QMouseEvent* event) {
    list.Drag(InnerPoint(*event));
    update();
}

void KeywordPopup::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    list.Release();
    repeatTimer.stop();
}

void KeywordPopup::timerEvent(QTimerEvent* event) {
    if (event->timerId() != repeatTimer.timerId()) return FloatingWindow::timerEvent(event);
    list.Tick();
    update();
}

void KeywordPopup::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    PaintGround(painter, ColourOf(keywordListColours::background));
    painter.translate(InnerRect().topLeft());
    painter.setClipRect(0, 0, list.layout.inner.width, list.layout.inner.height);
    PaintRows(painter);
    PaintStrip(painter);
}

void KeywordPopup::PaintRows(QPainter& painter) const {
    const auto entries = keywordTable.Sorted();
    const KeywordListLayout& layout = list.layout;
    const int end = std::min(list.topRow + list.pageRows + 1, static_cast<int>(entries.size()));
    const int ascent = fontMetrics().ascent();
    for (int row = list.topRow; row < end; ++row) {
        const PixelRect fill = layout.FillOf(row - list.topRow);
        if (row == list.selected) {
            painter.fillRect(fill.left, fill.top, fill.width, fill.height,
                             ColourOf(keywordListColours::selectedRow));
        }
        const KeywordEntry& entry = *entries[static_cast<std::size_t>(row)];
        const KeywordRowLook look = LookOf(entry);
        const QPoint baseline(KeywordListLayout::textLeft, fill.top + ascent);
        painter.setPen(ColourOf(look.nameColour));
        painter.drawText(baseline, QStringFrom(entry.name));
        painter.setPen(ColourOf(keywordListColours::groupWord));
        painter.drawText(baseline + QPoint(layout.nameColumn, 0), QStringFrom(look.word));
    }
}

void KeywordPopup::PaintStrip(QPainter& painter) const {
    const int left = list.layout.StripLeft();
    const int height = list.layout.inner.height;
    painter.fillRect(left, 0, stripWidth, height, ColourOf(keywordListColours::strip));
    PaintButton(painter, left, 0);
    PaintTriangle(painter, left, 0, true);
    PaintButton(painter, left, height - stripWidth);
    PaintTriangle(painter, left, height - stripWidth, false);
    PaintButton(painter, left, list.ThumbTop());
}

}  // namespace orvane
