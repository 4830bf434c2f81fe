#pragma once

#include <optional>

#include "storage/settings_file.h"

class QWidget;

// Where a window stands, to and from the settings' record.

namespace orvane {

WindowPlacement PlacementOf(const QWidget& window);

// Moves the window there and gives the state in which it is to be shown. A window that would
// stand outside of every screen is moved onto one, and one that was minimised comes back as it was
// before: a program that is started shall be seen.
enum class ShownState { normal, maximised };
ShownState ApplyPlacement(QWidget& window, const WindowPlacement& placement);

}  // namespace orvane
