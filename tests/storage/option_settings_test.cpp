#include "storage/option_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "core/calc_parameters.h"
#include "tests/storage/settings_on_disk.h"

namespace orvane {
namespace {

using test::SettingsOnDisk;

const std::string globalPart = "\r\n\r\n{SECT_GLOBLE}\r\n<KEY>\r\n<LIST>\r\n";

std::string PreparedWith(const std::string& lines) {
    return "\r\n\r\n{SECT_MAIN}\r\n<KEY>\r\n" + lines + "<LIST>\r\n" + globalPart;
}

// What LoadOptions and LoadColours fill, full of values that are no defaults.
struct Options {
    CalcParameters parameters;
    std::int32_t archiveKind = 77;
    std::string sheetName = "before";
    TextColours colours{1, 2, 3, 4, 5, 6, 7};

    Options() {
        parameters.systemBitsIndex = 71;
        parameters.floatPrecision = 72;
        parameters.calcHeightCommand = 73;
        parameters.locusFine = 74;
        SetFlags(false, true, false, true, true, false);
    }
    void SetFlags(bool showSign, bool positionLine, bool blackOutput, bool alwaysOnTop,
                  bool formulaBreak, bool breakText) {
        parameters.showSign = showSign;
        parameters.positionLine = positionLine;
        parameters.blackOutput = blackOutput;
        parameters.alwaysOnTop = alwaysOnTop;
        parameters.formulaBreak = formulaBreak;
        parameters.breakText = breakText;
    }
    void Load(SettingsFile& settings) {
        LoadColours(settings, colours);
        LoadOptions(settings, parameters, archiveKind, sheetName);
    }
    void Save(SettingsFile& settings) const {
        SaveOptions(settings, parameters, archiveKind, sheetName);
    }
};

// The options as one line: four numbers, the flags in the order of their bits, the sheet.
std::string TextOf(const Options& options) {
    const CalcParameters& parameters = options.parameters;
    std::string text;
    for (const std::int32_t number : {parameters.systemBitsIndex, parameters.floatPrecision,
                                      parameters.calcHeightCommand, parameters.locusFine}) {
        text += std::to_string(number) + ' ';
    }
    for (const bool flag :
         {parameters.showSign, parameters.positionLine, parameters.blackOutput,
          parameters.alwaysOnTop, parameters.formulaBreak, parameters.breakText}) {
        text += flag ? '1' : '0';
    }
    return text + ' ' + std::to_string(options.archiveKind) + ' ' + options.sheetName;
}

Options LoadedFrom(const std::string& bytes) {
    const SettingsOnDisk disk(bytes);
    SettingsFile settings(disk.Path());
    EXPECT_TRUE(settings.Open());
    Options options;
    options.Load(settings);
    EXPECT_EQ(disk.Bytes(), bytes);
    return options;
}

constexpr TextColours someColours = {0x00010203, 0xFFFFFFFF, 0, 0x00ABCDEF, 5, 6, 0x80000000};

TEST(LoadOptions, TakesEachKeyFromItsLine) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "30 2 32810 0 101001 -1 before"},
        {"[KEY_SYSBITS]51\r\n", "51 2 32810 0 101001 -1 before"},
        {"[KEY_SYSBITS]\r\n", "0 2 32810 0 101001 -1 before"},
        {"[KEY_PRECISION]6\r\n", "30 6 32810 0 101001 -1 before"},
        {"[KEY_MUCALCH]32806\r\n", "30 2 32806 0 101001 -1 before"},
        {"[KEY_LOCUSFINE]19\r\n", "30 2 32810 19 101001 -1 before"},
        {"[KEY_FILETYPE]1\r\n", "30 2 32810 0 101001 1 before"},
        {"[KEY_SECTNAME]my sheet \r\n", "30 2 32810 0 101001 -1 my sheet "},
        {"[KEY_SECTNAME]\r\n", "30 2 32810 0 101001 -1 "},
        {"[KEY_MAINBOOLS]0\r\n", "30 2 32810 0 000000 -1 before"},
        {"[KEY_MAINBOOLS]1\r\n", "30 2 32810 0 100000 -1 before"},
        {"[KEY_MAINBOOLS]2\r\n", "30 2 32810 0 010000 -1 before"},
        {"[KEY_MAINBOOLS]4\r\n", "30 2 32810 0 001000 -1 before"},
        {"[KEY_MAINBOOLS]8\r\n", "30 2 32810 0 000100 -1 before"},
        {"[KEY_MAINBOOLS]16\r\n", "30 2 32810 0 000010 -1 before"},
        {"[KEY_MAINBOOLS]32\r\n", "30 2 32810 0 000001 -1 before"},
        {"[KEY_MAINBOOLS]37\r\n", "30 2 32810 0 101001 -1 before"},
        {"[KEY_MAINBOOLS]4294967232\r\n", "30 2 32810 0 000000 -1 before"},
        {"[KEY_MAINBOOLS]4294967295\r\n", "30 2 32810 0 111111 -1 before"},
        {"[KEY_MAINBOOLS]-1\r\n", "30 2 32810 0 111111 -1 before"},
        {"[KEY_MAINBOOLS]text\r\n", "30 2 32810 0 000000 -1 before"},
        // Nothing is judged.
        {"[KEY_SYSBITS]1000\r\n[KEY_PRECISION]-5\r\n[KEY_MUCALCH]7\r\n[KEY_LOCUSFINE]text\r\n",
         "1000 -5 7 0 101001 -1 before"},
    };
    for (const auto& [lines, expected] : rows) {
        SCOPED_TRACE(lines);
        EXPECT_EQ(TextOf(LoadedFrom(PreparedWith(lines))), expected);
    }
}

TEST(LoadOptions, SetsTheDefaultsWhereTheSectionIsMissing) {
    for (const std::string& bytes : {std::string(), globalPart}) {
        const Options options = LoadedFrom(bytes);
        EXPECT_EQ(TextOf(options), "30 2 32810 0 101001 -1 before");
        EXPECT_EQ(options.colours, defaultTextColours);
    }
}

TEST(LoadOptions, LeavesEverythingElseOfTheParametersAlone) {
    const Options options = LoadedFrom(PreparedWith("[KEY_SYSBITS]6\r\n"));
    EXPECT_EQ(options.parameters.wordModulus, 4294967296.0);
    EXPECT_EQ(options.parameters.progress, nullptr);
}

TEST(OptionSettings, DoNothingWhereTheFileIsNotOpen) {
    const SettingsOnDisk disk(PreparedWith("[KEY_SYSBITS]6\r\n"));
    SettingsFile settings(disk.Path());
    Options options;
    options.Load(settings);
    EXPECT_EQ(TextOf(options), TextOf(Options()));
    EXPECT_EQ(options.colours, Options().colours);
    options.Save(settings);
    SaveColours(settings, options.colours);
    EXPECT_EQ(disk.Bytes(), PreparedWith("[KEY_SYSBITS]6\r\n"));
}

TEST(LoadColours, TakesTheSlotsThatAreStored) {
    EXPECT_EQ(defaultTextColours,
              (TextColours{0x008000, 0x0000FF, 0x000000, 0x000000, 0x800080, 0xFF0000, 0x808080}));
    const std::pair<const char*, TextColours> rows[] = {
        {"", defaultTextColours},
        {"[KEY_MAINCLRS]\r\n", defaultTextColours},
        {"[KEY_MAINCLRS]0000000A0000000B\r\n",
         {0xA, 0xB, 0x000000, 0x000000, 0x800080, 0xFF0000, 0x808080}},
        {"[KEY_MAINCLRS]000000010000000200000003000000040000000500000006000000070000000800000009"
         "\r\n",
         {1, 2, 3, 4, 5, 6, 7}},
        {"[KEY_MAINCLRS]FFFFFFFFtextFFFF0000000C\r\n",
         {0xFFFFFFFF, 0, 0xC, 0x000000, 0x800080, 0xFF0000, 0x808080}},
    };
    for (const auto& [lines, expected] : rows) {
        SCOPED_TRACE(lines);
        EXPECT_EQ(LoadedFrom(PreparedWith(lines)).colours, expected);
    }
}

TEST(SaveOptions, WritesTheFlagsAsBitsAndTheOthersAsZero) {
    for (std::uint32_t flags = 0; flags < 64; ++flags) {
        SCOPED_TRACE(flags);
        const SettingsOnDisk disk(PreparedWith("[KEY_MAINBOOLS]4294967295\r\n"));
        SettingsFile settings(disk.Path());
        ASSERT_TRUE(settings.Open());
        Options options;
        options.SetFlags(flags & 1, flags & 2, flags & 4, flags & 8, flags & 16, flags & 32);
        options.Save(settings);
        std::string stored;
        EXPECT_TRUE(settings.GetText(mainSection, "KEY_MAINBOOLS", stored));
        EXPECT_EQ(stored, std::to_string(flags));
        Options loaded;
        loaded.Load(settings);
        EXPECT_EQ(TextOf(loaded), TextOf(options));
    }
}

TEST(SaveOptions, WritesNothingWhereTheSectionIsMissing) {
    const SettingsOnDisk disk(globalPart);
    SettingsFile settings(disk.Path());
    ASSERT_TRUE(settings.Open());
    Options().Save(settings);
    SaveColours(settings, someColours);
    EXPECT_EQ(disk.Bytes(), globalPart);
}

TEST(SaveOptions, KeepsTheFarthestNumbers) {
    for (const std::int32_t number : {2147483647, -2147483647 - 1, -1}) {
        const SettingsOnDisk disk(PreparedWith(""));
        SettingsFile settings(disk.Path());
        ASSERT_TRUE(settings.Open());
        Options options;
        options.parameters.systemBitsIndex = options.parameters.floatPrecision = number;
        options.parameters.calcHeightCommand = options.parameters.locusFine = number;
        options.archiveKind = number;
        options.Save(settings);
        Options loaded;
        loaded.Load(settings);
        EXPECT_EQ(TextOf(loaded), TextOf(options));
    }
}

// The lines of the options of a fresh Options, with a kind and a name of the sheet.
std::string LinesWithSheet(const std::string& kind, const std::string& name) {
    return "[KEY_SYSBITS]71\r\n[KEY_PRECISION]72\r\n[KEY_MUCALCH]73\r\n[KEY_LOCUSFINE]74\r\n"
           "[KEY_MAINBOOLS]26\r\n[KEY_FILETYPE]" +
           kind + "\r\n[KEY_SECTNAME]" + name + "\r\n";
}

// Saves a sheet of the name twice, over another one.
void ExpectStoredAs(const std::string& name, const std::string& kind, const std::string& stored) {
    const SettingsOnDisk disk(PreparedWith(LinesWithSheet("0", "earlier")));
    SettingsFile settings(disk.Path());
    ASSERT_TRUE(settings.Open());
    Options options;
    options.archiveKind = 1;
    options.sheetName = name;
    for (int round = 0; round < 2; ++round) {
        options.Save(settings);
        ASSERT_TRUE(disk.Bytes() == PreparedWith(LinesWithSheet(kind, stored)));
    }
    Options loaded;
    loaded.Load(settings);
    EXPECT_EQ(std::to_string(loaded.archiveKind), kind);
    EXPECT_TRUE(loaded.sheetName == stored);
}

// The brackets stand in the same line.
constexpr std::size_t longestName = longestSettingsLine - 14;

TEST(SaveOptions, StoresNoSheetWhoseNameIsNoLine) {
    const std::string nul(1, '\0');
    const std::string names[] = {
        "a\rb",
        "a\nb",
        "\r",
        "\n",
        "a\r\n",
        "a\r\n[KEY_SYSBITS]1",
        "a\r\n<LIST>\r\n",
        "a\r\n\r\n{SECT_GLOBLE}",
        nul,
        "a" + nul,
        nul + "a",
        "a" + nul + "b",
        std::string(longestName + 1, 'x'),
        std::string(3 * longestSettingsLine, 'x'),
    };
    for (const std::string& name : names) {
        SCOPED_TRACE(testing::PrintToString(name.substr(0, 20)) + std::to_string(name.size()));
        ExpectStoredAs(name, "-1", "");
    }
}

TEST(SaveOptions, StoresEveryOtherNameAsItIs) {
    const std::string names[] = {
        "",
        " ",
        " a ",
        "a\tb",
        "<LIST>",
        "[KEY_SYSBITS]1",
        "{SECT_MAIN}",
        "a{",
        "\xB6\xE6\xFF\x01",
        std::string(longestName, 'x'),
    };
    for (const std::string& name : names) {
        SCOPED_TRACE(testing::PrintToString(name.substr(0, 20)) + std::to_string(name.size()));
        ExpectStoredAs(name, "1", name);
    }
}

const std::string zeroSlots(25 * 8, '0');
const std::string defaultColourLine =
    "[KEY_MAINCLRS]00008000000000FF00000000000000000080008000FF000000808080" + zeroSlots + "\r\n";

// The file after each step of a life of the program.
TEST(OptionSettings, EditTheFileInPlace) {
    const SettingsOnDisk disk("");
    SettingsFile settings(disk.Path());
    ASSERT_TRUE(settings.OpenAndPrepare());
    EXPECT_EQ(disk.Bytes(), PreparedWith(""));

    Options options;
    options.Load(settings);
    EXPECT_EQ(disk.Bytes(), PreparedWith(""));
    options.Save(settings);
    const std::string defaults =
        "[KEY_SYSBITS]30\r\n[KEY_PRECISION]2\r\n[KEY_MUCALCH]32810\r\n[KEY_LOCUSFINE]0\r\n"
        "[KEY_MAINBOOLS]37\r\n[KEY_FILETYPE]-1\r\n[KEY_SECTNAME]before\r\n";
    EXPECT_EQ(disk.Bytes(), PreparedWith(defaults));

    SaveColours(settings, options.colours);
    EXPECT_EQ(disk.Bytes(), PreparedWith(defaults + defaultColourLine));

    options.parameters.systemBitsIndex = 6;
    options.parameters.floatPrecision = 12;
    options.parameters.calcHeightCommand = 32812;
    options.parameters.locusFine = 19;
    options.SetFlags(false, true, false, true, true, false);
    options.archiveKind = 1;
    options.sheetName = "";
    options.Save(settings);
    SaveColours(settings, someColours);
    settings.SetPlacement(mainSection, mainWindowPlacementKey,
                          {3, 2, -8, -8, 9, 9, -1, -1, -1, -1});
    EXPECT_EQ(
        disk.Bytes(),
        PreparedWith(
            "[KEY_SYSBITS]6\r\n[KEY_PRECISION]12\r\n[KEY_MUCALCH]32812\r\n[KEY_LOCUSFINE]19\r\n"
            "[KEY_MAINBOOLS]26\r\n[KEY_FILETYPE]1\r\n[KEY_SECTNAME]\r\n"
            "[KEY_MAINCLRS]00010203FFFFFFFF0000000000ABCDEF000000050000000680000000" +
            zeroSlots + "\r\n[KEY_WNDPLACE]3/2/-8/-8/9/9/-1/-1/-1/-1/\r\n"));

    Options loaded;
    loaded.Load(settings);
    EXPECT_EQ(TextOf(loaded), "6 12 32812 19 010110 1 ");
    EXPECT_EQ(loaded.colours, someColours);
}

TEST(OptionSettings, KeepWhatTheyDoNotKnow) {
    const std::string before =
        "made by hand\n\r\n{OTHER}\r\n\r\n[KEY_SYSBITS]9\r\n{SECT_MAIN}  \r\nno key\n\r"
        "[KEY_LATER]\xFF, kept \r\n[KEY_SYSBITS]8\r[KEY_MAINBOOLS]64\n\r\n[KEY_WNDPLACE]1/\r\n"
        "<LIST>and more\r\n[KEY_PRECISION]3\r\n";
    const SettingsOnDisk disk(before);
    SettingsFile settings(disk.Path());
    ASSERT_TRUE(settings.OpenAndPrepare());
    EXPECT_EQ(disk.Bytes(), before + globalPart);
    Options options;
    options.Load(settings);
    EXPECT_EQ(TextOf(options), "8 2 32810 0 000000 -1 before");
    options.Save(settings);
    EXPECT_EQ(disk.Bytes(),
              "made by hand\n\r\n{OTHER}\r\n\r\n[KEY_SYSBITS]9\r\n{SECT_MAIN}  \r\nno key\n\r"
              "[KEY_LATER]\xFF, kept \r\n[KEY_SYSBITS]8\r\n[KEY_MAINBOOLS]0\r\n[KEY_WNDPLACE]1/\r\n"
              "[KEY_PRECISION]2\r\n[KEY_MUCALCH]32810\r\n[KEY_LOCUSFINE]0\r\n[KEY_FILETYPE]-1\r\n"
              "[KEY_SECTNAME]before\r\n<LIST>and more\r\n[KEY_PRECISION]3\r\n" +
                  globalPart);
}

TEST(OptionSettings, HaveAPlacementForEachWindow) {
    EXPECT_EQ(mainWindowPlacementKey, "KEY_WNDPLACE");
    EXPECT_EQ(nodeWindowPlacementKey, "KEY_DLGNODEPLACE");
    EXPECT_EQ(locusWindowPlacementKey, "KEY_DLGLOCUSPLACE");
}

}  // namespace
}  // namespace orvane
