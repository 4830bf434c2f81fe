#include "editor/text_lines.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/editor/stored_text.h"

namespace orvane {
namespace {

using namespace std::string_view_literals;

using Lines = std::vector<std::string>;

TEST(TextLines, IsOneEmptyLineAtFirst) {
    const TextLines text;
    EXPECT_EQ(StoredLines(text), Lines{""});
    EXPECT_EQ(text.count, 1);
    EXPECT_EQ(text.capacity, 100);
    EXPECT_EQ(text.LineAt(0).capacity, 1000);
    EXPECT_EQ(text.longestLine, 0);
    EXPECT_EQ(text.lineCountSeen, 0);
}

TEST(TextLines, SetTextCutsAtLineFeedsAndLeavesReturnsOut) {
    struct Row {
        std::string_view content;
        Lines lines;
        std::string_view joined;
    };
    const Row rows[] = {
        {"", {""}, ""},
        {"a", {"a"}, "a"},
        {"a\r\nb", {"a", "b"}, "a\nb"},
        {"a\nb", {"a", "b"}, "a\nb"},
        {"a\n", {"a", ""}, "a\n"},
        {"\n", {"", ""}, "\n"},
        {"\n\na\n\n", {"", "", "a", "", ""}, "\n\na\n\n"},
        {"\r", {""}, ""},
        {"\r\r\n\r", {"", ""}, "\n"},
        {"a\rb\r\r\n\rc", {"ab", "c"}, "ab\nc"},
        {"a\0b\n\0"sv, {std::string("a\0b", 3), std::string(1, '\0')}, "a\0b\n\0"sv},
        {"\t\x80\xff", {"\t\x80\xff"}, "\t\x80\xff"},
    };
    TextLines text;
    for (const auto& [content, lines, joined] : rows) {
        SCOPED_TRACE(testing::PrintToString(content));
        EXPECT_TRUE(text.SetText(content));
        EXPECT_EQ(StoredLines(text), lines);
        EXPECT_EQ(StoredText(text), joined);
    }
}

TEST(TextLines, AppendTextToKeepsWhatStandsThere) {
    TextLines text;
    Fill(text, "a\nb");
    std::string out = "x\n";
    text.AppendTextTo(out);
    EXPECT_EQ(out, "x\na\nb");
}

TEST(TextLines, MeasureRefreshesTheLongestLineAndTheCount) {
    TextLines text;
    text.Measure();
    EXPECT_EQ(text.longestLine, 0);
    EXPECT_EQ(text.lineCountSeen, 1);

    Fill(text, "ab\nabcd\nabc\n");
    EXPECT_EQ(text.longestLine, 0);
    EXPECT_EQ(text.lineCountSeen, 1);
    text.Measure();
    EXPECT_EQ(text.longestLine, 4);
    EXPECT_EQ(text.lineCountSeen, 4);

    EXPECT_TRUE(text.DeleteSelected(Range(1, 0, 2, 0)));
    EXPECT_EQ(text.longestLine, 4);
    text.Measure();
    EXPECT_EQ(text.longestLine, 3);
    EXPECT_EQ(text.lineCountSeen, 3);
}

TEST(TextLines, InsertCharWantsAPositionInTheText) {
    struct Row {
        std::int32_t line, col;
        char ch;
        bool inserted;
        std::string_view result;
    };
    constexpr Row rows[] = {
        {0, 0, 'x', true, "xab\ncd"},       {0, 1, 'x', true, "axb\ncd"},
        {0, 2, 'x', true, "abx\ncd"},       {1, 2, 'x', true, "ab\ncdx"},
        {1, 0, '\t', true, "ab\n\tcd"},     {0, 1, '\0', true, "a\0b\ncd"sv},
        {0, 3, 'x', false, "ab\ncd"},       {0, -1, 'x', false, "ab\ncd"},
        {-1, 0, 'x', false, "ab\ncd"},      {2, 0, 'x', false, "ab\ncd"},
        {0, 1, '\n', false, "ab\ncd"},      {0, 1, '\r', false, "ab\ncd"},
        {0, INT_MAX, 'x', false, "ab\ncd"}, {INT_MIN, INT_MIN, 'x', false, "ab\ncd"},
    };
    for (const auto& [line, col, ch, inserted, result] : rows) {
        SCOPED_TRACE(testing::Message() << line << ", " << col << ", " << int{ch});
        TextLines text;
        Fill(text, "ab\ncd");
        EXPECT_EQ(text.InsertChar(line, col, ch), inserted);
        EXPECT_EQ(StoredText(text), result);
    }
}

TEST(TextLines, DeleteCharGivesTheCharacterThatStoodThere) {
    struct Row {
        std::int32_t line, col;
        char ch;
        std::string_view result;
    };
    constexpr Row rows[] = {
        {0, 0, 'a', "b\ncd"},      {0, 1, 'b', "a\ncd"},      {1, 1, 'd', "ab\nc"},
        {0, 2, 0, "ab\ncd"},       {1, 2, 0, "ab\ncd"},       {0, -1, 0, "ab\ncd"},
        {-1, 0, 0, "ab\ncd"},      {2, 0, 0, "ab\ncd"},       {0, 3, 0, "ab\ncd"},
        {0, INT_MAX, 0, "ab\ncd"}, {INT_MAX, 0, 0, "ab\ncd"},
    };
    for (const auto& [line, col, ch, result] : rows) {
        SCOPED_TRACE(testing::Message() << line << ", " << col);
        TextLines text;
        Fill(text, "ab\ncd");
        EXPECT_EQ(text.DeleteChar(line, col), ch);
        EXPECT_EQ(StoredText(text), result);
    }
}

TEST(TextLines, SplitLineTakesColumnsPastTheEndForTheEnd) {
    struct Row {
        std::int32_t line, col;
        bool split;
        Lines result;
    };
    const Row rows[] = {
        {0, 1, true, {"a", "b", "cd"}}, {0, 0, true, {"", "ab", "cd"}},
        {0, 2, true, {"ab", "", "cd"}}, {0, 3, true, {"ab", "", "cd"}},
        {1, 1, true, {"ab", "c", "d"}}, {1, INT_MAX, true, {"ab", "cd", ""}},
        {0, -1, false, {"ab", "cd"}},   {-1, 0, false, {"ab", "cd"}},
        {2, 0, false, {"ab", "cd"}},
    };
    for (const auto& [line, col, split, result] : rows) {
        SCOPED_TRACE(testing::Message() << line << ", " << col);
        TextLines text;
        Fill(text, "ab\ncd");
        EXPECT_EQ(text.SplitLine(line, col), split);
        EXPECT_EQ(StoredLines(text), result);
    }
}

TEST(TextLines, JoinWithNextIsRefusedForTheLastLine) {
    struct Row {
        std::int32_t line;
        bool joined;
        std::string_view result;
    };
    constexpr Row rows[] = {
        {0, true, "abcd\n"},    {1, true, "ab\ncd"},     {2, false, "ab\ncd\n"},
        {3, false, "ab\ncd\n"}, {-1, false, "ab\ncd\n"}, {INT_MAX, false, "ab\ncd\n"},
    };
    for (const auto& [line, joined, result] : rows) {
        SCOPED_TRACE(line);
        TextLines text;
        Fill(text, "ab\ncd\n");
        EXPECT_EQ(text.JoinWithNext(line), joined);
        EXPECT_EQ(StoredText(text), result);
    }
    TextLines one;
    EXPECT_FALSE(one.JoinWithNext(0));
}

TEST(TextLines, SelectsAndDeletesRangesInAnyOrder) {
    struct Row {
        SelRange range;
        std::string_view selected, left;
    };
    const std::string_view all = "abcd\nef\n\nghij";
    const Row rows[] = {
        {Range(0, 1, 0, 3), "bc", "ad\nef\n\nghij"},
        {Range(0, 2, 0, 2), "", all},
        {Range(0, 3, 0, 99), "d", "abc\nef\n\nghij"},
        {Range(0, 4, 0, 6), "", all},  // from the end of the only line
        {Range(0, 9, 0, 12), "", all},
        {Range(0, 2, 1, 1), "cd\ne", "abf\n\nghij"},
        {Range(0, 4, 1, 1), "\ne", "abcdf\n\nghij"},  // the first line gives only the break
        {Range(0, 9, 1, 1), "\ne", "abcdf\n\nghij"},
        {Range(0, 1, 3, 2), "bcd\nef\n\ngh", "aij"},
        {Range(1, 0, 2, 0), "ef\n", "abcd\n\nghij"},
        {Range(1, 1, 3, 99), "f\n\nghij", "abcd\ne"},
        {Range(2, 0, 3, 0), "\n", "abcd\nef\nghij"},
        {Range(2, 7, 3, 0), "\n", "abcd\nef\nghij"},
        {Range(0, 0, 3, 4), all, ""},
        {Range(0, 0, 3, INT_MAX), all, ""},
        // Lines that are not there, columns below 0.
        {Range(0, 0, 4, 0), "", all},
        {Range(-1, 0, 1, 1), "", all},
        {Range(4, 0, 5, 0), "", all},
        {Range(0, -1, 0, 2), "", all},
        {Range(0, 1, 1, -1), "", all},
        {Range(INT_MIN, INT_MIN, INT_MAX, INT_MAX), "", all},
    };
    for (const auto& [range, selected, left] : rows) {
        const SelRange reversed =
            Range(range.endLine, range.endCol, range.startLine, range.startCol);
        for (const SelRange& each : {range, reversed}) {
            SCOPED_TRACE(testing::Message() << each.startLine << ", " << each.startCol << " to "
                                            << each.endLine << ", " << each.endCol);
            TextLines text;
            Fill(text, all);
            EXPECT_EQ(text.GetSelected(each), selected);
            EXPECT_EQ(StoredText(text), all);
            text.DeleteSelected(each);
            EXPECT_EQ(StoredText(text), left);
        }
    }
}

TEST(TextLines, DeletingFailsOnlyForARangeThatIsNotInTheText) {
    TextLines text;
    Fill(text, "ab\ncd");
    EXPECT_FALSE(text.DeleteSelected(Range(0, 0, 2, 0)));
    EXPECT_FALSE(text.DeleteSelected(Range(-1, 0, 0, 0)));
    EXPECT_FALSE(text.DeleteSelected(Range(0, -1, 0, 1)));
    EXPECT_TRUE(text.DeleteSelected(Range(0, 1, 0, 1)));
    EXPECT_TRUE(text.DeleteSelected(Range(0, 5, 0, 9)));
    EXPECT_EQ(StoredText(text), "ab\ncd");
}

TEST(TextLines, InsertTextGivesThePositionBehindIt) {
    struct Row {
        std::string_view before;
        TextPosition at;
        std::string_view inserted;
        bool done;
        Lines result;
        TextPosition end;
        std::int32_t linesAdded;
    };
    const Row rows[] = {
        {"abcd", {0, 2}, "x\ny\nz", true, {"abx", "y", "zcd"}, {2, 1}, 2},
        {"abcd", {0, 2}, "xyz", true, {"abxyzcd"}, {0, 5}, 0},
        {"abcd", {0, 2}, "\n", true, {"ab", "cd"}, {1, 0}, 1},
        {"abcd", {0, 0}, "\n", true, {"", "abcd"}, {1, 0}, 1},
        {"abcd", {0, 4}, "\n", true, {"abcd", ""}, {1, 0}, 1},
        {"abcd", {0, 4}, "x\n", true, {"abcdx", ""}, {1, 0}, 1},
        {"abcd", {0, 2}, "\nx", true, {"ab", "xcd"}, {1, 1}, 1},
        {"abcd", {0, 2}, "\n\n\n", true, {"ab", "", "", "cd"}, {3, 0}, 3},
        {"abcd", {0, 2}, "", true, {"abcd"}, {0, 2}, 0},
        {"a\nb\nc", {1, 1}, "x\ny", true, {"a", "bx", "y", "c"}, {2, 1}, 1},
        {"a\nb\nc", {2, 0}, "x\ny", true, {"a", "b", "x", "yc"}, {3, 1}, 1},
        {"abcd", {0, 2}, "x\r\ny\r", true, {"abx", "ycd"}, {1, 1}, 1},
        {"abcd", {0, 2}, "\r", true, {"abcd"}, {0, 2}, 0},
        {"",
         {0, 0},
         std::string_view("\0\n\0", 3),
         true,
         {std::string(1, '\0'), std::string(1, '\0')},
         {1, 1},
         1},
        // Positions that are not in the text.
        {"abcd", {0, 5}, "x\ny", false, {"abcd"}, {0, 5}, 0},
        {"abcd", {0, -1}, "x", false, {"abcd"}, {0, -1}, 0},
        {"abcd", {1, 0}, "x", false, {"abcd"}, {1, 0}, 0},
        {"abcd", {-1, 0}, "x\ny", false, {"abcd"}, {-1, 0}, 0},
        {"abcd", {7, 7}, "", false, {"abcd"}, {7, 7}, 0},
    };
    for (const auto& [before, at, inserted, done, result, end, linesAdded] : rows) {
        SCOPED_TRACE(testing::Message()
                     << testing::PrintToString(inserted) << " into "
                     << testing::PrintToString(before) << " at " << at.line << ", " << at.col);
        TextPosition outEnd = {77, 77};
        std::int32_t outLinesAdded = 77;
        TextLines text;
        Fill(text, before);
        EXPECT_EQ(text.InsertText(at.line, at.col, inserted, outEnd, outLinesAdded), done);
        EXPECT_EQ(StoredLines(text), result);
        EXPECT_EQ(outEnd, end);
        EXPECT_EQ(outLinesAdded, linesAdded);

        // RestoreText differs in the empty text alone.
        TextLines restored;
        Fill(restored, before);
        EXPECT_EQ(restored.RestoreText(at.line, at.col, inserted, outEnd, outLinesAdded),
                  done && !inserted.empty());
        EXPECT_EQ(StoredLines(restored), result);
        EXPECT_EQ(outEnd, end);
        EXPECT_EQ(outLinesAdded, linesAdded);
    }
}

TEST(TextLines, RemoveExactStopsAtTheFirstDifference) {
    struct Row {
        std::string_view before;
        TextPosition at;
        std::string_view removed;
        bool done;
        Lines result;
        std::int32_t linesRemoved;
    };
    const Row rows[] = {
        {"abcd", {0, 1}, "bc", true, {"ad"}, 0},
        {"abcd", {0, 0}, "abcd", true, {""}, 0},
        {"abcd", {0, 1}, "", true, {"abcd"}, 0},
        {"abx\ny\nzcd", {0, 2}, "x\ny\nz", true, {"abcd"}, 2},
        {"ab\ncd\nef", {0, 2}, "\n", true, {"abcd", "ef"}, 1},
        {"ab\n\n\ncd", {0, 2}, "\n\n\n", true, {"abcd"}, 3},
        {"ab\n\n\ncd", {0, 1}, "b\n\n\nc", true, {"ad"}, 3},
        {"ab\ncd", {0, 2}, "\ncd", true, {"ab"}, 1},
        {"a\0b"sv, {0, 1}, "\0b"sv, true, {"a"}, 0},
        // Differences; the runs and breaks ahead of them are gone.
        {"abcd", {0, 1}, "bx", false, {"abcd"}, 0},
        {"abcd", {0, 1}, "BC", false, {"abcd"}, 0},
        {"abcd", {0, 2}, "cde", false, {"abcd"}, 0},
        {"abcd", {0, 4}, "a", false, {"abcd"}, 0},
        {"a\0b"sv, {0, 1}, "\0c"sv, false, {std::string("a\0b", 3)}, 0},
        {"abx\ny\nzcd", {0, 2}, "x\ny\nw", false, {"abzcd"}, 2},
        {"abx\ny\nzcd", {0, 2}, "x\nq\nz", false, {"aby", "zcd"}, 1},
        {"abx\ny\nzcd", {0, 2}, "w\ny\nz", false, {"abx", "y", "zcd"}, 0},
        {"ab\ncd", {0, 1}, "b\ncde", false, {"acd"}, 1},
        {"ab\ncd\nef", {1, 1}, "d\nef\ngh", false, {"ab", "c"}, 1},
        {"ab", {0, 2}, "\n", false, {"ab"}, 0},  // no line follows
        {"ab\ncd", {1, 2}, "\n", false, {"ab", "cd"}, 0},
        // A break that has moved along its line is taken away all the same, and what is compared
        // then is the joined line.
        {"abcd\nef", {0, 2}, "\n", true, {"abcdef"}, 1},
        {"abcd\nef", {0, 2}, "\ncdef", true, {"ab"}, 1},
        {"abcd\nef\ngh", {0, 1}, "\nb\ncde", true, {"afgh"}, 2},
        {"abcd\nef\ngh", {0, 1}, "\nb\ncdx", false, {"acdefgh"}, 2},
        {"abcd\nef", {0, 2}, "\nef", false, {"abcdef"}, 1},
        // Positions that are not in the text.
        {"ab\ncd", {0, 3}, "\n", false, {"ab", "cd"}, 0},
        {"ab\ncd", {0, -1}, "a", false, {"ab", "cd"}, 0},
        {"ab\ncd", {2, 0}, "a", false, {"ab", "cd"}, 0},
        {"ab\ncd", {-1, 0}, "", false, {"ab", "cd"}, 0},
    };
    for (const auto& [before, at, removed, done, result, linesRemoved] : rows) {
        SCOPED_TRACE(testing::Message()
                     << testing::PrintToString(removed) << " from "
                     << testing::PrintToString(before) << " at " << at.line << ", " << at.col);
        TextPosition outPos = {77, 77};
        std::int32_t outLinesRemoved = 77;
        TextLines text;
        Fill(text, before);
        EXPECT_EQ(text.RemoveExact(at.line, at.col, removed, outPos, outLinesRemoved), done);
        EXPECT_EQ(StoredLines(text), result);
        EXPECT_EQ(outPos, at);
        EXPECT_EQ(outLinesRemoved, linesRemoved);
    }
}

TEST(TextLines, RefusesATextThatIsTooLargeForItsPositions) {
    // Never read, so it takes no memory.
    const std::size_t tooMuch = static_cast<std::size_t>(TextLine::largestLength) + 1;
    const auto room = std::make_unique_for_overwrite<char[]>(tooMuch);
    const std::string_view huge(room.get(), tooMuch);
    TextPosition end;
    std::int32_t added = 0;
    TextLines text;
    Fill(text, "ab\nc");
    EXPECT_FALSE(text.SetText(huge));
    EXPECT_FALSE(text.InsertText(0, 1, huge, end, added));
    EXPECT_FALSE(text.RestoreText(0, 1, huge, end, added));
    EXPECT_FALSE(text.InsertText(0, 1, huge.substr(2), end, added));  // with the line's two
    EXPECT_EQ(end, (TextPosition{0, 1}));
    EXPECT_EQ(added, 0);
    EXPECT_EQ(StoredText(text), "ab\nc");
}

TEST(TextLines, HandlesManyLinesAtOnce) {
    std::string many;
    for (int line = 0; line < 50'000; ++line) many += "line\n";
    TextLines text;
    Fill(text, "front\n" + many + "back");
    TextPosition end;
    std::int32_t changed = 0;
    EXPECT_TRUE(text.InsertText(0, 5, many, end, changed));
    EXPECT_EQ(end, (TextPosition{50'000, 0}));
    EXPECT_EQ(StoredText(text), "front" + many + "\n" + many + "back");
    EXPECT_TRUE(text.RemoveExact(0, 5, many, end, changed));
    EXPECT_EQ(changed, 50'000);
    EXPECT_EQ(StoredText(text), "front\n" + many + "back");
    EXPECT_EQ(text.GetSelected(Range(50'001, 0, 1, 0)), many);
    EXPECT_TRUE(text.DeleteSelected(Range(50'001, 0, 1, 0)));
    EXPECT_EQ(StoredText(text), "front\nback");
}

// Ranges.

TEST(SelRange, KeepsItsNumbersInOrder) {
    const SelRange range{1, 2, 3, 4};
    EXPECT_EQ(range.startLine, 1);
    EXPECT_EQ(range.endLine, 2);
    EXPECT_EQ(range.startCol, 3);
    EXPECT_EQ(range.endCol, 4);
    EXPECT_EQ(Range(1, 3, 2, 4), range);
    EXPECT_EQ(sizeof(SelRange), 4 * sizeof(std::int32_t));
}

TEST(SelRange, IsEmptyWhereItsEndsMeet) {
    EXPECT_TRUE(SelRange().IsEmpty());
    EXPECT_TRUE(Range(3, 4, 3, 4).IsEmpty());
    EXPECT_FALSE(Range(3, 4, 3, 5).IsEmpty());
    EXPECT_FALSE(Range(3, 4, 2, 4).IsEmpty());
    SelRange range = Range(1, 2, 3, 4);
    range.SetCaret({5, 6});
    EXPECT_EQ(range, Range(5, 6, 5, 6));
    EXPECT_TRUE(range.IsEmpty());
}

TEST(SelRange, NormaliseOrdersTheEnds) {
    struct Row {
        SelRange range;
        TextPosition start, end;
    };
    const Row rows[] = {
        {Range(1, 5, 2, 3), {1, 5}, {2, 3}}, {Range(2, 3, 1, 5), {1, 5}, {2, 3}},
        {Range(1, 2, 1, 6), {1, 2}, {1, 6}}, {Range(1, 6, 1, 2), {1, 2}, {1, 6}},
        {Range(4, 4, 4, 4), {4, 4}, {4, 4}}, {Range(-1, 9, -2, 1), {-2, 1}, {-1, 9}},
    };
    for (const auto& [range, start, end] : rows) {
        TextPosition from;
        TextPosition to;
        range.Normalise(from.line, from.col, to.line, to.col);
        EXPECT_EQ(from, start);
        EXPECT_EQ(to, end);
    }
}

}  // namespace
}  // namespace orvane
