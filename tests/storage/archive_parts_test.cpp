#include "storage/archive_parts.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/storage/marked_text.h"

namespace orvane {
namespace {

using namespace orvane::test;

struct CutRow {
    std::string_view bytes;
    std::string_view preamble;
    std::vector<ArchiveParts::Sheet> sheets;
    std::string_view rest;
};
const CutRow cutRows[] = {
    {"", "", {}, ""},
    {archivePreamble, archivePreamble, {}, ""},
    {"<a>1", "", {{"a", "1"}}, ""},
    {"p<a>1<b>", "p", {{"a", "1"}, {"b", ""}}, ""},
    {"<><>", "", {{"", ""}, {"", ""}}, ""},
    // A text mark in the preamble and in a text.
    {"x>y<a>1>2", "x>y", {{"a", "1>2"}}, ""},
    // A name runs to the next text mark, over name marks.
    {"<a<b>1", "", {{"a<b", "1"}}, ""},
    // A name without its text.
    {"p<a>1<b", "p", {{"a", "1"}}, "<b"},
    {"p<<", "p", {}, "<<"},
    // Behind a NUL, in each kind of piece.
    {"p#<a>1", "p", {}, "#<a>1"},
    {"<a#>1", "", {}, "<a#>1"},
    {"<a>1#2<b>", "", {{"a", "1"}}, "#2<b>"},
    {"<a>1<a>2", "", {{"a", "1"}, {"a", "2"}}, ""},
};

TEST(CutArchive, CutsAtTheMarks) {
    for (const auto& [bytes, preamble, sheets, rest] : cutRows) {
        SCOPED_TRACE(bytes);
        const ArchiveParts parts = CutArchive(Marked(bytes));
        EXPECT_EQ(Shown(parts.preamble), preamble);
        EXPECT_EQ(Shown(parts.rest), rest);
        ASSERT_EQ(parts.sheets.size(), sheets.size());
        for (std::size_t at = 0; at < sheets.size(); ++at) {
            EXPECT_EQ(Shown(parts.sheets[at].name), sheets[at].name);
            EXPECT_EQ(Shown(parts.sheets[at].text), sheets[at].text);
        }
        EXPECT_EQ(Shown(JoinArchive(parts)), bytes);
    }
}

TEST(CutArchive, ListsWhatTheProgramListsAndJoinsToTheSameBytes) {
    std::mt19937 random(20);
    constexpr std::string_view alphabet = "ab<<>>\n#";
    for (int round = 0; round < 20'000; ++round) {
        std::string shown;
        for (auto length = random() % 24; length > 0; --length) {
            shown += alphabet[random() % alphabet.size()];
        }
        const std::string bytes = Marked(shown);
        const ArchiveParts parts = CutArchive(bytes);
        ASSERT_EQ(JoinArchive(parts), bytes) << shown;
        std::vector<std::string> names;
        for (const ArchiveParts::Sheet& sheet : parts.sheets) names.push_back(sheet.name);
        ASSERT_EQ(names, ListNames(BufferOf(bytes))) << shown;
    }
}

TEST(MergeSheets, ReplacesTheFirstOfANameAndAddsTheOthersInFrontOfTheRest) {
    ArchiveParts parts = CutArchive(Marked("p<a>1<b>2<a>3<rest"));
    const MergeCount count = MergeSheets(parts, {{"c", "4"}, {"a", "5"}, {"A", "6"}});
    EXPECT_EQ(count.replaced, 1U);
    EXPECT_EQ(count.added, 2U);
    EXPECT_EQ(Shown(JoinArchive(parts)), "p<a>5<b>2<a>3<c>4<A>6<rest");
}

TEST(MergeSheets, OfNoSheetsChangesNothing) {
    ArchiveParts parts = CutArchive(Marked("p<a>1"));
    const ArchiveParts before = parts;
    const MergeCount count = MergeSheets(parts, {});
    EXPECT_EQ(count.replaced + count.added, 0U);
    EXPECT_EQ(parts, before);
}

struct HiddenRow {
    std::string_view archive;
    std::vector<std::string_view> wanted;
    std::string_view name;  // empty where all of them are found
    std::string_view behind;
};
const HiddenRow hiddenRows[] = {
    {"<a<b>1", {"b"}, "b", "a<b"},
    {"<a<b>1<b>2", {"a", "b"}, "b", "a<b"},
    {"<b>2<a<b>1", {"b"}, "", ""},
    {"<a<b>1", {"a<b"}, "", ""},
    {"<a<b>1", {"a", "", "c"}, "", ""},
    {"<a<b<c>1", {"c"}, "c", "a<b<c"},
    {"<a<b<c>1", {"c", "b<c"}, "b<c", "a<b<c"},
    {"<a<>1", {""}, "", "a<"},
    {"<<b>1", {"b"}, "b", "<b"},
    {"<ab>1", {"b"}, "", ""},
    {"x<a>1<c<b", {"b"}, "", ""},
    {"<a>1#<c<b>2", {"b"}, "", ""},
};

TEST(FindHidden, TellsWhichSheetIsFoundInPlaceOfAWantedOne) {
    for (const auto& [archive, names, name, behind] : hiddenRows) {
        SCOPED_TRACE(archive);
        std::vector<ArchiveParts::Sheet> wanted;
        for (const std::string_view each : names) wanted.push_back({Marked(each), ""});
        const std::optional<HiddenSheet> hidden = FindHidden(CutArchive(Marked(archive)), wanted);
        ASSERT_EQ(hidden.has_value(), !behind.empty());
        if (!hidden) continue;
        EXPECT_EQ(Shown(hidden->name), name);
        EXPECT_EQ(Shown(hidden->behind), behind);
    }
}

TEST(FindHidden, AgreesWithTheSearchesAfterAMerge) {
    std::mt19937 random(21);
    const auto randomText = [&](std::string_view alphabet, std::size_t longest) {
        std::string shown;
        for (auto length = random() % (longest + 1); length > 0; --length) {
            shown += alphabet[random() % alphabet.size()];
        }
        return Marked(shown);
    };
    int hiddenRounds = 0;
    for (int round = 0; round < 20'000; ++round) {
        ArchiveParts parts = CutArchive(randomText("ab<<<>>#", 24));
        std::vector<ArchiveParts::Sheet> wanted;
        std::set<std::string> names;
        while (wanted.size() < 3) {
            const std::string name = randomText("ab<", 3);
            if (names.insert(name).second) {
                wanted.push_back({name, "text " + std::to_string(wanted.size())});
            }
        }
        MergeSheets(parts, wanted);
        const TextBuffer archive = BufferOf(JoinArchive(parts));
        bool areFound = true;
        for (const auto& [name, text] : wanted) {
            areFound = areFound && ReadSheetText(archive, name) == text;
        }
        ASSERT_EQ(!FindHidden(parts, wanted), areFound) << Shown(JoinArchive(parts));
        hiddenRounds += areFound ? 0 : 1;
    }
    EXPECT_GT(hiddenRounds, 100);
    EXPECT_LT(hiddenRounds, 19'900);
}

// The names of a damaged archive can be millions of marks.
TEST(FindHidden, ComparesOnlyNamesOfTheLengthsThatAreWanted) {
    const ArchiveParts parts = CutArchive(std::string(1'000'000, nameMark) + textMark);
    EXPECT_FALSE(FindHidden(parts, {{"b", ""}, {std::string(500'000, 'b'), ""}}));
    EXPECT_TRUE(FindHidden(parts, {{std::string(500'000, nameMark), ""}}));
}

}  // namespace
}  // namespace orvane
