#pragma once

#include <array>
#include <cstdint>
#include <optional>

// Where everything stands in the main window, and what the mouse does to the things that the window
// paints itself: five labels of the menu strip and five picture buttons. Pixels of the client area,
// x to the right and y down.

namespace orvane {

// `right` and `bottom` are the first pixels outside.
struct EdgeRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool operator==(const EdgeRect&) const = default;
    int Width() const { return right - left; }
    int Height() const { return bottom - top; }
    bool Contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
    EdgeRect GrownBy(int pixels) const {
        return {left - pixels, top - pixels, right + pixels, bottom + pixels};
    }
};

// In the order in which a press tries them.
enum class MainButton { newFormula, save, saveAs, open, calculate };
inline constexpr int mainButtonCount = 5;
inline constexpr std::array<const char*, mainButtonCount> mainButtonTexts = {
    "New formula", "Save", "Save as", "Open", "Calculate"};

// A height command that is none of the seven splits in the middle.
int HeightEighths(std::int32_t calcHeightCommand);
bool IsHeightCommand(std::int32_t command);

struct MainLayout {
    EdgeRect calculationLabel;
    EdgeRect editor;
    EdgeRect resultLabel;
    EdgeRect resultPane;
    std::array<EdgeRect, mainButtonCount> buttons;
    EdgeRect progressBar;
    EdgeRect systemBitsGroup;
    EdgeRect systemBitsList;  // its height is that of the dropped-down list
    EdgeRect floatPrecisionGroup;
    EdgeRect floatPrecisionBox;
    EdgeRect showSignCheck;
    EdgeRect positionLineCheck;
    EdgeRect breakTextCheck;
    EdgeRect formulaBreakCheck;
    // The two grooves: the first line of each; both run from `grooveLeft` to `grooveRight`.
    int grooveLeft = 0;
    int grooveRight = 0;
    int editorGrooveTop = 0;
    int resultGrooveTop = 0;
};

// For a client area of any size; in a small one rectangles may be empty or overlap.
MainLayout LayOutMainWindow(int clientWidth, int clientHeight, std::int32_t calcHeightCommand);

// A line of a groove: how far below its first line it stands, and whether it is the light one.
struct GrooveLine {
    int offset;
    bool isLight;
};
inline constexpr std::array<GrooveLine, 4> grooveLines = {
    {{0, true}, {2, false}, {5, true}, {7, false}}};

inline constexpr int menuLabelCount = 5;

// The painted menu strip. Its rectangles are set once, for the platform's menu height.
class MenuStrip {
public:
    void Place(int menuHeight);
    const EdgeRect& LabelRect(int label) const { return rects[label]; }
    std::optional<int> LabelAt(int x, int y) const;

    std::optional<int> Hovered() const { return hovered; }
    // Both labels must be painted anew, with a border of one pixel around them.
    struct Change {
        std::optional<int> oldLabel;
        std::optional<int> newLabel;
        bool IsNone() const { return oldLabel == newLabel; }
    };
    Change Hover(std::optional<int> label);

private:
    std::array<EdgeRect, menuLabelCount> rects{};
    std::optional<int> hovered;
};

// Which picture button is held down. A press takes the button's right edge as part of it, and
// neither its upper nor its lower edge; a release runs the button only inside it, right and bottom
// edges outside.
class ButtonTracker {
public:
    using Rects = std::array<EdgeRect, mainButtonCount>;

    std::optional<MainButton> Press(const Rects& rects, int x, int y);
    std::optional<MainButton> Pressed() const { return pressed; }
    // The button to run, if any; none is held down afterwards.
    std::optional<MainButton> Release(const Rects& rects, int x, int y);

private:
    std::optional<MainButton> pressed;
};

}  // namespace orvane
