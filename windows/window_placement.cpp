#include "windows/window_placement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace orvane {

namespace {

// The show states and the flag of the record.
constexpr std::uint32_t shownNormal = 1;
constexpr std::uint32_t shownMinimised = 2;
constexpr std::uint32_t shownMaximised = 3;
constexpr std::uint32_t restoreToMaximised = 2;

constexpr int smallestSide = 1;
constexpr int largestSide = 32000;

// The nearest place at which the whole window, or as much as fits, is on a screen.
QRect MovedOntoAScreen(const QRect& wanted) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        if (screen->availableGeometry().intersects(wanted)) return wanted;
    }
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    QRect moved = wanted;
    moved.setSize(wanted.size().boundedTo(area.size()));
    moved.moveTo(std::clamp(wanted.left(), area.left(), area.right() + 1 - moved.width()),
                 std::clamp(wanted.top(), area.top(), area.bottom() + 1 - moved.height()));
    return moved;
}

int SideOf(std::int32_t from, std::int32_t to) {
    const std::int64_t side = std::int64_t{to} - from;
    return static_cast<int>(std::clamp<std::int64_t>(side, smallestSide, largestSide));
}

}  // namespace

WindowPlacement PlacementOf(const QWidget& window) {
    WindowPlacement placement;
    placement.showState = window.isMinimized()   ? shownMinimised
                          : window.isMaximized() ? shownMaximised
                                                 : shownNormal;
    placement.flags = window.isMinimized() && window.isMaximized() ? restoreToMaximised : 0;
    const QRect normal = window.normalGeometry();
    placement.left = normal.left();
    placement.top = normal.top();
    placement.right = normal.left() + normal.width();
    placement.bottom = normal.top() + normal.height();
    placement.minimisedX = placement.minimisedY = -1;
    placement.maximisedX = placement.maximisedY = -1;
    return placement;
}

ShownState ApplyPlacement(QWidget& window, const WindowPlacement& placement) {
    const int limit = largestSide;
    const QRect wanted(
        std::clamp(placement.left, -limit, limit), std::clamp(placement.top, -limit, limit),
        SideOf(placement.left, placement.right), SideOf(placement.top, placement.bottom));
    window.setGeometry(MovedOntoAScreen(wanted));
    const bool isMaximised =
        placement.showState == shownMaximised ||
        (placement.showState == shownMinimised && (placement.flags & restoreToMaximised) != 0);
    return isMaximised ? ShownState::maximised : ShownState::normal;
}

}  // namespace orvane
