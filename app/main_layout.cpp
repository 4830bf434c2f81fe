#include "app/main_layout.h"

#include <array>

#include "windows/control_ids.h"

namespace orvane {

namespace {

constexpr int buttonWidth = 111;
constexpr int buttonHeight = 28;

struct HeightRow {
    std::int32_t command;
    int eighths;
};
// The commands run out of step with the heights; settings files hold them.
constexpr HeightRow heightRows[] = {{ids::command::height1, 1}, {ids::command::height2, 2},
                                    {ids::command::height3, 3}, {ids::command::height4, 4},
                                    {ids::command::height5, 5}, {ids::command::height6, 6},
                                    {ids::command::height7, 7}};

constexpr EdgeRect Placed(int left, int top, int width, int height) {
    return {left, top, left + width, top + height};
}

constexpr int menuLabelWidths[menuLabelCount] = {50, 40, 55, 60, 40};

const HeightRow* FindHeight(std::int32_t command) {
    for (const HeightRow& row : heightRows) {
        if (row.command == command) return &row;
    }
    return nullptr;
}

}  // namespace

int HeightEighths(std::int32_t calcHeightCommand) {
    const HeightRow* row = FindHeight(calcHeightCommand);
    return row == nullptr ? 4 : row->eighths;
}

bool IsHeightCommand(std::int32_t command) { return FindHeight(command) != nullptr; }

MainLayout LayOutMainWindow(int clientWidth, int clientHeight, std::int32_t calcHeightCommand) {
    const int left = 12;
    const int top = 30;
    const int right = clientWidth - 10;
    const int bottom = clientHeight - 12;
    const int panesRight = right - 123;
    const int split = (bottom - top) * HeightEighths(calcHeightCommand) / 8 + top - 3;

    MainLayout layout;
    layout.calculationLabel = Placed(left, top, 70, 16);
    layout.editor = {left, top + 16, panesRight, split};
    layout.resultLabel = Placed(left, split + 6, 70, 16);
    layout.resultPane = {left, split + 22, panesRight, bottom};

    const int buttonTops[mainButtonCount] = {16, 50, 84, 118, 172};
    for (int button = 0; button < mainButtonCount; ++button) {
        layout.buttons[button] =
            Placed(right - 111, top + buttonTops[button], buttonWidth, buttonHeight);
    }
    layout.progressBar = Placed(right - 103, top + 158, 95, 12);

    const int groups = top + 222;
    layout.systemBitsGroup = Placed(right - 107, groups, 103, 55);
    layout.systemBitsList = Placed(right - 89, groups + 22, 67, 233);
    layout.floatPrecisionGroup = Placed(right - 107, groups + 69, 103, 55);
    layout.floatPrecisionBox = Placed(right - 77, groups + 91, 43, 20);
    layout.showSignCheck = Placed(right - 105, groups + 139, 101, 16);
    layout.positionLineCheck = Placed(right - 105, groups + 159, 101, 16);
    layout.breakTextCheck = Placed(right - 105, groups + 183, 101, 16);
    layout.formulaBreakCheck = Placed(right - 105, groups + 203, 101, 16);

    // The right edge of the label above serves for both grooves.
    layout.grooveLeft = layout.calculationLabel.right + 3;
    layout.grooveRight = panesRight - 1;
    layout.editorGrooveTop = layout.editor.top - 12;
    layout.resultGrooveTop = layout.resultPane.top - 12;
    return layout;
}

void MenuStrip::Place(int menuHeight) {
    int left = 2;
    for (int label = 0; label < menuLabelCount; ++label) {
        rects[label] = {left, 2, left + menuLabelWidths[label], menuHeight + 4};
        left = rects[label].right + 10;
    }
}

std::optional<int> MenuStrip::LabelAt(int x, int y) const {
    for (int label = 0; label < menuLabelCount; ++label) {
        if (rects[label].Contains(x, y)) return label;
    }
    return std::nullopt;
}

MenuStrip::Change MenuStrip::Hover(std::optional<int> label) {
    const Change change{hovered, label};
    hovered = label;
    return change;
}

std::optional<MainButton> ButtonTracker::Press(const Rects& rects, int x, int y) {
    pressed.reset();
    for (int button = 0; button < mainButtonCount && !pressed; ++button) {
        const EdgeRect& rect = rects[button];
        // Kept: the pixel right of the button still presses it, and its top row does not.
        const bool isHit = x >= rect.left && x <= rect.right && y > rect.top && y < rect.bottom;
        if (isHit) pressed = static_cast<MainButton>(button);
    }
    return pressed;
}

std::optional<MainButton> ButtonTracker::Release(const Rects& rects, int x, int y) {
    const std::optional<MainButton> released = pressed;
    pressed.reset();
    if (!released || !rects[static_cast<int>(*released)].Contains(x, y)) return std::nullopt;
    return released;
}

}  // namespace orvane
