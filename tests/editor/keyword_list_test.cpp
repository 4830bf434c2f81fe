#include "editor/keyword_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "tests/editor/pixel_text.h"

namespace orvane {
namespace {

constexpr int lastRow = 150;

// Rows of 15 pixels in an inner area of 281 by 180: the track has 141 pixels for 139 rows.
KeywordListLayout TestLayout() { return KeywordListLayout::From(14, 170, 50, 1); }

KeywordList OpenList() {
    KeywordList list(TestLayout());
    list.visible = true;
    return list;
}

// So high that all rows show at once.
KeywordList ListWithoutScrolling() {
    KeywordListLayout layout = TestLayout();
    layout.inner.height = 160 * layout.rowHeight;
    KeywordList list(layout);
    list.visible = true;
    return list;
}

std::string NameAt(int row) {
    return row < 0 ? "none" : keywordTable.Sorted()[static_cast<std::size_t>(row)]->name;
}

int RowOf(std::string_view name) {
    const auto entries = keywordTable.Sorted();
    const auto at = std::find_if(entries.begin(), entries.end(),
                                 [name](const KeywordEntry* entry) { return name == entry->name; });
    return static_cast<int>(at - entries.begin());
}

TEST(KeywordListLayout, ComesFromTheSizesOfTheFont) {
    const KeywordListLayout layout = TestLayout();
    EXPECT_EQ(layout.rowHeight, 15);
    EXPECT_EQ(layout.nameColumn, 200);
    EXPECT_EQ(layout.outer, (PixelSize{283, 182}));
    EXPECT_EQ(layout.inner, (PixelSize{281, 180}));
    EXPECT_EQ(layout.StripLeft(), 268);
}

TEST(KeywordListLayout, FillsARowUpToThePixelBesideTheStrip) {
    EXPECT_EQ(TestLayout().FillOf(0), (PixelRect{0, 1, 267, 14}));
    EXPECT_EQ(TestLayout().FillOf(11), (PixelRect{0, 166, 267, 14}));
}

TEST(KeywordList, ShowsTwelveRowsAndSelectsNone) {
    const KeywordList list(TestLayout());
    EXPECT_FALSE(list.visible);
    EXPECT_EQ(list.selected, -1);
    EXPECT_EQ(list.topRow, 0);
    EXPECT_EQ(list.pageRows, 12);
    EXPECT_EQ(list.maxTop, 139);
    EXPECT_EQ(list.pixelsPerRow, 141.0 / 139);
    EXPECT_EQ(list.scrollState, ScrollState::idle);
}

struct LookRow {
    const char* keyword;
    int kind;
    const char* word;
    Colour colour;
};

constexpr Colour black = ColourFrom(0, 0, 0);

constexpr LookRow lookRows[] = {
    {"pi", 0, "", ColourFrom(255, 0, 0)},
    {"hex", 1, "", ColourFrom(0, 128, 0)},
    {"text", 1, "", ColourFrom(0, 128, 0)},
    {"bit_and", 2, "bits", black},
    {"sin", 3, "normal", black},
    {"strlen", 4, "string", black},
    {"length", 5, "point", black},
    {"point", 6, "vector", black},
    {"matrix_det", 7, "matrix", black},
    {"series", 8, "variable", black},
    {"if", 9, "condition", black},
    {"plus", 10, "normal", black},
    {"complex", 11, "unknown", black},
};

TEST(LookOf, ShowsAWordBesideFunctionsAndColoursTheRest) {
    std::map<int, LookRow> byKind;
    for (const LookRow& row : lookRows) {
        SCOPED_TRACE(row.keyword);
        byKind[row.kind] = row;
        EXPECT_EQ(static_cast<int>(keywordTable.Find(row.keyword)->group), row.kind);
    }
    for (const KeywordEntry& entry : keywordRows) {
        SCOPED_TRACE(entry.name);
        const LookRow& row = byKind.at(static_cast<int>(entry.group));
        EXPECT_EQ(LookOf(entry).word, row.word);
        EXPECT_EQ(LookOf(entry).nameColour, row.colour);
    }
}

TEST(LookOf, CallsAStrangeKindUnknown) {
    KeywordEntry entry = *keywordTable.Find("sin");
    entry.group = static_cast<KeywordGroup>(12);
    EXPECT_EQ(LookOf(entry).word, "unknown");
    EXPECT_EQ(LookOf(entry).nameColour, black);
}

TEST(KeywordListColours, AreThoseOfTheWindow) {
    EXPECT_EQ(keywordListColours::background, ColourFrom(255, 255, 247));
    EXPECT_EQ(keywordListColours::selectedRow, ColourFrom(0, 255, 0));
    EXPECT_EQ(keywordListColours::groupWord, ColourFrom(96, 96, 96));
    EXPECT_EQ(keywordListColours::strip, ColourFrom(210, 210, 210));
    EXPECT_EQ(keywordListColours::button, ColourFrom(192, 192, 192));
}

struct JumpRow {
    const char* word;
    const char* found;
};

constexpr JumpRow jumpRows[] = {
    {"", "none"},
    {"sq", "sqrt"},
    {"sqz", "sqrt"},  // the last row that still matched
    {"squ", "square_root"},
    {"sqrt", "sqrt"},
    {"sqrt2", "sqrt"},
    {"a", "abs"},
    {"A", "none"},  // below all names
    {"0", "none"},
    {"_", "none"},
    {"Sq", "none"},
    {"z", "none"},  // beyond all names
    {"\xE4", "none"},
    {"wzz", "weekday"},
    {"pi", "pi"},
    {"hex", "hex"},
    {"hexa", "hexadecimal"},
};

TEST(JumpTo, SelectsTheRowThatTheCharactersLeadTo) {
    for (const auto& [word, found] : jumpRows) {
        SCOPED_TRACE(word);
        KeywordList list = OpenList();
        list.JumpTo("median");
        list.JumpTo(word);
        EXPECT_EQ(NameAt(list.selected), found);
    }
}

TEST(JumpTo, FindsTheFirstNameWithEachStartOfAName) {
    KeywordList list = OpenList();
    for (const KeywordEntry* entry : keywordTable.Sorted()) {
        const std::string name = entry->name;
        for (std::size_t length = 1; length <= name.size(); ++length) {
            const std::string start = name.substr(0, length);
            SCOPED_TRACE(start);
            int first = 0;
            while (NameAt(first).compare(0, length, start) != 0) ++first;
            list.JumpTo(start);
            EXPECT_EQ(list.selected, first);
            EXPECT_EQ(list.topRow, std::min(first, 139));
        }
    }
}

TEST(JumpTo, ShowsTheStartWhereNothingIsFound) {
    KeywordList list = OpenList();
    list.JumpTo("median");
    EXPECT_GT(list.topRow, 0);
    list.JumpTo("");
    EXPECT_EQ(list.selected, -1);
    EXPECT_EQ(list.topRow, 0);
}

TEST(JumpTo, ScrollsNoFurtherThanTheLastPage) {
    KeywordList list = OpenList();
    list.JumpTo("weekday");
    EXPECT_EQ(list.selected, lastRow);
    EXPECT_EQ(list.topRow, 139);

    KeywordList whole = ListWithoutScrolling();
    whole.JumpTo("weekday");
    EXPECT_EQ(whole.selected, lastRow);
    EXPECT_EQ(whole.topRow, 0);
}

struct KeyRow {
    ListKey key;
    int selected, topRow;        // ahead of the key
    int newSelected, newTopRow;  // behind it
};

constexpr KeyRow keyRows[] = {
    {ListKey::down, -1, 0, 0, 0},
    {ListKey::up, -1, 0, 0, 0},
    {ListKey::pageDown, -1, 0, 11, 0},
    {ListKey::pageUp, -1, 0, 0, 0},
    {ListKey::home, -1, 0, 0, 0},
    {ListKey::end, -1, 0, 150, 139},
    {ListKey::down, 5, 0, 6, 0},
    {ListKey::down, 10, 0, 11, 0},
    {ListKey::down, 11, 0, 12, 1},  // the least scrolling
    {ListKey::down, 150, 139, 150, 139},
    {ListKey::up, 12, 12, 11, 11},
    {ListKey::up, 12, 5, 11, 5},
    {ListKey::up, 0, 0, 0, 0},
    {ListKey::pageDown, 5, 5, 17, 6},
    {ListKey::pageDown, 140, 130, 150, 139},
    {ListKey::pageUp, 30, 25, 18, 18},
    {ListKey::pageUp, 11, 3, 0, 0},
    {ListKey::pageUp, 12, 3, 0, 0},
    {ListKey::home, 77, 70, 0, 0},
    {ListKey::end, 77, 70, 150, 139},
    // A selected row that was scrolled away comes back.
    {ListKey::down, 50, 0, 51, 40},
    {ListKey::up, 50, 100, 49, 49},
};

TEST(PressKey, MovesTheSelectionAndKeepsItInView) {
    for (const KeyRow& row : keyRows) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(row.key) << " from " << row.selected
                                        << " with top " << row.topRow);
        KeywordList list = OpenList();
        list.selected = row.selected;
        list.topRow = row.topRow;
        list.PressKey(row.key);
        EXPECT_EQ(list.selected, row.newSelected);
        EXPECT_EQ(list.topRow, row.newTopRow);
    }
}

TEST(PressKey, NeverScrollsAListThatShowsAllRows) {
    KeywordList list = ListWithoutScrolling();
    EXPECT_EQ(list.maxTop, 0);
    for (const ListKey key : {ListKey::end, ListKey::up, ListKey::pageUp, ListKey::pageDown}) {
        list.PressKey(key);
        EXPECT_EQ(list.topRow, 0);
    }
    EXPECT_EQ(list.selected, lastRow);
}

struct ScrollRow {
    int topRow, rows, newTopRow;
};

TEST(ScrollBy, StaysInsideTheRows) {
    constexpr ScrollRow rows[] = {{0, 1, 1},      {0, -1, 0},    {139, 1, 139},
                                  {139, -1, 138}, {5, -12, 0},   {130, 12, 139},
                                  {60, 12, 72},   {60, -12, 48}, {60, 1000, 139}};
    for (const auto& [topRow, by, newTopRow] : rows) {
        SCOPED_TRACE(testing::Message() << topRow << " by " << by);
        KeywordList list = OpenList();
        list.topRow = topRow;
        list.ScrollBy(by);
        EXPECT_EQ(list.topRow, newTopRow);
    }
    KeywordList whole = ListWithoutScrolling();
    whole.ScrollBy(1);
    EXPECT_EQ(whole.topRow, 0);
}

struct ThumbRow {
    double pixelsPerRow;
    int topRow;
    int thumbTop;
};

TEST(ThumbTop, RoundsHalvesAwayFromZero) {
    constexpr ThumbRow rows[] = {
        {141.0 / 139, 0, 13},     // directly under the upper button
        {141.0 / 139, 1, 14},     // 14.01
        {141.0 / 139, 35, 49},    // 48.504
        {141.0 / 139, 34, 47},    // 47.489
        {141.0 / 139, 139, 154},  // directly on the lower button
        {0.5, 1, 14},             // 13.5
        {0.5, 2, 14},
        {0.5, 3, 15},  // 14.5
        {0, 0, 13},
    };
    for (const auto& [pixelsPerRow, topRow, thumbTop] : rows) {
        SCOPED_TRACE(testing::Message() << topRow << " at " << pixelsPerRow);
        KeywordList list = OpenList();
        list.pixelsPerRow = pixelsPerRow;
        list.topRow = topRow;
        EXPECT_EQ(list.ThumbTop(), thumbTop);
    }
}

struct PartRow {
    PixelPoint point;
    ListPart part;
};

TEST(PartAt, TellsThePartsOfTheStrip) {
    // The thumb at 60 to 72.
    constexpr PartRow rows[] = {
        {{267, 0}, ListPart::row},          {{267, 66}, ListPart::row},
        {{0, 179}, ListPart::row},          {{268, 0}, ListPart::upButton},
        {{280, 12}, ListPart::upButton},    {{268, 13}, ListPart::trackAbove},
        {{274, 59}, ListPart::trackAbove},  {{274, 60}, ListPart::thumb},
        {{274, 72}, ListPart::thumb},       {{274, 73}, ListPart::trackBelow},
        {{274, 166}, ListPart::trackBelow}, {{274, 167}, ListPart::downButton},
        {{280, 179}, ListPart::downButton},
    };
    KeywordList list = OpenList();
    list.topRow = 46;
    ASSERT_EQ(list.ThumbTop(), 60);
    for (const auto& [point, part] : rows) {
        SCOPED_TRACE(testing::PrintToString(point));
        EXPECT_EQ(list.PartAt(point), part);
    }
}

TEST(RowAt, CountsFromTheTopRow) {
    KeywordList list = OpenList();
    list.topRow = 20;
    EXPECT_EQ(list.RowAt(-1), -1);
    EXPECT_EQ(list.RowAt(0), 20);
    EXPECT_EQ(list.RowAt(14), 20);
    EXPECT_EQ(list.RowAt(15), 21);
    EXPECT_EQ(list.RowAt(179), 31);
    EXPECT_EQ(list.RowAt(180), -1);
}

TEST(RowAt, FindsNothingBehindTheLastRow) {
    const KeywordList list = ListWithoutScrolling();
    EXPECT_EQ(list.RowAt(151 * 15 - 1), lastRow);
    EXPECT_EQ(list.RowAt(151 * 15), -1);
}

TEST(Press, SelectsARow) {
    KeywordList list = OpenList();
    list.topRow = 20;
    list.Press({5, 31});
    EXPECT_EQ(list.selected, 22);
    EXPECT_EQ(list.topRow, 20);
    EXPECT_EQ(list.scrollState, ScrollState::idle);
}

TEST(Press, LeavesTheSelectionWhereNoRowStands) {
    KeywordList list = ListWithoutScrolling();
    list.selected = 3;
    list.Press({5, 155 * 15});
    EXPECT_EQ(list.selected, 3);
}

struct ButtonRow {
    int y;
    int step;
    ScrollState state;
};

TEST(Press, ScrollsByOneRowOnAButtonAndThenAtEveryTickButTheFirst) {
    constexpr ButtonRow rows[] = {{5, -1, ScrollState::upHeld}, {170, 1, ScrollState::downHeld}};
    for (const auto& [y, step, state] : rows) {
        SCOPED_TRACE(y);
        KeywordList list = OpenList();
        list.topRow = 50;
        list.Press({270, y});
        EXPECT_EQ(list.scrollState, state);
        EXPECT_TRUE(list.firstTickSkipped);
        EXPECT_EQ(list.topRow, 50 + step);
        list.Tick();
        EXPECT_EQ(list.topRow, 50 + step);
        EXPECT_FALSE(list.firstTickSkipped);
        list.Tick();
        EXPECT_EQ(list.topRow, 50 + 2 * step);
        list.Tick();
        EXPECT_EQ(list.topRow, 50 + 3 * step);
        list.Release();
        list.Tick();
        EXPECT_EQ(list.topRow, 50 + 3 * step);
        EXPECT_EQ(list.scrollState, ScrollState::idle);

        list.Press({270, y});
        list.Tick();
        EXPECT_EQ(list.topRow, 50 + 4 * step) << "each press skips a tick of its own";
    }
}

TEST(Tick, ComesNearlySevenTimesASecond) { EXPECT_EQ(KeywordList::repeatMilliseconds, 150); }

TEST(Press, LeavesTheSelectionAloneInTheStrip) {
    KeywordList list = OpenList();
    list.selected = 7;
    for (const int y : {5, 13, 100, 170}) list.Press({270, y});
    EXPECT_EQ(list.selected, 7);
}

TEST(Press, ScrollsByAPageTowardThePressInTheTrack) {
    KeywordList list = OpenList();
    list.topRow = 46;
    list.Press({270, 160});
    EXPECT_EQ(list.topRow, 58);
    EXPECT_EQ(list.scrollState, ScrollState::idle);
    list.Press({270, 20});
    EXPECT_EQ(list.topRow, 46);
    list.Tick();
    EXPECT_EQ(list.topRow, 46) << "no repeat in the track";
}

TEST(Press, StopsAtBothEnds) {
    KeywordList list = OpenList();
    list.Press({270, 0});
    EXPECT_EQ(list.topRow, 0);
    list.topRow = 139;
    list.Press({270, 179});
    EXPECT_EQ(list.topRow, 139);
}

TEST(Drag, TakesTheThumbAlongFromWhereItWasGrabbed) {
    KeywordList list = OpenList();
    list.topRow = 46;
    list.Press({270, 65});
    EXPECT_EQ(list.scrollState, ScrollState::thumbDragged);
    EXPECT_EQ(list.grabOffset, 5);
    list.Drag({270, 65});
    EXPECT_EQ(list.topRow, 46);
    list.Drag({-400, 18});
    EXPECT_EQ(list.topRow, 0);
    list.Drag({270, 18 + 141});
    EXPECT_EQ(list.topRow, 139);
    list.Drag({270, -5000});
    EXPECT_EQ(list.topRow, 0);
    list.Drag({270, 5000});
    EXPECT_EQ(list.topRow, 139);
    list.Release();
    list.Drag({270, 18});
    EXPECT_EQ(list.topRow, 139);
}

TEST(Drag, GoesToTheNearestRow) {
    struct Row {
        int y;
        int topRow;
    };
    constexpr Row rows[] = {{13, 0}, {14, 1}, {15, 1}, {16, 2}, {17, 2}, {18, 3}};
    KeywordList list = OpenList();
    list.pixelsPerRow = 2;  // so that every odd pixel is a half
    list.scrollState = ScrollState::thumbDragged;
    list.grabOffset = 0;
    for (const auto& [y, topRow] : rows) {
        SCOPED_TRACE(y);
        list.Drag({270, y});
        EXPECT_EQ(list.topRow, topRow);
    }
}

TEST(Drag, BringsEveryRowBackToItsOwnThumbPlace) {
    for (int topRow = 0; topRow <= 139; ++topRow) {
        KeywordList list = OpenList();
        list.topRow = topRow;
        list.Press({270, list.ThumbTop() + 6});
        list.Drag({270, list.ThumbTop() + 6});
        EXPECT_EQ(list.topRow, topRow);
    }
}

TEST(Drag, DoesNothingWhereAllRowsShow) {
    KeywordList list = ListWithoutScrolling();
    EXPECT_EQ(list.pixelsPerRow, 0.0);
    EXPECT_EQ(list.ThumbTop(), 13);
    list.Press({270, 15});
    EXPECT_EQ(list.scrollState, ScrollState::thumbDragged);
    list.Drag({270, 500});
    EXPECT_EQ(list.topRow, 0);
}

TEST(Drag, NeedsAThumbInHand) {
    KeywordList list = OpenList();
    list.Press({5, 5});
    list.Drag({270, 100});
    EXPECT_EQ(list.topRow, 0);
}

TEST(AcceptsTrigger, AsksForACharacterThatCanFollow) {
    const std::set<char> behindConstants = {'+', '-', '*', '/', ',', ';', ')'};
    for (const KeywordEntry& entry : keywordRows) {
        for (int code = 0; code < 256; ++code) {
            const char trigger = static_cast<char>(code);
            bool expected = trigger == '(';
            if (entry.group == KeywordGroup::header) expected = trigger == ':';
            if (entry.group == KeywordGroup::constant)
                expected = behindConstants.count(trigger) > 0;
            EXPECT_EQ(AcceptsTrigger(entry, trigger), expected) << entry.name << " " << code;
        }
    }
}

TEST(AcceptTriggers, AreAllThatSomeRowTakes) {
    for (int code = 0; code < 256; ++code) {
        const char trigger = static_cast<char>(code);
        const bool isTaken =
            std::any_of(keywordRows.begin(), keywordRows.end(),
                        [&](const KeywordEntry& row) { return AcceptsTrigger(row, trigger); });
        EXPECT_EQ(acceptTriggers.find(trigger) != std::string_view::npos, isTaken) << code;
    }
    EXPECT_EQ(acceptTriggers, ":(+-*/,;)");
}

struct AcceptRow {
    const char* selected;
    std::optional<char> trigger;
    bool isAccepted;
};

TEST(EntryToAccept, TakesTheSelectedRowWithAFittingTriggerOrNone) {
    const AcceptRow rows[] = {
        {"sin", std::nullopt, true}, {"pi", std::nullopt, true}, {"hex", std::nullopt, true},
        {"sin", '(', true},          {"sin", ':', false},        {"sin", '+', false},
        {"pi", '(', false},          {"pi", '*', true},          {"pi", ')', true},
        {"pi", ':', false},          {"hex", ':', true},         {"hex", '(', false},
        {"hex", ';', false},         {"complex", '(', true},     {"plus", '(', true},
    };
    for (const auto& [selected, trigger, isAccepted] : rows) {
        SCOPED_TRACE(testing::Message() << selected << " " << trigger.value_or(' '));
        KeywordList list = OpenList();
        list.selected = RowOf(selected);
        EXPECT_EQ(list.EntryToAccept(trigger), isAccepted ? keywordTable.Find(selected) : nullptr);
    }
}

TEST(EntryToAccept, TakesNothingFromAHiddenListOrWithoutASelection) {
    KeywordList list = OpenList();
    EXPECT_EQ(list.EntryToAccept(std::nullopt), nullptr);
    EXPECT_EQ(list.EntryToAccept('('), nullptr);
    list.selected = RowOf("sin");
    list.visible = false;
    EXPECT_EQ(list.EntryToAccept(std::nullopt), nullptr);
    EXPECT_EQ(list.EntryToAccept('('), nullptr);
}

}  // namespace
}  // namespace orvane
