#pragma once

#include <QImage>
#include <array>
#include <optional>
#include <string>

#include "app/main_layout.h"

class QPainter;
class QRect;

// What the main window paints itself: the grooves above the panes, the menu strip, the picture
// buttons. Nothing here reads a file while it paints.

namespace orvane {

struct ButtonImages {
    QImage up;    // null: a plain raised button is painted
    QImage down;  // the same, sunken
};

// From the folder with the program's pictures; a file that is missing or no picture is left out.
ButtonImages LoadButtonImages(const std::string& folder);

void PaintGrooves(QPainter& painter, const MainLayout& layout);
void PaintMenuStrip(QPainter& painter, const MenuStrip& strip);
void PaintButtons(QPainter& painter, const MainLayout& layout, const ButtonImages& images,
                  std::optional<MainButton> pressed, const QRect& area);

}  // namespace orvane
