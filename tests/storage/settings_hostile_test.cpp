#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <string>

#include "core/calc_parameters.h"
#include "storage/option_settings.h"
#include "tests/storage/settings_model.h"
#include "tests/storage/settings_on_disk.h"

namespace orvane {
namespace {

using test::SettingsModel;
using test::SettingsOnDisk;

const std::string savedFile =
    "\r\n\r\n{SECT_MAIN}\r\n<KEY>\r\n[KEY_SYSBITS]30\r\n[KEY_PRECISION]2\r\n"
    "[KEY_MUCALCH]32810\r\n[KEY_LOCUSFINE]0\r\n[KEY_MAINBOOLS]37\r\n[KEY_FILETYPE]-1\r\n"
    "[KEY_SECTNAME]\r\n[KEY_MAINCLRS]00008000000000FF\r\n[KEY_WNDPLACE]1/2/3/4/5/6/7/8/9/10/\r\n"
    "<LIST>\r\n\r\n\r\n{SECT_GLOBLE}\r\n<KEY>\r\n<LIST>\r\n";

void ReadEverything(SettingsFile& settings) {
    TextColours colours;
    CalcParameters parameters;
    std::int32_t archiveKind = 0;
    std::string sheetName;
    WindowPlacement placement;
    LoadColours(settings, colours);
    LoadOptions(settings, parameters, archiveKind, sheetName);
    settings.GetPlacement(mainSection, mainWindowPlacementKey, placement);
}

// Opens and prepares a file with these bytes, reads all of it and sets two values; each must leave
// the bytes that the model has.
void ExpectLikeTheModel(SettingsOnDisk& disk, const std::string& bytes) {
    disk.Put(bytes);
    SettingsModel model;
    model.bytes = bytes;
    SettingsFile settings(disk.Path());
    ASSERT_TRUE(settings.Open());
    ReadEverything(settings);
    ASSERT_TRUE(disk.Bytes() == bytes);
    for (const char* key : {"KEY_PRECISION", "KEY_NEW"}) {
        EXPECT_EQ(settings.SetValue(mainSection, key, "12", true),
                  model.SetValue(mainSection, key, "12", true));
        ASSERT_TRUE(disk.Bytes() == model.bytes);
    }
    EXPECT_TRUE(settings.OpenAndPrepare());
    model.OpenAndPrepare();
    ASSERT_TRUE(disk.Bytes() == model.bytes);
    EXPECT_EQ(settings.SetValue(globalSection, "KEY_NEW", "1", true),
              model.SetValue(globalSection, "KEY_NEW", "1", true));
    ASSERT_TRUE(disk.Bytes() == model.bytes);
}

TEST(SettingsFileHostile, MayBeCutAnywhere) {
    SettingsOnDisk disk("");
    for (std::size_t length = 0; length <= savedFile.size(); ++length) {
        SCOPED_TRACE(length);
        ExpectLikeTheModel(disk, savedFile.substr(0, length));
        ExpectLikeTheModel(disk, savedFile.substr(length));
    }
}

TEST(SettingsFileHostile, MayHoldAnyByteAnywhere) {
    SettingsOnDisk disk("");
    for (std::size_t at = 0; at < savedFile.size(); ++at) {
        for (const char byte : {'\0', '{', '\r', '\n', '<'}) {
            SCOPED_TRACE(at);
            std::string bytes = savedFile;
            bytes[at] = byte;
            ExpectLikeTheModel(disk, bytes);
        }
    }
}

TEST(SettingsFileHostile, MayBeNoise) {
    SettingsOnDisk disk("");
    std::mt19937 dice(5);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        std::string bytes(dice() % 3000, ' ');
        for (char& byte : bytes) byte = static_cast<char>(dice());
        ExpectLikeTheModel(disk, bytes);
        ExpectLikeTheModel(disk, bytes + savedFile + bytes);
    }
}

// Fifty megabytes, each in its own way hard to read.
struct LargeRow {
    const char* what;
    std::string piece;
    std::string head;
    bool isFound;  // the key behind it
};
const LargeRow largeRows[] = {
    {"blanks", " ", "", true},
    {"NULs", std::string(1, 0), "{SECT_MAIN}\r\n", true},
    {"NULs ahead of the section", std::string(1, 0), "", false},
    {"empty lines", "\r\n", "{SECT_MAIN}\r\n", true},
    {"carriage returns", "\r", "{SECT_MAIN}\r\n", true},
    {"empty lines ahead of the section", "\r\n", "", true},
    {"braces", "{", "", true},
    {"rejected sections", "{x}\r\n  ", "", true},
    {"sections without their end", "{SECT_MAIN}\n", "", true},
    {"keys of others", "[KEY_SYSBITSx]1\r\n", "{SECT_MAIN}\r\n", true},
    {"one long value", "1", "{SECT_MAIN}\r\n[KEY_SYSBITS]", true},
};

TEST(SettingsFileHostile, IsReadInShortTimeHoweverLargeItIs) {
    constexpr std::size_t size = 50'000'000;
    for (const auto& [what, piece, head, isFound] : largeRows) {
        SCOPED_TRACE(what);
        std::string bytes = head;
        while (bytes.size() < size) bytes += piece;
        bytes += "\r\n\r\n{SECT_MAIN}\r\n[KEY_SYSBITS]6\r\n<LIST>\r\n";
        const SettingsOnDisk disk(bytes);
        SettingsFile settings(disk.Path());
        ASSERT_TRUE(settings.Open());
        const auto start = std::chrono::steady_clock::now();
        std::int32_t value = 0;
        EXPECT_EQ(settings.GetInt(mainSection, "KEY_SYSBITS", value), isFound);
        EXPECT_EQ(value, isFound ? 6 : 0);
        EXPECT_EQ(settings.SetValue(mainSection, "KEY_SYSBITS", "77", true), isFound);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        EXPECT_LT(taken.count(), 20.0);  // two operations, also on a slow and busy machine
        if (isFound) bytes.replace(bytes.rfind("]6\r\n"), 2, "]77");
        EXPECT_TRUE(disk.Bytes() == bytes);
    }
}

TEST(SettingsFileHostile, MovesALargeTail) {
    const std::string head = "{SECT_MAIN}\r\n[A]1\r\n";
    const std::string tail(50'000'000, 't');
    const SettingsOnDisk disk(head + tail);
    SettingsFile settings(disk.Path());
    ASSERT_TRUE(settings.Open());
    EXPECT_TRUE(settings.SetValue(mainSection, "A", "longer", true));
    EXPECT_TRUE(disk.Bytes() == "{SECT_MAIN}\r\n[A]longer\r\n" + tail);
    EXPECT_TRUE(settings.SetValue(mainSection, "A", "", true));
    EXPECT_TRUE(disk.Bytes() == "{SECT_MAIN}\r\n[A]\r\n" + tail);
}

}  // namespace
}  // namespace orvane
