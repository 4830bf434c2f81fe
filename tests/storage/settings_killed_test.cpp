#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/calc_parameters.h"
#include "storage/option_settings.h"
#include "storage/settings_file.h"
#include "tests/storage/settings_on_disk.h"
#include "tests/support/watched_process.h"

// A program that is killed, or finds the disk full, while it saves its settings. Each key is
// written in place: what is left is the head of the file with the new line over the tail of the
// one without it. The next start reads what it can, and the next save makes all of it whole.

namespace orvane {
namespace {

using test::Fault;
using test::RunWatched;
using test::SettingsOnDisk;
using test::WatchedEnd;

struct Settings {
    CalcParameters parameters;
    std::int32_t kind = -1;
    std::string name;
    TextColours colours = defaultTextColours;
    WindowPlacement placement;
};

Settings SettingsBefore() {
    Settings settings;
    settings.parameters.systemBitsIndex = 6;
    settings.parameters.floatPrecision = 12;
    settings.parameters.calcHeightCommand = 7;
    settings.kind = 0;
    settings.name = "a sheet with a name of some length";
    settings.placement = {1, 0, 100, 100, 900, 700, -1, -1, -1, -1};
    return settings;
}

// Longer in some keys and shorter in others.
Settings SettingsAfter() {
    Settings settings;
    settings.parameters.systemBitsIndex = 51;
    settings.parameters.floatPrecision = 2;
    settings.parameters.calcHeightCommand = 32812;
    settings.parameters.locusFine = 19;
    settings.parameters.positionLine = true;
    settings.kind = -1;
    settings.name = "short";
    settings.colours[3] = 0x123456;
    settings.placement = {3, 2, -12345, 10, 2900, 1700, -32000, -32000, 17, 18};
    return settings;
}

void Save(SettingsFile& file, const Settings& settings) {
    SaveColours(file, settings.colours);
    SaveOptions(file, settings.parameters, settings.kind, settings.name);
    file.SetPlacement(mainSection, mainWindowPlacementKey, settings.placement);
}

// As the program does at its end.
int SaveAtEnd(const std::string& path, const Settings& settings) {
    SettingsFile file(path);
    if (!file.Open()) return 1;
    Save(file, settings);
    return 0;
}

Settings Load(SettingsFile& file) {
    Settings settings;
    settings.name.clear();
    LoadColours(file, settings.colours);
    LoadOptions(file, settings.parameters, settings.kind, settings.name);
    file.GetPlacement(mainSection, mainWindowPlacementKey, settings.placement);
    return settings;
}

std::string Text(const Settings& settings) {
    // Through a file of their own: what is equal there is equal.
    const SettingsOnDisk disk("");
    SettingsFile file(disk.Path());
    EXPECT_TRUE(file.OpenAndPrepare());
    Save(file, settings);
    return disk.Bytes();
}

// Keys and a section that nobody reads, and none that anybody does.
std::string FileOfOthers() {
    return "[FOREIGN]in front\r\n{SECT_MAIN}\r\n<KEY>\r\n[KEY_OF_OTHERS]stays\r\n"
           "<LIST>\r\n\r\n{SECT_OTHER}\r\n<KEY>\r\n[A]" +
           std::string(2500, 'a') + "\r\n<LIST>\r\n";
}

std::string FileBefore() {
    const SettingsOnDisk disk(FileOfOthers());
    SettingsFile file(disk.Path());
    EXPECT_TRUE(file.OpenAndPrepare());
    Save(file, SettingsBefore());
    return disk.Bytes();
}

// Whether this is so much of the new file, and then the old one from there on.
bool IsHeadOverTail(std::string_view bytes, std::string_view fresh, std::string_view old) {
    const auto seam = std::mismatch(bytes.begin(), bytes.end(), fresh.begin(), fresh.end()).first;
    const auto same = static_cast<std::size_t>(seam - bytes.begin());
    if (same == bytes.size()) return same >= old.size() || bytes == fresh;
    return bytes.size() == old.size() && bytes.substr(same) == old.substr(same);
}

class SettingsKilled : public testing::TestWithParam<Fault::Kind> {
protected:
    void SetUp() override {
        if (!test::CanWatch()) GTEST_SKIP() << "this system lets no program watch another one";
    }
};

std::pair<std::size_t, std::size_t> LineOf(const std::string& bytes, std::string_view key) {
    const std::size_t from = bytes.find("[" + std::string(key) + "]");
    EXPECT_NE(from, std::string::npos) << key;
    return {from, bytes.find("\r\n", from) + 2 - from};
}

// The file behind each key that is set, in the order of a save; the first one is the file before.
std::vector<std::string> StatesOfSave(const std::string& before) {
    const SettingsOnDisk disk(before);
    EXPECT_EQ(SaveAtEnd(disk.Path(), SettingsAfter()), 0);
    const std::string whole = disk.Bytes();
    std::vector<std::string> states = {before};
    for (const std::string_view key :
         {"KEY_MAINCLRS", "KEY_SYSBITS", "KEY_PRECISION", "KEY_MUCALCH", "KEY_LOCUSFINE",
          "KEY_MAINBOOLS", "KEY_FILETYPE", "KEY_SECTNAME", "KEY_WNDPLACE"}) {
        std::string next = states.back();
        const auto [newFrom, newLength] = LineOf(whole, key);
        const auto [from, length] = LineOf(next, key);
        next.replace(from, length, whole, newFrom, newLength);
        states.push_back(next);
    }
    EXPECT_EQ(states.back(), whole);
    return states;
}

// Which key was being set when these bytes were left, from the state `first` on.
std::size_t StateLeft(const std::vector<std::string>& states, std::size_t first,
                      const std::string& bytes) {
    std::size_t at = first;
    while (at + 1 < states.size() && bytes != states[at] &&
           !IsHeadOverTail(bytes, states[at + 1], states[at])) {
        ++at;
    }
    return at;
}

void ExpectHeals(const SettingsOnDisk& disk) {
    SettingsFile file(disk.Path());
    EXPECT_TRUE(file.OpenAndPrepare());
    Load(file);
    Save(file, SettingsAfter());
    EXPECT_EQ(Text(Load(file)), Text(SettingsAfter()));
    std::string text;
    EXPECT_TRUE(file.GetText(mainSection, "KEY_OF_OTHERS", text));
    EXPECT_EQ(text, "stays");
    EXPECT_TRUE(disk.Bytes().starts_with("[FOREIGN]in front\r\n"));
}

TEST_P(SettingsKilled, HoldTheNewHeadOverTheOldTailAndAreWholeAfterTheNextSave) {
    const std::string before = FileBefore();
    const std::vector<std::string> states = StatesOfSave(before);
    const SettingsOnDisk disk(before);
    std::size_t state = 0;
    int at = 1;
    for (;; ++at) {
        SCOPED_TRACE(at);
        disk.Put(before);
        const Fault fault{.kind = GetParam(), .at = at, .folder = disk.Folder()};
        const WatchedEnd end =
            RunWatched([&] { return SaveAtEnd(disk.Path(), SettingsAfter()); }, fault);
        const std::string left = disk.Bytes();
        if (!end.isReached) {
            EXPECT_EQ(end.status, 0);
            EXPECT_EQ(left, states.back());
            break;
        }
        state = StateLeft(states, state, left);
        ASSERT_TRUE(left == states.back() || state + 1 < states.size()) << left;
        ExpectHeals(disk);
        ASSERT_FALSE(HasFailure());
    }
    // A line, a tail of three pieces and the end of the file for each of nine keys.
    EXPECT_GT(at, 9 * 5);
}

// The very first save adds each key, and the sections at the start.
TEST_P(SettingsKilled, AreWholeAfterTheNextSaveWhereThereWereNone) {
    const std::string before = FileOfOthers();
    const SettingsOnDisk disk(before);
    const auto startAndEnd = [&] {
        SettingsFile file(disk.Path());
        if (!file.OpenAndPrepare()) return 1;
        Save(file, SettingsAfter());
        return 0;
    };
    for (int at = 1;; ++at) {
        SCOPED_TRACE(at);
        disk.Put(before);
        const WatchedEnd end =
            RunWatched(startAndEnd, Fault{.kind = GetParam(), .at = at, .folder = disk.Folder()});
        ExpectHeals(disk);
        ASSERT_FALSE(HasFailure());
        if (!end.isReached) break;
    }
}

INSTANTIATE_TEST_SUITE_P(Kills, SettingsKilled,
                         testing::Values(Fault::Kind::killBefore, Fault::Kind::killHalfway),
                         [](const auto& info) {
                             return info.param == Fault::Kind::killBefore ? "InFrontOfACall"
                                                                          : "InTheMiddleOfACall";
                         });

// Whatever fails, nobody is told, the save goes on to its end, and the next one makes it whole.
TEST(SettingsOnABadDisk, AreWholeAfterTheNextSave) {
    if (!test::CanWatch()) GTEST_SKIP() << "this system lets no program watch another one";
    const std::string before = FileBefore();
    const std::string whole = StatesOfSave(before).back();
    const SettingsOnDisk disk(before);
    for (const int error : {ENOSPC, EINTR}) {
        for (const bool goesOn : {false, true}) {
            if (goesOn && error == EINTR) continue;  // that would be a system that never writes
            for (int at = 1;; ++at) {
                SCOPED_TRACE(at);
                disk.Put(before);
                const Fault fault{.kind = Fault::Kind::fail,
                                  .at = at,
                                  .error = error,
                                  .goesOn = goesOn,
                                  .isShort = at % 2 == 0,
                                  .folder = disk.Folder()};
                const WatchedEnd end =
                    RunWatched([&] { return SaveAtEnd(disk.Path(), SettingsAfter()); }, fault);
                EXPECT_EQ(end.status, 0);
                if (error == EINTR) {
                    EXPECT_EQ(disk.Bytes(), whole);
                }
                ExpectHeals(disk);
                ASSERT_FALSE(HasFailure());
                if (!end.isReached) break;
            }
        }
    }
}

}  // namespace
}  // namespace orvane
