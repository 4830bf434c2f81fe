#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <set>

#include "tests/cli/archive_checks.h"

// orvane-cli archive export and import.

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

std::string Index(const std::string& sheets) {
    return "{\"orvane_archive\": 1, \"texts\": \"utf-8\", \"preamble\": \"own preamble\", "
           "\"sheets\": [" +
           sheets + "], \"rest\": \"\"}";
}

// A folder beside the archive with sheets "a" and "d".
std::string WriteFolder(const ArchiveFolder& folder, const std::string& sheets) {
    fs::create_directory(folder.Path() + "/in");
    folder.Write("in/index.json", Index(sheets));
    folder.Write("in/a.txt", "changed \xC3\xA4\r\n");
    folder.Write("in/d.sheet", "4\n");
    return folder.Path() + "/in";
}
constexpr const char* twoSheets =
    R"({"file": "a.txt", "name": "a"}, {"file": "d.sheet", "name": "D \u20AC"})";

TEST(ArchiveExport, WritesAFileForEachSheetAndSaysHowMany) {
    const ArchiveFolder folder("p<First steps>1;\r\n<\xE4>\x80");
    const std::string out = folder.Path() + "/deep/out";
    EXPECT_EQ(folder.Done("export", {out}), out + ": 2 sheets\n");
    EXPECT_EQ(ReadBytes(out + "/First steps.txt"), "1;\r\n");
    EXPECT_EQ(ReadBytes(out + "/_.txt"), "\xE2\x82\xAC");
    EXPECT_EQ(folder.Done("export", {out, "--raw"}), out + ": 2 sheets\n");
    EXPECT_EQ(ReadBytes(out + "/_.txt"), "\x80");
    const ArchiveFolder one("<a>");
    EXPECT_EQ(one.Done("export", {out}), out + ": 1 sheet\n");
}

TEST(ArchiveExport, ComesBackAsTheSameBytes) {
    for (const std::string_view shown :
         {"", "p", "p<a>1;\r\n<A>2>3<a>4< >5<\xE4/..>\x80\x81<dangling#rest<"}) {
        SCOPED_TRACE(shown);
        for (const std::vector<std::string>& form : {std::vector<std::string>{}, {"--raw"}}) {
            const ArchiveFolder folder(shown);
            const std::string out = folder.Path() + "/out";
            std::vector<std::string> words = form;
            words.push_back(out);
            folder.Done("export", words);
            words = {"archive", "import", folder.Path() + "/again", out};
            words.insert(words.end(), form.begin(), form.end());
            OutputOf(words, "");
            EXPECT_EQ(ShownArchive(ReadBytes(folder.Path() + "/again")), shown);
        }
    }
}

TEST(ArchiveExport, TellsWhatIsInItsWay) {
    const ArchiveFolder folder;
    const std::string file = folder.Write("file", "");
    folder.ExpectRefused(2, {"the folder '" + file + "' can't be made: Not a directory"}, "export",
                         {file});
    folder.ExpectRefused(2, {"can't be made"}, "export", {file + "/deeper"});
    folder.ExpectRefused(2, {"can't be made"}, "export", {""});
    folder.Write("a.txt", "mine");
    folder.ExpectRefused(2, {"a.txt' is there already, and no index.json names it"}, "export",
                         {folder.Path()});
    EXPECT_EQ(ReadBytes(folder.Path() + "/a.txt"), "mine");
    EXPECT_FALSE(fs::exists(folder.Path() + "/index.json"));
    folder.Write("index.json", "{}");
    folder.ExpectRefused(2, {"index.json' is there already and is no index"}, "export",
                         {folder.Path()});
    EXPECT_EQ(ReadBytes(folder.Path() + "/index.json"), "{}");
    fs::create_directory(folder.Path() + "/full");
    fs::create_symlink("/dev/full", folder.Path() + "/full/b.txt");
    folder.Write("full/index.json", Index(""));
    folder.ExpectRefused(2, {"b.txt' is no plain file"}, "export", {folder.Path() + "/full"});
}

TEST(ArchiveExport, CanBeDoneAgainWhereTheDiskWasFull) {
    const std::string longText(3000, '1');
    const ArchiveFolder folder("<a>" + longText + "<b>2<c>" + longText);
    const std::string out = folder.Path() + "/out";
    for (const rlim_t size : {100, 2000}) {  // in the index, in a sheet
        {
            const ShortFiles full(size);
            folder.ExpectRefused(2, {"can't be written: File too large"}, "export", {out});
        }
        EXPECT_EQ(fs::exists(out + "/index.json"), size == 2000);
        EXPECT_FALSE(fs::exists(out + "/index.json.new"));
    }
    folder.Done("export", {out});
    OutputOf({"archive", "import", folder.Path() + "/again", out}, "");
    EXPECT_EQ(ReadBytes(folder.Path() + "/again"), ReadBytes(folder.Archive()));
}

TEST(ArchiveImport, MakesTheArchiveWithTheBytesOfTheFolder) {
    const ArchiveFolder folder;
    const std::string in = WriteFolder(folder, twoSheets);
    const std::string made = folder.Path() + "/made";
    EXPECT_EQ(OutputOf({"archive", "import", made, in}, ""), made + ": 2 sheets\n");
    EXPECT_EQ(ShownArchive(ReadBytes(made)), "own preamble<a>changed \xE4\r\n<D \x80>4\n");
}

TEST(ArchiveImport, ReplacesOrAddsEachSheetAndKeepsTheOthers) {
    const ArchiveFolder folder;
    const std::string in = WriteFolder(folder, twoSheets);
    const std::string archive = folder.Archive();
    EXPECT_EQ(folder.Done("import", {in}), archive + ": 1 sheet added, 1 replaced\n");
    EXPECT_EQ(folder.Shown(), "p<a>changed \xE4\r\n<b>2;<c><D \x80>4\n");
    EXPECT_EQ(folder.Done("import", {in}), archive + ": 0 sheets added, 2 replaced\n");
    EXPECT_EQ(folder.Shown(), "p<a>changed \xE4\r\n<b>2;<c><D \x80>4\n");
    // An empty file is there; what it holds is kept: nothing.
    const ArchiveFolder empty("");
    EXPECT_EQ(empty.Done("import", {in}), empty.Archive() + ": 2 sheets added, 0 replaced\n");
    EXPECT_EQ(empty.Shown(), "<a>changed \xE4\r\n<D \x80>4\n");
}

TEST(ArchiveImport, TakesANameTwiceOnlyIntoANewArchive) {
    const ArchiveFolder folder;
    const std::string in =
        WriteFolder(folder, R"({"file": "a.txt", "name": "x"}, {"file": "d.sheet", "name": "x"})");
    const std::vector<std::string> said = {"holds the name 'x' twice", "is there already"};
    folder.ExpectRefused(1, said, "import", {in});
    folder.ExpectRefused(1, said, "import", {in, "--force"});
    OutputOf({"archive", "import", folder.Path() + "/made", in}, "");
    EXPECT_EQ(ShownArchive(ReadBytes(folder.Path() + "/made")),
              "own preamble<x>changed \xE4\r\n<x>4\n");
}

TEST(ArchiveImport, RefusesASheetThatWouldNeverBeFound) {
    const ArchiveFolder folder("<x<b>1");
    const std::string in = WriteFolder(folder, R"({"file": "a.txt", "name": "b"})");
    const std::vector<std::string> said = {"a sheet 'b' in '",
                                           "behind the sheet 'x\xC2\xB6"
                                           "b'"};
    folder.ExpectRefused(1, said, "import", {in});
    folder.ExpectRefused(1, said, "import", {in, "--force"});
    EXPECT_EQ(folder.Done("import", {WriteFolder(folder, R"({"file": "a.txt", "name": "c"})")}),
              folder.Archive() + ": 1 sheet added, 0 replaced\n");
}

TEST(ArchiveImport, LeavesNoHalfArchive) {
    const ArchiveFolder folder;
    const std::string in = WriteFolder(folder, twoSheets);
    folder.Write("in/a.txt", std::string(5000, '1'));
    const std::string made = folder.Path() + "/made";
    const ShortFiles full(2000);
    ExpectRefused(RunTool({"archive", "import", made, in}),
                  {"the archive '" + made + "' can't be written; there is none now"});
    EXPECT_FALSE(fs::exists(made));
}

TEST(ArchiveImport, RefusesWhatItCanNotTake) {
    const ArchiveFolder folder;
    const std::string in = folder.Path() + "/in";
    const std::string made = folder.Path() + "/made";
    const auto expectRefused = [&](const std::vector<std::string>& said) {
        folder.ExpectRefused(1, said, "import", {in});
        const ToolResult result = RunTool({"archive", "import", made, in});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        EXPECT_FALSE(fs::exists(made));
    };
    expectRefused({"there is no folder '" + in + "'"});
    folder.Write("in", "");
    expectRefused({"there is no folder '" + in + "'"});
    fs::remove(in);
    fs::create_directory(in);
    expectRefused({"index.json' can't be read: No such file or directory"});
    folder.Write("in/index.json", "{\"orvane_archive\": 1");
    expectRefused({"index.json' is damaged"});
    folder.Write("in/index.json", "{\"name\": \"a page\"}");
    expectRefused({"index.json' is no index of an archive"});
    folder.Write("in/index.json", Index(R"({"file": "../user.file", "name": "a"})"));
    expectRefused({"names the file '../user.file', which is not in the folder"});
    folder.Write("in/index.json", Index(R"({"file": "/etc/passwd", "name": "a"})"));
    expectRefused({"names the file '/etc/passwd', which is not in the folder"});
    folder.Write("in/index.json", Index(R"({"file": "a.txt", "name": "a"})"));
    expectRefused({"a.txt' can't be read: No such file or directory"});
    folder.Write("in/a.txt", "\xE2\x98\x83");
    expectRefused({"a.txt': the text holds '\xE2\x98\x83' (U+2603)"});
    folder.Write("in/a.txt", "\xC2\xB6");
    expectRefused({"a.txt': the text holds the character '\xC2\xB6'"});
    folder.Write("in/index.json", Index(R"({"file": "a.txt", "name": " "})"));
    expectRefused({"blanks at its ends"});
}

TEST(ArchiveImport, StoresItAllTheSameWhenForced) {
    const ArchiveFolder folder;
    WriteFolder(folder, R"({"file": "a.txt", "name": " a"})");
    folder.Write("in/a.txt", "\xE2\x98\x83\xC2\xB6");
    folder.Done("import", {"--force", folder.Path() + "/in"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<b>2;<c>< a>?<");
}

TEST(ArchiveImport, ReadsRawFoldersRaw) {
    const ArchiveFolder folder("<\xE4>\x80");
    const std::string out = folder.Path() + "/out";
    folder.Done("export", {"--raw", out});
    folder.ExpectRefused(1, {"raw bytes and not UTF-8"}, "import", {out});
    EXPECT_EQ(folder.Done("import", {out, "--raw"}),
              folder.Archive() + ": 0 sheets added, 1 replaced\n");
    EXPECT_EQ(folder.Shown(), "<\xE4>\x80");
}

TEST(ArchiveImport, TellsWhyTheArchiveCanNotBeWritten) {
    const ArchiveFolder folder;
    const std::string in = WriteFolder(folder, twoSheets);
    ExpectRefused(RunTool({"archive", "import", folder.Path() + "/no/where", in}),
                  {"no/where' can't be made"});
    ExpectRefused(RunTool({"archive", "import", "", in}), {"the archive '' can't be made"});
    ExpectRefused(RunTool({"archive", "import", in, in}), {"can't be read: Is a directory"});
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(in.c_str(), 0755), 0);
    ASSERT_EQ(chmod(folder.Archive().c_str(), 0444), 0);
    for (const std::string& archive : {folder.Archive(), folder.Path() + "/made"}) {
        ExpectRefused(
            RunTool({.arguments = {"archive", "import", archive, in}, .withoutRights = true}),
            {"the archive '", archive, archive == folder.Archive() ? "written" : "made"});
    }
    EXPECT_EQ(folder.Shown(), "p<a>1;<b>2;<c>");
}

TEST(ArchiveImport, NeedsItsWords) {
    ExpectRefused(RunTool({"archive", "import"}), {"ARCHIVE is needed"});
    ExpectRefused(RunTool({"archive", "import", "/nonexistent/a"}),
                  {"DIR is needed", "orvane-cli archive import --help"});
    ExpectRefused(RunTool({"archive", "export", "/nonexistent/a"}), {"DIR is needed"});
    ExpectRefused(RunTool({"archive", "import", "a", "b", "c"}), {"'c' is one word too many"});
    ExpectRefused(RunTool({"archive", "import", "--bogus"}), {"--bogus"});
    const std::string help = OutputOf({"archive", "import", "--help"}, "");
    for (const std::string word : {"ARCHIVE", "DIR", "--raw", "--force", "index.json"}) {
        EXPECT_NE(help.find(word), std::string::npos) << word;
    }
}

}  // namespace
}  // namespace orvane::test
