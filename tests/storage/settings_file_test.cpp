#include "storage/settings_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/storage/settings_on_disk.h"

namespace orvane {
namespace {

using test::OpenedSettings;
using test::SettingsOnDisk;

// What an empty file becomes.
const std::string prepared =
    "\r\n\r\n{SECT_MAIN}\r\n<KEY>\r\n<LIST>\r\n"
    "\r\n\r\n{SECT_GLOBLE}\r\n<KEY>\r\n<LIST>\r\n";

// Text with its NUL bytes.
template <std::size_t count>
std::string Bytes(const char (&text)[count]) {
    return std::string(text, count - 1);
}

// A file whose main section holds these lines.
std::string MainWith(const std::string& lines) {
    return "{SECT_MAIN}\r\n<KEY>\r\n" + lines + "<LIST>\r\n";
}

TEST(SettingsFileOpen, NeverMakesAFile) {
    const SettingsOnDisk disk("");
    const std::string missing = disk.Folder() + "/missing.set";
    for (const std::string& path : {missing, disk.Folder(), std::string("/dev/zero")}) {
        SCOPED_TRACE(path);
        SettingsFile settings(path);
        EXPECT_FALSE(settings.Open());
        EXPECT_FALSE(settings.OpenAndPrepare());
        EXPECT_FALSE(settings.IsOpen());
    }
    EXPECT_FALSE(std::filesystem::exists(missing));
}

TEST(SettingsFileOpen, ChangesNothing) {
    OpenedSettings opened("");
    EXPECT_EQ(opened.disk.Bytes(), "");
    EXPECT_TRUE(opened.settings.IsOpen());
}

TEST(SettingsFileOpen, StartsAgainAtTheStart) {
    OpenedSettings opened("a\r\nb\r\n");
    std::string line;
    ByteRange range;
    EXPECT_TRUE(opened.settings.ReadLine(line, range));
    EXPECT_TRUE(opened.settings.Open());
    EXPECT_TRUE(opened.settings.ReadLine(line, range));
    EXPECT_EQ(line, "a");
}

TEST(SettingsFileOpen, LeavesWhatIsLargerThanAnySettingsAlone) {
    OpenedSettings opened("");
    std::filesystem::resize_file(opened.disk.Path(), std::uintmax_t{1} << 40);
    EXPECT_FALSE(opened.settings.OpenAndPrepare());
    EXPECT_FALSE(opened.settings.IsOpen());
    EXPECT_EQ(std::filesystem::file_size(opened.disk.Path()), std::uintmax_t{1} << 40);
}

TEST(SettingsFilePrepare, AppendsTheSectionsThatAreMissing) {
    const std::string mainPart = "\r\n\r\n{SECT_MAIN}\r\n<KEY>\r\n<LIST>\r\n";
    const std::string globalPart = "\r\n\r\n{SECT_GLOBLE}\r\n<KEY>\r\n<LIST>\r\n";
    const std::pair<std::string, std::string> rows[] = {
        {"", prepared},
        {prepared, prepared},
        {mainPart, prepared},
        {globalPart, globalPart + mainPart},
        {MainWith("[A]1\r\n"), MainWith("[A]1\r\n") + globalPart},
        {"note\r\n", "note\r\n" + prepared},
        // The last line is ended first.
        {"note", "note\r\n" + prepared},
        {"note\r", "note\r\r\n" + prepared},
        {"note\n", "note\n" + prepared},
        {"{SECT_MAIN}", "{SECT_MAIN}\r\n" + globalPart},
        // Kept: sections that no search reaches are appended again.
        {"{\r\n" + prepared, "{\r\n" + prepared + prepared},
    };
    for (const auto& [before, after] : rows) {
        SCOPED_TRACE(before);
        const SettingsOnDisk disk(before);
        SettingsFile settings(disk.Path());
        EXPECT_TRUE(settings.OpenAndPrepare());
        EXPECT_EQ(disk.Bytes(), after);
    }
}

struct SectionRow {
    std::string bytes;
    std::string name;
    std::optional<std::pair<std::uint64_t, std::uint64_t>> range;
};
const SectionRow sectionRows[] = {
    {"", "SECT_MAIN", {}},
    {"{SECT_MAIN}\r\n", "SECT_MAIN", {{0, 13}}},
    {"\r\n\r\n{SECT_MAIN}\r\n<KEY>", "SECT_MAIN", {{4, 17}}},
    {prepared, "SECT_MAIN", {{4, 17}}},
    {prepared, "SECT_GLOBLE", {{36, 51}}},
    {prepared, "SECT_GLOBAL", {}},
    {"a\r\n{SECT_MAIN}\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {{3, 16}}},
    {"{}\r\n", "", {{0, 4}}},
    // blanks behind it, and nothing else
    {"{SECT_MAIN}   \r\n", "SECT_MAIN", {{0, 16}}},
    {"{SECT_MAIN}   ", "SECT_MAIN", {{0, 14}}},
    {"{SECT_MAIN}\t\r\n", "SECT_MAIN", {}},
    {"{SECT_MAIN}x\r\n", "SECT_MAIN", {}},
    {"{ SECT_MAIN}\r\n", "SECT_MAIN", {}},
    {"{SECT_MAIN }\r\n", "SECT_MAIN", {}},
    // the whole name, letter by letter
    {"{SECT_MAI}\r\n", "SECT_MAIN", {}},
    {"{SECT_MAIN2}\r\n", "SECT_MAIN", {}},
    {"{sect_main}\r\n", "SECT_MAIN", {}},
    {"{SECT_MAIN\r\n", "SECT_MAIN", {}},
    {"SECT_MAIN}\r\n", "SECT_MAIN", {}},
    {"{{SECT_MAIN}\r\n", "SECT_MAIN", {}},
    // anywhere in its line, at the end of the file too
    {"ab{SECT_MAIN}\r\n", "SECT_MAIN", {{2, 15}}},
    {"{SECT_MAIN}", "SECT_MAIN", {{0, 11}}},
    {"{SECT_MAIN}\r", "SECT_MAIN", {}},
    // only a carriage return plus a line feed end its line
    {"{SECT_MAIN}\n<KEY>\r\n", "SECT_MAIN", {}},
    {"{SECT_MAIN}\r<KEY>\r\n", "SECT_MAIN", {}},
    {"{SECT_MAIN}\n\r\n", "SECT_MAIN", {}},
    {"a\n{SECT_MAIN}\r\n", "SECT_MAIN", {{2, 15}}},
    // a brace alone ends the search, one with a blank does not
    {"{\r\n\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {}},
    {"ab{\r\n\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {}},
    {"{", "SECT_MAIN", {}},
    {"{ \r\n\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {{6, 19}}},
    {"{", "", {}},
    // the first two columns behind a rejected line are not seen
    {"{A}\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {}},
    {"{A}\r\n {SECT_MAIN}\r\n", "SECT_MAIN", {}},
    {"{A}\r\n  {SECT_MAIN}\r\n", "SECT_MAIN", {{7, 20}}},
    {"{A}\r\n\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {{7, 20}}},
    {"{A}\r\n{SECT_MAIN}\r\n\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {{20, 33}}},
    {"{A}\r\n{\r\n{SECT_MAIN}\r\n", "SECT_MAIN", {{8, 21}}},
    {"{A}\r\n{", "SECT_MAIN", {}},
    {"{A}\r\n", "SECT_MAIN", {}},
    {"{A}", "SECT_MAIN", {}},
    // a NUL ends the search
    {Bytes("\0{SECT_MAIN}\r\n"), "SECT_MAIN", {}},
    {Bytes("a\0\r\n{SECT_MAIN}\r\n"), "SECT_MAIN", {}},
    {Bytes("{A}\r\n\0\n{SECT_MAIN}\r\n"), "SECT_MAIN", {}},
    {Bytes("{SECT_MAIN}\0\r\n<KEY>"), "SECT_MAIN", {{0, 11}}},
    {Bytes("{SECT\0MAIN}\r\n"), "SECT_MAIN", {}},
    {Bytes("{SECT_MAIN}\r\n\0"), "SECT_MAIN", {{0, 13}}},
};

TEST(SettingsFileFindSection, GivesTheLineOfTheSection) {
    for (const auto& [bytes, name, range] : sectionRows) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        OpenedSettings opened(bytes);
        ByteRange found = {77, 78};
        EXPECT_EQ(opened.settings.FindSection(name, found), range.has_value());
        EXPECT_EQ(found.from, range ? range->first : 77U);
        EXPECT_EQ(found.to, range ? range->second : 78U);
        EXPECT_EQ(opened.disk.Bytes(), bytes);
    }
}

TEST(SettingsFileFindSection, SetsThePositionOnlyWhereItIsFound) {
    OpenedSettings opened("first\r\n{A}\r\nbehind\r\nlast\r\n");
    std::string line;
    ByteRange range;
    EXPECT_TRUE(opened.settings.FindSection("A", range));
    EXPECT_FALSE(opened.settings.FindSection("B", range));
    EXPECT_TRUE(opened.settings.ReadLine(line, range));
    EXPECT_EQ(line, "behind");
    EXPECT_FALSE(opened.settings.FindSection("B", range));
    EXPECT_TRUE(opened.settings.ReadLine(line, range));
    EXPECT_EQ(line, "last");
    EXPECT_FALSE(opened.settings.ReadLine(line, range));
    EXPECT_TRUE(opened.settings.FindSection("A", range));
    EXPECT_TRUE(opened.settings.ReadLine(line, range));
    EXPECT_EQ(line, "behind");
}

struct LineRow {
    std::string bytes;
    std::vector<std::pair<std::string, std::uint64_t>> lines;  // each with the offset behind it
};

std::vector<LineRow> LineRows() {
    std::vector<LineRow> rows = {
        {"", {}},
        {"a\r\nb\r\n", {{"a", 3}, {"b", 6}}},
        {"a\r\nb", {{"a", 3}, {"b", 4}}},
        {"a\rb\r", {{"a", 2}, {"b", 4}}},
        {"\r\n\r\r\n", {{"", 2}, {"", 3}, {"", 5}}},
        {"a\nb\n\r\nc\n", {{"a\nb\n", 6}, {"c\n", 8}}},
        {"\r", {{"", 1}}},
        {"\n", {{"\n", 1}}},
        {Bytes("a\0b\r\n\0"), {{Bytes("a\0b"), 5}, {Bytes("\0"), 6}}},
    };
    // Line ends around the borders of the pieces in which the file is read.
    constexpr std::uint64_t most = longestSettingsLine;
    for (const std::uint64_t length :
         {std::uint64_t{1022}, std::uint64_t{1023}, std::uint64_t{1024}, std::uint64_t{3070},
          std::uint64_t{3071}, std::uint64_t{3072}, std::uint64_t{200'000}, most - 1, most}) {
        const std::string line(length, 'x');
        rows.push_back({line, {{line, length}}});
        rows.push_back({line + "\r", {{line, length + 1}}});
        rows.push_back({line + "\r\nb", {{line, length + 2}, {"b", length + 3}}});
        rows.push_back({line + "\rb\r\n", {{line, length + 1}, {"b", length + 4}}});
    }
    // Too long: passed over as a whole.
    for (const std::uint64_t length : {most + 1, most + 2, 3 * most}) {
        const std::string line(length, 'x');
        rows.push_back({line, {{"", length}}});
        rows.push_back({line + "\r\nb\r", {{"", length + 2}, {"b", length + 4}}});
    }
    return rows;
}

TEST(SettingsFileReadLine, EndsAtACarriageReturn) {
    for (const auto& [bytes, lines] : LineRows()) {
        SCOPED_TRACE(testing::PrintToString(bytes.substr(0, 20)) + std::to_string(bytes.size()));
        OpenedSettings opened(bytes);
        std::string line;
        ByteRange range;
        std::uint64_t from = 0;
        for (const auto& [text, to] : lines) {
            ASSERT_TRUE(opened.settings.ReadLine(line, range));
            EXPECT_TRUE(line == text);
            EXPECT_EQ(range.from, from);
            EXPECT_EQ(range.to, to);
            from = to;
        }
        EXPECT_FALSE(opened.settings.ReadLine(line, range));
        EXPECT_FALSE(opened.settings.ReadLine(line, range));
    }
}

struct TextRow {
    std::string bytes;
    std::optional<std::string> value;  // of the key "A" in the main section
};
const TextRow textRows[] = {
    {MainWith("[A]some text\r\n"), "some text"},
    {MainWith("[A]\r\n"), ""},
    {MainWith("[A]  kept, with its blanks \r\n"), "  kept, with its blanks "},
    {MainWith("[A]=[B]\r\n"), "=[B]"},
    {MainWith("[A]\xE9\xB6\xFF\n\r\n"), "\xE9\xB6\xFF\n"},
    {MainWith(Bytes("[A]a\0b\r\n")), Bytes("a\0b")},
    {MainWith("[B]1\r\n[A]2\r\n[A]3\r\n"), "2"},
    // no such key
    {MainWith(""), {}},
    {MainWith("[AB]1\r\n"), {}},
    {MainWith("[a]1\r\n"), {}},
    {MainWith(" [A]1\r\n"), {}},
    {MainWith("A]1\r\n[A\r\n"), {}},
    {MainWith("[B]1\n[A]2\r\n"), {}},
    {"[A]1\r\n" + MainWith(""), {}},
    {MainWith("") + "[A]1\r\n", {}},
    {MainWith("<LIST> with more behind it\r\n[A]1\r\n"), {}},
    {"{SECT_GLOBLE}\r\n<KEY>\r\n[A]1\r\n<LIST>\r\n", {}},
    // a carriage return alone ends a line, with any byte behind it
    {MainWith("[B]1\r[A]2\r[C]3\r"), "2"},
    {MainWith("[A]2\r\r\n"), "2"},
    // in spite of an odd section
    {"{SECT_MAIN}   \r\n[A]1\r\n", "1"},
    {"{SECT_MAIN}\r\n[A]1", "1"},
    {"{SECT_MAIN}\r\n<LIS\r\n [A]\r\n[A]1\r\n", "1"},
    {Bytes("{SECT_MAIN}\r\n\0\r\n[A]1\r\n"), "1"},
    // Kept: without its end a section goes on into the next one.
    {"{SECT_MAIN}\r\n\r\n{SECT_GLOBLE}\r\n[A]1\r\n<LIST>\r\n", "1"},
};

TEST(SettingsFileGetText, GivesTheTextToTheLineEnd) {
    for (const auto& [bytes, value] : textRows) {
        SCOPED_TRACE(testing::PrintToString(bytes));
        OpenedSettings opened(bytes);
        std::string text = "before";
        EXPECT_EQ(opened.settings.GetText(mainSection, "A", text), value.has_value());
        EXPECT_EQ(text, value.value_or("before"));
        EXPECT_EQ(opened.disk.Bytes(), bytes);
    }
}

TEST(SettingsFileGetText, TakesLinesOfUpToOneMebibyte) {
    const std::string longest(longestSettingsLine - 3, 'x');
    OpenedSettings opened(MainWith("[A]" + longest + "\r\n[B]" + longest + "y\r\n[C]1\r\n"));
    std::string text;
    EXPECT_TRUE(opened.settings.GetText(mainSection, "A", text));
    EXPECT_TRUE(text == longest);
    EXPECT_FALSE(opened.settings.GetText(mainSection, "B", text));
    EXPECT_TRUE(opened.settings.GetText(mainSection, "C", text));
    EXPECT_EQ(text, "1");
}

struct NumberRow {
    std::string text;
    std::int32_t asInt;
    std::uint32_t asUnsigned;
};
const NumberRow numberRows[] = {
    {"", 0, 0},
    {"30", 30, 30},
    {"-1", -1, 4294967295},
    {"+7", 7, 7},
    {"007", 7, 7},
    {" \t\n\v\f 12", 12, 12},
    {"12 34", 12, 12},
    {"12abc", 12, 12},
    {"3.9", 3, 3},
    {"text", 0, 0},
    {"=30", 0, 0},
    {"0x10", 0, 0},
    {"--3", 0, 0},
    {"- 3", 0, 0},
    {"-", 0, 0},
    {Bytes("1\0"
           "2"),
     1, 1},
    {"2147483647", 2147483647, 2147483647},
    {"2147483648", -2147483647 - 1, 2147483648},
    {"-2147483648", -2147483647 - 1, 2147483648},
    {"4294967295", -1, 4294967295},
    // too many digits: the low 32 bits stay
    {"4294967296", 0, 0},
    {"4294967303", 7, 7},
    {"-4294967297", -1, 4294967295},
    {"99999999999999999999", 1661992959, 1661992959},
};

TEST(SettingsFileGetNumber, ReadsAsFarAsItIsOne) {
    for (const auto& [text, asInt, asUnsigned] : numberRows) {
        SCOPED_TRACE(testing::PrintToString(text));
        OpenedSettings opened(MainWith("[A]" + text + "\r\n"));
        std::int32_t signedValue = 77;
        std::uint32_t unsignedValue = 77;
        EXPECT_TRUE(opened.settings.GetInt(mainSection, "A", signedValue));
        EXPECT_TRUE(opened.settings.GetUnsigned(mainSection, "A", unsignedValue));
        EXPECT_EQ(signedValue, asInt);
        EXPECT_EQ(unsignedValue, asUnsigned);
        EXPECT_FALSE(opened.settings.GetInt(mainSection, "B", signedValue));
        EXPECT_FALSE(opened.settings.GetUnsigned(globalSection, "A", unsignedValue));
        EXPECT_EQ(signedValue, asInt);
        EXPECT_EQ(unsignedValue, asUnsigned);
    }
}

// The defaults are 100, 101, 102 and so on.
struct HexRow {
    std::string text;
    std::vector<std::uint32_t> firstSlots;
};
const HexRow hexRows[] = {
    {"", {100, 101}},
    {"0080000", {100, 101}},
    {"00800000", {0x800000, 101, 102}},
    {"00800000000000FF", {0x800000, 0xFF, 102, 103}},
    {"00800000000000FF0000000", {0x800000, 0xFF, 102, 103}},
    {"FFFFFFFFffffffff89abCDEF", {0xFFFFFFFF, 0xFFFFFFFF, 0x89ABCDEF, 103}},
    {"12G45678text    00000003", {0x12, 0, 3, 103}},
    {"0080 000000000FF", {0x80, 0xFF, 102}},
    {"      1F00000002", {0x1F, 2, 102}},
    {"0x0000FF", {0, 101}},
};

HexSlots CountedFrom(std::uint32_t first) {
    HexSlots slots;
    for (std::uint32_t& slot : slots) slot = first++;
    return slots;
}

TEST(SettingsFileGetHexBlock, FillsTheSlotsThatAreThere) {
    for (const auto& [text, firstSlots] : hexRows) {
        SCOPED_TRACE(text);
        OpenedSettings opened(MainWith("[A]" + text + "\r\n"));
        HexSlots slots{};
        EXPECT_TRUE(opened.settings.GetHexBlock(mainSection, "A", slots, CountedFrom(100)));
        HexSlots expected = CountedFrom(100);
        std::copy(firstSlots.begin(), firstSlots.end(), expected.begin());
        EXPECT_EQ(slots, expected);
    }
}

TEST(SettingsFileGetHexBlock, SetsTheDefaultsWhereTheKeyIsMissing) {
    for (const std::string& bytes : {std::string(), MainWith("")}) {
        OpenedSettings opened(bytes);
        HexSlots slots{};
        EXPECT_FALSE(opened.settings.GetHexBlock(mainSection, "A", slots, CountedFrom(100)));
        EXPECT_EQ(slots, CountedFrom(100));
    }
}

TEST(SettingsFileGetHexBlock, ReadsNoMoreThanThirtyTwoSlots) {
    std::string text;
    for (int slot = 0; slot < 40; ++slot) text += "000000" + std::to_string(10 + slot);
    OpenedSettings opened(MainWith("[A]" + text + "\r\n"));
    HexSlots slots{};
    EXPECT_TRUE(opened.settings.GetHexBlock(mainSection, "A", slots, {}));
    EXPECT_EQ(slots[0], 0x10U);
    EXPECT_EQ(slots[31], 0x41U);
}

TEST(SettingsFileSetHexBlock, WritesThirtyTwoTimesEightDigits) {
    OpenedSettings opened(MainWith(""));
    HexSlots slots{};
    slots[0] = 0x008000;
    slots[1] = 0xFFFFFFFF;
    slots[2] = 0x89ABCDEF;
    slots[31] = 1;
    EXPECT_TRUE(opened.settings.SetHexBlock(mainSection, "A", slots));
    EXPECT_EQ(opened.disk.Bytes(),
              MainWith("[A]00008000FFFFFFFF89ABCDEF" + std::string(28 * 8, '0') + "00000001\r\n"));
    HexSlots read{};
    EXPECT_TRUE(opened.settings.GetHexBlock(mainSection, "A", read, CountedFrom(1)));
    EXPECT_EQ(read, slots);
    EXPECT_FALSE(opened.settings.SetHexBlock(globalSection, "A", slots));
}

constexpr WindowPlacement somePlacement = {1, 2, 3, 4, 5, 6, -7, -8, 9, 10};

TEST(SettingsFilePlacement, SurvivesTheWayThroughTheFile) {
    constexpr std::int32_t least = -2147483647 - 1;
    const std::pair<WindowPlacement, std::string> rows[] = {
        {{}, "0/0/0/0/0/0/0/0/0/0/"},
        {somePlacement, "1/2/3/4/5/6/-7/-8/9/10/"},
        {{3, 2, -8, -8, 1928, 1048, -32000, -32000, -1, -1},
         "3/2/-8/-8/1928/1048/-32000/-32000/-1/-1/"},
        {{4294967295, 4294967295, least, 2147483647, least, 2147483647, least, 2147483647, least,
          2147483647},
         "4294967295/4294967295/-2147483648/2147483647/-2147483648/2147483647/-2147483648/"
         "2147483647/-2147483648/2147483647/"},
    };
    for (const auto& [placement, text] : rows) {
        SCOPED_TRACE(text);
        OpenedSettings opened(MainWith(""));
        EXPECT_TRUE(opened.settings.SetPlacement(mainSection, "A", placement));
        EXPECT_EQ(opened.disk.Bytes(), MainWith("[A]" + text + "\r\n"));
        WindowPlacement read = {7, 7, 7, 7, 7, 7, 7, 7, 7, 7};
        EXPECT_TRUE(opened.settings.GetPlacement(mainSection, "A", read));
        EXPECT_EQ(read, placement);
    }
}

TEST(SettingsFilePlacement, CountsAsMissingUnlessItIsComplete) {
    for (const char* text : {"",
                             "1/2/3/4/5/6/-7/-8/9/",
                             "1/2/3/4/5/6/-7/-8/9/10",
                             "1/2/3/4/5/6/-7/-8/9/10/ ",
                             "1/2/3/4/5/6/-7/-8/9/10/11/",
                             "1/2/3/4/5/6/-7/-8/9/10/x",
                             "1/2/3/4/5/6/-7/-8//10/",
                             " 1/2/3/4/5/6/-7/-8/9/10/",
                             "1 /2/3/4/5/6/-7/-8/9/10/",
                             "1/2/ 3/4/5/6/-7/-8/9/10/",
                             "-1/2/3/4/5/6/-7/-8/9/10/",
                             "1/-2/3/4/5/6/-7/-8/9/10/",
                             "1/2/+3/4/5/6/-7/-8/9/10/",
                             "1/2/--3/4/5/6/-7/-8/9/10/",
                             "1/2/-/4/5/6/-7/-8/9/10/",
                             "1/2/x/4/5/6/-7/-8/9/10/",
                             "1/2/3.5/4/5/6/-7/-8/9/10/",
                             "1/2/0x3/4/5/6/-7/-8/9/10/",
                             "1,2,3,4,5,6,-7,-8,9,10,",
                             "4294967296/2/3/4/5/6/-7/-8/9/10/",
                             "1/2/2147483648/4/5/6/-7/-8/9/10/",
                             "1/2/-2147483649/4/5/6/-7/-8/9/10/",
                             "/1/2/3/4/5/6/-7/-8/9/10"}) {
        SCOPED_TRACE(text);
        OpenedSettings opened(MainWith(std::string("[A]") + text + "\r\n"));
        WindowPlacement placement = somePlacement;
        EXPECT_FALSE(opened.settings.GetPlacement(mainSection, "A", placement));
        EXPECT_EQ(placement, somePlacement);
    }
    OpenedSettings opened(MainWith("[A]01/2/-0/4/5/6/-7/-8/9/10/\r\n"));
    WindowPlacement placement;
    EXPECT_TRUE(opened.settings.GetPlacement(mainSection, "A", placement));
    EXPECT_EQ(placement, (WindowPlacement{1, 2, 0, 4, 5, 6, -7, -8, 9, 10}));
    EXPECT_FALSE(opened.settings.GetPlacement(mainSection, "B", placement));
}

TEST(SettingsFile, DoesNothingWhereItIsNotOpen) {
    const SettingsOnDisk disk(MainWith("[A]1\r\n"));
    SettingsFile settings(disk.Path());
    ByteRange range = {77, 78};
    std::string text = "before";
    std::int32_t signedValue = 77;
    std::uint32_t unsignedValue = 77;
    HexSlots slots = CountedFrom(1);
    WindowPlacement placement = somePlacement;
    EXPECT_FALSE(settings.FindSection(mainSection, range));
    EXPECT_FALSE(settings.ReadLine(text, range));
    EXPECT_FALSE(settings.GetText(mainSection, "A", text));
    EXPECT_FALSE(settings.GetInt(mainSection, "A", signedValue));
    EXPECT_FALSE(settings.GetUnsigned(mainSection, "A", unsignedValue));
    EXPECT_FALSE(settings.GetHexBlock(mainSection, "A", slots, CountedFrom(100)));
    EXPECT_FALSE(settings.GetPlacement(mainSection, "A", placement));
    EXPECT_FALSE(settings.SetValue(mainSection, "A", "2", true));
    EXPECT_FALSE(settings.SetHexBlock(mainSection, "A", slots));
    EXPECT_FALSE(settings.SetPlacement(mainSection, "A", placement));
    EXPECT_FALSE(settings.ReplaceRange(0, 0, "x"));
    EXPECT_EQ(range.from, 77U);
    EXPECT_EQ(range.to, 78U);
    EXPECT_EQ(text, "before");
    EXPECT_EQ(signedValue, 77);
    EXPECT_EQ(unsignedValue, 77U);
    EXPECT_EQ(slots, CountedFrom(1));
    EXPECT_EQ(placement, somePlacement);
    EXPECT_EQ(disk.Bytes(), MainWith("[A]1\r\n"));
}

}  // namespace
}  // namespace orvane
