#include "windows/rich_text_label.h"

#include <QCursor>
#include <QDesktopServices>
#include <QIcon>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>
#include <algorithm>
#include <utility>
#include <vector>

#include "storage/qt_bytes.h"
#include "windows/look.h"

namespace orvane {

namespace {

constexpr int handSize = 24;
constexpr QPoint handTip(9, 1);

// The hand of this program. A screen of a high resolution gets the larger picture.
QCursor HandCursor(qreal scale) {
    const QIcon hand(":/cursors/hand.png");
    return QCursor(hand.pixmap(QSize(handSize, handSize), scale), handTip.x(), handTip.y());
}

// The place of a control on the screen, in pixels of the screen. Everything is copied in those, so
// that at broken scale factors too nothing is blurred and no row is left out or shown twice.
struct ScreenPlace {
    ScreenPlace(const QTransform& toScreen, const QSize& size)
        : scale(toScreen.m11()), left(qRound(toScreen.dx())), top(qRound(toScreen.dy())) {
        width = qCeil(size.width() * scale);
        height = qRound(toScreen.dy() + size.height() * scale) - top;
    }

    int Scaled(int length) const { return qRound(length * scale); }
    QRect Scaled(const LabelRect& rect) const {
        return QRectF(rect.left * scale, rect.top * scale, rect.width * scale, rect.height * scale)
            .toAlignedRect();
    }

    qreal scale;
    int left, top, width, height;
};

std::vector<LabelStrip> StripsOn(const ScreenPlace& screen, const LabelScroller& scroller,
                                 const LabelLayout& placement, std::int32_t controlHeight) {
    LabelScroller scaled;
    // Rounding may make the control lower than a text that just fits; that stands still none the
    // less.
    if (LabelScroller::Scrolls(placement, controlHeight)) {
        scaled.scrollOffset = screen.Scaled(scroller.scrollOffset);
    }
    const LabelLayout text{{}, {}, screen.Scaled(placement.totalHeight)};
    return scaled.Strips(text, screen.height);
}

}  // namespace

RichTextLabel::RichTextLabel(QWidget* parent, const QRect& place)
    : QWidget(parent),
      openTarget(
          [](const QString& target) { QDesktopServices::openUrl(QUrl::fromUserInput(target)); }),
      bitmaps([](std::int32_t) { return QPixmap(); }),
      background(windowColour),
      linkCursor(HandCursor(devicePixelRatioF())) {
    setGeometry(place);
    setAttribute(Qt::WA_OpaquePaintEvent);
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, [this] { Tick(); });
}

std::string RichTextLabel::SetText(std::string_view newText) {
    std::string oldText = std::exchange(source, std::string(newText));
    document = ParseRichText(source);
    PlaceText();
    return oldText;
}

void RichTextLabel::SetBackground(const QColor& colour) {
    background = colour;
    DropPictures();
}

void RichTextLabel::SetScrollOffset(std::int32_t row) {
    scroller.scrollOffset = row;
    update();
}

void RichTextLabel::SetBitmaps(BitmapSource source) {
    bitmaps = std::move(source);
    PlaceText();
}

void RichTextLabel::PlaceText() {
    ScreenMeasure measure(bitmaps);
    placement = LayOutRichText(document, width(), measure);
    scroller.hotLink.reset();
    DropPictures();
}

void RichTextLabel::DropPictures() {
    arePicturesDrawn = false;
    update();
}

// Without a link there is no second look.
void RichTextLabel::DrawPictures(qreal scale) {
    if (arePicturesDrawn && drawnScale == scale) return;
    drawnScale = scale;
    arePicturesDrawn = true;
    LabelCanvas canvas{width(), drawnScale, background, palette().color(QPalette::Dark),
                       LabelLook::normal};
    normalPicture = DrawRichText(document, placement, canvas, bitmaps);
    canvas.look = LabelLook::underPointer;
    hotPicture =
        placement.links.empty() ? QPixmap() : DrawRichText(document, placement, canvas, bitmaps);
}

void RichTextLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), background);
    const QTransform toScreen = painter.deviceTransform();
    const ScreenPlace screen(toScreen, size());
    DrawPictures(screen.scale);
    painter.setWorldTransform(toScreen.inverted(), true);
    for (const LabelStrip& strip : StripsOn(screen, scroller, placement, height())) {
        const QPoint corner(screen.left, screen.top + strip.controlTop - strip.pictureTop);
        const QRect rows(0, strip.pictureTop, screen.width, strip.height);
        const auto copy = [&](const QPixmap& picture, const QRect& part) {
            const QRect there = part & rows & picture.rect();
            if (!there.isEmpty()) painter.drawPixmap(corner + there.topLeft(), picture, there);
        };
        copy(normalPicture, rows);
        if (scroller.hotLink) {
            copy(hotPicture, screen.Scaled(placement.links[*scroller.hotLink].rect));
        }
    }
}

void RichTextLabel::resizeEvent(QResizeEvent*) { PlaceText(); }

void RichTextLabel::showEvent(QShowEvent*) {
    Wait(wasSeen ? scroller.scrollDelay : scroller.FirstDelay());
    wasSeen = true;
}

void RichTextLabel::hideEvent(QHideEvent*) {
    timer.stop();
    scroller.Release();
}

void RichTextLabel::Wait(std::int32_t milliseconds) { timer.start(std::max(milliseconds, 1)); }

void RichTextLabel::Tick() {
    if (!isVisible()) return;
    scroller.Step(placement);
    LookAtPointer();
    update();
    Wait(scroller.scrollDelay);
}

void RichTextLabel::LookAtPointer() {
    const QPoint at = mapFromGlobal(QCursor::pos());
    if (rect().contains(at)) {
        scroller.PointAt(placement, height(), at.x(), at.y());
    } else {
        scroller.hotLink.reset();
    }
    const bool wasOnLink = testAttribute(Qt::WA_SetCursor);
    if (scroller.hotLink && !wasOnLink) setCursor(linkCursor);
    if (!scroller.hotLink && wasOnLink) unsetCursor();
}

void RichTextLabel::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint at = event->position().toPoint();
    const LabelPress press = scroller.Press(placement, height(), at.x(), at.y());
    if (press.kind == LabelPressKind::startDrag) timer.stop();
    if (press.kind != LabelPressKind::followLink) return;
    update();
    const std::string& target = document.targets[press.target];
    if (IsOpenableTarget(target)) openTarget(QStringFrom(target));
}

void RichTextLabel::mouseMoveEvent(QMouseEvent* event) {
    if (!scroller.dragging) return;
    scroller.DragTo(placement, event->position().toPoint().y());
    update();
}

void RichTextLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && scroller.Release()) Tick();
}

}  // namespace orvane
