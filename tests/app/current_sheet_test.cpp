#include "app/current_sheet.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/archive_folder.h"

namespace orvane {
namespace {

TEST(CurrentSheet, IsANewCalculationAtFirst) {
    const CurrentSheet sheet;
    EXPECT_EQ(sheet.archiveKind, -1);
    EXPECT_EQ(sheet.savedText, "");
    EXPECT_EQ(sheet.sheetName, "");
    EXPECT_EQ(sheet.userFilePath, "");
    EXPECT_EQ(sheet.sampleFilePath, "");
    EXPECT_FALSE(sheet.IsModified(""));
}

TEST(CurrentSheet, IsModifiedWhereOneByteDiffers) {
    struct Row {
        std::string saved, edited;
        bool isModified;
    };
    const Row rows[] = {
        {"1+1", "1+1", false},  {"1+1", "1+2", true},
        {"1+1", "1+1\n", true}, {"", " ", true},
        {" ", "", true},        {"\xE4", "\xC4", true},
        {"a", "A", true},       {std::string("a\0b", 3), std::string("a\0c", 3), true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.saved + " " + row.edited);
        CurrentSheet sheet;
        sheet.savedText = row.saved;
        EXPECT_EQ(sheet.IsModified(row.edited), row.isModified);
    }
}

TEST(CurrentSheet, HasANameInTheUserArchiveOnlyWhereItIsInIt) {
    CurrentSheet sheet;
    sheet.sheetName = "name";
    EXPECT_EQ(sheet.NameInUserArchive(), "");
    sheet.archiveKind = sampleArchive;
    EXPECT_EQ(sheet.NameInUserArchive(), "");
    sheet.archiveKind = userArchive;
    EXPECT_EQ(sheet.NameInUserArchive(), "name");
}

TEST(TitleOfSheet, NamesTheProgramFirst) {
    EXPECT_EQ(programTitle, "Orvane");
    EXPECT_EQ(newSheetTitle, "Orvane: new calculation");
    EXPECT_EQ(TitleOfSheet("my sheet"), "Orvane: my sheet");
    EXPECT_EQ(TitleOfSheet(""), "Orvane: ");
}

std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST(PrepareArchives, MakesBothBelowTheProgramsFolder) {
    const test::ArchiveFolder place;
    const std::string folder = place.Folder();
    std::filesystem::create_directory(folder + "/Setting");
    std::ofstream(folder + "/Setting/sample.file") << test::Entry("sample", "1");
    CurrentSheet sheet;
    PrepareArchives(sheet, folder);
    EXPECT_EQ(sheet.userFilePath, folder + "/Setting/user.file");
    EXPECT_EQ(sheet.sampleFilePath, folder + "/Setting/sample.file");
    EXPECT_EQ(BytesOf(sheet.userFilePath), "do not modify the file manually\r\n\r\n");
    EXPECT_EQ(BytesOf(sheet.sampleFilePath), test::Entry("sample", "1"));
}

TEST(PrepareArchives, RemembersThePathsOfArchivesThatCanNotBeMade) {
    const test::ArchiveFolder place;
    CurrentSheet sheet;
    PrepareArchives(sheet, place.Folder());
    EXPECT_EQ(sheet.userFilePath, place.Folder() + "/Setting/user.file");
    EXPECT_EQ(sheet.sampleFilePath, place.Folder() + "/Setting/sample.file");
    EXPECT_FALSE(std::filesystem::exists(place.Folder() + "/Setting"));
}

}  // namespace
}  // namespace orvane
