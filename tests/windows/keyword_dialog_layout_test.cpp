#include "windows/keyword_dialog_layout.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>

namespace orvane {

void PrintTo(const KeywordDialogLayout::Box& box, std::ostream* out) {
    *out << box.left << ' ' << box.top << ' ' << box.width << ' ' << box.height;
}

namespace {

using Box = KeywordDialogLayout::Box;

TEST(LayOutKeywordDialog, PlacesTheListAboveTwoButtons) {
    const KeywordDialogLayout layout = LayOutKeywordDialog(756, 501, 75, 23);
    EXPECT_EQ(layout.list, (Box{12, 12, 732, 444}));
    EXPECT_EQ(layout.helpButton, (Box{293, 466, 75, 23}));
    EXPECT_EQ(layout.closeButton, (Box{388, 466, 75, 23}));
}

TEST(LayOutKeywordDialog, RoundsTheMiddleOfAnOddWidthDown) {
    const KeywordDialogLayout layout = LayOutKeywordDialog(757, 501, 75, 23);
    EXPECT_EQ(layout.list.width, 733);
    EXPECT_EQ(layout.helpButton, (Box{293, 466, 75, 23}));
    EXPECT_EQ(layout.closeButton, (Box{388, 466, 75, 23}));
}

TEST(LayOutKeywordDialog, TakesTheSizeOfTheButtonsAsItIs) {
    const KeywordDialogLayout layout = LayOutKeywordDialog(400, 300, 100, 30);
    EXPECT_EQ(layout.helpButton, (Box{90, 258, 100, 30}));
    EXPECT_EQ(layout.closeButton, (Box{210, 258, 100, 30}));
    EXPECT_EQ(layout.list, (Box{12, 12, 376, 236}));
}

struct WidthRow {
    int clientWidth;
    std::array<int, keywordColumnCount> widths;
};

constexpr WidthRow widthRows[] = {
    {756, {90, 170, 20, 321, 80, 20}},  // 402 to share
    {1354, {90, 170, 20, 800, 200, 20}}, {757, {90, 170, 20, 322, 80, 20}},
    {355, {90, 170, 20, 0, 0, 20}},      {354, {90, 170, 20, 0, 0, 20}},
    {304, {90, 170, 20, -40, -10, 20}},  // a list narrower than 330 pixels
    {24, {90, 170, 20, -264, -66, 20}},
};

TEST(LayOutKeywordDialog, SharesTheWidthBetweenTheColumnsOfParameters) {
    for (const auto& [clientWidth, widths] : widthRows) {
        SCOPED_TRACE(clientWidth);
        EXPECT_EQ(LayOutKeywordDialog(clientWidth, 501, 75, 23).columnWidths, widths);
    }
}

}  // namespace
}  // namespace orvane
