#include "editor/caret_blink.h"

#include <gtest/gtest.h>

namespace orvane {
namespace {

CaretBlink WithFocus() {
    CaretBlink blink;
    blink.hasFocus = true;
    blink.Show();
    return blink;
}

// The ticks until the caret toggles, at most ten.
int TicksToToggle(CaretBlink& blink) {
    for (int tick = 1; tick <= 10; ++tick) {
        if (blink.Tick()) return tick;
    }
    return 0;
}

TEST(CaretBlink, TogglesEveryHalfSecond) {
    EXPECT_EQ(CaretBlink::tickMilliseconds * CaretBlink::ticksPerToggle, 500);
    CaretBlink blink = WithFocus();
    EXPECT_TRUE(blink.IsShown());
    EXPECT_EQ(TicksToToggle(blink), 5);
    EXPECT_FALSE(blink.IsShown());
    EXPECT_EQ(TicksToToggle(blink), 5);
    EXPECT_TRUE(blink.IsShown());
}

TEST(CaretBlink, CountsAnewAfterAnyShowOrHide) {
    CaretBlink blink = WithFocus();
    for (int tick = 0; tick < 4; ++tick) EXPECT_FALSE(blink.Tick());
    blink.Show();
    EXPECT_TRUE(blink.IsShown());
    EXPECT_EQ(TicksToToggle(blink), 5);
    for (int tick = 0; tick < 4; ++tick) EXPECT_FALSE(blink.Tick());
    blink.Hide();
    EXPECT_FALSE(blink.IsShown());
    EXPECT_EQ(TicksToToggle(blink), 5);
}

TEST(CaretBlink, NeitherShowsNorBlinksWithoutTheFocus) {
    CaretBlink blink;
    EXPECT_FALSE(blink.IsShown());
    blink.Show();
    EXPECT_FALSE(blink.IsShown());
    EXPECT_EQ(TicksToToggle(blink), 0);
    blink.hasFocus = true;
    EXPECT_TRUE(blink.IsShown());
    EXPECT_EQ(TicksToToggle(blink), 5);
}

}  // namespace
}  // namespace orvane
