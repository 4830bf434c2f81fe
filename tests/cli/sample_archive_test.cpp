#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "tests/cli/archive_checks.h"

// The archive of samples that the build packs for the window program.

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

const std::string archive = ORVANE_SETTING_FOLDER "/sample.file";
const std::string samples = ORVANE_SAMPLES_FOLDER;

Json SheetsOfTheIndex() {
    const Json index = Json::parse(ReadBytes(samples + "/index.json"), nullptr, false);
    EXPECT_TRUE(index.is_object());
    return index.at("sheets");
}

TEST(SampleArchive, HoldsEverySampleUnderItsNameInTheOrderOfTheIndex) {
    std::string names;
    std::string bytes = "do not modify the file manually\r\n\r\n";
    std::set<std::string> files;
    std::set<std::string> different;
    for (const Json& sheet : SheetsOfTheIndex()) {
        const std::string name = sheet.at("name").get<std::string>();
        const std::string file = sheet.at("file").get<std::string>();
        SCOPED_TRACE(name);
        EXPECT_TRUE(different.insert(name).second);
        EXPECT_TRUE(files.insert(file).second);
        const std::string text = ReadBytes(samples + "/" + file);
        EXPECT_EQ(OutputOf({"archive", "show", archive, name}, ""), text);
        names += name + "\n";
        bytes += ArchiveBytes("<") + name + ArchiveBytes(">") + text;
    }
    EXPECT_EQ(OutputOf({"archive", "list", archive}, ""), names);
    EXPECT_EQ(ReadBytes(archive), bytes);
    std::set<std::string> onDisk;
    for (const auto& entry : fs::directory_iterator(samples)) {
        if (entry.path().extension() == ".sheet") onDisk.insert(entry.path().filename().string());
    }
    EXPECT_EQ(files, onDisk);
    EXPECT_EQ(files.size(), 32U);
}

TEST(SampleArchive, StartsWithTheEasyOnesUnderNamesForPeople) {
    const std::string names = OutputOf({"archive", "list", archive}, "");
    EXPECT_TRUE(names.starts_with("First steps\nOrder of operators\n")) << names;
    EXPECT_EQ(names.find('_'), std::string::npos) << names;
}

TEST(SampleArchive, CalculatesToTheReportsOfTheSamples) {
    const std::pair<const char*, const char*> rows[] = {{"First steps", "first_steps"},
                                                        {"Curve with a pole", "curve_with_a_pole"}};
    for (const auto& [name, file] : rows) {
        SCOPED_TRACE(name);
        EXPECT_EQ(OutputOf({"calc", "--archive", archive, name}, ""),
                  ReadBytes(ORVANE_SAMPLE_REPORTS_FOLDER "/" + std::string(file) + ".report"));
    }
}

TEST(SettingFolder, HasAFileForTheSettingsAndNothingHalfPacked) {
    EXPECT_TRUE(fs::is_regular_file(ORVANE_SETTING_FOLDER "/Orvane.set"));
    EXPECT_FALSE(fs::exists(ORVANE_SETTING_FOLDER "/sample.file.new"));
}

}  // namespace
}  // namespace orvane::test
