#pragma once

#include <QRect>
#include <QWidget>
#include <algorithm>

#include "app/main_layout.h"

// Rectangles of the layout on the screen.

namespace orvane {

inline QRect QRectFrom(const EdgeRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}

// A rectangle that a small window leaves nothing of is empty.
inline void PlaceAt(QWidget& widget, const EdgeRect& rect) {
    widget.setGeometry(rect.left, rect.top, std::max(rect.Width(), 0), std::max(rect.Height(), 0));
}

}  // namespace orvane
