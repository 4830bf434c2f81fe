#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

#include "storage/settings_file.h"
#include "tests/storage/settings_on_disk.h"

namespace orvane {
namespace {

using test::FullDisk;
using test::OpenedSettings;
using test::SettingsOnDisk;

// The key "A" of the main section is set to "new".
struct SetRow {
    std::string before;
    std::optional<std::string> after;  // where it may be created; nothing: refused
    std::optional<std::string> withoutCreating;
};
const SetRow setRows[] = {
    {"", {}, {}},
    {"{SECT_GLOBLE}\r\n<KEY>\r\n[A]1\r\n<LIST>\r\n", {}, {}},
    {"\r\n{SECT_MAIN}\r\n<KEY>\r\n[A]1\r\n<LIST>\r\n\r\n",
     "\r\n{SECT_MAIN}\r\n<KEY>\r\n[A]new\r\n<LIST>\r\n\r\n",
     "\r\n{SECT_MAIN}\r\n<KEY>\r\n[A]new\r\n<LIST>\r\n\r\n"},
    {"{SECT_MAIN}\r\n<KEY>\r\n[B]1\r\n<LIST>\r\nrest",
     "{SECT_MAIN}\r\n<KEY>\r\n[B]1\r\n[A]new\r\n<LIST>\r\nrest",
     {}},
    // what is longer or shorter moves the rest
    {"{SECT_MAIN}\r\n[A]much longer than the new one\r\n[B]1\r\n<LIST>\r\n",
     "{SECT_MAIN}\r\n[A]new\r\n[B]1\r\n<LIST>\r\n", "{SECT_MAIN}\r\n[A]new\r\n[B]1\r\n<LIST>\r\n"},
    {"{SECT_MAIN}\r\n[A]\r\n[B]1\r\n<LIST>\r\n", "{SECT_MAIN}\r\n[A]new\r\n[B]1\r\n<LIST>\r\n",
     "{SECT_MAIN}\r\n[A]new\r\n[B]1\r\n<LIST>\r\n"},
    // a key behind the end of the section is not its key
    {"{SECT_MAIN}\r\n<KEY>\r\n<LIST>\r\n[A]1\r\n",
     "{SECT_MAIN}\r\n<KEY>\r\n[A]new\r\n<LIST>\r\n[A]1\r\n",
     {}},
    // only the first of two
    {"{SECT_MAIN}\r\n[A]1\r\n[A]2\r\n", "{SECT_MAIN}\r\n[A]new\r\n[A]2\r\n",
     "{SECT_MAIN}\r\n[A]new\r\n[A]2\r\n"},
    // foreign line ends stay, and the line that is replaced gets its own
    {"{SECT_MAIN}\r\n[B]1\r[A]1\r[C]1\n\r<LIST>\r",
     "{SECT_MAIN}\r\n[B]1\r[A]new\r\n[C]1\n\r<LIST>\r",
     "{SECT_MAIN}\r\n[B]1\r[A]new\r\n[C]1\n\r<LIST>\r"},
    {"{SECT_MAIN}\r\n[A]1\n[B]1\r\n", "{SECT_MAIN}\r\n[A]new\r\n", "{SECT_MAIN}\r\n[A]new\r\n"},
    {"{SECT_MAIN}\r\n[A]1", "{SECT_MAIN}\r\n[A]new\r\n", "{SECT_MAIN}\r\n[A]new\r\n"},
    // Kept: without an end of the section the key comes ahead of the last line
    {"{SECT_MAIN}\r\n<KEY>\r\n[B]1\r\n", "{SECT_MAIN}\r\n<KEY>\r\n[A]new\r\n[B]1\r\n", {}},
    {"{SECT_MAIN}\r\n<KEY>\r\n[B]1", "{SECT_MAIN}\r\n<KEY>\r\n[A]new\r\n[B]1", {}},
    {"{SECT_MAIN}\r\n<KEY>\r\n\r\n", "{SECT_MAIN}\r\n<KEY>\r\n[A]new\r\n\r\n", {}},
    // nothing behind the section's line: the end of the file, on a line of its own
    {"{SECT_MAIN}\r\n", "{SECT_MAIN}\r\n[A]new\r\n", {}},
    {"{SECT_MAIN}", "{SECT_MAIN}\r\n[A]new\r\n", {}},
    {"{SECT_MAIN} ", "{SECT_MAIN} \r\n[A]new\r\n", {}},
};

TEST(SettingsFileSetValue, ReplacesOrAddsOneLine) {
    for (const auto& [before, after, withoutCreating] : setRows) {
        SCOPED_TRACE(testing::PrintToString(before));
        OpenedSettings opened(before);
        EXPECT_EQ(opened.settings.SetValue(mainSection, "A", "new", false),
                  withoutCreating.has_value());
        EXPECT_EQ(opened.disk.Bytes(), withoutCreating.value_or(before));
        opened.disk.Put(before);
        EXPECT_EQ(opened.settings.SetValue(mainSection, "A", "new", true), after.has_value());
        EXPECT_EQ(opened.disk.Bytes(), after.value_or(before));
        if (!after) continue;
        std::string text;
        EXPECT_TRUE(opened.settings.GetText(mainSection, "A", text));
        EXPECT_EQ(text, "new");
    }
}

TEST(SettingsFileSetValue, AddsAnotherWhereTheLineIsTooLong) {
    const std::string longLine = "[A]" + std::string(longestSettingsLine, 'x') + "\r\n";
    OpenedSettings opened("{SECT_MAIN}\r\n" + longLine + "<LIST>\r\n");
    EXPECT_FALSE(opened.settings.SetValue(mainSection, "A", "1", false));
    EXPECT_TRUE(opened.settings.SetValue(mainSection, "A", "1", true));
    EXPECT_TRUE(opened.disk.Bytes() == "{SECT_MAIN}\r\n" + longLine + "[A]1\r\n<LIST>\r\n");
    EXPECT_TRUE(opened.settings.SetValue(mainSection, "A", "2", true));
    EXPECT_TRUE(opened.disk.Bytes() == "{SECT_MAIN}\r\n" + longLine + "[A]2\r\n<LIST>\r\n");
}

TEST(SettingsFileSetValue, BuildsAFileFromAnEmptyOne) {
    const SettingsOnDisk disk("");
    SettingsFile settings(disk.Path());
    EXPECT_TRUE(settings.OpenAndPrepare());
    EXPECT_TRUE(settings.SetValue(mainSection, "KEY_SYSBITS", "30", true));
    EXPECT_TRUE(
        settings.SetPlacement(mainSection, "KEY_WNDPLACE", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_TRUE(settings.SetValue(mainSection, "KEY_SYSBITS", "6", true));
    EXPECT_TRUE(settings.SetValue(globalSection, "KEY_NEW", "", true));
    EXPECT_EQ(disk.Bytes(),
              "\r\n\r\n{SECT_MAIN}\r\n<KEY>\r\n[KEY_SYSBITS]6\r\n"
              "[KEY_WNDPLACE]1/2/3/4/5/6/7/8/9/10/\r\n<LIST>\r\n"
              "\r\n\r\n{SECT_GLOBLE}\r\n<KEY>\r\n[KEY_NEW]\r\n<LIST>\r\n");
}

TEST(SettingsFileSetValue, WorksOnWhatAnotherProgramWroteMeanwhile) {
    OpenedSettings opened("{SECT_MAIN}\r\n[A]1\r\n<LIST>\r\n");
    std::int32_t value = 0;
    EXPECT_TRUE(opened.settings.GetInt(mainSection, "A", value));
    opened.disk.Put("\r\n{SECT_MAIN}\r\n[B]1\r\n[A]22\r\n<LIST>\r\n");
    EXPECT_TRUE(opened.settings.GetInt(mainSection, "A", value));
    EXPECT_EQ(value, 22);
    EXPECT_TRUE(opened.settings.SetValue(mainSection, "A", "3", false));
    EXPECT_EQ(opened.disk.Bytes(), "\r\n{SECT_MAIN}\r\n[B]1\r\n[A]3\r\n<LIST>\r\n");
}

struct ReplaceRow {
    std::string before;
    std::uint64_t from, to;
    std::string text;
    std::string after;
};
const ReplaceRow replaceRows[] = {
    {"0123456789", 3, 5, "ab", "012ab56789"},
    {"0123456789", 3, 5, "a", "012a56789"},
    {"0123456789", 3, 5, "abc", "012abc56789"},
    {"0123456789", 3, 5, "", "01256789"},
    {"0123456789", 3, 3, "ab", "012ab3456789"},
    {"0123456789", 0, 0, "ab", "ab0123456789"},
    {"0123456789", 0, 10, "ab", "ab"},
    {"0123456789", 0, 10, "", ""},
    {"0123456789", 9, 10, "ab", "012345678ab"},
    // at the end: on a line of its own
    {"0123456789", 10, 10, "ab", "0123456789\r\nab"},
    {"0123456789", 10, 10, "", "0123456789\r\n"},
    {"012345678\n", 10, 10, "ab", "012345678\nab"},
    {"01234567\r\n", 10, 10, "ab", "01234567\r\nab"},
    {"012345678\r", 10, 10, "ab", "012345678\r\r\nab"},
    {"", 0, 0, "ab", "ab"},
};

TEST(SettingsFileReplaceRange, MovesWhatStandsBehind) {
    for (const auto& [before, from, to, text, after] : replaceRows) {
        SCOPED_TRACE(after);
        OpenedSettings opened(before);
        EXPECT_TRUE(opened.settings.ReplaceRange(from, to, text));
        EXPECT_EQ(opened.disk.Bytes(), after);
    }
}

TEST(SettingsFileReplaceRange, LeavesThePositionAtTheEnd) {
    OpenedSettings opened("{A}\r\nline\r\n");
    std::string line;
    ByteRange range;
    EXPECT_TRUE(opened.settings.FindSection("A", range));
    EXPECT_TRUE(opened.settings.ReplaceRange(5, 6, "new l"));
    EXPECT_FALSE(opened.settings.ReadLine(line, range));
    EXPECT_TRUE(opened.settings.FindSection("A", range));
    EXPECT_TRUE(opened.settings.ReadLine(line, range));
    EXPECT_EQ(line, "new line");
}

TEST(SettingsFileReplaceRange, TakesTextsOfManyPieces) {
    const std::string tail(5000, 't');
    for (const std::size_t length : {1023, 1024, 1025, 2048, 10'000}) {
        SCOPED_TRACE(length);
        const std::string text(length, 'x');
        OpenedSettings opened("abc" + tail);
        EXPECT_TRUE(opened.settings.ReplaceRange(1, 2, text));
        EXPECT_TRUE(opened.disk.Bytes() == "a" + text + "c" + tail);
        EXPECT_TRUE(opened.settings.ReplaceRange(1, 1 + length, "b"));
        EXPECT_TRUE(opened.disk.Bytes() == "abc" + tail);
    }
}

// The disk is full from each offset on: of text and tail together there is as much as fits.
TEST(SettingsFileReplaceRange, EndsTheFileWhereTheDiskIsFull) {
    const std::string before = "head" + std::string(3000, 'o') + std::string(2500, 't');
    const std::string after = "head" + std::string(4000, 'n') + std::string(2500, 't');
    for (const std::size_t offset : {5UL, 1027UL, 1028UL, 1029UL, 2000UL, 4003UL, 4004UL, 5000UL}) {
        SCOPED_TRACE(offset);
        OpenedSettings opened(before);
        {
            const FullDisk disk(offset);
            EXPECT_TRUE(opened.settings.ReplaceRange(4, 3004, std::string(4000, 'n')));
        }
        EXPECT_TRUE(opened.disk.Bytes() == after.substr(0, offset));
    }
}

// Room comes back right behind the failure: the rest of the text is lost, and the tail follows.
TEST(SettingsFileReplaceRange, WritesTheTailBehindWhatGotThereOfTheText) {
    const std::string tail(2500, 't');
    for (const std::size_t offset : {4UL, 5UL, 1027UL, 1028UL, 1029UL, 2000UL, 4003UL}) {
        SCOPED_TRACE(offset);
        OpenedSettings opened("head" + std::string(3000, 'o') + tail);
        {
            const FullDisk disk(offset, true);
            EXPECT_TRUE(opened.settings.ReplaceRange(4, 3004, std::string(4000, 'n')));
        }
        EXPECT_TRUE(opened.disk.Bytes() == "head" + std::string(offset - 4, 'n') + tail);
    }
}

TEST(SettingsFileReplaceRange, AddsNothingToTheEndOfAFullDisk) {
    OpenedSettings opened("0123456789");
    const FullDisk disk(10);
    EXPECT_TRUE(opened.settings.ReplaceRange(10, 10, "ab"));
    EXPECT_EQ(opened.disk.Bytes(), "0123456789");
}

TEST(SettingsFileSetValue, IsTrueOnAFullDiskToo) {
    OpenedSettings opened("{SECT_MAIN}\r\n[A]1\r\n<LIST>\r\n");
    {
        const FullDisk disk(15);
        EXPECT_TRUE(opened.settings.SetValue(mainSection, "A", "22", true));
    }
    EXPECT_EQ(opened.disk.Bytes(), "{SECT_MAIN}\r\n[A");
}

}  // namespace
}  // namespace orvane
