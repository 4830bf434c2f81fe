#include "windows/rich_text_layout.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {
namespace {

// Letters half as wide as the font is high, one pixel wider in bold type; bitmap 1 alone.
class SquareLetters : public LabelMeasure {
public:
    LabelSize TextSize(const LabelFont& font, std::string_view text) override {
        const std::int32_t letter = font.size / 2 + (font.bold ? 1 : 0);
        return {static_cast<std::int32_t>(text.size()) * letter, font.size};
    }
    std::optional<LabelSize> BitmapSize(std::int32_t number) override {
        if (number != 1) return std::nullopt;
        return LabelSize{30, 20};
    }
};

constexpr std::int32_t areaWidth = 200;

LabelLayout LayOut(std::string_view text) {
    SquareLetters letters;
    return LayOutRichText(ParseRichText(text), areaWidth, letters);
}

TEST(LayOutRichText, PlacesPiecesAndCountsTheHeight) {
    struct Row {
        std::string_view text;
        std::vector<LabelRect> rects;
        std::int32_t height;
    };
    const Row rows[] = {
        {"", {}, 12},
        {"ab", {{94, 0, 12, 12}}, 12},
        {"abc", {{91, 0, 18, 12}}, 12},
        {"a\nb", {{97, 0, 6, 12}, {97, 12, 6, 12}}, 24},
        {"a<br>b", {{97, 0, 6, 12}, {97, 12, 6, 12}}, 24},
        {"a<p>b", {{97, 0, 6, 12}, {97, 24, 6, 12}}, 36},
        {"a\n", {{97, 0, 6, 12}}, 24},
        {"a<font size='30'><p></font>", {{97, 0, 6, 12}}, 12 + 30 + 12},
        {"<font align='left'>a", {{0, 0, 6, 12}}, 12},
        {"<font align='right'>a", {{194, 0, 6, 12}}, 12},
        {"a<br><font align='right'>b<br></font>c",
         {{97, 0, 6, 12}, {194, 12, 6, 12}, {97, 24, 6, 12}},
         36},
        // The whole line goes by the alignment that holds where it ends.
        {"<font align='left'>a</font>b", {{94, 0, 6, 12}, {100, 0, 6, 12}}, 12},
        // A line wider than the area starts outside it.
        {"<font size='40'>abcdefghijklm", {{100 - 130, 0, 260, 40}}, 40},
        {"<font size='40' align='right'>abcdefghijklm", {{-60, 0, 260, 40}}, 40},
        // Tall and small pieces in one line.
        {"<font align='left'>a<font size='30'>b</font>", {{0, 9, 6, 12}, {6, 0, 15, 30}}, 30},
        {"<font align='left' valign='top'>a<font size='30'>b</font>",
         {{0, 0, 6, 12}, {6, 0, 15, 30}},
         30},
        {"<font align='left' valign='bottom'>a<font size='30' valign='top'>b</font>",
         {{0, 18, 6, 12}, {6, 0, 15, 30}},
         30},
        {"<font align='left'>a<font size='31'>b</font>", {{0, 15 - 6, 6, 12}, {6, 0, 15, 31}}, 31},
        // Spaces.
        {"<font align='left'><hspace size='50'>a", {{50, 0, 6, 12}}, 12},
        {"a<hspace size='50'>b", {{69, 0, 6, 12}, {125, 0, 6, 12}}, 12},
        {"<hspace size='50'>", {}, 12},
        {"<hspace size='50'>\n<font align='left'>a", {{0, 12, 6, 12}}, 24},
        {"<vspace size='50'>a", {{97, 50, 6, 12}}, 62},
        {"a<vspace size='50'>b", {{97, 0, 6, 12}, {97, 62, 6, 12}}, 74},
        {"a<vspace size='-4'>b", {{97, 0, 6, 12}, {97, 8, 6, 12}}, 20},
        // Rules.
        {"<hr>", {{50, 2, 100, 2}}, 6 + 12},
        {"<hr size='5'>", {{5, 2, 190, 5}}, 9 + 12},
        {"<hr width='40'>", {{80, 2, 40, 2}}, 6 + 12},
        {"<hr width='40' align='left'>", {{0, 2, 40, 2}}, 6 + 12},
        {"<hr width='40' align='right'>", {{160, 2, 40, 2}}, 6 + 12},
        {"a<hr>b", {{97, 0, 6, 12}, {50, 14, 100, 2}, {97, 18, 6, 12}}, 30},
        {"a\n<hr>b", {{97, 0, 6, 12}, {50, 14, 100, 2}, {97, 18, 6, 12}}, 30},
        // Pictures.
        {"<font align='left'>a<img src='#1'>", {{0, 6, 6, 12}, {6, 0, 34, 24}}, 24},
        {"<font align='left'>a<img src='#1' border='0'>", {{0, 4, 6, 12}, {6, 0, 30, 20}}, 20},
        // A line without a run is as high as a blank, whatever pictures are on it.
        {"<img src='#1'>", {{83, -6, 34, 24}}, 12},
        {"<img src='#1' border='0'>", {{85, -4, 30, 20}}, 12},
        {"<font valign='top'><img src='#1'>", {{83, 0, 34, 24}}, 12},
        {"<font valign='bottom' size='40'><img src='#1'></font>", {{83, -12, 34, 24}}, 12},
        {"<font valign='bottom' size='40'><img src='#1'><br></font>", {{83, 16, 34, 24}}, 52},
        {"a<br><img src='#1'>", {{97, 0, 6, 12}, {83, 6, 34, 24}}, 24},
        // Where something else ends the line it is as high as its pieces.
        {"<img src='#1'><hr>", {{83, 0, 34, 24}, {50, 26, 100, 2}}, 24 + 6 + 12},
        {"<img src='#1'><vspace size='5'>", {{83, 0, 34, 24}}, 24 + 5 + 12},
        {"<font align='left'>a<img src='#1' border='5'>", {{0, 9, 6, 12}, {6, 0, 40, 30}}, 30},
        {"<img src='#2'>", {}, 12},
        // Without an end the last line is lost.
        {"a\nb<br", {{97, 0, 6, 12}}, 12},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const LabelLayout layout = LayOut(row.text);
        std::vector<LabelRect> rects;
        for (const LabelPiece& piece : layout.pieces) rects.push_back(piece.rect);
        EXPECT_EQ(rects, row.rects);
        EXPECT_EQ(layout.totalHeight, row.height);
        EXPECT_TRUE(layout.links.empty());
    }
}

TEST(LayOutRichText, TellsWhichItemAPieceShows) {
    const std::string_view text = "a<br><hr>b<img src='#2'><img src='#1'>";
    const LabelDocument document = ParseRichText(text);
    std::vector<LabelItemKind> kinds;
    for (const LabelPiece& piece : LayOut(text).pieces) {
        kinds.push_back(document.items[piece.item].kind);
    }
    EXPECT_EQ(kinds, (std::vector<LabelItemKind>{LabelItemKind::run, LabelItemKind::rule,
                                                 LabelItemKind::run, LabelItemKind::picture}));
}

TEST(LayOutRichText, ListsLinksInOrder) {
    const LabelLayout layout =
        LayOut("<font align='left'>a<a href='one'>bc<br>d</a>e<a href='two'><img src='#1'>f</a>g");
    const LabelRect rects[] = {{6, 0, 12, 12}, {0, 18, 6, 12}, {12, 12, 34, 24}, {46, 18, 6, 12}};
    const std::size_t targets[] = {0, 0, 1, 1};
    ASSERT_EQ(layout.links.size(), std::size(rects));
    for (std::size_t at = 0; at < std::size(rects); ++at) {
        SCOPED_TRACE(at);
        EXPECT_EQ(layout.links[at].rect, rects[at]);
        EXPECT_EQ(layout.links[at].target, targets[at]);
    }
}

TEST(LayOutRichText, GivesALinkTheRoomOfItsLargerLook) {
    struct Row {
        std::string_view attributes;
        std::int32_t width, height;
    };
    constexpr Row rows[] = {{"", 12, 12},
                            {"style='b'", 14, 12},
                            {"size='30'", 30, 30},
                            {"size='4'", 12, 12},
                            {"color='1,1,1'", 12, 12}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.attributes);
        const LabelLayout layout = LayOut(
            std::string("<font align='left'><a href='t' ").append(row.attributes) + ">ab</a>c");
        ASSERT_EQ(layout.pieces.size(), 2U);
        EXPECT_EQ(layout.pieces[0].rect, (LabelRect{0, 0, row.width, row.height}));
        EXPECT_EQ(layout.pieces[1].rect.left, row.width);
        EXPECT_EQ(layout.totalHeight, row.height);
        ASSERT_EQ(layout.links.size(), 1U);
        EXPECT_EQ(layout.links[0].rect, layout.pieces[0].rect);
    }
}

TEST(LayOutRichText, KeepsCountingBelowTheCanvas) {
    std::string text;
    for (int line = 0; line < 1000; ++line) text += "a\n";
    EXPECT_EQ(LayOut(text).totalHeight, 1001 * 12);
    EXPECT_GT(1001 * 12, labelCanvasRows);
}

TEST(LayOutRichText, TakesAnyText) {
    constexpr std::string_view pieces[] = {
        "<br>",
        "x",
        "<hr>",
        "<hr width='2000000000' size='2000000000'>",
        "<p>",
        "\n",
        "<a href='t' size='1999'>",
        "</a>",
        "</font>",
        "<vspace size='-2147483647'>",
        "<vspace size='2147483647'>",
        "<hspace size='-2147483647'>",
        "<hspace size='2147483647'>",
        "<img src='#1' border='2147483647'>",
        "<img src='#1' border='-2147483647'>",
        "<hr width='-2147483647' size='-2147483647' align='right'>",
        "<font align='right' valign='bottom' size='1999'>",
        "<font align='left'>"};
    std::mt19937 random(8102);
    for (int round = 0; round < 1000; ++round) {
        std::string text;
        for (std::uint32_t left = random() % 80; left > 0; --left) {
            text += pieces[random() % std::size(pieces)];
        }
        const LabelDocument document = ParseRichText(text);
        SquareLetters letters;
        const LabelLayout layout = LayOutRichText(document, areaWidth, letters);
        ASSERT_LE(layout.pieces.size(), document.items.size());
        for (const LabelLink& link : layout.links) ASSERT_LT(link.target, 80U);
        LabelScroller scroller;
        scroller.PointAt(layout, 100, static_cast<std::int32_t>(random() % 200), 50);
        scroller.Press(layout, 100, 50, 50);
        scroller.DragTo(layout, -70);
    }
}

TEST(LayOutRichText, PlacesLongTexts) {
    std::string text = "<a href='" + std::string(200'000, 't') + "'>";
    while (text.size() < 1'000'000) text += "x<br>";
    const LabelLayout layout = LayOut(text);
    EXPECT_EQ(layout.links.size(), layout.pieces.size());
    EXPECT_GT(layout.links.size(), 150'000U);
    std::string oneLine;
    while (oneLine.size() < 1'000'000) oneLine += "x<b>";
    EXPECT_EQ(LayOut(oneLine).totalHeight, 12);
}

TEST(LabelRect, HoldsItsTopLeftCornerOnly) {
    const LabelRect rect = {10, 20, 30, 40};
    EXPECT_TRUE(rect.Holds(10, 20));
    EXPECT_TRUE(rect.Holds(39, 59));
    EXPECT_FALSE(rect.Holds(9, 20));
    EXPECT_FALSE(rect.Holds(10, 19));
    EXPECT_FALSE(rect.Holds(40, 59));
    EXPECT_FALSE(rect.Holds(39, 60));
    EXPECT_FALSE((LabelRect{10, 20, -5, 40}.Holds(8, 30)));
}

TEST(IsOpenableTarget, LeavesFunctionAddressesAlone) {
    EXPECT_TRUE(IsOpenableTarget("http://x.org/#top"));
    EXPECT_TRUE(IsOpenableTarget("readme.txt"));
    EXPECT_FALSE(IsOpenableTarget("#text#1234"));
    EXPECT_FALSE(IsOpenableTarget("#text#0"));
    EXPECT_FALSE(IsOpenableTarget("#0"));
    EXPECT_FALSE(IsOpenableTarget("#"));
    EXPECT_FALSE(IsOpenableTarget(""));
}

LabelLayout Tall(std::int32_t totalHeight) {
    LabelLayout layout;
    layout.totalHeight = totalHeight;
    return layout;
}

TEST(LabelScroller, StartsSlowly) {
    LabelScroller scroller;
    EXPECT_EQ(scroller.scrollDelay, 40);
    EXPECT_EQ(scroller.FirstDelay(), 400);
    scroller.scrollDelay = 80;
    EXPECT_EQ(scroller.FirstDelay(), 800);
    EXPECT_EQ(scroller.scrollOffset, 0);
    EXPECT_FALSE(scroller.dragEnabled || scroller.dragging);
}

TEST(LabelScroller, StepsUpwardAndBackToOne) {
    struct Row {
        std::int32_t before, total, after;
    };
    constexpr Row rows[] = {{-50, 300, -49}, {-1, 300, 0},   {0, 300, 1}, {299, 300, 300},
                            {300, 300, 1},   {1000, 300, 1}, {0, 0, 1},   {1, 0, 1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.before);
        LabelScroller scroller;
        scroller.scrollOffset = row.before;
        scroller.Step(Tall(row.total));
        EXPECT_EQ(scroller.scrollOffset, row.after);
    }
}

TEST(LabelScroller, ShowsTheTextInALoop) {
    struct Row {
        std::int32_t offset, total, controlHeight;
        std::vector<LabelStrip> strips;
    };
    const Row rows[] = {
        {0, 300, 100, {{0, 0, 100}}},
        {50, 300, 100, {{50, 0, 100}}},
        {200, 300, 100, {{200, 0, 100}}},
        {201, 300, 100, {{201, 0, 99}, {0, 99, 1}}},
        {299, 300, 100, {{299, 0, 1}, {0, 1, 99}}},
        {300, 300, 100, {{0, 0, 100}}},
        {400, 300, 100, {{0, 0, 100}}},
        {-50, 300, 100, {{0, 50, 50}}},
        {-99, 300, 100, {{0, 99, 1}}},
        {-100, 300, 100, {}},
        {-500, 300, 100, {}},
        // What fits does not move.
        {50, 100, 100, {{0, 0, 100}}},
        {-50, 60, 100, {{0, 0, 60}}},
        {1, 101, 100, {{1, 0, 100}}},
        {2, 101, 100, {{2, 0, 99}, {0, 99, 1}}},
        {7, 0, 100, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.offset) + " of " + std::to_string(row.total));
        LabelScroller scroller;
        scroller.scrollOffset = row.offset;
        EXPECT_EQ(LabelScroller::Scrolls(Tall(row.total), row.controlHeight),
                  row.total > row.controlHeight);
        EXPECT_EQ(scroller.Strips(Tall(row.total), row.controlHeight), row.strips);
    }
}

TEST(LabelScroller, FindsTheLinkUnderThePointer) {
    LabelLayout layout = Tall(300);
    layout.links = {{{10, 0, 50, 20}, 7}, {{10, 150, 50, 20}, 8}, {{20, 10, 50, 145}, 9}};
    struct Row {
        std::int32_t offset, controlHeight, x, y;
        std::optional<std::size_t> link;
    };
    const Row rows[] = {
        {0, 100, 15, 5, 0},
        {0, 100, 5, 5, std::nullopt},
        {0, 100, 25, 15, 0},  // the first of two
        {0, 100, 25, 25, 2},
        {100, 100, 15, 55, 1},
        {100, 100, 25, 52, 1},
        {290, 100, 15, 15, 0},  // in the second round of the text
        {290, 100, 15, 9, std::nullopt},
        {290, 100, 15, 10, 0},
        {200, 100, 15, 99, std::nullopt},
        {-50, 100, 15, 55, 0},
        {-50, 100, 15, 5, std::nullopt},
        // A text that fits: the offset counts for nothing.
        {100, 300, 15, 155, 1},
        {100, 300, 15, 55, std::nullopt},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.offset) + " at " + std::to_string(row.y));
        LabelScroller scroller;
        scroller.scrollOffset = row.offset;
        EXPECT_EQ(scroller.LinkAt(layout, row.controlHeight, row.x, row.y), row.link);
        scroller.hotLink = 2;
        scroller.PointAt(layout, row.controlHeight, row.x, row.y);
        EXPECT_EQ(scroller.hotLink, row.link);
    }
}

// Rows above the first are reached from the total less the offset on.
TEST(LabelScroller, WrapsTheRowBehindTheTotalLessTheOffset) {
    LabelLayout layout = Tall(300);
    layout.links = {{{0, -140, 50, 100}, 0}};
    LabelScroller scroller;
    scroller.scrollOffset = 100;
    EXPECT_FALSE(scroller.LinkAt(layout, 100, 5, 60));  // row 160 is tried alone
    scroller.scrollOffset = 120;
    EXPECT_FALSE(scroller.LinkAt(layout, 100, 5, 60));  // row 180 is not more than 180
    EXPECT_TRUE(scroller.LinkAt(layout, 100, 5, 61));   // row 181, and with it row -119
}

TEST(LabelScroller, FollowsAPressedLink) {
    LabelLayout layout = Tall(300);
    layout.links = {{{10, 0, 50, 20}, 7}};
    LabelScroller scroller;
    scroller.dragEnabled = true;
    scroller.PointAt(layout, 100, 15, 5);
    ASSERT_TRUE(scroller.hotLink);
    const LabelPress press = scroller.Press(layout, 100, 15, 5);
    EXPECT_EQ(press.kind, LabelPressKind::followLink);
    EXPECT_EQ(press.target, 7U);
    EXPECT_FALSE(scroller.hotLink);
    EXPECT_FALSE(scroller.dragging);
}

TEST(LabelScroller, DragsATallTextOnly) {
    struct Row {
        bool enabled;
        std::int32_t total;
        LabelPressKind kind;
    };
    constexpr Row rows[] = {{true, 300, LabelPressKind::startDrag},
                            {false, 300, LabelPressKind::nothing},
                            {true, 100, LabelPressKind::nothing},
                            {true, 60, LabelPressKind::nothing},
                            {true, 101, LabelPressKind::startDrag}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.total);
        LabelScroller scroller;
        scroller.dragEnabled = row.enabled;
        scroller.scrollOffset = 40;
        EXPECT_EQ(scroller.Press(Tall(row.total), 100, 15, 30).kind, row.kind);
        const bool drags = row.kind == LabelPressKind::startDrag;
        EXPECT_EQ(scroller.dragging, drags);
        EXPECT_EQ(scroller.dragOrigin, drags ? 70 : 0);
        scroller.DragTo(Tall(row.total), 25);
        EXPECT_EQ(scroller.scrollOffset, drags ? 45 : 40);
        EXPECT_EQ(scroller.Release(), drags);
        EXPECT_FALSE(scroller.dragging);
    }
}

TEST(LabelScroller, DragsAroundTheLoop) {
    const LabelLayout layout = Tall(300);
    LabelScroller scroller;
    scroller.dragEnabled = true;
    scroller.scrollOffset = -50;
    scroller.Press(layout, 100, 15, 30);
    EXPECT_EQ(scroller.dragOrigin, -20);
    struct Row {
        std::int32_t y, offset;
    };
    constexpr Row rows[] = {{30, 250}, {-20, 0}, {-21, 1},   {-319, 299},
                            {-320, 0}, {280, 0}, {281, 299}, {900, 280}};
    for (const auto& [y, offset] : rows) {
        SCOPED_TRACE(y);
        scroller.DragTo(layout, y);
        EXPECT_EQ(scroller.scrollOffset, offset);
    }
    EXPECT_TRUE(scroller.Release());
    EXPECT_FALSE(scroller.Release());
    scroller.DragTo(layout, 0);
    EXPECT_EQ(scroller.scrollOffset, 280);
}

}  // namespace
}  // namespace orvane
