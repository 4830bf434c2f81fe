#include "storage/file_bytes.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <optional>
#include <utility>
#include <vector>

namespace orvane {
namespace {

TEST(ReadFile, GivesTheReasonForAFileThatIsNotThere) {
    std::string reason;
    EXPECT_FALSE(ReadFile("/nonexistent/sheet", reason));
    EXPECT_EQ(reason, "No such file or directory");
}

TEST(ReadFile, GivesTheReasonForAFolder) {
    std::string reason;
    EXPECT_FALSE(ReadFile(std::filesystem::temp_directory_path().string(), reason));
    EXPECT_EQ(reason, "Is a directory");
}

TEST(ReadStream, GivesEveryByteOfAFile) {
    std::string written;
    for (int at = 0; at < 200'000; ++at) written += static_cast<char>(at * 7);
    const OwnedFile file(std::tmpfile());
    ASSERT_TRUE(file);
    std::string reason;
    ASSERT_TRUE(WriteStream(file.get(), written, reason)) << reason;
    std::rewind(file.get());
    EXPECT_EQ(ReadStream(file.get(), reason), written);
}

TEST(ReadStream, ReadsNoFurtherThanIsEnough) {
    constexpr std::size_t enough = 1'000'000;
    std::string reason;
    const OwnedFile endless(std::fopen("/dev/zero", "rb"));
    ASSERT_TRUE(endless);
    const std::optional<std::string> start = ReadStream(endless.get(), reason, enough);
    ASSERT_TRUE(start);
    EXPECT_GT(start->size(), enough);
    EXPECT_LT(start->size(), enough + 100'000);
    EXPECT_EQ(ReadFile("/dev/zero", reason, enough), start);
}

TEST(ReadStream, GivesNoBytesOfAnEmptyFile) {
    const OwnedFile file(std::tmpfile());
    ASSERT_TRUE(file);
    std::string reason;
    EXPECT_EQ(ReadStream(file.get(), reason), "");
}

// Pieces of a file, and then the end.
NextPiece PiecesOf(std::vector<std::string> pieces) {
    return [pieces = std::move(pieces), at = std::size_t{0}]() mutable {
        return at < pieces.size() ? pieces[at++] : std::string();
    };
}

TEST(WriteFile, PutsThePiecesBehindEachOther) {
    const std::string path =
        (std::filesystem::temp_directory_path() / "orvane_file_bytes_test").string();
    std::string reason;
    ASSERT_TRUE(WriteFile(path, PiecesOf({"longer ", "than the next"}), reason)) << reason;
    ASSERT_TRUE(WriteFile(path, PiecesOf({"a\n", std::string("\0b", 2)}), reason)) << reason;
    EXPECT_EQ(ReadFile(path, reason), std::string("a\n\0b", 4));
    std::filesystem::remove(path);
}

TEST(WriteFile, TellsWhatIsInItsWay) {
    std::string reason;
    EXPECT_FALSE(WriteFile("/nonexistent/file", PiecesOf({"a"}), reason));
    EXPECT_EQ(reason, "No such file or directory");
    EXPECT_FALSE(WriteFile("/dev/full", PiecesOf({"a"}), reason));
    EXPECT_EQ(reason, "No space left on device");
    EXPECT_FALSE(WriteFile("/dev/full", PiecesOf({std::string(1 << 20, 'a')}), reason));
    EXPECT_EQ(reason, "No space left on device");
}

TEST(MakeFolder, MakesThoseAboveItAndTakesOneThatIsThere) {
    const auto top = std::filesystem::temp_directory_path() / "orvane_make_folder_test";
    std::string reason;
    ASSERT_TRUE(MakeFolder((top / "a" / "b").string(), reason)) << reason;
    EXPECT_TRUE(std::filesystem::is_directory(top / "a" / "b"));
    EXPECT_TRUE(MakeFolder((top / "a").string(), reason)) << reason;
    std::filesystem::remove_all(top);
}

TEST(MakeFolder, TellsWhatIsInItsWay) {
    std::string reason;
    EXPECT_FALSE(MakeFolder("/dev/null/a", reason));
    EXPECT_EQ(reason, "Not a directory");
}

TEST(WriteStream, TellsThatADeviceIsFull) {
    const OwnedFile full(std::fopen("/dev/full", "wb"));
    ASSERT_TRUE(full);
    std::string reason;
    EXPECT_FALSE(WriteStream(full.get(), "text", reason));
    EXPECT_EQ(reason, "No space left on device");
}

// A file of a test, removed with it.
class OpenedFileTest : public testing::Test {
protected:
    OpenedFileTest() { std::filesystem::remove(path); }
    ~OpenedFileTest() override { std::filesystem::remove(path); }

    OpenedFile Opened(FileUse use) {
        std::optional<OpenedFile> file = OpenedFile::Open(path, use);
        EXPECT_TRUE(file);
        return std::move(*file);
    }
    std::string OnDisk() {
        std::string reason;
        return ReadFile(path, reason).value_or("unreadable: " + reason);
    }

    const std::string path =
        (std::filesystem::temp_directory_path() /
         ("orvane_opened_file_test_" +
          std::string(testing::UnitTest::GetInstance()->current_test_info()->name())))
            .string();
};

TEST_F(OpenedFileTest, IsMadeOnlyWhenAskedTo) {
    EXPECT_FALSE(OpenedFile::Open(path, FileUse::readWrite));
    EXPECT_FALSE(OpenedFile::Open(path, FileUse::readWriteOrRead));
    EXPECT_FALSE(std::filesystem::exists(path));
    Opened(FileUse::createAnew).Write(0, "text");
    EXPECT_EQ(OnDisk(), "text");
    Opened(FileUse::readWrite);
    EXPECT_EQ(OnDisk(), "text");
    Opened(FileUse::createAnew);
    EXPECT_EQ(OnDisk(), "");
}

TEST_F(OpenedFileTest, WritesAndReadsAnywhere) {
    OpenedFile file = Opened(FileUse::createAnew);
    EXPECT_EQ(file.Write(0, "0123456789"), 10U);
    EXPECT_EQ(file.Write(4, std::string("\0x", 2)), 2U);
    EXPECT_EQ(OnDisk(), std::string("0123\0x6789", 10));
    EXPECT_EQ(file.Size(), 10U);
    std::string bytes = "old";
    EXPECT_TRUE(file.Read(6, 100, bytes));
    EXPECT_EQ(bytes, "6789");
    EXPECT_TRUE(file.Read(2, 3, bytes));
    EXPECT_EQ(bytes, std::string("23\0", 3));
    EXPECT_TRUE(file.Read(10, 5, bytes));
    EXPECT_EQ(bytes, "");
    EXPECT_TRUE(file.Read(1000, 5, bytes));
    EXPECT_EQ(bytes, "");
}

TEST_F(OpenedFileTest, IsCutAndExtended) {
    OpenedFile file = Opened(FileUse::createAnew);
    file.Write(0, "0123456789");
    EXPECT_TRUE(file.SetEnd(3));
    EXPECT_EQ(OnDisk(), "012");
    EXPECT_TRUE(file.SetEnd(5));
    EXPECT_EQ(OnDisk(), std::string("012\0\0", 5));
    EXPECT_FALSE(file.SetEnd(~std::uint64_t{0}));
    EXPECT_EQ(file.Write(~std::uint64_t{0}, "a"), 0U);
}

TEST_F(OpenedFileTest, SeesWhatAnotherProgramWroteMeanwhile) {
    OpenedFile file = Opened(FileUse::createAnew);
    file.Write(0, "first");
    OpenedFile other = Opened(FileUse::readWrite);
    other.Write(5, " second");
    std::string bytes;
    EXPECT_TRUE(file.Read(0, 100, bytes));
    EXPECT_EQ(bytes, "first second");
}

TEST(OpenedFile, TakesOnlyPlainFiles) {
    for (const char* path : {"/dev/full", "/dev/zero", "/", "/nonexistent/file"}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(OpenedFile::Open(path, FileUse::readWrite));
        EXPECT_FALSE(OpenedFile::Open(path, FileUse::readWriteOrRead));
        EXPECT_FALSE(OpenedFile::Open(path, FileUse::createAnew));
    }
}

// A path of one test, which is gone afterwards.
class FreshPath {
public:
    FreshPath() { std::filesystem::remove_all(path); }
    ~FreshPath() { std::filesystem::remove_all(path); }
    FreshPath(const FreshPath&) = delete;
    FreshPath& operator=(const FreshPath&) = delete;

    const std::string path =
        (std::filesystem::temp_directory_path() / ("orvane_file_turn_" + std::to_string(getpid())))
            .string();
};

// Whether another program would get a turn at the file at once.
bool IsFree(const std::string& path, int turn) {
    const OwnedFile file(std::fopen(path.c_str(), "rb"));
    EXPECT_TRUE(file);
    return file && flock(fileno(file.get()), turn | LOCK_NB) == 0;
}

TEST(FileTurn, KeepsOthersWaitingUntilItEnds) {
    const FreshPath fresh;
    std::ofstream(fresh.path) << "bytes";
    struct Row {
        FileTurn::Use use;
        bool letsRead, letsWrite;
    };
    constexpr Row rows[] = {{FileTurn::Use::read, true, false},
                            {FileTurn::Use::write, false, false},
                            {FileTurn::Use::make, false, false}};
    for (const auto& [use, letsRead, letsWrite] : rows) {
        {
            const FileTurn turn(fresh.path, use);
            EXPECT_EQ(IsFree(fresh.path, LOCK_SH), letsRead);
            EXPECT_EQ(IsFree(fresh.path, LOCK_EX), letsWrite);
        }
        EXPECT_TRUE(IsFree(fresh.path, LOCK_EX));
    }
    std::string reason;
    EXPECT_EQ(ReadFile(fresh.path, reason), "bytes");
}

TEST(FileTurn, MakesAFileOnlyWhereOneIsToBeMade) {
    const FreshPath fresh;
    for (const FileTurn::Use use : {FileTurn::Use::read, FileTurn::Use::write}) {
        const FileTurn turn(fresh.path, use);
        EXPECT_FALSE(std::filesystem::exists(fresh.path));
    }
    const FileTurn turn(fresh.path, FileTurn::Use::make);
    EXPECT_TRUE(std::filesystem::is_empty(fresh.path));
    EXPECT_FALSE(IsFree(fresh.path, LOCK_SH));
}

// Opening a pipe would wait for somebody at its other end.
TEST(FileTurn, LeavesAloneWhatIsNoPlainFile) {
    const FreshPath fresh;
    ASSERT_EQ(mkfifo(fresh.path.c_str(), 0600), 0);
    for (const FileTurn::Use use :
         {FileTurn::Use::read, FileTurn::Use::write, FileTurn::Use::make}) {
        const FileTurn pipe(fresh.path, use);
        const FileTurn folder(std::filesystem::temp_directory_path().string(), use);
    }
    EXPECT_TRUE(std::filesystem::is_fifo(fresh.path));
}

}  // namespace
}  // namespace orvane
