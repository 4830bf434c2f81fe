#include "editor/scroll_state.h"

#include <gtest/gtest.h>

#include <limits>

namespace orvane {
namespace {

// 100 lines of up to 80 columns in a view of 20 rows and 50 columns.
ViewScroll LargeText() {
    ViewScroll scroll;
    scroll.SetPages(20, 50);
    scroll.SetTextSize(100, 80);
    return scroll;
}

TEST(ViewScroll, LeavesRoomBehindTheText) {
    const ViewScroll scroll = LargeText();
    EXPECT_EQ(scroll.vertical.maximum, 105);
    EXPECT_EQ(scroll.horizontal.maximum, 116);
    EXPECT_EQ(scroll.vertical.page, 20);
    EXPECT_EQ(scroll.horizontal.page, 50);
    EXPECT_EQ(scroll.vertical.Limit(), 86);
    EXPECT_EQ(scroll.horizontal.Limit(), 67);
}

TEST(ViewScroll, HasNoWayToGoWhereEverythingFits) {
    ViewScroll scroll;
    scroll.SetTextSize(1, 0);
    scroll.SetPages(7, 37);
    EXPECT_EQ(scroll.vertical.Limit(), 0);
    EXPECT_EQ(scroll.horizontal.Limit(), 0);
    scroll.SetPages(6, 36);
    EXPECT_EQ(scroll.vertical.Limit(), 1);
    EXPECT_EQ(scroll.horizontal.Limit(), 1);
    scroll.SetPages(100, 100);
    EXPECT_EQ(scroll.vertical.Limit(), 0);
}

TEST(ScrollAxis, KeepsToItsRange) {
    ViewScroll scroll = LargeText();
    ScrollAxis& axis = scroll.vertical;
    struct Row {
        std::int64_t wanted;
        std::int32_t position;
    };
    for (const auto& [wanted, position] : {Row{0, 0},
                                           {1, 1},
                                           {86, 86},
                                           {87, 86},
                                           {1000, 86},
                                           {-1, 0},
                                           {std::numeric_limits<std::int64_t>::max(), 86},
                                           {std::numeric_limits<std::int64_t>::min(), 0}}) {
        SCOPED_TRACE(wanted);
        axis.MoveTo(wanted);
        EXPECT_EQ(axis.position, position);
    }
}

TEST(ViewScroll, ComesBackWhereTheTextGetsSmallerOrTheViewLarger) {
    ViewScroll scroll = LargeText();
    scroll.vertical.MoveTo(86);
    scroll.horizontal.MoveTo(67);
    scroll.SetTextSize(50, 40);
    EXPECT_EQ(scroll.vertical.position, 36);
    EXPECT_EQ(scroll.horizontal.position, 27);
    scroll.SetTextSize(100, 80);
    EXPECT_EQ(scroll.vertical.position, 36);
    scroll.SetPages(90, 110);
    EXPECT_EQ(scroll.vertical.position, 16);
    EXPECT_EQ(scroll.horizontal.position, 7);
}

struct KeepRow {
    const char* name;
    std::int32_t top, left;
    TextPosition caret;
    std::int32_t newTop, newLeft;
};

TEST(ViewScroll, KeepsTheCaretInView) {
    const KeepRow rows[] = {
        {"in the middle", 10, 5, {20, 30}, 10, 5},
        {"the top row", 10, 0, {10, 0}, 10, 0},
        {"above", 10, 0, {9, 0}, 9, 0},
        {"far above", 50, 0, {0, 0}, 0, 0},
        {"the bottom row", 10, 0, {29, 0}, 10, 0},
        {"below", 10, 0, {30, 0}, 11, 0},
        {"far below", 10, 0, {99, 0}, 80, 0},
        {"the first column", 0, 5, {0, 5}, 0, 5},
        {"left of it", 0, 25, {0, 24}, 0, 4},
        {"left, near the start", 0, 15, {0, 14}, 0, 0},
        {"the last column", 0, 5, {0, 54}, 0, 5},
        {"two beyond it stay as well", 0, 5, {0, 56}, 0, 5},
        {"right of that", 0, 5, {0, 57}, 0, 44},
        {"at the end of the longest line", 0, 0, {0, 80}, 0, 67},
        {"both ways", 50, 25, {3, 2}, 3, 0},
    };
    for (const auto& [name, top, left, caret, newTop, newLeft] : rows) {
        SCOPED_TRACE(name);
        ViewScroll scroll = LargeText();
        scroll.vertical.MoveTo(top);
        scroll.horizontal.MoveTo(left);
        ASSERT_EQ(scroll.vertical.position, top);
        ASSERT_EQ(scroll.horizontal.position, left);
        scroll.KeepInView(caret);
        EXPECT_EQ(scroll.vertical.position, newTop);
        EXPECT_EQ(scroll.horizontal.position, newLeft);
    }
}

struct ReachRow {
    std::int32_t pixels, cellSize, cells;
};

TEST(CellsReached, RoundsAwayFromZero) {
    for (const auto& [pixels, cellSize, cells] : {ReachRow{0, 16, 0},
                                                  {1, 16, 1},
                                                  {15, 16, 1},
                                                  {16, 16, 1},
                                                  {17, 16, 2},
                                                  {-1, 16, -1},
                                                  {-16, 16, -1},
                                                  {-17, 16, -2},
                                                  {-32, 16, -2},
                                                  {5, 1, 5},
                                                  {-5, 1, -5}}) {
        SCOPED_TRACE(pixels);
        EXPECT_EQ(CellsReached(pixels, cellSize), cells);
    }
}

struct DragRow {
    const char* name;
    std::int32_t x, y;
    std::int32_t newTop, newLeft;
};

// The view is 405 x 327 pixels: 50 columns of 8 and 20 rows of 16 pixels and a piece of one more.
TEST(ViewScroll, FollowsTheMouseOutOfTheView) {
    const DragRow rows[] = {
        {"inside", 100, 100, 40, 30},          {"the corners of the inside", 404, 326, 40, 30},
        {"just above", 100, -1, 39, 30},       {"a row above", 100, -16, 39, 30},
        {"two rows above", 100, -17, 38, 30},  {"far above", 100, -10000, 0, 30},
        {"just below", 100, 327, 42, 30},      {"a row further", 100, 337, 43, 30},
        {"far below", 100, 10000, 86, 30},     {"just left", -1, 100, 40, 29},
        {"two columns left", -9, 100, 40, 28}, {"just right", 405, 100, 40, 32},
        {"far right", 10000, 100, 40, 67},     {"beyond a corner", -1, 327, 42, 29},
    };
    for (const auto& [name, x, y, newTop, newLeft] : rows) {
        SCOPED_TRACE(name);
        ViewScroll scroll = LargeText();
        scroll.vertical.MoveTo(40);
        scroll.horizontal.MoveTo(30);
        scroll.FollowDrag(
            {.x = x, .y = y, .width = 405, .height = 327, .cellWidth = 8, .lineHeight = 16});
        EXPECT_EQ(scroll.vertical.position, newTop);
        EXPECT_EQ(scroll.horizontal.position, newLeft);
    }
}

TEST(ScrollAxis, FollowsADragOnlyBeyondThePage) {
    ViewScroll scroll = LargeText();
    ScrollAxis& axis = scroll.vertical;
    axis.MoveTo(40);
    axis.FollowDrag(0);
    EXPECT_EQ(axis.position, 40);
    axis.FollowDrag(19);
    EXPECT_EQ(axis.position, 40);
    axis.FollowDrag(20);
    EXPECT_EQ(axis.position, 41);
    axis.FollowDrag(-3);
    EXPECT_EQ(axis.position, 38);
}

}  // namespace
}  // namespace orvane
