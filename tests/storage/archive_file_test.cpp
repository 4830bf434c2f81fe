#include "storage/archive_file.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/storage/marked_text.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;

using test::Marked;
using test::Shown;

using Names = std::vector<std::string>;

// A folder of its own for each test, gone with everything in it afterwards. It has an archive's
// path ready; the file is not made.
class ArchiveOnDisk : public testing::Test {
protected:
    ArchiveOnDisk() {
        std::string name = (fs::temp_directory_path() / "orvane_archive_XXXXXX").string();
        if (mkdtemp(name.data()) != nullptr) folder = name;
        // Tests that give up their rights still find their way in.
        fs::permissions(folder, fs::perms(0777));
        path = (folder / "user.file").string();
    }
    ~ArchiveOnDisk() override { fs::remove_all(folder); }

    void Put(std::string_view bytes) const {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    }
    std::string OnDisk() const {
        std::ifstream file(path, std::ios::binary);
        EXPECT_TRUE(file.is_open());
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    fs::path folder;
    std::string path;
};

// Runs the work in a process of its own, whose limits and rights are none of the test's.
bool RunApart(const std::function<bool()>& work) {
    const pid_t process = fork();
    if (process == 0) _exit(work() ? 0 : 1);
    int status = -1;
    return process > 0 && waitpid(process, &status, 0) == process && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

bool GiveUpRights() {
    constexpr id_t nobody = 65534;
    if (geteuid() != 0) return true;
    return setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0;
}

// No file of this process gets longer than this; a write beyond it is cut short.
bool LimitFileSize(rlim_t longest) {
    const rlimit limit{longest, longest};
    return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && setrlimit(RLIMIT_FSIZE, &limit) == 0;
}

// How often this process has asked the system to write; nothing where it does not tell.
std::optional<long> WritesAsked() {
    std::ifstream counts("/proc/self/io");
    std::string key;
    long count = 0;
    while (counts >> key >> count) {
        if (key == "syscw:") return count;
    }
    return std::nullopt;
}

std::string Preamble() { return "do not modify the file manually\r\n\r\n"; }

TEST_F(ArchiveOnDisk, IsMadeWithItsPreambleAlone) {
    PrepareArchive(path);
    EXPECT_EQ(OnDisk(), Preamble());
    EXPECT_EQ(fs::file_size(path), 35U);
    ArchiveFile archive;
    ASSERT_TRUE(archive.Load(path));
    EXPECT_TRUE(ListNames(archive.buffer).empty());
}

TEST_F(ArchiveOnDisk, HoldsTheseBytesAfterEachAction) {
    struct Step {
        std::string_view what;
        void (*change)(TextBuffer& archive);
        std::string_view bytes;  // behind the preamble
    };
    const Step steps[] = {
        {"nothing", [](TextBuffer&) {}, ""},
        {"append a", [](TextBuffer& archive) { AppendSheet(archive, "a", "1+2"); }, "<a>1+2"},
        {"append b", [](TextBuffer& archive) { AppendSheet(archive, "b", ""); }, "<a>1+2<b>"},
        {"append c", [](TextBuffer& archive) { AppendSheet(archive, "c d", "x=3;\r\nx"); },
         "<a>1+2<b><c d>x=3;\r\nx"},
        {"c up", [](TextBuffer& archive) { MoveSheetUp(archive, "c d"); },
         "<a>1+2<c d>x=3;\r\nx<b>"},
        {"a up, the first", [](TextBuffer& archive) { MoveSheetUp(archive, "a"); },
         "<a>1+2<c d>x=3;\r\nx<b>"},
        {"b down, the last", [](TextBuffer& archive) { MoveSheetDown(archive, "b"); },
         "<a>1+2<c d>x=3;\r\nx<b>"},
        {"a down", [](TextBuffer& archive) { MoveSheetDown(archive, "a"); },
         "<c d>x=3;\r\nx<a>1+2<b>"},
        {"save b", [](TextBuffer& archive) { ReplaceSheetText(archive, "b", "sum(1,2)"); },
         "<c d>x=3;\r\nx<a>1+2<b>sum(1,2)"},
        {"save c", [](TextBuffer& archive) { ReplaceSheetText(archive, "c d", "\xE4"); },
         "<c d>\xE4<a>1+2<b>sum(1,2)"},
        {"rename a", [](TextBuffer& archive) { RenameSheet(archive, "a", "long name"); },
         "<c d>\xE4<long name>1+2<b>sum(1,2)"},
        {"save a, which is gone", [](TextBuffer& archive) { ReplaceSheetText(archive, "a", "9"); },
         "<c d>\xE4<long name>1+2<b>sum(1,2)"},
        {"delete b, the last", [](TextBuffer& archive) { DeleteSheet(archive, "b"); },
         "<c d>\xE4<long name>1+2"},
        {"delete c", [](TextBuffer& archive) { DeleteSheet(archive, "c d"); }, "<long name>1+2"},
        {"save a mark",
         [](TextBuffer& archive) { ReplaceSheetText(archive, "long name", Marked("1<2")); },
         "<long name>1<2"},
        {"delete the only one", [](TextBuffer& archive) { DeleteSheet(archive, "long name"); },
         "<2"},
    };
    PrepareArchive(path);
    for (const auto& [what, change, bytes] : steps) {
        SCOPED_TRACE(what);
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        change(archive.buffer);
        EXPECT_TRUE(archive.WriteBack());
        archive.Close();
        EXPECT_EQ(Shown(OnDisk()), Preamble() + std::string(bytes));
    }
}

TEST_F(ArchiveOnDisk, GetsShorterWhenTheOnlyEntryGoes) {
    Put(Preamble() + Marked("<a>text"));
    {
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        DeleteSheet(archive.buffer, "a");
        EXPECT_TRUE(archive.WriteBack());
        archive.Close();
    }
    EXPECT_EQ(OnDisk(), Preamble());
}

TEST_F(ArchiveOnDisk, NeedsNoPreamble) {
    Put(Marked("<a>1<b>2"));
    ArchiveFile archive;
    ASSERT_TRUE(archive.Load(path));
    EXPECT_EQ(ListNames(archive.buffer), (Names{"a", "b"}));
    DeleteSheet(archive.buffer, "a");
    AppendSheet(archive.buffer, "c", "3");
    EXPECT_TRUE(archive.WriteBack());
    EXPECT_EQ(Shown(OnDisk()), "<b>2<c>3");
}

TEST_F(ArchiveOnDisk, IsWrittenInPiecesOfAnyNumber) {
    for (const std::size_t length : {0, 1, 1023, 1024, 1025, 2048, 5000, 0, 100, 99, 3000, 2999}) {
        SCOPED_TRACE(length);
        std::string bytes(length, '\0');
        for (std::size_t at = 0; at < length; ++at) bytes[at] = static_cast<char>(at * 7 + length);
        if (!fs::exists(path)) Put("");
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        archive.buffer.Assign(bytes);
        EXPECT_TRUE(archive.WriteBack());
        EXPECT_EQ(OnDisk(), bytes);
        archive.Close();
        ASSERT_TRUE(archive.Load(path));
        EXPECT_EQ(archive.buffer.View(), bytes);
    }
}

TEST_F(ArchiveOnDisk, IsWrittenInAsFewPiecesOf1024BytesAsThereAre) {
    if (!WritesAsked()) GTEST_SKIP() << "this system does not count writes";
    struct Row {
        std::size_t length;
        long pieces;
    };
    constexpr Row rows[] = {{0, 0}, {1, 1}, {1024, 1}, {1025, 2}, {2048, 2}, {5000, 5}};
    for (const auto& [length, pieces] : rows) {
        SCOPED_TRACE(length);
        Put("");
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        archive.buffer.Assign(std::string(length, 'x'));
        const long before = WritesAsked().value_or(0);
        EXPECT_TRUE(archive.WriteBack());
        EXPECT_EQ(WritesAsked().value_or(0) - before, pieces);
    }
}

// Larger than what is read at once.
TEST_F(ArchiveOnDisk, IsReadWhole) {
    std::string bytes;
    while (bytes.size() < 3'500'000) bytes += "line " + std::to_string(bytes.size()) + "\r\n";
    Put(bytes);
    ArchiveFile archive;
    ASSERT_TRUE(archive.Load(path));
    EXPECT_TRUE(archive.buffer.View() == bytes);
    // Room for an append without another move.
    EXPECT_EQ(archive.buffer.growthStep, 1000);
    EXPECT_EQ(archive.buffer.capacity, archive.buffer.length + 1000);
}

TEST_F(ArchiveOnDisk, StaysEmptyWhereItIsEmpty) {
    Put("");
    PrepareArchive(path);
    EXPECT_EQ(OnDisk(), "");
    ArchiveFile archive;
    ASSERT_TRUE(archive.Load(path));
    EXPECT_EQ(archive.buffer.length, 0);
    AppendSheet(archive.buffer, "a", "1");
    EXPECT_TRUE(archive.WriteBack());
    EXPECT_EQ(Shown(OnDisk()), "<a>1");
}

TEST_F(ArchiveOnDisk, IsNotReadAgainWhileItIsOpen) {
    Put(Marked("<a>1"));
    ArchiveFile archive;
    ASSERT_TRUE(archive.Load(path));
    EXPECT_TRUE(archive.IsOpen());
    AppendSheet(archive.buffer, "b", "2");
    Put(Marked("<other>9"));
    ASSERT_TRUE(archive.Load(path));
    EXPECT_EQ(Shown(archive.buffer.View()), "<a>1<b>2");

    archive.Close();
    EXPECT_FALSE(archive.IsOpen());
    EXPECT_EQ(Shown(OnDisk()), "<other>9");
    ASSERT_TRUE(archive.Load(path));
    EXPECT_EQ(Shown(archive.buffer.View()), "<other>9");
}

TEST_F(ArchiveOnDisk, IsAnotherUnderAnotherSpellingOfItsPath) {
    Put(Marked("<a>1"));
    ArchiveFile archive;
    ASSERT_TRUE(archive.Load(path));
    AppendSheet(archive.buffer, "b", "2");
    ASSERT_TRUE(archive.Load((folder / "." / "user.file").string()));
    // What was open under the first one is written before the second is read.
    EXPECT_EQ(Shown(archive.buffer.View()), "<a>1<b>2");
}

TEST_F(ArchiveOnDisk, IsSavedByCodeThatForgetsTo) {
    Put(Marked("<a>1<b>2"));
    {
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        DeleteSheet(archive.buffer, "a");
    }
    EXPECT_EQ(Shown(OnDisk()), "<b>2");
    {
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        AppendSheet(archive.buffer, "c", "3");
        EXPECT_FALSE(archive.Load((folder / "missing").string()));
        EXPECT_FALSE(archive.IsOpen());
        EXPECT_EQ(archive.buffer.length, 0);
        EXPECT_EQ(Shown(OnDisk()), "<b>2<c>3");
    }
    EXPECT_EQ(Shown(OnDisk()), "<b>2<c>3");
    {
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        AppendSheet(archive.buffer, "d", "4");
        EXPECT_TRUE(archive.Create((folder / "sample.file").string()));
        EXPECT_EQ(Shown(OnDisk()), "<b>2<c>3<d>4");
    }
    path = (folder / "sample.file").string();
    EXPECT_EQ(OnDisk(), Preamble());
}

TEST_F(ArchiveOnDisk, IsLeftAsItIsByCloseAlone) {
    Put(Marked("<a>1"));
    {
        ArchiveFile archive;
        ASSERT_TRUE(archive.Load(path));
        DeleteSheet(archive.buffer, "a");
        archive.Close();
        archive.Close();
        EXPECT_FALSE(archive.WriteBack());
        EXPECT_EQ(archive.buffer.length, 0);
    }
    EXPECT_EQ(Shown(OnDisk()), "<a>1");
}

TEST_F(ArchiveOnDisk, BelongsToTheLastWriterWhole) {
    Put(Marked("<a>1"));
    ArchiveFile first, second;
    ASSERT_TRUE(first.Load(path));
    ASSERT_TRUE(second.Load(path));
    AppendSheet(first.buffer, "first", "a longer text");
    EXPECT_TRUE(first.WriteBack());
    EXPECT_EQ(Shown(OnDisk()), "<a>1<first>a longer text");
    AppendSheet(second.buffer, "b", "2");
    EXPECT_TRUE(second.WriteBack());
    EXPECT_EQ(Shown(OnDisk()), "<a>1<b>2");
    first.Close();
    EXPECT_EQ(Shown(OnDisk()), "<a>1<b>2");
}

TEST_F(ArchiveOnDisk, IsEmptiedByCreateUntilItIsWritten) {
    Put(Marked("<a>1"));
    ArchiveFile archive;
    ASSERT_TRUE(archive.Create(path));
    EXPECT_TRUE(archive.IsOpen());
    EXPECT_EQ(OnDisk(), "");
    EXPECT_EQ(archive.buffer.View(), Preamble());
    EXPECT_TRUE(archive.WriteBack());
    EXPECT_EQ(OnDisk(), Preamble());
}

TEST_F(ArchiveOnDisk, IsRewrittenWithItsOwnContentAtEachStart) {
    std::string every;
    for (int byte = 0; byte < 256; ++byte) every += static_cast<char>(byte);
    const std::string contents[] = {Preamble(), Preamble() + Marked("<a>1<b>2"), Marked("<a>1"),
                                    every,      std::string(4096, '\0'),         Marked("<<<>>>")};
    for (const std::string& content : contents) {
        Put(content);
        const auto longAgo = fs::last_write_time(path) - std::chrono::hours(1);
        fs::last_write_time(path, longAgo);
        PrepareArchive(path);
        EXPECT_EQ(OnDisk(), content);
        EXPECT_GT(fs::last_write_time(path), longAgo);
    }
}

TEST_F(ArchiveOnDisk, IsNotMadeWhereItsFolderIsMissing) {
    const fs::path setting = folder / "Setting";
    path = (setting / "user.file").string();
    PrepareArchive(path);
    EXPECT_FALSE(fs::exists(setting));
    ArchiveFile archive;
    EXPECT_FALSE(archive.Load(path));
    EXPECT_FALSE(archive.Create(path));
    EXPECT_FALSE(archive.WriteBack());
    EXPECT_FALSE(archive.IsOpen());
    EXPECT_EQ(archive.buffer.length, 0);
}

TEST_F(ArchiveOnDisk, IsNoFolder) {
    fs::create_directory(path);
    PrepareArchive(path);
    ArchiveFile archive;
    EXPECT_FALSE(archive.Load(path));
    EXPECT_FALSE(archive.Create(path));
    EXPECT_TRUE(fs::is_directory(path));
    EXPECT_TRUE(fs::is_empty(path));
}

// The system tells a size for this file of its own and then gives fewer bytes.
TEST(ArchiveFile, IsNotOpenAfterAReadThatFailed) {
    const std::string shorter = "/sys/devices/system/cpu/online";
    std::error_code error;
    if (fs::file_size(shorter, error) != 4096) GTEST_SKIP() << "this system has no such file";
    ArchiveFile archive;
    archive.buffer.Assign("from before");
    EXPECT_FALSE(archive.Load(shorter));
    EXPECT_FALSE(archive.IsOpen());
    EXPECT_EQ(archive.buffer.length, 0);
    EXPECT_FALSE(archive.WriteBack());
}

TEST_F(ArchiveOnDisk, IsLeftAloneWhereItIsTooLong) {
    constexpr std::uintmax_t tooLong = (std::uintmax_t{1} << 30) + 1;
    Put(Marked("<a>1"));
    fs::resize_file(path, tooLong);
    ArchiveFile archive;
    EXPECT_FALSE(archive.Load(path));
    EXPECT_FALSE(archive.IsOpen());
    EXPECT_EQ(archive.buffer.length, 0);
    PrepareArchive(path);
    EXPECT_EQ(fs::file_size(path), tooLong);
}

TEST_F(ArchiveOnDisk, IsListedAndNeverChangedWhereItMayOnlyBeRead) {
    Put(Marked("<a>1<b>2"));
    fs::permissions(path, fs::perms(0444));
    EXPECT_TRUE(RunApart([this] {
        if (!GiveUpRights()) return false;
        PrepareArchive(path);
        ArchiveFile archive;
        if (!archive.Load(path) || ListNames(archive.buffer) != Names{"a", "b"}) return false;
        AppendSheet(archive.buffer, "c", "3");
        const bool isWritten = archive.WriteBack();
        return !isWritten && Shown(archive.buffer.View()) == "<a>1<b>2<c>3";
    }));
    EXPECT_EQ(Shown(OnDisk()), "<a>1<b>2");
}

TEST_F(ArchiveOnDisk, IsNeverChangedWhereItMayNotBeRead) {
    for (const unsigned rights : {0000U, 0222U}) {
        SCOPED_TRACE(rights);
        Put(Marked("<a>1<b>2"));
        fs::permissions(path, fs::perms(rights));
        EXPECT_TRUE(RunApart([this] {
            if (!GiveUpRights()) return false;
            PrepareArchive(path);
            ArchiveFile archive;
            return !archive.Load(path) && !archive.IsOpen() && ListNames(archive.buffer).empty();
        }));
        fs::permissions(path, fs::perms(0644));
        EXPECT_EQ(Shown(OnDisk()), "<a>1<b>2");
    }
}

TEST_F(ArchiveOnDisk, IsNotMadeWhereNothingMayBeMade) {
    fs::permissions(folder, fs::perms(0555));
    EXPECT_TRUE(RunApart([this] {
        if (!GiveUpRights()) return false;
        PrepareArchive(path);
        ArchiveFile archive;
        return !archive.Load(path) && !archive.Create(path) && archive.buffer.length == 0;
    }));
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(ArchiveOnDisk, HoldsTheNewHeadOverTheOldTailWhereAWriteFails) {
    struct Row {
        std::size_t oldLength, newLength, limit;
    };
    constexpr Row rows[] = {
        {5000, 8000, 3000},  // in the middle of a piece
        {5000, 8000, 2048},  // between two pieces
        {5000, 8000, 2049}, {5000, 8000, 2047}, {5000, 8000, 1},
        {5000, 8000, 0},    {5000, 8000, 6000},  // behind the old end
        {5000, 4000, 3999},  // the new content is the shorter one: its end is not set either
        {5000, 4000, 0},    {100, 8000, 1000},  {0, 8000, 7999},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message()
                     << row.oldLength << " " << row.newLength << " " << row.limit);
        const std::string old(row.oldLength, 'o');
        const std::string fresh(row.newLength, 'n');
        Put(old);
        EXPECT_TRUE(RunApart([&] {
            ArchiveFile archive;
            if (!archive.Load(path)) return false;
            archive.buffer.Assign(fresh);
            return LimitFileSize(row.limit) && !archive.WriteBack() && archive.IsOpen();
        }));
        EXPECT_EQ(OnDisk(),
                  fresh.substr(0, row.limit) + old.substr(std::min(row.limit, old.size())));
    }
}

TEST_F(ArchiveOnDisk, IsWrittenWholeUpToTheVeryLimit) {
    Put(std::string(5000, 'o'));
    EXPECT_TRUE(RunApart([&] {
        ArchiveFile archive;
        if (!archive.Load(path)) return false;
        archive.buffer.Assign(std::string(3000, 'n'));
        return LimitFileSize(3000) && archive.WriteBack();
    }));
    EXPECT_EQ(OnDisk(), std::string(3000, 'n'));
}

TEST_F(ArchiveOnDisk, KeepsTheStartOfItsPreambleWhereTheDiskIsFull) {
    EXPECT_TRUE(RunApart([&] {
        if (!LimitFileSize(10)) return false;
        PrepareArchive(path);
        return true;
    }));
    EXPECT_EQ(OnDisk(), "do not mod");
    PrepareArchive(path);
    EXPECT_EQ(OnDisk(), "do not mod");
}

}  // namespace
}  // namespace orvane
