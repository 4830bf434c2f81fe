#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editor/line_scanner.h"
#include "editor/text_lines.h"
#include "fuzz/fuzzed_bytes.h"
#include "tests/editor/plain_text.h"

// Operations on the lines of the editor, each one compared with a text in one string.

namespace orvane::fuzz {

namespace {

using test::PlainText;

constexpr int mostOperations = 200;
constexpr std::size_t longestText = 4000;

struct StorePair {
    FuzzedBytes& bytes;
    TextLines store;
    PlainText model;

    // Mostly a number that may be a place in the text, else one far out.
    std::int32_t Number() {
        constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
        constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
        constexpr std::int32_t farOut[] = {least, least + 1, -1, most - 1, most};
        const unsigned byte = bytes.Byte();
        if (byte >= 250) return farOut[byte - 250 < 5 ? byte - 250 : 0];
        return static_cast<std::int32_t>(byte % 24);
    }
};

void SetText(StorePair& pair, std::int32_t, std::int32_t) {
    const std::string text(pair.bytes.Text(200));
    Require(pair.store.SetText(text), "a text is set");
    pair.model.text = test::WithoutReturns(text);
}

void InsertChar(StorePair& pair, std::int32_t line, std::int32_t col) {
    const auto ch = static_cast<char>(pair.bytes.Byte());
    const std::optional<std::size_t> offset = pair.model.Offset(line, col);
    const bool fits = offset && ch != '\n' && ch != '\r';
    Require(pair.store.InsertChar(line, col, ch) == fits, "a character is put in");
    if (fits) pair.model.text.insert(*offset, 1, ch);
}

void DeleteChar(StorePair& pair, std::int32_t line, std::int32_t col) {
    const std::optional<std::size_t> offset = pair.model.Offset(line, col);
    const bool isOnOne = offset && *offset < pair.model.LineEnd(*offset);
    Require(pair.store.DeleteChar(line, col) == (isOnOne ? pair.model.text[*offset] : '\0'),
            "a character is taken away");
    if (isOnOne) pair.model.text.erase(*offset, 1);
}

void Split(StorePair& pair, std::int32_t line, std::int32_t col) {
    const std::optional<std::size_t> offset = pair.model.OffsetAtMost(line, col);
    Require(pair.store.SplitLine(line, col) == offset.has_value(), "a line is split");
    if (offset) pair.model.text.insert(*offset, 1, '\n');
}

void Join(StorePair& pair, std::int32_t line, std::int32_t) {
    const std::optional<std::size_t> start = pair.model.LineStart(line);
    const bool joins = start && pair.model.LineEnd(*start) < pair.model.text.size();
    Require(pair.store.JoinWithNext(line) == joins, "two lines are joined");
    if (joins) pair.model.text.erase(pair.model.LineEnd(*start), 1);
}

void DeleteSelected(StorePair& pair, std::int32_t line, std::int32_t col) {
    SelRange range;
    range.SetRange(line, col, pair.Number(), pair.Number());
    std::optional<std::size_t> from = pair.model.OffsetAtMost(line, col);
    std::optional<std::size_t> to = pair.model.OffsetAtMost(range.endLine, range.endCol);
    if (to < from) std::swap(from, to);
    const bool isInText = from && to;
    Require(pair.store.GetSelected(range) ==
                (isInText ? pair.model.text.substr(*from, *to - *from) : std::string()),
            "the selected text");
    Require(pair.store.DeleteSelected(range) == isInText, "a selection is deleted");
    if (isInText) pair.model.text.erase(*from, *to - *from);
}

void InsertText(StorePair& pair, std::int32_t line, std::int32_t col) {
    const bool isRestored = pair.bytes.Below(2) != 0;
    const std::string text(pair.bytes.Text(60));
    const std::string kept = test::WithoutReturns(text);
    const std::optional<std::size_t> offset = pair.model.Offset(line, col);
    TextPosition end;
    std::int32_t breaks = 0;
    const bool isDone = isRestored ? pair.store.RestoreText(line, col, text, end, breaks)
                                   : pair.store.InsertText(line, col, text, end, breaks);
    Require(isDone == (offset && !(isRestored && text.empty())), "a text is put in");
    if (!offset) return;
    pair.model.text.insert(*offset, kept);
    Require(end == pair.model.PositionOf(*offset + kept.size()), "the place behind the text");
    Require(breaks == std::count(kept.begin(), kept.end(), '\n'), "the lines that came");
}

void RemoveExact(StorePair& pair, std::int32_t line, std::int32_t col) {
    const std::optional<std::size_t> offset = pair.model.Offset(line, col);
    // By chance alone it would hardly ever match.
    const bool matches = offset && pair.bytes.Below(4) != 0;
    const unsigned length = pair.bytes.Below(40);
    const std::string text =
        matches ? pair.model.text.substr(*offset, length) : std::string(pair.bytes.Text(8));
    TextPosition position;
    std::int32_t breaks = 0, expectedBreaks = 0;
    const bool isDone = offset && pair.model.RemoveExact(*offset, text, expectedBreaks);
    Require(pair.store.RemoveExact(line, col, text, position, breaks) == isDone, "exactly a text");
    Require(breaks == expectedBreaks, "the lines that went");
}

// Every cell of a line belongs to one piece at most, from left to right.
void CheckPieces(std::string_view line) {
    std::vector<ColouredPiece> pieces;
    ScanLine(line, LanguageWords(), pieces);
    std::int32_t end = 0;
    for (const ColouredPiece& piece : pieces) {
        Require(piece.start >= end && piece.length >= 1, "pieces stand behind each other");
        Require(piece.cell >= piece.start, "a tab takes one cell at least");
        end = piece.start + piece.length;
    }
    Require(static_cast<std::size_t>(end) <= line.size(), "pieces end in their line");
}

void Compare(const StorePair& pair) {
    std::string stored;
    pair.store.AppendTextTo(stored);
    Require(stored == pair.model.text, "the same text");
    Require(static_cast<std::size_t>(pair.store.count) == pair.model.Lines(), "as many lines");
    for (std::int32_t at = 0; at < pair.store.count; ++at) {
        const TextLine& line = pair.store.LineAt(at);
        Require(line.chars[line.length] == '\0', "a line has its end");
        Require(line.allocated >= line.length && line.capacity >= line.allocated, "its room");
    }
}

constexpr void (*operations[])(StorePair&, std::int32_t line, std::int32_t col) = {
    InsertText, InsertChar, DeleteChar, Split, Join, DeleteSelected, RemoveExact, SetText};

}  // namespace

}  // namespace orvane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace orvane::fuzz;
    FuzzedBytes bytes(data, size);
    StorePair pair{bytes, {}, {}};
    for (int count = 0; count < mostOperations && !bytes.IsEmpty(); ++count) {
        const unsigned operation = bytes.Below(std::size(operations));
        const std::int32_t line = pair.Number(), col = pair.Number();
        operations[operation](pair, line, col);
        Compare(pair);
        if (pair.model.text.size() > longestText) break;
    }
    pair.store.Measure();
    for (std::int32_t at = 0; at < pair.store.count; ++at) CheckPieces(pair.store.GetLine(at));
    return 0;
}
