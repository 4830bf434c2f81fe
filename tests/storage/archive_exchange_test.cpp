#include "storage/archive_exchange.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <string_view>

#include "tests/storage/marked_text.h"

namespace orvane {
namespace {

using namespace orvane::test;
using namespace std::string_view_literals;
namespace fs = std::filesystem;

constexpr ExchangeForm forms[] = {ExchangeForm::utf8, ExchangeForm::raw};

class Folder : public testing::Test {
protected:
    Folder() {
        std::string pattern = (fs::temp_directory_path() / "orvane-exchange-XXXXXX").string();
        if (mkdtemp(pattern.data()) != nullptr) path = pattern;
    }
    ~Folder() override { fs::remove_all(path); }

    std::string Read(const std::string& name) const {
        std::ifstream file(path + "/" + name, std::ios::binary);
        EXPECT_TRUE(file.is_open()) << name;
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Write(const std::string& name, std::string_view bytes) const {
        std::ofstream(path + "/" + name, std::ios::binary) << bytes;
    }
    void WriteIndex(std::string_view sheets, std::string_view rest = "") const {
        Write("index.json",
              "{\"orvane_archive\": 1, \"texts\": \"utf-8\", \"preamble\": \"p\", "
              "\"sheets\": [" +
                  std::string(sheets) + "], \"rest\": \"" + std::string(rest) + "\"}");
    }
    std::set<std::string> Files() const {
        std::set<std::string> files;
        for (const auto& entry : fs::directory_iterator(path)) {
            files.insert(entry.path().filename().string());
        }
        return files;
    }
    // The reason why a folder is not read; empty when it is.
    std::string Refusal(ExchangeForm form = ExchangeForm::utf8, bool force = false) const {
        std::string reason;
        return ImportFolder(path, form, force, reason) ? std::string() : reason;
    }
    // Out and in again gives the same bytes.
    void ExpectRoundTrip(const std::string& bytes) const {
        const std::string folder = path + "/round";
        for (const ExchangeForm form : forms) {
            fs::remove_all(folder);
            std::string reason;
            ASSERT_TRUE(ExportArchive(CutArchive(bytes), folder, form, reason)) << reason;
            const std::optional<ArchiveParts> parts = ImportFolder(folder, form, false, reason);
            ASSERT_TRUE(parts) << reason << ": " << testing::PrintToString(bytes);
            ASSERT_EQ(JoinArchive(*parts), bytes);
        }
    }

    std::string path;
};

const std::string_view hostileArchives[] = {
    "",
    archivePreamble,
    "do not modify the file manually\r\n\r\n<a>1;\r\n2\n3\r<b>",
    "#",
    "preamble > with < a dangling mark",
    "<a>1#<b>2",
    "<a<b>1<a>2<b>3",
    "<same>1<same>2<same><Same>3<SAME>",
    "<><><>",
    "< ><  a  ><\t><a\nb>",
    "<CON>1<con>2<nul.x>3<COM1>4<COM1 .txt>5<LPT9>6<aux>7<prn><conin$><clock$>",
    "<a.>1<a..>2<a >3<.a>4<..>5<.>6<...>7",
    "<../x>1</etc/passwd>2<a/b>3<a\\b>4<C:x>5<index.json>6<index>7",
    "<a*b?c\"d|e>1<a_b_c_d_e>2<-rf>3<~>4<%n>5",
    "<a>1>2>3",
    "<a_2>1<a>2<A>3<a_3>4<a>5",
};

TEST_F(Folder, GivesBackTheBytesItWasWrittenFrom) {
    for (const std::string_view shown : hostileArchives) {
        SCOPED_TRACE(shown);
        ExpectRoundTrip(Marked(shown));
    }
    std::string everyByte = Marked("<");
    for (int byte = 255; byte >= 0; --byte) everyByte += static_cast<char>(byte);
    ExpectRoundTrip(everyByte);
    ExpectRoundTrip(Marked("<" + std::string(300, 'n') + ">1<" + std::string(300, 'n') + "m>2<" +
                           std::string(300, '\xE4') + ">3"));
}

TEST_F(Folder, GivesBackRandomBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 150; ++round) {
        std::string bytes;
        for (auto length = random() % 200; length > 0; --length) {
            const char marks[] = {nameMark, textMark, 'a', 'A', ' ', '.'};
            // Few NULs: all behind one is only the rest.
            const auto byte = static_cast<char>(random() % 255 + 1);
            bytes += random() % 3 == 0 ? byte : marks[random() % sizeof marks];
        }
        if (round % 5 == 0) bytes += std::string("\0\xB6x", 3) + bytes;
        ExpectRoundTrip(bytes);
    }
}

TEST_F(Folder, HoldsOneFileForEachSheetAndAnIndex) {
    const std::string bytes =
        std::string(archivePreamble) + Marked("<First steps>1;\r\n2;\n<K\xE4se \x80>\xE4\x80\x81");
    std::string reason;
    ASSERT_TRUE(ExportArchive(CutArchive(bytes), path, ExchangeForm::utf8, reason)) << reason;
    EXPECT_EQ(Files(), (std::set<std::string>{"First steps.txt", "K_se _.txt", "index.json"}));
    EXPECT_EQ(Read("First steps.txt"), "1;\r\n2;\n");
    EXPECT_EQ(Read("K_se _.txt"), "\xC3\xA4\xE2\x82\xAC\xC2\x81");
    EXPECT_EQ(Read("index.json"),
              "{\n"
              "    \"orvane_archive\": 1,\n"
              "    \"texts\": \"utf-8\",\n"
              "    \"preamble\": \"do not modify the file manually\\r\\n\\r\\n\",\n"
              "    \"sheets\": [\n"
              "        {\"file\": \"First steps.txt\", \"name\": \"First steps\"},\n"
              "        {\"file\": \"K_se _.txt\", \"name\": \"K\xC3\xA4se \xE2\x82\xAC\"}\n"
              "    ],\n"
              "    \"rest\": \"\"\n"
              "}\n");
}

TEST_F(Folder, HoldsTheStoredBytesWhenRaw) {
    std::string reason;
    ASSERT_TRUE(
        ExportArchive(CutArchive(Marked("<\xE4>\xE4\x80")), path, ExchangeForm::raw, reason));
    EXPECT_EQ(Read("_.txt"), "\xE4\x80");
    EXPECT_NE(Read("index.json").find("\"name\": \"\xC3\xA4\""), std::string::npos);
    EXPECT_EQ(Refusal(ExchangeForm::utf8),
              "'" + path + "/index.json' says that its texts are raw bytes and not UTF-8");
    ASSERT_TRUE(
        ExportArchive(CutArchive(Marked("<\xE4>\xE4\x80")), path, ExchangeForm::utf8, reason));
    EXPECT_EQ(Refusal(ExchangeForm::raw),
              "'" + path + "/index.json' says that its texts are UTF-8 and not raw bytes");
}

struct FileNameRow {
    std::string_view sheet;
    std::string_view file;
};
const FileNameRow fileNameRows[] = {
    {"First steps", "First steps.txt"},
    {"first steps", "first steps_2.txt"},
    {"FIRST STEPS", "FIRST STEPS_3.txt"},
    {"a", "a.txt"},
    {"a_2", "a_2.txt"},
    {"A", "A_3.txt"},
    {"", "sheet.txt"},
    {"   ", "sheet_2.txt"},
    {"...", "sheet_3.txt"},
    {"..", "sheet_4.txt"},
    {"sheet_4", "sheet_4_2.txt"},
    {" . b. .", "b.txt"},
    {".hidden", "hidden.txt"},
    {"a/b\\c:d*e?f\"g<h>i|j", "a_b_c_d_e_f_g_h_i_j.txt"},
    {"\xE4\xF6\x80\n\x7F\x01", "______.txt"},
    {"x.sheet", "x.sheet.txt"},
    {"CON", "_CON.txt"},
    {"con", "_con_2.txt"},
    {"nul.x", "_nul.x.txt"},
    {"Com1", "_Com1.txt"},
    {"lpt0 .a", "_lpt0 .a.txt"},
    {"aux", "_aux.txt"},
    {"prn", "_prn.txt"},
    {"conin", "_conin.txt"},
    {"com", "com.txt"},
    {"com12", "com12.txt"},
    {"console", "console.txt"},
    {"index.json", "index.json.txt"},
};

TEST(SheetFileNames, SuitEveryFileSystem) {
    SheetFileNames names;
    for (const auto& [sheet, file] : fileNameRows) {
        SCOPED_TRACE(sheet);
        EXPECT_EQ(names.NameFor(sheet), file);
    }
}

TEST(SheetFileNames, StayShortAndApart) {
    SheetFileNames names;
    std::set<std::string> seen;
    std::mt19937 random(3);
    for (int count = 0; count < 20'000; ++count) {
        std::string sheet(random() % 2 == 0 ? 300 : 2, 'n');
        sheet[random() % 2] = random() % 2 == 0 ? 'N' : '_';
        std::string name = names.NameFor(sheet);
        ASSERT_LE(name.size(), 100U);
        for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        ASSERT_TRUE(seen.insert(name).second) << name;
    }
}

TEST_F(Folder, IsWrittenOverWhenItHoldsAnArchiveAndNothingElseIsTouched) {
    std::string reason;
    ASSERT_TRUE(
        ExportArchive(CutArchive(Marked("<a>long text<b>2")), path, ExchangeForm::utf8, reason));
    Write("mine.txt", "mine");
    ASSERT_TRUE(ExportArchive(CutArchive(Marked("<a>1<c>3")), path, ExchangeForm::utf8, reason));
    EXPECT_EQ(Files(),
              (std::set<std::string>{"a.txt", "b.txt", "c.txt", "index.json", "mine.txt"}));
    EXPECT_EQ(Read("a.txt"), "1");
    EXPECT_EQ(Read("b.txt"), "2");
    EXPECT_EQ(Read("mine.txt"), "mine");
}

TEST_F(Folder, IsNotWrittenOverWhenItHoldsSomethingElse) {
    const ArchiveParts parts = CutArchive(Marked("<a>1<b>2"));
    Write("b.txt", "mine");
    std::string reason;
    EXPECT_FALSE(ExportArchive(parts, path, ExchangeForm::utf8, reason));
    EXPECT_EQ(reason, "'" + path + "/b.txt' is there already, and no index.json names it");
    EXPECT_EQ(Files(), (std::set<std::string>{"b.txt"}));
    EXPECT_EQ(Read("b.txt"), "mine");

    fs::remove(path + "/b.txt");
    Write("index.json", "{\"pages\": []}");
    EXPECT_FALSE(ExportArchive(parts, path, ExchangeForm::utf8, reason));
    EXPECT_EQ(reason, "'" + path + "/index.json' is there already and is no index of an archive");
    EXPECT_EQ(Files(), (std::set<std::string>{"index.json"}));
    EXPECT_EQ(Read("index.json"), "{\"pages\": []}");
}

TEST_F(Folder, IsMadeWithThoseAboveIt) {
    std::string reason;
    const std::string deep = path + "/a/b";
    ASSERT_TRUE(ExportArchive(CutArchive(""), deep, ExchangeForm::utf8, reason)) << reason;
    EXPECT_TRUE(fs::exists(deep + "/index.json"));
    Write("file", "");
    EXPECT_FALSE(ExportArchive(CutArchive(""), path + "/file", ExchangeForm::utf8, reason));
    EXPECT_EQ(reason, "the folder '" + path + "/file' can't be made: Not a directory");
    EXPECT_FALSE(ExportArchive(CutArchive(""), "", ExchangeForm::utf8, reason));
}

TEST_F(Folder, TellsWhatCanNotBeWritten) {
    std::string reason;
    ASSERT_TRUE(ExportArchive(CutArchive(Marked("<a>1")), path, ExchangeForm::utf8, reason));
    fs::create_directory(path + "/b.txt");
    EXPECT_FALSE(ExportArchive(CutArchive(Marked("<a>2<b>2")), path, ExchangeForm::utf8, reason));
    EXPECT_EQ(reason, "'" + path + "/b.txt' is no plain file");
    EXPECT_EQ(Read("a.txt"), "1");
}

TEST_F(Folder, KeepsAFileThatItsIndexDoesNotName) {
    std::string reason;
    ASSERT_TRUE(ExportArchive(CutArchive(Marked("<A>1")), path, ExchangeForm::utf8, reason));
    Write("notes.txt", "mine");
    const std::string before = Read("index.json");
    EXPECT_FALSE(
        ExportArchive(CutArchive(Marked("<A>2<notes>3")), path, ExchangeForm::utf8, reason));
    EXPECT_EQ(reason, "'" + path + "/notes.txt' is there already, and no index.json names it");
    EXPECT_EQ(Read("notes.txt"), "mine");
    EXPECT_EQ(Read("A.txt"), "1");
    EXPECT_EQ(Read("index.json"), before);
    // Where letter case does not count, this is the same file.
    Write("a.txt", "1");
    EXPECT_TRUE(ExportArchive(CutArchive(Marked("<a>3")), path, ExchangeForm::utf8, reason));
    EXPECT_EQ(Read("a.txt"), "3");
}

TEST_F(Folder, IsNotWrittenThroughLinksAndPipes) {
    const std::string out = path + "/out";
    const ArchiveParts parts = CutArchive(Marked("<a>1<b>2"));
    for (const std::string name : {"b.txt", "index.json", "index.json.new"}) {
        for (const bool isLink : {true, false}) {
            SCOPED_TRACE(name + (isLink ? " as a link" : " as a pipe"));
            fs::remove_all(out);
            std::string reason;
            ASSERT_TRUE(ExportArchive(parts, out, ExchangeForm::utf8, reason)) << reason;
            const std::string index = Read("out/index.json");
            Write("outside", index);
            fs::remove(out + "/" + name);
            if (isLink) {
                fs::create_symlink("../outside", out + "/" + name);
            } else {
                ASSERT_EQ(mkfifo((out + "/" + name).c_str(), 0600), 0);
            }
            EXPECT_FALSE(
                ExportArchive(CutArchive(Marked("<a>x<b>y")), out, ExchangeForm::utf8, reason));
            EXPECT_EQ(reason, "'" + out + "/" + name + "' is no plain file");
            EXPECT_EQ(Read("outside"), index);
            EXPECT_EQ(Read("out/a.txt"), "1");
        }
    }
}

TEST_F(Folder, IsReadWithFilesOfAnyEndingAndPlace) {
    fs::create_directory(path + "/sub");
    WriteIndex(R"({"file": "one.sheet", "name": "One"}, {"file": "sub/two", "name": "Two"},
                  {"file": "one.sheet", "name": "One again", "remark": "is left alone"})");
    Write("one.sheet", "1\r\n");
    Write("sub/two", "");
    std::string reason;
    const std::optional<ArchiveParts> parts = ImportFolder(path, ExchangeForm::utf8, false, reason);
    ASSERT_TRUE(parts) << reason;
    EXPECT_EQ(Shown(JoinArchive(*parts)), "p<One>1\r\n<Two><One again>1\r\n");
}

TEST_F(Folder, IsRefusedWithoutItsFiles) {
    EXPECT_EQ(Refusal(), "'" + path + "/index.json' can't be read: No such file or directory");
    WriteIndex(R"({"file": "a.txt", "name": "a"})");
    EXPECT_EQ(Refusal(), "'" + path + "/a.txt' can't be read: No such file or directory");
    EXPECT_EQ(Refusal(ExchangeForm::utf8, true),
              "'" + path + "/a.txt' can't be read: No such file or directory");
    fs::create_directory(path + "/a.txt");
    EXPECT_EQ(Refusal(), "'" + path + "/a.txt' is no plain file");
    fs::remove(path + "/a.txt");
    ASSERT_EQ(mkfifo((path + "/a.txt").c_str(), 0600), 0);
    EXPECT_EQ(Refusal(), "'" + path + "/a.txt' is no plain file");
    std::string reason;
    for (const std::string& folder : {path + "/missing", path + "/index.json", std::string()}) {
        EXPECT_FALSE(ImportFolder(folder, ExchangeForm::utf8, false, reason));
        EXPECT_EQ(reason, "there is no folder '" + folder + "'");
    }
}

TEST_F(Folder, IsRefusedWithAnIndexThatIsDamagedOrLeavesIt) {
    Write("index.json", "{");
    EXPECT_EQ(Refusal(), "'" + path + "/index.json' is damaged: it is no JSON");
    Write("secret", "1");
    fs::create_directory(path + "/in");
    Write("in/index.json",
          R"({"orvane_archive": 1, "texts": "utf-8", "preamble": "", "rest": "",
              "sheets": [{"file": "../secret", "name": "a"}]})");
    std::string reason;
    EXPECT_FALSE(ImportFolder(path + "/in", ExchangeForm::utf8, true, reason));
    EXPECT_EQ(reason, "'" + path +
                          "/in/index.json' names the file '../secret', which is not in the folder");
}

struct RefusedRow {
    std::string_view name;  // as JSON writes it
    std::string_view text;
    std::string_view problem;  // behind the file's name
    std::string_view forced;   // what is stored with force
};
const RefusedRow refusedRows[] = {
    {"a", "\xE2\x98\x83", "a.txt': the text holds '\xE2\x98\x83' (U+2603)", "p<a>?"},
    {"a", "x\xE4", "a.txt': the text holds bytes that are no UTF-8", "p<a>x?"},
    {"a", "\xC2\xB6x", "a.txt': the text holds the character", "p<a><x"},
    {"a", "\xC3\xA6", "a.txt': the text holds the character", "p<a>>"},
    {"a", "1\0"sv, "a.txt': the text holds a NUL", "p<a>1#"},
    {"\xE2\x98\x83", "1", "index.json': the name '\xE2\x98\x83' holds", "p<?>1"},
    {"a\\u0000", "1", "index.json': the name 'a?' holds a NUL", "p<a#>1"},
    {"\xC2\xB6", "1", "index.json': the name '\xC2\xB6' holds", "p<<>1"},
    {"", "1", "index.json': the name is empty", "p<>1"},
    {" a", "1", "index.json': the name ' a' has blanks at its ends", "p< a>1"},
};

TEST_F(Folder, IsRefusedForWhatCanNotBeStoredUnlessForced) {
    for (const auto& [name, text, problem, forced] : refusedRows) {
        SCOPED_TRACE(forced);
        WriteIndex("{\"file\": \"a.txt\", \"name\": \"" + std::string(name) + "\"}");
        Write("a.txt", text);
        const std::string refusal = Refusal();
        EXPECT_TRUE(refusal.starts_with("'" + path + "/" + std::string(problem))) << refusal;
        std::string reason;
        const std::optional<ArchiveParts> parts =
            ImportFolder(path, ExchangeForm::utf8, true, reason);
        ASSERT_TRUE(parts) << reason;
        EXPECT_EQ(Shown(JoinArchive(*parts)), forced);
    }
}

// What an archive held may come back; marks that would cut it in another way may not.
TEST_F(Folder, KeepsUnusualSheetsAsTheyWereAndNothingWorse) {
    WriteIndex(R"({"file": "a.txt", "name": " ", "unusual": true})");
    Write("a.txt", "1\xC3\xA6");
    EXPECT_EQ(Refusal(), "");
    const std::string elsewhere = "'" + path +
                                  "' would not be read back as it is: there are marks or a NUL "
                                  "where they end a text";
    for (const std::string_view text : {"1\xC2\xB6"sv, "1\0"sv}) {
        Write("a.txt", text);
        EXPECT_EQ(Refusal(), elsewhere);
        EXPECT_EQ(Refusal(ExchangeForm::utf8, true), "");
    }
    Write("a.txt", "\xE2\x98\x83");
    EXPECT_NE(Refusal().find("U+2603"), std::string::npos);
    // A rest that would be a sheet's.
    Write("a.txt", "1");
    for (const std::string_view rest : {"more", "\xC2\xB6name\xC3\xA6text"}) {
        WriteIndex(R"({"file": "a.txt", "name": "a"})", rest);
        EXPECT_EQ(Refusal(), elsewhere);
    }
    WriteIndex(R"({"file": "a.txt", "name": "a"})", "\xE2\x98\x83");
    EXPECT_NE(Refusal().find("index.json': the rest holds"), std::string::npos);
}

}  // namespace
}  // namespace orvane
