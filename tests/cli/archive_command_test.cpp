#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "tests/cli/archive_checks.h"

// orvane-cli archive: every command that works on one sheet, and what all of them refuse.

namespace orvane::test {
namespace {

using namespace std::string_view_literals;
using Words = std::vector<std::string>;

TEST(ArchiveList, PrintsOneNameALine) {
    EXPECT_EQ(ArchiveFolder().Done("list"), "a\nb\nc\n");
    EXPECT_EQ(ArchiveFolder("p").Done("list"), "");
    EXPECT_EQ(ArchiveFolder("").Done("list"), "");
    EXPECT_EQ(ArchiveFolder("<b>x<a>y<b>z<>").Done("list"), "b\na\nb\n\n");
    EXPECT_EQ(ArchiveFolder("<K\xE4se \x80>").Done("list"), "K\xC3\xA4se \xE2\x82\xAC\n");
    EXPECT_EQ(ArchiveFolder("<K\xE4se \x80>").Done("list", {"--raw"}), "K\xE4se \x80\n");
}

TEST(ArchiveShow, PrintsTheTextAsItIs) {
    const ArchiveFolder folder("p<a>1;\r\n\t2\n<b><\xE4>\xE4\x80");
    EXPECT_EQ(folder.Done("show", {"a"}), "1;\r\n\t2\n");
    EXPECT_EQ(folder.Done("show", {"b"}), "");
    EXPECT_EQ(folder.Done("show", {"\xC3\xA4"}), "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(folder.Done("show", {"--raw", "\xE4"}), "\xE4\x80");
    EXPECT_EQ(folder.Done("show", {"\xE4", "--raw"}), "\xE4\x80");
}

TEST(ArchiveAdd, PutsTheSheetAtTheEnd) {
    const ArchiveFolder folder;
    EXPECT_EQ(folder.Done("add", {"new", folder.Write("text", "3;\r\n")}), "");
    EXPECT_EQ(folder.Shown(), "p<a>1;<b>2;<c><new>3;\r\n");
    folder.Done("add", {"from input", "-"}, "4\n");
    folder.Done("add", {"nothing"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<b>2;<c><new>3;\r\n<from input>4\n<nothing>");
    // Capitals count.
    folder.Done("add", {"A"}, "5");
    EXPECT_EQ(folder.Done("show", {"A"}), "5");
}

TEST(ArchiveAdd, ConvertsTheNameAndTheTextOrTakesThemRaw) {
    const ArchiveFolder folder("");
    folder.Done("add", {"\xC3\xA4\xC2\x81"}, "\xE2\x82\xAC\xC3\xBF");
    folder.Done("add", {"--raw", "\xFF"}, "\x80\xFF");
    EXPECT_EQ(folder.Shown(), "<\xE4\x81>\x80\xFF<\xFF>\x80\xFF");
}

// Behind a NUL, or a name mark without its text, it would not be found.
TEST(ArchiveAdd, PutsTheSheetInFrontOfWhatIsNeverFound) {
    const ArchiveFolder folder("p<a>1<dangling#rest<x>");
    folder.Done("add", {"b"}, "2");
    EXPECT_EQ(folder.Shown(), "p<a>1<b>2<dangling#rest<x>");
    EXPECT_EQ(folder.Done("show", {"b"}), "2");
}

// Where a damaged name ends with another one, searches take it for that one.
TEST(ArchiveAdd, RefusesASheetThatWouldNeverBeFound) {
    const ArchiveFolder folder("<x<b>1<a>2");
    const std::vector<std::string> said = {"a sheet 'b' in '", "would not be found behind the",
                                           "'x\xC2\xB6"
                                           "b'; rename that one first"};
    folder.ExpectRefused(1, said, "add", {"b"}, "3");
    folder.ExpectRefused(1, said, "add", {"b", "--force"}, "3");
    folder.ExpectRefused(1, said, "rename", {"a", "b"});
    folder.Done("rename", {"x\xC2\xB6"
                           "b",
                           "y"});
    folder.Done("add", {"b"}, "3");
    EXPECT_EQ(folder.Shown(), "<y>1<a>2<b>3");
    EXPECT_EQ(folder.Done("show", {"b"}), "3");
}

TEST(ArchiveReplace, KeepsTheSheetsPlace) {
    const ArchiveFolder folder;
    folder.Done("replace", {"a"}, "longer than it was\n");
    EXPECT_EQ(folder.Shown(), "p<a>longer than it was\n<b>2;<c>");
    folder.Done("replace", {"b", folder.Write("empty", "")});
    EXPECT_EQ(folder.Shown(), "p<a>longer than it was\n<b><c>");
    folder.Done("replace", {"c", "-"}, "\xC3\xA4");
    folder.Done("replace", {"--raw", "b"}, "\xE4\xFF");
    EXPECT_EQ(folder.Shown(), "p<a>longer than it was\n<b>\xE4\xFF<c>\xE4");
}

TEST(ArchiveRename, KeepsPlaceAndText) {
    const ArchiveFolder folder;
    folder.Done("rename", {"b", "a longer name"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<a longer name>2;<c>");
    folder.Done("rename", {"a longer name", "B"});
    folder.Done("rename", {"--raw", "B", "\xE4"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<\xE4>2;<c>");
    folder.Done("rename", {"\xC3\xA4", "\xE2\x82\xAC"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<\x80>2;<c>");
}

TEST(ArchiveDelete, TakesTheSheetOutAndShortensTheFile) {
    const ArchiveFolder folder;
    folder.Done("delete", {"b"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<c>");
    folder.Done("delete", {"c"});
    folder.Done("delete", {"a"});
    EXPECT_EQ(folder.Shown(), "p");
    const ArchiveFolder twice("<a>1<a>2");
    twice.Done("delete", {"a"});
    EXPECT_EQ(twice.Shown(), "<a>2");
}

TEST(ArchiveMove, SwapsNeighbours) {
    const ArchiveFolder folder;
    folder.Done("move-up", {"b"});
    EXPECT_EQ(folder.Shown(), "p<b>2;<a>1;<c>");
    folder.Done("move-down", {"b"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<b>2;<c>");
    folder.Done("move-down", {"b"});
    EXPECT_EQ(folder.Shown(), "p<a>1;<c><b>2;");
}

TEST(ArchiveMove, LeavesTheFirstAndTheLastWhereTheyAre) {
    // The second one has something behind its last sheet that is no sheet.
    for (const std::string_view shown : {"p<a>1;<b>2;<c>", "<a>1<c>2<dangling"}) {
        const ArchiveFolder folder(shown);
        folder.Done("move-up", {"a"});
        folder.Done("move-down", {"c"});
        EXPECT_EQ(folder.Shown(), shown);
    }
}

// Words that mean something else in another place.
TEST(ArchiveNames, AreTakenAsTheyStand) {
    for (const std::string name :
         {"list", "archive", "calc", "[a]", "[a,b]", "++", "./++", "././++", "a,b", "\"q\"", "%",
          "-", "-1", "a=b", "'", "{}", "#", "/x", "a\tb"}) {
        SCOPED_TRACE(name);
        const ArchiveFolder folder("p<first>1");
        folder.Done("add", {name}, "2");
        EXPECT_EQ(folder.Done("list"), "first\n" + name + "\n");
        EXPECT_EQ(folder.Done("show", {name}), "2");
        folder.Done("replace", {name, "-"}, "3");
        folder.Done("move-up", {name});
        EXPECT_EQ(folder.Shown(), "p<" + (name == "#" ? "#" : name) + ">3<first>1");
        folder.Done("rename", {name, "other"});
        folder.Done("rename", {"other", name});
        folder.Done("delete", {name});
        EXPECT_EQ(folder.Shown(), "p<first>1");
    }
}

TEST(ArchiveNames, MayBeginWithADashBehindADoubleDash) {
    for (const std::string name : {"-x", "--raw", "--force", "--help", "--", "++"}) {
        SCOPED_TRACE(name);
        const ArchiveFolder folder("");
        folder.Done("add", {"--", name}, "2");
        EXPECT_EQ(folder.Shown(), "<" + name + ">2");
        EXPECT_EQ(folder.Done("show", {"--", name}), "2");
        folder.Done("rename", {"--", name, "--bogus"});
        EXPECT_EQ(folder.Done("list"), "--bogus\n");
    }
}

struct RefusedRow {
    Words command;  // and its words, without the archive
    std::string_view input;
    Words said;
    std::string_view forced;  // the archive afterwards with --force; empty: refused all the same
};
const RefusedRow refusedRows[] = {
    // Sheets that are not there.
    {{"show", "d"}, "", {"there is no sheet 'd' in '", "user.file'"}, ""},
    {{"show", "A"}, "", {"there is no sheet 'A'"}, ""},
    {{"show", ""}, "", {"there is no sheet ''"}, ""},
    {{"replace", "d"}, "1", {"there is no sheet 'd'"}, ""},
    {{"rename", "d", "e"}, "", {"there is no sheet 'd'"}, ""},
    {{"delete", "d"}, "", {"there is no sheet 'd'"}, ""},
    {{"move-up", "d"}, "", {"there is no sheet 'd'"}, ""},
    {{"move-down", "d"}, "", {"there is no sheet 'd'"}, ""},
    // A search key must not match across a mark, nor a '?' stand for what is outside.
    {{"delete",
      "a\xC3\xA6"
      "1;"},
     "",
     {"there is no sheet"},
     ""},
    {{"delete", "\xE2\x98\x83"}, "", {"there is no sheet '\xE2\x98\x83'"}, ""},
    // Names that are there already: --force does not make a second one.
    {{"add", "b"}, "1", {"there is a sheet 'b' in '", "user.file' already"}, ""},
    {{"rename", "a", "b"}, "", {"there is a sheet 'b' in '"}, ""},
    {{"rename", "a", "a"}, "", {"there is a sheet 'a' in '"}, ""},
    // Names that can't be stored or would be trimmed.
    {{"add", ""}, "1", {"the name is empty", "--force"}, "p<a>1;<b>2;<c><>1"},
    {{"add", " d"}, "1", {"' d' has blanks at its ends", "--force"}, "p<a>1;<b>2;<c>< d>1"},
    {{"add", "d\t"}, "1", {"blanks at its ends"}, "p<a>1;<b>2;<c><d\t>1"},
    {{"add", "d\ne"}, "1", {"is not one line"}, "p<a>1;<b>2;<c><d\ne>1"},
    {{"add",
      "d\xC2\xB6"
      "e"},
     "1",
     {"holds the character '\xC2\xB6'"},
     "p<a>1;<b>2;<c><d<e>1"},
    {{"add",
      "d\xC3\xA6"
      "e"},
     "1",
     {"holds the character '\xC3\xA6'"},
     "p<a>1;<b>2;<c><d>e>1"},
    {{"add", "--raw", "d\xB6"}, "1", {"holds the character '\xC2\xB6'"}, "p<a>1;<b>2;<c><d<>1"},
    {{"add", "\xE2\x98\x83"}, "1", {"'\xE2\x98\x83' (U+2603)", "--force"}, "p<a>1;<b>2;<c><?>1"},
    {{"add", "\xE4"}, "1", {"no UTF-8 (0xE4)"}, "p<a>1;<b>2;<c><?>1"},
    {{"rename", "a", ""}, "", {"the name is empty"}, "p<>1;<b>2;<c>"},
    {{"rename", "a", "d "}, "", {"blanks at its ends"}, "p<d >1;<b>2;<c>"},
    {{"rename", "a", "\xC2\xB6"}, "", {"holds the character"}, "p<<>1;<b>2;<c>"},
    {{"rename", "a", "\xE2\x98\x83"}, "", {"U+2603"}, "p<?>1;<b>2;<c>"},
    // Texts that can't be stored.
    {{"add", "d"},
     "x\xC2\xB6y",
     {"the text holds the character '\xC2\xB6'", "--force"},
     "p<a>1;<b>2;<c><d>x<y"},
    {{"add", "d"}, "\xC3\xA6", {"the text holds the character '\xC3\xA6'"}, "p<a>1;<b>2;<c><d>>"},
    {{"add", "d", "--raw"},
     "\xE6",
     {"the text holds the character '\xC3\xA6'"},
     "p<a>1;<b>2;<c><d>>"},
    {{"add", "d"}, "x\0y"sv, {"the text holds a NUL"}, "p<a>1;<b>2;<c><d>x#y"},
    {{"add", "d"},
     "\xE2\x98\x83\xE2\x98\x83",
     {"(U+2603) and 1 more outside"},
     "p<a>1;<b>2;<c><d>??"},
    {{"replace", "a"}, "\xB6", {"no UTF-8 (0xB6)"}, "p<a>?<b>2;<c>"},
    {{"replace", "a", "--raw"}, "\xB6", {"the text holds the character"}, "p<a><<b>2;<c>"},
    {{"replace", "a"}, "\0"sv, {"the text holds a NUL"}, "p<a>#<b>2;<c>"},
};

TEST(Archive, RefusesWithoutTouchingTheFileUnlessForced) {
    for (const auto& [command, input, said, forced] : refusedRows) {
        SCOPED_TRACE(testing::PrintToString(command) + " " + std::string(input));
        const ArchiveFolder folder;
        Words words(command.begin() + 1, command.end());
        folder.ExpectRefused(1, said, command.front(), words, input);
        const bool takesForce =
            command.front() == "add" || command.front() == "replace" || command.front() == "rename";
        if (!takesForce) continue;
        words.insert(words.begin(), "--force");
        if (forced.empty()) {
            folder.ExpectRefused(1, said, command.front(), words, input);
        } else {
            EXPECT_EQ(folder.Done(command.front(), words, input), "");
            EXPECT_EQ(folder.Shown(), forced);
        }
    }
}

TEST(Archive, WritesNothingWhenNothingChanges) {
    const ArchiveFolder folder;
    const auto written = std::filesystem::last_write_time(folder.Archive());
    folder.Done("replace", {"a"}, "1;");
    folder.Done("move-up", {"a"});
    folder.Done("move-down", {"c"});
    folder.Done("list");
    folder.Done("show", {"a"});
    folder.Done("export", {folder.Path() + "/out"});
    EXPECT_EQ(std::filesystem::last_write_time(folder.Archive()), written);
}

const std::vector<Words> allCommands = {
    {"list"},         {"show", "a"},        {"add", "d"},
    {"replace", "a"}, {"rename", "a", "d"}, {"delete", "a"},
    {"move-up", "b"}, {"move-down", "b"},   {"export", "/tmp/nowhere/orvane"},
};

Words WordsFor(const Words& command, const std::string& archive) {
    Words words = {"archive", command.front(), archive};
    words.insert(words.end(), command.begin() + 1, command.end());
    return words;
}

TEST(Archive, IsMissedWhereItIsNot) {
    const TemporaryFolder folder;
    for (const std::string& archive : {folder.Path() + "/missing", std::string()}) {
        for (const Words& command : allCommands) {
            SCOPED_TRACE(command.front());
            const ToolResult result = RunTool(WordsFor(command, archive), "1");
            EXPECT_EQ(result.status, 1);
            EXPECT_EQ(result.output, "");
            EXPECT_EQ(result.error, "orvane-cli: there is no archive '" + archive + "'\n");
        }
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST(Archive, TellsWhyItCanNotBeRead) {
    const TemporaryFolder folder;
    for (const Words& command : allCommands) {
        SCOPED_TRACE(command.front());
        ExpectRefused(RunTool(WordsFor(command, folder.Path()), "1"),
                      {"the archive '", folder.Path(), "can't be read: Is a directory"});
    }
}

TEST(Archive, IsNotWrittenWithoutTheRightToIt) {
    const ArchiveFolder folder;
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
    ASSERT_EQ(chmod(folder.Archive().c_str(), 0444), 0);
    const std::vector<Words> writers = {{"add", "d"},    {"replace", "b"}, {"rename", "a", "d"},
                                        {"delete", "a"}, {"move-up", "b"}, {"move-down", "b"}};
    for (const Words& command : writers) {
        SCOPED_TRACE(command.front());
        ExpectRefused(RunTool({.arguments = WordsFor(command, folder.Archive()),
                               .input = "1",
                               .withoutRights = true}),
                      {"the archive '", folder.Archive(), "can't be written; it is as it was"});
        EXPECT_EQ(folder.Shown(), "p<a>1;<b>2;<c>");
    }
    const ToolResult list =
        RunTool({.arguments = {"archive", "list", folder.Archive()}, .withoutRights = true});
    EXPECT_EQ(list.status, 0);
    EXPECT_EQ(list.output, "a\nb\nc\n");
}

TEST(Archive, IsAsItWasWhereTheDiskIsFull) {
    const std::string shown = "p<a>1;<b>" + std::string(3000, '2') + "<c>" + std::string(900, '3');
    const ArchiveFolder folder(shown);
    const std::string longText(2000, '4');
    const std::vector<Words> writers = {{"add", "d"}, {"replace", "a"}, {"rename", "a", "aaaaaa"}};
    for (const Words& command : writers) {
        SCOPED_TRACE(command.front());
        const ShortFiles full(shown.size());
        ExpectRefused(RunTool(WordsFor(command, folder.Archive()), longText),
                      {"the archive '" + folder.Archive() + "' can't be written; it is as it was"});
        EXPECT_EQ(folder.Shown(), shown);
    }
}

// What stands behind the limit can't be written back, but is still there.
TEST(Archive, IsAsItWasWhereAWriteStopsHalfway) {
    const std::string shown = "p<a>1;<b>" + std::string(3000, '2') + "<c>" + std::string(900, '3');
    const ArchiveFolder folder(shown);
    const std::vector<Words> writers = {{"delete", "a"}, {"replace", "a"}, {"move-down", "a"}};
    for (const Words& command : writers) {
        SCOPED_TRACE(command.front());
        const ShortFiles full(2000);
        ExpectRefused(RunTool(WordsFor(command, folder.Archive()), "12345"),
                      {"the archive '" + folder.Archive() + "' can't be written; it is as it was"});
        EXPECT_EQ(folder.Shown(), shown);
    }
}

TEST(Archive, TellsWhyTheOutputCanNotBeWritten) {
    const ArchiveFolder folder;
    const std::vector<Words> printers = {{"list"}, {"show", "a"}, {"export", folder.Path() + "/x"}};
    for (const Words& command : printers) {
        SCOPED_TRACE(command.front());
        for (const auto output : {ToolRun::Output::fullDevice, ToolRun::Output::closed}) {
            ExpectRefused(
                RunTool({.arguments = WordsFor(command, folder.Archive()), .output = output}),
                {"the output can't be written"});
        }
    }
}

TEST(Archive, TellsWhyATextCanNotBeRead) {
    const ArchiveFolder folder;
    const std::string missing = folder.Path() + "/missing";
    for (const std::string command : {"add", "replace"}) {
        SCOPED_TRACE(command);
        const std::string name = command == "add" ? "d" : "a";
        folder.ExpectRefused(2, {missing, "can't be read"}, command, {name, missing});
        folder.ExpectRefused(2, {"can't be read: Is a directory"}, command, {name, folder.Path()});
        ExpectRefused(RunTool({.arguments = {"archive", command, folder.Archive(), name},
                               .inputClosed = true}),
                      {"standard input"});
    }
    EXPECT_EQ(folder.Shown(), "p<a>1;<b>2;<c>");
}

TEST(Archive, NeedsACommandAndItsWords) {
    ExpectRefused(RunTool({"archive"}),
                  {"archive needs one of its commands", "orvane-cli archive --help"});
    ExpectRefused(RunTool({"archive", "nosuch"}), {"'nosuch' is no command of archive"});
    ExpectRefused(RunTool({"archive", "List", "a"}), {"'List' is no command of archive"});
    ExpectRefused(RunTool({"archive", "--raw", "list"}), {"no option '--raw'"});
    const std::string archive = "/nonexistent/archive";
    for (const Words& command : allCommands) {
        SCOPED_TRACE(command.front());
        const std::string help = "orvane-cli archive " + command.front() + " --help";
        ExpectRefused(RunTool({"archive", command.front()}), {"ARCHIVE is needed", help});
        if (command.size() > 1) {
            ExpectRefused(RunTool({"archive", command.front(), archive}), {"is needed", help});
        }
        Words more = WordsFor(command, archive);
        if (command.front() == "add" || command.front() == "replace") more.push_back("-");
        more.push_back("word too many");
        ExpectRefused(RunTool(more), {"'word too many' is one word too many", help});
        ExpectRefused(RunTool({"archive", command.front(), "--bogus"}), {"--bogus", help});
        const ToolResult helped = RunTool({"archive", command.front(), archive, "--help"});
        EXPECT_EQ(helped.status, 0);
        EXPECT_EQ(helped.error, "");
        for (const std::string word : {"ARCHIVE", "--raw", "Exit status"}) {
            EXPECT_NE(helped.output.find(word), std::string::npos) << word;
        }
        EXPECT_EQ(OutputOf({"archive", command.front(), "--version"}, ""),
                  "orvane-cli " ORVANE_VERSION "\n");
    }
    ExpectRefused(RunTool({"archive", "rename", archive, "a"}), {"NEWNAME is needed"});
    ExpectRefused(RunTool({"archive", "list", archive, archive}), {"one word too many"});
    ExpectRefused(RunTool({"archive", "show", archive, "a", "--force"}), {"--force"});
    ExpectRefused(RunTool({"archive", "list", archive, "--raw=1"}), {"takes no value"});
}

TEST(Archive, ListsItsCommandsInItsHelp) {
    const std::string help = OutputOf({"archive", "--help"}, "");
    for (const Words& command : allCommands) {
        EXPECT_NE(help.find("\n  " + command.front() + " "), std::string::npos) << command.front();
    }
    EXPECT_NE(help.find("\n  import "), std::string::npos);
    EXPECT_NE(OutputOf({"--help"}, "").find("\n  archive "), std::string::npos);
}

// A sheet of the archive in place of a file.
TEST(CalcArchive, CalculatesAStoredSheet) {
    const ArchiveFolder folder("p<a>1/3;<K\xE4se>text:\xE4;<->7<++>8<empty><bad>1+");
    const auto calc = [&](const Words& words, int status = 0) {
        Words arguments = {"calc", "--archive", folder.Archive()};
        arguments.insert(arguments.end(), words.begin(), words.end());
        return OutputOf(arguments, "2", status);
    };
    EXPECT_EQ(calc({"a"}), "+0.33 \t\n");
    EXPECT_EQ(calc({"--precision", "4", "--no-show-sign", "a"}), "0.3333 \t\n");
    EXPECT_EQ(calc({"a", "--json"}).substr(0, 18), "{\"positionText\":\"\"");
    EXPECT_EQ(calc({"K\xC3\xA4se"}), "\n\xE4\n");
    EXPECT_EQ(calc({"-"}), "+7 \t\n");
    EXPECT_EQ(calc({"++"}), "+8 \t\n");
    EXPECT_NE(calc({"bad"}, 1).find("C002-10"), std::string::npos);
    ExpectRefused(RunTool({"calc", "--archive", folder.Archive(), "empty"}),
                  {"Please input formulas for calculation."});
    // Of several archives the last one counts.
    EXPECT_EQ(
        OutputOf({"calc", "--archive", "/nonexistent", "a", "--archive", folder.Archive()}, ""),
        "+0.33 \t\n");
}

TEST(CalcArchive, MissesWhatIsNotThere) {
    const ArchiveFolder folder;
    folder.ExpectRefused(1, {}, "show", {"d"});
    const ToolResult sheet = RunTool({"calc", "--archive", folder.Archive(), "d"}, "1");
    EXPECT_EQ(sheet.status, 1);
    EXPECT_EQ(sheet.output, "");
    EXPECT_EQ(sheet.error, "orvane-cli: there is no sheet 'd' in '" + folder.Archive() + "'\n");
    const ToolResult archive = RunTool({"calc", "--archive", "/nonexistent/file", "a"}, "1");
    EXPECT_EQ(archive.status, 1);
    EXPECT_EQ(archive.output, "");
    EXPECT_EQ(archive.error, "orvane-cli: there is no archive '/nonexistent/file'\n");
    ExpectRefused(RunTool({"calc", "--archive", folder.Archive()}, "1"),
                  {"--archive needs the name of a sheet", "orvane-cli calc --help"});
    ExpectRefused(RunTool({"calc", "--archive"}, "1"), {"--archive"});
    ExpectRefused(RunTool({"calc", "--archive", folder.Path(), "a"}, "1"), {"can't be read"});
    ExpectRefused(RunTool({"trace", "--archive", folder.Archive(), "a"}, "1"), {"--archive"});
}

}  // namespace
}  // namespace orvane::test
