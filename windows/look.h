#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QIcon>
#include <QRect>

#include "storage/text_colours.h"

class QApplication;
class QObject;
class QPainter;
class QWidget;

// Fonts, colours and frames of every window. Sizes are device-independent pixels. The look is the
// same under every desktop theme, font scaling and dark mode: rectangles are fixed, and the texts
// must fit them.

namespace orvane {

inline constexpr QColor windowColour(191, 223, 223);

// What must be settled ahead of the application object: scale factors are taken as they are, and
// the desktop's own colours and fonts are left alone.
void PrepareLook();

// Style, palette, font and pictures of the whole program; called once, before any window is made.
void ApplyLook(QApplication& application);

// The program's icon in every size that it is drawn for.
QIcon ProgramIcon();

// The proportional font of labels, buttons and menus, 11 pixels high.
QFont InterfaceFont();
// The fixed-pitch font of the formula editor and the report.
QFont FixedFont();

QColor ColourOf(Colour colour);

// A rectangle in dialog units as pixels: x in quarters of the font's average width of the letters
// A to Z and a to z, y in eighths of its height.
QRect DialogRect(const QFontMetrics& metrics, int left, int top, int width, int height);

// A frame of one pixel in two colours. The corners at the ends of the right and bottom sides have
// the colour of those.
void PaintFrame(QPainter& painter, const QRect& rect, const QColor& topLeft,
                const QColor& bottomRight);
// The same, white on the top and left sides, black on the bottom and right ones.
void PaintThinFrame(QPainter& painter, const QRect& rect);

// Names a control after its number.
void NameControl(QObject& control, int id);

}  // namespace orvane
