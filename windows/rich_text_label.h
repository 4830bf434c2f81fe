#pragma once

#include <QColor>
#include <QPixmap>
#include <QTimer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "windows/rich_text_canvas.h"

// A control that shows a small tagged text, which scrolls slowly upward in an endless loop. The
// text is drawn once, in pixels of the screen; a step copies rows of that.

namespace orvane {

class RichTextLabel : public QWidget {
public:
    // The first step comes ten delays after the control is first seen.
    RichTextLabel(QWidget* parent, const QRect& place);

    // The old text is the answer.
    std::string SetText(std::string_view newText);
    void SetBackground(const QColor& colour);
    void SetScrollDelay(std::int32_t milliseconds) { scroller.scrollDelay = milliseconds; }
    void SetDragEnabled(bool isEnabled) { scroller.dragEnabled = isEnabled; }
    void SetScrollOffset(std::int32_t row);  // may be negative
    void SetBitmaps(BitmapSource source);    // without it no picture is shown

    const LabelScroller& Scroller() const { return scroller; }
    const LabelLayout& Placement() const { return placement; }

    // Opens what a link names; the system does, as a shell would.
    std::function<void(const QString& target)> openTarget;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void Tick();
    void LookAtPointer();
    void Wait(std::int32_t milliseconds);
    void PlaceText();
    void DropPictures();
    void DrawPictures(qreal scale);

    std::string source;
    LabelDocument document;
    LabelLayout placement;
    LabelScroller scroller;
    BitmapSource bitmaps;
    QColor background;
    QCursor linkCursor;
    QTimer timer{this};
    bool wasSeen = false;
    // Drawn when they are next needed, for the screen on which the control is then.
    QPixmap normalPicture, hotPicture;
    bool arePicturesDrawn = false;
    qreal drawnScale = 0;
};

}  // namespace orvane
