#pragma once

#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QWidget>

// A borderless window over its owner's text that never takes the focus and that no window manager
// places. It goes along with the owner's window, and goes away when that window is left, so that
// it never stands over another program.

namespace orvane {

class FloatingWindow : public QWidget {
    Q_OBJECT

public:
    static constexpr int frameWidth = 1;  // on each side

    // `owner` is the widget in whose coordinates the window is placed.
    explicit FloatingWindow(QWidget& owner);

signals:
    // The window has gone away by itself and not because its owner hid it.
    void Dismissed();

protected:
    // Shows the window, or moves it: its upper left corner stands at a place of the owner, as near
    // as the screen allows with `line`, a cell of the line that it stands at, left readable.
    void ShowAt(QPoint place, QSize size, const QRect& line);
    void Dismiss();
    QRect InnerRect() const;
    // Fills the window and draws its frame.
    void PaintGround(QPainter& painter, const QColor& background) const;

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void MoveToPlace();

    QWidget& owner;
    QPointer<QWidget> ownerWindow;  // watched while this window shows
    QPoint place;                   // in the owner
    QRect line;
};

}  // namespace orvane
