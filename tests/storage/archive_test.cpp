#include "storage/archive.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/storage/marked_text.h"

namespace orvane {
namespace {

using test::BufferOf;
using test::Marked;
using test::Shown;

using Names = std::vector<std::string>;

TEST(Archive, HasItsMarksAndPreambleByteForByte) {
    EXPECT_EQ(nameMark, static_cast<char>(0xB6));
    EXPECT_EQ(textMark, static_cast<char>(0xE6));
    EXPECT_EQ(archivePreamble.size(), 35U);
    EXPECT_EQ(archivePreamble, "do not modify the file manually\x0D\x0A\x0D\x0A");
}

TEST(ListNames, GivesTheNamesInFileOrder) {
    struct Row {
        std::string_view archive;
        Names names;
    };
    const Row rows[] = {
        {"", {}},
        {archivePreamble, {}},
        {"pre<b>1<a>2<c>3", {"b", "a", "c"}},  // not sorted
        {"<a>1<b>2", {"a", "b"}},              // no preamble
        {"pre<a>", {"a"}},                     // an empty text
        {"pre<a><b>", {"a", "b"}},
        {"pre<>t", {""}},  // an empty name
        {"<a>1<a>2", {"a", "a"}},
        {"> pre > <a>1", {"a"}},  // text marks in front of the first name mark
        {"<a>1>2>3<b>4", {"a", "b"}},
        {"<a>one<two>three", {"a", "two"}},  // a name mark and a text mark inside a text
        {"<a>one<two", {"a"}},               // a name mark without a text mark behind it
        {"<a", {}},
        {"<", {}},
        {">", {}},
        {"<<<<", {}},
        {">>>>", {}},
        {"<a<b>t", {Marked("a<b")}},  // from the first name mark to the next text mark
        {"<<>t", {Marked("<")}},
        {"<a>1#<b>2", {"a"}},  // a NUL ends what is searched
        {"<a#>1<b>2", {}},
        {"#<a>1", {}},
        {"<a>1<b#>", {"a"}},
    };
    for (const auto& [archive, names] : rows) {
        SCOPED_TRACE(archive);
        EXPECT_EQ(ListNames(BufferOf(Marked(archive))), names);
    }
}

TEST(FindSheet, FindsTheFirstPlaceOfTheNameBetweenItsMarks) {
    struct Row {
        std::string_view archive, name;
        std::optional<std::int32_t> place;
    };
    const Row rows[] = {
        {"pre<a>1<b>2", "a", 3},
        {"pre<a>1<b>2", "b", 7},
        {"<a>1", "a", 0},
        {"<ab>1", "a", std::nullopt},  // the key includes both marks
        {"<ab>1", "b", std::nullopt},
        {"<ab>1", "ab", 0},
        {"<ab>1", "AB", std::nullopt},
        {"<a>1<a>2", "a", 0},
        {"<a>see <b> there<b>own", "b", 7},  // in the text of another sheet
        {"<a<b>t", "b", 2},                  // in the name of another sheet
        {"<a<b>t", "a<b", 0},
        {"<<<a>t", "<a", 1},
        {"<<x<<<y>t", "<<y", 3},
        {"<a<a<b<a<a<a>t", "a<a<a", 6},
        {"<>t", "", 0},
        {"<a", "a", std::nullopt},
        {"", "", std::nullopt},
        {"", "a", std::nullopt},
        {"<a>1#<b>2", "b", std::nullopt},  // behind a NUL
        {"<a#b>1", "a#b", std::nullopt},   // a name with one
        {"<a#", "a", std::nullopt},
    };
    for (const auto& [archive, name, place] : rows) {
        SCOPED_TRACE(std::string(archive) + " " + std::string(name));
        EXPECT_EQ(FindSheet(BufferOf(Marked(archive)), Marked(name)), place);
    }
}

struct TextRow {
    std::string_view archive, name, text;
};

TEST(ReadSheetText, GivesTheTextUpToTheNextNameMark) {
    constexpr TextRow rows[] = {
        {"pre<a>one\r\ntwo<b>2", "a", "one\r\ntwo"},
        {"pre<a>1<b>2", "b", "2"},
        {"pre<a>1<b>", "b", ""},
        {"pre<a><b>2", "a", ""},
        {"pre<a>1", "c", ""},
        {"<ab>1", "a", ""},
        {"<a>cut<off", "a", "cut"},  // a name mark inside the text
        {"<a>cut<off>b", "a", "cut"},
        {"<a>1>2", "a", "1>2"},  // a text mark is part of it
        {"<a>1<a>2", "a", "1"},
        {"<a>see <b> there<b>own", "b", " there"},
        {"<a>b>t", "a>b", "t"},  // a name with a text mark
        {"<a>b>t", "a", "b>t"},
        {"<a>1#2<b>3", "a", "1"},
        {"<a>1#<b>2", "b", ""},
    };
    for (const auto& [archive, name, text] : rows) {
        SCOPED_TRACE(std::string(archive) + " " + std::string(name));
        EXPECT_EQ(Shown(ReadSheetText(BufferOf(Marked(archive)), Marked(name))), text);
    }
}

struct ChangeRow {
    std::string_view archive, name, given, result;
};

template <typename Change>
void ExpectChanges(const std::vector<ChangeRow>& rows, Change change) {
    for (const auto& [archive, name, given, result] : rows) {
        SCOPED_TRACE(std::string(archive) + " " + std::string(name) + " " + std::string(given));
        TextBuffer buffer = BufferOf(Marked(archive));
        change(buffer, Marked(name), Marked(given));
        EXPECT_EQ(Shown(buffer.View()), result);
        EXPECT_EQ(buffer.data[static_cast<std::size_t>(buffer.length)], '\0');
    }
}

TEST(AppendSheet, AddsTheEntryAtTheEnd) {
    const std::vector<ChangeRow> rows = {
        {"", "a", "1", "<a>1"},
        {"pre", "a", "1", "pre<a>1"},
        {"pre<b>2", "a", "1", "pre<b>2<a>1"},
        {"pre", "a", "", "pre<a>"},  // name and marks, nothing else
        {"pre", "", "", "pre<>"},
        {"<a>1", "a", "2", "<a>1<a>2"},                // nobody guards against a second one
        {"pre", "a<b>c", "1<2>3", "pre<a<b>c>1<2>3"},  // nor against marks
        {"<a>1#2", "b", "3", "<a>1#2<b>3"},            // behind a NUL it is never found
        {"pre", "a", "1#2", "pre<a>1#2"},
        {"pre", "a#b", "1", "pre<a#b>1"},
    };
    ExpectChanges(rows, AppendSheet);
}

TEST(ReplaceSheetText, KeepsTheEntryInItsPlace) {
    const std::vector<ChangeRow> rows = {
        {"pre<a>old<b>2", "a", "longer", "pre<a>longer<b>2"},
        {"pre<a>old<b>2", "a", "s", "pre<a>s<b>2"},
        {"pre<a>old<b>2", "a", "new", "pre<a>new<b>2"},
        {"pre<a>old<b>2", "a", "", "pre<a><b>2"},
        {"pre<a><b>2", "a", "new", "pre<a>new<b>2"},
        {"pre<a>1<b>old", "b", "new text", "pre<a>1<b>new text"},
        {"pre<a>1<b>old", "b", "", "pre<a>1<b>"},
        {"pre<a>1", "b", "new", "pre<a>1"},  // removed meanwhile
        {"<ab>1", "a", "new", "<ab>1"},
        {"<a>1<a>2", "a", "new", "<a>new<a>2"},
        {"<a>1<2>3", "a", "new", "<a>new<2>3"},  // what stood behind a name mark in the old text
        {"<a>1", "a", "x<y>z", "<a>x<y>z"},
        {"<a>1#2<b>3", "a", "new", "<a>new#2<b>3"},  // everything from the NUL on is kept
        {"<a>1#<b>2", "b", "new", "<a>1#<b>2"},
        {"<a>1", "a", "x#y", "<a>x#y"},
        {"<a>b>t", "a>b", "new", "<a>b>new"},
    };
    ExpectChanges(rows, ReplaceSheetText);
}

TEST(RenameSheet, ReplacesTheNameInItsPlace) {
    const std::vector<ChangeRow> rows = {
        {"pre<a>1<b>2", "a", "long name", "pre<long name>1<b>2"},
        {"pre<long name>1<b>2", "long name", "a", "pre<a>1<b>2"},
        {"pre<a>1<b>2", "b", "c", "pre<a>1<c>2"},
        {"pre<a>1", "a", "", "pre<>1"},
        {"pre<a>1", "b", "c", "pre<a>1"},
        {"<ab>1", "a", "c", "<ab>1"},
        {"<a>1<b>2", "a", "b", "<b>1<b>2"},
        {"<a>1<a>2", "a", "b", "<b>1<a>2"},
        {"<a>1", "a", "x<y>z", "<x<y>z>1"},
        {"<a>b>t", "a", "c", "<c>b>t"},
        {"<a>1#<b>2", "a", "c", "<c>1#<b>2"},
        {"<a>1#<b>2", "b", "c", "<a>1#<b>2"},
        {"<a>1", "a", "x#y", "<x#y>1"},
        {"<a>see <b> there<b>own", "b", "c", "<a>see <c> there<b>own"},
    };
    ExpectChanges(rows, RenameSheet);
}

TEST(DeleteSheet, RemovesTheEntryUpToTheNextNameMark) {
    const std::vector<ChangeRow> rows = {
        {"pre<a>1<b>2<c>3", "a", "", "pre<b>2<c>3"},
        {"pre<a>1<b>2<c>3", "b", "", "pre<a>1<c>3"},
        {"pre<a>1<b>2<c>3", "c", "", "pre<a>1<b>2"},  // through the end
        {"pre<a>1", "a", "", "pre"},                  // the only one
        {"<a>1", "a", "", ""},
        {"pre<a><b>", "a", "", "pre<b>"},
        {"pre<a>1", "b", "", "pre<a>1"},
        {"<ab>1", "a", "", "<ab>1"},
        {"<a>1<a>2", "a", "", "<a>2"},
        {"<a>1<2", "a", "", "<2"},
        {"<a>1#2<b>3", "a", "", "#2<b>3"},
        {"<a>1#<b>2", "b", "", "<a>1#<b>2"},
        {"<<x>t<b>u", "<x", "", "<x>t<b>u"},  // only up to the name mark in the name
        {"<a>b>t<c>u", "a>b", "", "<c>u"},
    };
    ExpectChanges(rows, [](TextBuffer& buffer, const std::string& name, const std::string&) {
        DeleteSheet(buffer, name);
    });
}

struct MoveRow {
    std::string_view archive, name;
    bool moved;
    std::string_view result;
};

template <typename Move>
void ExpectMoves(const std::vector<MoveRow>& rows, Move move) {
    for (const auto& [archive, name, moved, result] : rows) {
        SCOPED_TRACE(std::string(archive) + " " + std::string(name));
        TextBuffer buffer = BufferOf(Marked(archive));
        EXPECT_EQ(move(buffer, Marked(name)), moved);
        EXPECT_EQ(Shown(buffer.View()), result);
    }
}

TEST(MoveSheetUp, SwapsTheEntryWithTheOneBefore) {
    const std::vector<MoveRow> rows = {
        {"pre<a>1<bb>22<c>3", "bb", true, "pre<bb>22<a>1<c>3"},
        {"pre<a>1<bb>22<c>3", "c", true, "pre<a>1<c>3<bb>22"},
        {"pre<a>1<bb>22<c>3", "a", false, "pre<a>1<bb>22<c>3"},  // the first one
        {"<a>1<bb>22", "a", false, "<a>1<bb>22"},                // at the very start
        {"<a>1<bb>22", "bb", true, "<bb>22<a>1"},
        {"pre<a><b>", "b", true, "pre<b><a>"},
        {"pre<a>1", "b", false, "pre<a>1"},
        {"<x<a>1", "a", true, "<a>1<x"},  // a name mark without a text mark is a neighbour as well
        {"<a>1<b>2#<c>3", "b", true, "<b>2<a>1#<c>3"},
        {"<a>1#<b>2", "b", false, "<a>1#<b>2"},
        {"<a>1<<x>t", "<x", true, "<<a>1<x>t"},  // its entry is the first of its two marks
        {"<a>1<b>2<b>3", "b", true, "<b>2<a>1<b>3"},
    };
    ExpectMoves(rows, MoveSheetUp);
}

TEST(MoveSheetDown, SwapsTheEntryWithTheOneBehind) {
    const std::vector<MoveRow> rows = {
        {"pre<a>1<bb>22<c>3", "a", true, "pre<bb>22<a>1<c>3"},
        {"pre<a>1<bb>22<c>3", "bb", true, "pre<a>1<c>3<bb>22"},
        {"pre<a>1<bb>22<c>3", "c", false, "pre<a>1<bb>22<c>3"},  // the last one
        {"<a>1<bb>22", "a", true, "<bb>22<a>1"},
        {"pre<a><b>", "a", true, "pre<b><a>"},
        {"pre<a>1", "a", false, "pre<a>1"},
        {"pre<a>1", "b", false, "pre<a>1"},
        {"<a>1<x", "a", true, "<x<a>1"},
        {"<a>1<b>2#<c>3", "a", true, "<b>2<a>1#<c>3"},
        {"<a>1#<b>2", "a", false, "<a>1#<b>2"},
        {"<<x>t<b>u", "<x", true, "<x>t<<b>u"},
        {"<a>1<b>2<a>3", "a", true, "<b>2<a>1<a>3"},
    };
    ExpectMoves(rows, MoveSheetDown);
}

// All 256 bytes but the marks and the NUL pass through names and texts.
TEST(Archive, KeepsEveryOtherByteAsItIs) {
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte) {
        if (static_cast<char>(byte) != nameMark && static_cast<char>(byte) != textMark) {
            bytes += static_cast<char>(byte);
        }
    }
    TextBuffer archive = BufferOf(archivePreamble);
    AppendSheet(archive, bytes, bytes + bytes);
    AppendSheet(archive, "next", "");
    EXPECT_EQ(ListNames(archive), (Names{bytes, "next"}));
    EXPECT_EQ(ReadSheetText(archive, bytes), bytes + bytes);
    ReplaceSheetText(archive, bytes, bytes);
    EXPECT_EQ(ReadSheetText(archive, bytes), bytes);
}

}  // namespace
}  // namespace orvane
