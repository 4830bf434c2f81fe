#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "editor/text_lines.h"
#include "tests/editor/stored_text.h"

// How much room lines and their array have, and when they take more.

namespace orvane {
namespace {

TEST(TextLine, HasRoomForAThousandCharactersMore) {
    EXPECT_EQ(TextLine().capacity, 1000);
    EXPECT_EQ(TextLine("").capacity, 1000);
    EXPECT_EQ(TextLine("abc").capacity, 1003);
    EXPECT_EQ(TextLine(std::string(5000, 'x')).capacity, 6000);
    EXPECT_STREQ(TextLine().chars.get(), "");
    EXPECT_STREQ(TextLine("abc").chars.get(), "abc");
}

// Millions of lines must not take a thousand bytes each.
TEST(TextLine, TakesMemoryForItsRoomWhenItFirstGetsLonger) {
    EXPECT_EQ(TextLine().allocated, 0);
    TextLine line("abcd");
    EXPECT_EQ(line.allocated, 4);
    line.Remove(1, 3);
    line.InsertText(1, "xy");
    EXPECT_EQ(line.View(), "axyd");
    EXPECT_EQ(line.allocated, 4);
    line.InsertChar(2, 'z');
    EXPECT_EQ(line.View(), "axzyd");
    EXPECT_EQ(line.allocated, 1004);
    EXPECT_EQ(line.capacity, 1004);
    line.InsertText(5, std::string(1000, 'x'));
    EXPECT_EQ(line.allocated, 2005);
    EXPECT_EQ(line.capacity, 2005);
}

TEST(TextLine, GrowsOnlyWhenItIsFullAndNeverShrinks) {
    TextLines text;
    for (int typed = 0; typed < 1000; ++typed) text.InsertChar(0, typed / 2, 'x');
    EXPECT_EQ(text.LineAt(0).capacity, 1000);
    EXPECT_EQ(text.LineAt(0).length, 1000);
    EXPECT_TRUE(text.InsertChar(0, 500, 'y'));
    EXPECT_EQ(text.LineAt(0).capacity, 2001);  // 1001 more
    EXPECT_EQ(StoredText(text), std::string(500, 'x') + 'y' + std::string(500, 'x'));

    EXPECT_TRUE(text.DeleteSelected(Range(0, 0, 0, 1001)));
    EXPECT_EQ(text.LineAt(0).length, 0);
    EXPECT_EQ(text.LineAt(0).capacity, 2001);
}

TEST(TextLine, GrowsToWhatATextNeedsAndAThousandMore) {
    TextLine line("abc");
    line.InsertText(1, std::string(1000, 'x'));
    EXPECT_EQ(line.capacity, 1003);
    line.InsertText(1, "y");
    EXPECT_EQ(line.length, 1004);
    EXPECT_EQ(line.capacity, 2004);
    EXPECT_EQ(line.View(), "ay" + std::string(1000, 'x') + "bc");
    line.InsertText(1004, std::string(3000, 'z'));
    EXPECT_EQ(line.capacity, 5004);
    line.Remove(0, line.length);
    EXPECT_EQ(line.capacity, 5004);
    EXPECT_STREQ(line.chars.get(), "");
}

// The capacity of each line.
std::vector<std::int32_t> Capacities(const TextLines& text) {
    std::vector<std::int32_t> capacities;
    for (std::int32_t index = 0; index < text.count; ++index) {
        capacities.push_back(text.LineAt(index).capacity);
    }
    return capacities;
}

using Sizes = std::vector<std::int32_t>;

TEST(TextLines, LinesOfATextHaveRoomForAThousandCharactersMore) {
    TextLines text;
    Fill(text, "abc\n\r\r\r\n" + std::string(2000, 'x') + "\r\n");
    EXPECT_EQ(Capacities(text), (Sizes{1003, 1000, 3000, 1000}));  // no room for a "\r"
}

TEST(TextLines, ASplitLeavesTheFrontItsRoomAndMakesALineOfTheTail) {
    TextLines text;
    Fill(text, std::string(500, 'x'));
    EXPECT_TRUE(text.SplitLine(0, 100));
    EXPECT_EQ(Capacities(text), (Sizes{1500, 1400}));
    EXPECT_TRUE(text.SplitLine(0, 0));
    EXPECT_EQ(Capacities(text), (Sizes{1500, 1100, 1400}));
    EXPECT_TRUE(text.SplitLine(2, 400));
    EXPECT_EQ(Capacities(text), (Sizes{1500, 1100, 1400, 1000}));
}

TEST(TextLines, JoiningGrowsTheFrontOnlyWhereItMust) {
    TextLines text;
    Fill(text, "abc\n" + std::string(1000, 'x') + "\ny");
    EXPECT_TRUE(text.JoinWithNext(0));
    EXPECT_EQ(Capacities(text), (Sizes{1003, 1001}));
    EXPECT_TRUE(text.JoinWithNext(0));
    EXPECT_EQ(Capacities(text), Sizes{2004});
}

TEST(TextLines, DeletingLinesGrowsTheFirstOnlyWhereItMust) {
    const std::string longLine(3000, 'x');
    TextLines text;
    Fill(text, "abc\nd\n" + longLine);
    EXPECT_TRUE(text.DeleteSelected(Range(0, 3, 2, 2000)));  // 3 + 1000 fit
    EXPECT_EQ(Capacities(text), Sizes{1003});
    Fill(text, "abc\nd\n" + longLine);
    EXPECT_TRUE(text.DeleteSelected(Range(0, 3, 2, 1999)));
    EXPECT_EQ(Capacities(text), Sizes{2004});
}

TEST(TextLines, RemovingExactlyGrowsTheFirstOnlyWhereItMust) {
    struct Row {
        std::size_t runLength;
        std::int32_t capacity;
    };
    constexpr Row rows[] = {{2000, 1003}, {1999, 2004}};  // 3 + 1000 fit
    for (const auto& [runLength, capacity] : rows) {
        SCOPED_TRACE(runLength);
        std::string removed(runLength + 1, 'x');
        removed[0] = '\n';
        TextPosition position;
        std::int32_t breaks = 0;
        TextLines text;
        Fill(text, "abc\n" + std::string(3000, 'x'));
        EXPECT_TRUE(text.RemoveExact(0, 3, removed, position, breaks));
        EXPECT_EQ(Capacities(text), Sizes{capacity});
    }
}

TEST(TextLines, InsertedLinesHaveRoomForAThousandCharactersMore) {
    TextPosition end;
    std::int32_t added = 0;
    TextLines text;
    Fill(text, "abcd");
    EXPECT_TRUE(text.InsertText(0, 2, "x\nyyy\n" + std::string(1000, 'z'), end, added));
    // The last piece goes in front of the tail, which was made with room for 1000 more.
    EXPECT_EQ(Capacities(text), (Sizes{1004, 1003, 1002}));
    EXPECT_TRUE(
        text.InsertText(2, 0, std::string(2000, 'x') + "\n" + std::string(1001, 'z'), end, added));
    EXPECT_EQ(Capacities(text), (Sizes{1004, 1003, 3000, 1002 + 1001 + 1000}));
}

TEST(TextLines, SlotsGrowByAHundredWhenTheyAreFull) {
    TextLines text;
    for (int line = 1; line < 100; ++line) text.SplitLine(0, 0);
    EXPECT_EQ(text.count, 100);
    EXPECT_EQ(text.capacity, 100);
    text.SplitLine(50, 0);
    EXPECT_EQ(text.count, 101);
    EXPECT_EQ(text.capacity, 200);

    TextPosition end;
    std::int32_t added = 0;
    EXPECT_TRUE(text.InsertText(7, 0, std::string(99, '\n'), end, added));
    EXPECT_EQ(text.count, 200);
    EXPECT_EQ(text.capacity, 200);
    EXPECT_TRUE(text.InsertText(7, 0, std::string(201, '\n'), end, added));
    EXPECT_EQ(text.count, 401);
    EXPECT_EQ(text.capacity, 500);
    EXPECT_EQ(StoredText(text), std::string(400, '\n'));

    Fill(text, "");
    EXPECT_EQ(text.count, 1);
    EXPECT_EQ(text.capacity, 500);
    Fill(text, std::string(499, '\n'));
    EXPECT_EQ(text.capacity, 500);
    Fill(text, std::string(500, '\n'));
    EXPECT_EQ(text.capacity, 600);
    TextLines fresh;
    Fill(fresh, std::string(250, '\n'));
    EXPECT_EQ(fresh.capacity, 300);
}

}  // namespace
}  // namespace orvane
