#include "editor/keyword_list.h"

#include <algorithm>
#include <cmath>

namespace orvane {

namespace {

constexpr Colour black = ColourFrom(0, 0, 0);
constexpr Colour red = ColourFrom(255, 0, 0);
constexpr Colour green = ColourFrom(0, 128, 0);

constexpr std::string_view headerTriggers = ":";
constexpr std::string_view constantTriggers = "+-*/,;)";
constexpr std::string_view functionTriggers = "(";

int EntryCount() { return static_cast<int>(keywordTable.Sorted().size()); }

std::string_view TriggersOf(const KeywordEntry& entry) {
    switch (entry.group) {
        case KeywordGroup::constant:
            return constantTriggers;
        case KeywordGroup::header:
            return headerTriggers;
        default:
            return functionTriggers;
    }
}

// As near to `at` as the room allows; the start is kept in it rather than the end.
int KeepWithin(int at, int length, int start, int room) {
    return std::max(start, std::min(at, start + room - length));
}

}  // namespace

KeywordRowLook LookOf(const KeywordEntry& entry) {
    if (entry.group == KeywordGroup::constant) return {"", red};
    if (entry.group == KeywordGroup::header) return {"", green};
    return {KeywordTable::GroupWord(entry), black};
}

KeywordListLayout KeywordListLayout::From(int textHeight, int longestName, int longestWord,
                                          int frame) {
    KeywordListLayout layout;
    layout.rowHeight = textHeight + 1;
    layout.nameColumn = longestName + 30;
    layout.outer = {layout.nameColumn + longestWord + 33, rowsShown * layout.rowHeight + 2 * frame};
    layout.inner = {layout.outer.width - 2 * frame, layout.outer.height - 2 * frame};
    return layout;
}

PixelRect KeywordListLayout::FillOf(int rowsDown) const {
    return {0, rowsDown * rowHeight + 1, StripLeft() - 1, rowHeight - 1};
}

KeywordList::KeywordList(const KeywordListLayout& listLayout) : layout(listLayout) {
    pageRows = layout.inner.height / layout.rowHeight;
    maxTop = std::max(0, EntryCount() - pageRows);
    const int track = layout.inner.height - 3 * KeywordListLayout::stripWidth;
    if (maxTop > 0 && track > 0) pixelsPerRow = static_cast<double>(track) / maxTop;
}

void KeywordList::JumpTo(std::string_view word) {
    selected = keywordTable.FindByPrefix(word);
    topRow = std::clamp(selected, 0, maxTop);
}

void KeywordList::PressKey(ListKey key) {
    switch (key) {
        case ListKey::up:
            selected -= 1;
            break;
        case ListKey::down:
            selected += 1;
            break;
        case ListKey::pageUp:
            selected -= pageRows;
            break;
        case ListKey::pageDown:
            selected += pageRows;
            break;
        case ListKey::home:
            selected = 0;
            break;
        case ListKey::end:
            selected = EntryCount() - 1;
            break;
    }
    selected = std::clamp(selected, 0, EntryCount() - 1);
    topRow = std::clamp(topRow, std::max(0, selected - pageRows + 1), selected);
}

void KeywordList::ScrollBy(int rows) { topRow = std::clamp(topRow + rows, 0, maxTop); }

int KeywordList::ThumbTop() const {
    return static_cast<int>(std::lround(topRow * pixelsPerRow + KeywordListLayout::stripWidth));
}

ListPart KeywordList::PartAt(PixelPoint point) const {
    constexpr int size = KeywordListLayout::stripWidth;
    if (point.x < layout.StripLeft()) return ListPart::row;
    if (point.y < size) return ListPart::upButton;
    if (point.y >= layout.inner.height - size) return ListPart::downButton;
    if (point.y < ThumbTop()) return ListPart::trackAbove;
    return point.y < ThumbTop() + size ? ListPart::thumb : ListPart::trackBelow;
}

int KeywordList::RowAt(int y) const {
    if (y < 0 || y >= layout.inner.height) return -1;
    const int row = topRow + y / layout.rowHeight;
    return row < EntryCount() ? row : -1;
}

void KeywordList::Press(PixelPoint point) {
    switch (PartAt(point)) {
        case ListPart::upButton:
            scrollState = ScrollState::upHeld;
            firstTickSkipped = true;
            ScrollBy(-1);
            break;
        case ListPart::downButton:
            scrollState = ScrollState::downHeld;
            firstTickSkipped = true;
            ScrollBy(1);
            break;
        case ListPart::thumb:
            scrollState = ScrollState::thumbDragged;
            grabOffset = point.y - ThumbTop();
            break;
        case ListPart::trackAbove:
            ScrollBy(-pageRows);
            break;
        case ListPart::trackBelow:
            ScrollBy(pageRows);
            break;
        case ListPart::row:
            if (const int row = RowAt(point.y); row >= 0) selected = row;
            break;
    }
}

void KeywordList::Drag(PixelPoint point) {
    if (scrollState != ScrollState::thumbDragged || pixelsPerRow <= 0) return;
    const int wayDown = point.y - grabOffset - KeywordListLayout::stripWidth;
    topRow = static_cast<int>(std::clamp(std::lround(wayDown / pixelsPerRow), 0L, long{maxTop}));
}

void KeywordList::Tick() {
    if (scrollState != ScrollState::upHeld && scrollState != ScrollState::downHeld) return;
    if (firstTickSkipped) {
        firstTickSkipped = false;
        return;
    }
    ScrollBy(scrollState == ScrollState::upHeld ? -1 : 1);
}

const KeywordEntry* KeywordList::EntryToAccept(std::optional<char> trigger) const {
    if (!visible || selected < 0) return nullptr;
    const KeywordEntry* entry = keywordTable.Sorted()[static_cast<std::size_t>(selected)];
    return !trigger || AcceptsTrigger(*entry, *trigger) ? entry : nullptr;
}

bool AcceptsTrigger(const KeywordEntry& entry, char trigger) {
    return TriggersOf(entry).find(trigger) != std::string_view::npos;
}

std::optional<PixelPoint> PlaceList(PixelPoint caret, int lineHeight, PixelSize view,
                                    PixelSize list) {
    if (caret.y < 0 || caret.y >= view.height) return std::nullopt;
    const bool goesLeft = view.width - caret.x < list.width && caret.x > list.width;
    return PixelPoint{goesLeft ? caret.x - list.width : caret.x, caret.y + lineHeight};
}

PixelPoint KeepOnScreen(PixelRect window, PixelRect line, PixelRect screen) {
    const int screenBottom = screen.top + screen.height;
    const int above = line.top - window.height;
    const int under = line.top + line.height;
    int top = window.top;
    if (top + window.height > screenBottom && above >= screen.top) {
        top = above;
    } else if (top < screen.top && under + window.height <= screenBottom) {
        top = under;
    }
    return {KeepWithin(window.left, window.width, screen.left, screen.width),
            KeepWithin(top, window.height, screen.top, screen.height)};
}

}  // namespace orvane
