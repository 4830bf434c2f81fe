#pragma once

#include <QBasicTimer>
#include <QRect>
#include <optional>
#include <string_view>

#include "editor/floating_window.h"
#include "editor/keyword_list.h"

// The keyword list on the screen. Its owner keeps the focus and hands it the keys that are meant
// for the list. A press anywhere else in the program dismisses it and still reaches what was
// pressed.

namespace orvane {

class KeywordPopup : public FloatingWindow {
    Q_OBJECT

public:
    explicit KeywordPopup(QWidget& owner);

    // Opens the list, or moves it while it shows, and jumps to `word`. `caret` is the caret's
    // cell, as high as its line, and `view` the area that shows text, both in the owner's
    // coordinates. Does nothing at all where the caret is above or below that area.
    void Open(const QRect& caret, const QRect& view, std::string_view word);
    // The same after the caret moved or the text changed; does nothing while the list is hidden.
    void Follow(const QRect& caret, const QRect& view, std::string_view word);
    void Hide();
    bool IsShowing() const { return list.visible; }

    void PressKey(ListKey key);
    // The keyword that Enter or a double click (no trigger) or a typed character takes from the
    // list, or null; see KeywordList. The list stays until Hide.
    const KeywordEntry* EntryToAccept(std::optional<char> trigger) const {
        return list.EntryToAccept(trigger);
    }
    const KeywordList& List() const { return list; }

signals:
    // A row was double clicked: to be taken as Enter takes it.
    void Accepted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void Measure();
    void PaintRows(QPainter& painter) const;
    void PaintStrip(QPainter& painter) const;

    KeywordList list;
    bool isMeasured = false;
    QBasicTimer repeatTimer;
};

}  // namespace orvane
