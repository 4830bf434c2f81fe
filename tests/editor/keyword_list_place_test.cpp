#include <gtest/gtest.h>

#include <optional>

#include "editor/keyword_list.h"
#include "tests/editor/pixel_text.h"

namespace orvane {
namespace {

struct PlaceRow {
    PixelPoint caret;
    std::optional<PixelPoint> place;
};

TEST(PlaceList, OpensUnderTheLineToTheRightOrElseToTheLeft) {
    // A view of 600 by 300 with lines of 16 pixels, a list of 250 pixels.
    const PlaceRow rows[] = {
        {{0, 0}, PixelPoint{0, 16}},        {{100, 40}, PixelPoint{100, 56}},
        {{350, 0}, PixelPoint{350, 16}},  // fits exactly
        {{351, 0}, PixelPoint{101, 16}},    {{600, 0}, PixelPoint{350, 16}},
        {{100, 299}, PixelPoint{100, 315}}, {{100, 300}, std::nullopt},  // below the view
        {{100, -1}, std::nullopt},                                       // above it
        {{100, -16}, std::nullopt},
    };
    for (const auto& [caret, place] : rows) {
        SCOPED_TRACE(testing::PrintToString(caret));
        EXPECT_EQ(PlaceList(caret, 16, {600, 300}, {250, 182}), place);
    }
}

TEST(PlaceList, StaysRightOfTheCaretWhereItFitsOnNeitherSide) {
    constexpr PixelSize narrow = {300, 300};
    EXPECT_EQ(PlaceList({249, 0}, 16, narrow, {250, 182}), (PixelPoint{249, 16}));
    EXPECT_EQ(PlaceList({250, 0}, 16, narrow, {250, 182}), (PixelPoint{250, 16}));
    EXPECT_EQ(PlaceList({251, 0}, 16, narrow, {250, 182}), (PixelPoint{1, 16}));
    EXPECT_EQ(PlaceList({-40, 0}, 16, narrow, {250, 182}), (PixelPoint{-40, 16}));
}

struct ScreenRow {
    const char* what;
    PixelRect window;
    PixelRect line;
    PixelPoint place;
};

TEST(KeepOnScreen, LeavesTheLineReadable) {
    // A screen from (100, 50) to (900, 650).
    constexpr PixelRect screen = {100, 50, 800, 600};
    constexpr ScreenRow rows[] = {
        {"inside", {200, 116, 250, 182}, {200, 100, 8, 16}, {200, 116}},
        {"up to the corner", {650, 468, 250, 182}, {650, 452, 8, 16}, {650, 468}},
        {"over the bottom", {200, 469, 250, 182}, {200, 453, 8, 16}, {200, 271}},
        {"over the top", {200, 40, 250, 60}, {200, 100, 8, 16}, {200, 116}},
        {"over the right", {800, 116, 250, 182}, {800, 100, 8, 16}, {650, 116}},
        {"over the left", {20, 116, 250, 182}, {20, 100, 8, 16}, {100, 116}},
        {"no room above or under", {200, 416, 250, 400}, {200, 400, 8, 16}, {200, 250}},
        {"no room under or above", {200, 0, 250, 500}, {200, 500, 8, 16}, {200, 50}},
        {"wider and higher than all", {200, 116, 2000, 2000}, {200, 100, 8, 16}, {100, 50}},
    };
    for (const ScreenRow& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(KeepOnScreen(row.window, row.line, screen), row.place);
    }
}

}  // namespace
}  // namespace orvane
