#include "editor/floating_window.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include "editor/keyword_list.h"

namespace orvane {

namespace {

PixelRect PixelRectFrom(const QRect& rect) {
    return {rect.left(), rect.top(), rect.width(), rect.height()};
}

}  // namespace

// The kind of a tool tip is the one that window managers neither place nor give the focus.
FloatingWindow::FloatingWindow(QWidget& ownerWidget)
    : QWidget(&ownerWidget, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus),
      owner(ownerWidget) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
}

void FloatingWindow::ShowAt(QPoint newPlace, QSize size, const QRect& newLine) {
    place = newPlace;
    line = newLine;
    resize(size);
    MoveToPlace();
    show();
    raise();
    update();
}

void FloatingWindow::MoveToPlace() {
    const QRect lineOnScreen(owner.mapToGlobal(line.topLeft()), line.size());
    QScreen* screen = QGuiApplication::screenAt(lineOnScreen.topLeft());
    if (screen == nullptr) screen = owner.screen();
    const PixelPoint corner =
        KeepOnScreen(PixelRectFrom(QRect(owner.mapToGlobal(place), size())),
                     PixelRectFrom(lineOnScreen), PixelRectFrom(screen->availableGeometry()));
    move(corner.x, corner.y);
}

void FloatingWindow::Dismiss() {
    hide();
    emit Dismissed();
}

QRect FloatingWindow::InnerRect() const {
    return rect().adjusted(frameWidth, frameWidth, -frameWidth, -frameWidth);
}

void FloatingWindow::PaintGround(QPainter& painter, const QColor& background) const {
    painter.fillRect(rect(), Qt::black);
    painter.fillRect(InnerRect(), background);
}

bool FloatingWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched != ownerWindow) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::Move:
            MoveToPlace();
            break;
        case QEvent::Hide:
        case QEvent::WindowDeactivate:
            Dismiss();
            break;
        default:
            break;
    }
    return false;
}

void FloatingWindow::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    ownerWindow = owner.window();
    ownerWindow->installEventFilter(this);
}

void FloatingWindow::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    if (ownerWindow != nullptr) ownerWindow->removeEventFilter(this);
    ownerWindow = nullptr;
}

}  // namespace orvane
