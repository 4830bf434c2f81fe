#include "storage/file_bytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace orvane {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

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
    const OpenFile file(std::tmpfile());
    ASSERT_TRUE(file);
    std::string reason;
    ASSERT_TRUE(WriteStream(file.get(), written, reason)) << reason;
    std::rewind(file.get());
    EXPECT_EQ(ReadStream(file.get(), reason), written);
}

TEST(ReadStream, GivesNoBytesOfAnEmptyFile) {
    const OpenFile file(std::tmpfile());
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
    const OpenFile full(std::fopen("/dev/full", "wb"));
    ASSERT_TRUE(full);
    std::string reason;
    EXPECT_FALSE(WriteStream(full.get(), "text", reason));
    EXPECT_EQ(reason, "No space left on device");
}

}  // namespace
}  // namespace orvane
