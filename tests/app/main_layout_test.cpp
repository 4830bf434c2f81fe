#include "app/main_layout.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

EdgeRect Placed(int left, int top, int width, int height) {
    return {left, top, left + width, top + height};
}

struct HeightRow {
    std::int32_t command;
    int eighths;
};
constexpr HeightRow heightRows[] = {{32807, 1}, {32809, 2}, {32808, 3}, {32810, 4},
                                    {32811, 5}, {32806, 6}, {32812, 7}, {0, 4},
                                    {7, 4},     {32813, 4}, {-1, 4}};

TEST(HeightEighths, TakesWhatIsNoHeightCommandForTheMiddle) {
    for (const auto& [command, eighths] : heightRows) {
        SCOPED_TRACE(command);
        EXPECT_EQ(HeightEighths(command), eighths);
    }
}

TEST(HeightEighths, KnowsItsSevenCommands) {
    for (int command = 32780; command < 32960; ++command) {
        const bool isHeight = command >= 32806 && command <= 32812;
        EXPECT_EQ(IsHeightCommand(command), isHeight) << command;
    }
}

struct SplitRow {
    int width;
    int height;
    std::int32_t command;
    int split;
};
// (bottom - top) * eighths / 8 + top - 3, in whole pixels: bottom is 12 above the lower edge.
constexpr SplitRow splitRows[] = {
    {800, 600, 32807, 96},    {800, 600, 32809, 166},   {800, 600, 32808, 236},
    {800, 600, 32810, 306},   {800, 600, 32811, 375},   {800, 600, 32806, 445},
    {800, 600, 32812, 515},   {1280, 1001, 32810, 506}, {1280, 1001, 32808, 386},
    {1920, 1080, 32806, 805}, {1920, 1080, 0, 546}};

TEST(MainLayout, SplitsThePanesByEighths) {
    for (const auto& [width, height, command, split] : splitRows) {
        SCOPED_TRACE(testing::Message() << width << "x" << height << " " << command);
        const MainLayout layout = LayOutMainWindow(width, height, command);
        const int panesRight = width - 10 - 123;
        EXPECT_EQ(layout.calculationLabel, Placed(12, 30, 70, 16));
        EXPECT_EQ(layout.editor, (EdgeRect{12, 46, panesRight, split}));
        EXPECT_EQ(layout.resultLabel, Placed(12, split + 6, 70, 16));
        EXPECT_EQ(layout.resultPane, (EdgeRect{12, split + 22, panesRight, height - 12}));
    }
}

TEST(MainLayout, HangsTheRightColumnOnTheRightEdge) {
    for (const int width : {640, 800, 1920}) {
        SCOPED_TRACE(width);
        const MainLayout layout = LayOutMainWindow(width, 600, 32810);
        const int right = width - 10;
        const EdgeRect buttons[] = {
            Placed(right - 111, 46, 111, 28), Placed(right - 111, 80, 111, 28),
            Placed(right - 111, 114, 111, 28), Placed(right - 111, 148, 111, 28),
            Placed(right - 111, 202, 111, 28)};
        for (int button = 0; button < mainButtonCount; ++button) {
            EXPECT_EQ(layout.buttons[button], buttons[button]) << mainButtonTexts[button];
        }
        EXPECT_EQ(layout.progressBar, Placed(right - 103, 188, 95, 12));
        EXPECT_EQ(layout.systemBitsGroup, Placed(right - 107, 252, 103, 55));
        EXPECT_EQ(layout.systemBitsList, Placed(right - 89, 274, 67, 233));
        EXPECT_EQ(layout.floatPrecisionGroup, Placed(right - 107, 321, 103, 55));
        EXPECT_EQ(layout.floatPrecisionBox, Placed(right - 77, 343, 43, 20));
        EXPECT_EQ(layout.showSignCheck, Placed(right - 105, 391, 101, 16));
        EXPECT_EQ(layout.positionLineCheck, Placed(right - 105, 411, 101, 16));
        EXPECT_EQ(layout.breakTextCheck, Placed(right - 105, 435, 101, 16));
        EXPECT_EQ(layout.formulaBreakCheck, Placed(right - 105, 455, 101, 16));
    }
}

TEST(MainLayout, RunsBothGroovesFromTheLabelToThePanesEnd) {
    const MainLayout layout = LayOutMainWindow(800, 600, 32810);
    EXPECT_EQ(layout.grooveLeft, 85);
    EXPECT_EQ(layout.grooveRight, 666);
    EXPECT_EQ(layout.editorGrooveTop, 34);
    EXPECT_EQ(layout.resultGrooveTop, 316);
}

TEST(MainLayout, TakesAnyClientSize) {
    for (const int side : {0, 1, 30, 100, 30000}) {
        const MainLayout layout = LayOutMainWindow(side, side, 32812);
        EXPECT_EQ(layout.calculationLabel, Placed(12, 30, 70, 16));
        EXPECT_EQ(layout.resultPane.bottom, side - 12);
    }
}

TEST(MenuStrip, StandsTenPixelsApart) {
    MenuStrip strip;
    strip.Place(19);
    const EdgeRect rects[] = {
        {2, 2, 52, 23}, {62, 2, 102, 23}, {112, 2, 167, 23}, {177, 2, 237, 23}, {247, 2, 287, 23}};
    for (int label = 0; label < menuLabelCount; ++label) {
        EXPECT_EQ(strip.LabelRect(label), rects[label]) << label;
    }
}

TEST(MenuStrip, FindsTheLabelUnderThePointer) {
    MenuStrip strip;
    strip.Place(19);
    EXPECT_EQ(strip.LabelAt(2, 2), 0);
    EXPECT_EQ(strip.LabelAt(51, 22), 0);
    EXPECT_EQ(strip.LabelAt(52, 10), std::nullopt);
    EXPECT_EQ(strip.LabelAt(62, 10), 1);
    EXPECT_EQ(strip.LabelAt(286, 10), 4);
    EXPECT_EQ(strip.LabelAt(287, 10), std::nullopt);
    EXPECT_EQ(strip.LabelAt(10, 23), std::nullopt);
    EXPECT_EQ(strip.LabelAt(1, 1), std::nullopt);
}

TEST(MenuStrip, TellsWhichLabelsAHoverChanges) {
    MenuStrip strip;
    strip.Place(19);
    EXPECT_TRUE(strip.Hover(std::nullopt).IsNone());
    MenuStrip::Change change = strip.Hover(1);
    EXPECT_FALSE(change.IsNone());
    EXPECT_EQ(change.oldLabel, std::nullopt);
    EXPECT_EQ(change.newLabel, 1);
    EXPECT_TRUE(strip.Hover(1).IsNone());
    change = strip.Hover(3);
    EXPECT_EQ(change.oldLabel, 1);
    EXPECT_EQ(change.newLabel, 3);
    EXPECT_EQ(strip.Hovered(), 3);
}

class ButtonTrackerTest : public testing::Test {
protected:
    const ButtonTracker::Rects rects = LayOutMainWindow(800, 600, 32810).buttons;
    ButtonTracker tracker;
    const int left = 679;
    const int top = 46;
};

struct PressRow {
    int right;  // from the left edge of the first button
    int down;   // from its top
    bool isHit;
};
constexpr PressRow pressRows[] = {{0, 1, true},    {0, 0, false},   {111, 1, true},
                                  {112, 1, false}, {-1, 1, false},  {50, 27, true},
                                  {50, 28, false}, {111, 27, true}, {50, 33, false}};

TEST_F(ButtonTrackerTest, TakesTheRightEdgeForAPressAndNotTheUpperOne) {
    for (const auto& [right, down, isHit] : pressRows) {
        SCOPED_TRACE(testing::Message() << right << "," << down);
        EXPECT_EQ(tracker.Press(rects, left + right, top + down).has_value(), isHit);
        EXPECT_EQ(tracker.Pressed().has_value(), isHit);
    }
}

TEST_F(ButtonTrackerTest, RunsTheButtonOnlyInsideIt) {
    ASSERT_EQ(tracker.Press(rects, left + 5, top + 5), MainButton::newFormula);
    EXPECT_EQ(tracker.Release(rects, left + 110, top), MainButton::newFormula);
    EXPECT_EQ(tracker.Pressed(), std::nullopt);
    const PressRow outside[] = {{111, 5, false}, {5, 28, false}, {-1, 5, false}, {5, -1, false}};
    for (const auto& [right, down, isHit] : outside) {
        SCOPED_TRACE(testing::Message() << right << "," << down);
        ASSERT_TRUE(tracker.Press(rects, left + 5, top + 5));
        EXPECT_EQ(tracker.Release(rects, left + right, top + down), std::nullopt);
        EXPECT_EQ(tracker.Pressed(), std::nullopt);
    }
}

TEST_F(ButtonTrackerTest, RunsNothingWhenAnotherButtonIsReleased) {
    ASSERT_TRUE(tracker.Press(rects, left + 5, top + 5));
    EXPECT_EQ(tracker.Release(rects, left + 5, top + 40), std::nullopt);
    EXPECT_EQ(tracker.Release(rects, left + 5, top + 5), std::nullopt);
}

TEST_F(ButtonTrackerTest, KnowsEveryButton) {
    for (int button = 0; button < mainButtonCount; ++button) {
        const EdgeRect& rect = rects[button];
        EXPECT_EQ(tracker.Press(rects, rect.left + 1, rect.top + 1),
                  static_cast<MainButton>(button));
    }
}

}  // namespace
}  // namespace orvane
