#include "editor/text_lines.h"

#include <algorithm>
#include <cstring>
#include <tuple>
#include <utility>

namespace orvane {

namespace {

std::unique_ptr<char[]> MakeRoom(std::int32_t characters) {
    return std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(characters) + 1);
}

std::int32_t CountLineBreaks(std::string_view text) {
    return static_cast<std::int32_t>(std::count(text.begin(), text.end(), '\n'));
}

// The text itself where it holds no "\r", else a copy without them.
std::string_view WithoutReturns(std::string_view text, std::string& copy) {
    if (text.find('\r') == std::string_view::npos) return text;
    copy.assign(text);
    std::erase(copy, '\r');
    return copy;
}

// The piece up to the next "\n", which is taken off `text` with it; the rest where there is none.
std::string_view TakePiece(std::string_view& text) {
    const std::string_view piece = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(piece.size() + 1, text.size()));
    return piece;
}

// Slots grow by 100, so this is what growing often enough for `count` lines arrives at.
std::int32_t SlotsFor(std::int32_t count) {
    return (count + TextLines::slotStep - 1) / TextLines::slotStep * TextLines::slotStep;
}

bool IsTooLong(std::int64_t length) { return length > TextLine::largestLength; }

}  // namespace

TextLine::TextLine(std::string_view text)
    : length(static_cast<std::int32_t>(text.size())),
      capacity(length + spareRoom),
      allocated(length),
      chars(MakeRoom(allocated)) {
    text.copy(chars.get(), text.size());
    chars[length] = '\0';
}

void TextLine::InsertText(std::int32_t col, std::string_view text) {
    const auto added = static_cast<std::int32_t>(text.size());
    const std::int32_t needed = length + added;
    const auto tail = static_cast<std::size_t>(length - col);
    if (needed > capacity) capacity = needed + spareRoom;
    if (needed > allocated) {
        allocated = capacity;
        auto grown = MakeRoom(allocated);
        std::memcpy(grown.get(), chars.get(), static_cast<std::size_t>(col));
        std::memcpy(grown.get() + col + added, chars.get() + col, tail);
        chars = std::move(grown);
    } else {
        std::memmove(chars.get() + col + added, chars.get() + col, tail);
    }
    text.copy(chars.get() + col, text.size());
    length = needed;
    chars[length] = '\0';
}

void TextLine::Remove(std::int32_t from, std::int32_t to) {
    std::memmove(chars.get() + from, chars.get() + to, static_cast<std::size_t>(length - to));
    length -= to - from;
    chars[length] = '\0';
}

void SelRange::SetCaret(TextPosition position) {
    SetRange(position.line, position.col, position.line, position.col);
}

void SelRange::SetRange(std::int32_t fromLine, std::int32_t fromCol, std::int32_t toLine,
                        std::int32_t toCol) {
    startLine = fromLine;
    startCol = fromCol;
    endLine = toLine;
    endCol = toCol;
}

void SelRange::Normalise(std::int32_t& outStartLine, std::int32_t& outStartCol,
                         std::int32_t& outEndLine, std::int32_t& outEndCol) const {
    std::pair start(startLine, startCol);
    std::pair end(endLine, endCol);
    if (end < start) std::swap(start, end);
    std::tie(outStartLine, outStartCol) = start;
    std::tie(outEndLine, outEndCol) = end;
}

TextLines::TextLines() : lines(std::make_unique<std::unique_ptr<TextLine>[]>(slotStep)) {
    OpenSlots(0, 1);
    lines[0] = std::make_unique<TextLine>();
}

bool TextLines::SetText(std::string_view text) {
    if (text.size() > static_cast<std::size_t>(TextLine::largestLength)) return false;
    std::string copy;
    text = WithoutReturns(text, copy);
    RemoveLines(0, count);
    OpenSlots(0, CountLineBreaks(text) + 1);
    FillLines(0, count, text);
    return true;
}

void TextLines::AppendTextTo(std::string& out) const {
    std::size_t size = static_cast<std::size_t>(count) - 1;
    for (std::int32_t index = 0; index < count; ++index) size += GetLine(index).size();
    out.reserve(out.size() + size);
    out.append(GetLine(0));
    for (std::int32_t index = 1; index < count; ++index) out.append(1, '\n').append(GetLine(index));
}

void TextLines::Measure() {
    longestLine = 0;
    for (std::int32_t index = 0; index < count; ++index) {
        longestLine = std::max(longestLine, lines[index]->length);
    }
    lineCountSeen = count;
}

bool TextLines::InsertChar(std::int32_t line, std::int32_t col, char ch) {
    if (!IsPosition(line, col) || ch == '\n' || ch == '\r') return false;
    if (lines[line]->length == TextLine::largestLength) return false;
    lines[line]->InsertChar(col, ch);
    return true;
}

char TextLines::DeleteChar(std::int32_t line, std::int32_t col) {
    if (!IsPosition(line, col) || col == lines[line]->length) return 0;
    const char ch = lines[line]->chars[col];
    lines[line]->Remove(col, col + 1);
    return ch;
}

bool TextLines::SplitLine(std::int32_t line, std::int32_t col) {
    if (!IsLine(line) || col < 0 || count == TextLine::largestLength) return false;
    TextLine& front = *lines[line];
    const std::int32_t from = std::min(col, front.length);
    OpenSlots(line + 1, 1);
    lines[line + 1] = std::make_unique<TextLine>(front.View().substr(from));
    front.Remove(from, front.length);
    return true;
}

bool TextLines::JoinWithNext(std::int32_t line) {
    if (!IsLine(line) || line == count - 1) return false;
    return CloseUp(line, lines[line]->length, GetLine(line + 1), line + 1);
}

std::string TextLines::GetSelected(const SelRange& range) const {
    TextPosition start;
    TextPosition end;
    if (!OrderInText(range, start, end)) return {};
    if (start.line == end.line) {
        return std::string(GetLine(start.line).substr(start.col, end.col - start.col));
    }
    std::string text(GetLine(start.line).substr(start.col));
    for (std::int32_t index = start.line + 1; index < end.line; ++index) {
        text.append(1, '\n').append(GetLine(index));
    }
    return text.append(1, '\n').append(GetLine(end.line), 0, end.col);
}

bool TextLines::DeleteSelected(const SelRange& range) {
    TextPosition start;
    TextPosition end;
    if (!OrderInText(range, start, end)) return false;
    if (start.line != end.line) {
        return CloseUp(start.line, start.col, GetLine(end.line).substr(end.col), end.line);
    }
    lines[start.line]->Remove(start.col, end.col);
    return true;
}

bool TextLines::InsertText(std::int32_t line, std::int32_t col, std::string_view text,
                           TextPosition& outEnd, std::int32_t& outLinesAdded) {
    outEnd = {line, col};
    outLinesAdded = 0;
    const std::size_t largest = TextLine::largestLength;
    if (!IsPosition(line, col) || text.size() > largest - lines[line]->View().size()) return false;
    std::string copy;
    text = WithoutReturns(text, copy);
    const std::int32_t added = CountLineBreaks(text);
    if (IsTooLong(std::int64_t{count} + added)) return false;

    TextLine& front = *lines[line];
    if (added == 0) {
        front.InsertText(col, text);
        outEnd.col += static_cast<std::int32_t>(text.size());
        return true;
    }
    auto back = std::make_unique<TextLine>(front.View().substr(col));
    front.Remove(col, front.length);
    front.InsertText(col, TakePiece(text));
    OpenSlots(line + 1, added);
    outLinesAdded = added;
    outEnd.line = line + added;
    FillLines(line + 1, outEnd.line, text);
    back->InsertText(0, text);
    outEnd.col = static_cast<std::int32_t>(text.size());
    lines[outEnd.line] = std::move(back);
    return true;
}

bool TextLines::RestoreText(std::int32_t line, std::int32_t col, std::string_view text,
                            TextPosition& outPos, std::int32_t& outLinesAdded) {
    return InsertText(line, col, text, outPos, outLinesAdded) && !text.empty();
}

// How far RemoveExact has got. Nothing is moved while it walks, so that a long text costs one move
// of the lines behind it, not one for each of its line breaks.
struct TextLines::ExactWalk {
    TextPosition at;          // the text from the start to here is to go
    std::int32_t lastJoined;  // the lines from the first to this one are to be one
    std::int64_t length;      // what that one will hold
};

bool TextLines::RemoveExact(std::int32_t line, std::int32_t col, std::string_view text,
                            TextPosition& outPos, std::int32_t& outLinesRemoved) {
    outPos = {line, col};
    outLinesRemoved = 0;
    if (!IsPosition(line, col)) return false;
    ExactWalk walk{outPos, line, lines[line]->length};
    bool matches = true;
    while (matches && !text.empty()) {
        const std::string_view run = text.substr(0, text.find('\n'));
        matches = run.empty() ? PassLineBreak(walk) : PassRun(run, walk);
        text.remove_prefix(std::max<std::size_t>(run.size(), 1));
    }
    TakeAway(outPos, walk);
    outLinesRemoved = walk.lastJoined - line;
    return matches;
}

// Whether the run stands next in the joined lines; only then the walk goes on behind it.
bool TextLines::PassRun(std::string_view run, ExactWalk& walk) const {
    walk.length -= static_cast<std::int64_t>(run.size());
    TextPosition at = walk.at;
    while (true) {
        const std::string_view ahead = GetLine(at.line).substr(at.col, run.size());
        if (run.substr(0, ahead.size()) != ahead) return false;
        run.remove_prefix(ahead.size());
        at.col += static_cast<std::int32_t>(ahead.size());
        if (run.empty()) break;
        if (at.line == walk.lastJoined) return false;
        at = {at.line + 1, 0};
    }
    walk.at = at;
    return true;
}

// Kept: the line is joined with the next one wherever the position stands in it. Only characters
// are compared, so a break that has moved along its line since is taken away all the same.
bool TextLines::PassLineBreak(ExactWalk& walk) const {
    if (walk.lastJoined == count - 1) return false;
    const std::int64_t joined = walk.length + lines[walk.lastJoined + 1]->length;
    if (IsTooLong(joined)) return false;
    walk.length = joined;
    ++walk.lastJoined;
    return true;
}

void TextLines::TakeAway(TextPosition from, const ExactWalk& walk) {
    if (walk.lastJoined == from.line) {
        lines[from.line]->Remove(from.col, walk.at.col);
        return;
    }
    std::string rest(GetLine(walk.at.line).substr(walk.at.col));
    for (std::int32_t index = walk.at.line + 1; index <= walk.lastJoined; ++index) {
        rest.append(GetLine(index));
    }
    CloseUp(from.line, from.col, rest, walk.lastJoined);
}

bool TextLines::IsPosition(std::int32_t line, std::int32_t col) const {
    return IsLine(line) && col >= 0 && col <= lines[line]->length;
}

// The ends in the order of the text, columns past a line's end moved to it; false where the range
// is not in the text.
bool TextLines::OrderInText(const SelRange& range, TextPosition& start, TextPosition& end) const {
    range.Normalise(start.line, start.col, end.line, end.col);
    if (!IsLine(start.line) || !IsLine(end.line) || start.col < 0 || end.col < 0) return false;
    start.col = std::min(start.col, lines[start.line]->length);
    end.col = std::min(end.col, lines[end.line]->length);
    return true;
}

// Makes room for lines ahead of `at`; their slots are empty until the caller fills them.
void TextLines::OpenSlots(std::int32_t at, std::int32_t added) {
    const auto from = lines.get() + at;
    const auto end = lines.get() + count;
    count += added;
    if (count <= capacity) {
        std::move_backward(from, end, lines.get() + count);
        return;
    }
    capacity = SlotsFor(count);
    auto grown = std::make_unique<std::unique_ptr<TextLine>[]>(static_cast<std::size_t>(capacity));
    std::move(lines.get(), from, grown.get());
    std::move(from, end, grown.get() + at + added);
    lines = std::move(grown);
}

// Makes a line of each of the next pieces of `text` and takes them off it.
void TextLines::FillLines(std::int32_t at, std::int32_t end, std::string_view& text) {
    for (; at < end; ++at) lines[at] = std::make_unique<TextLine>(TakePiece(text));
}

void TextLines::RemoveLines(std::int32_t from, std::int32_t to) {
    const auto end = lines.get() + count;
    const auto newEnd = std::move(lines.get() + to, end, lines.get() + from);
    for (auto line = newEnd; line != end; ++line) line->reset();
    count -= to - from;
}

// Ends a line at `col`, puts `rest` there and removes the lines behind it up to and with `last`.
bool TextLines::CloseUp(std::int32_t line, std::int32_t col, std::string_view rest,
                        std::int32_t last) {
    if (IsTooLong(col + static_cast<std::int64_t>(rest.size()))) return false;
    TextLine& front = *lines[line];
    front.Remove(col, front.length);
    front.InsertText(col, rest);
    RemoveLines(line + 1, last + 1);
    return true;
}

}  // namespace orvane
