#include "storage/file_bytes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

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

TEST(WriteStream, TellsThatADeviceIsFull) {
    const OpenFile full(std::fopen("/dev/full", "wb"));
    ASSERT_TRUE(full);
    std::string reason;
    EXPECT_FALSE(WriteStream(full.get(), "text", reason));
    EXPECT_EQ(reason, "No space left on device");
}

}  // namespace
}  // namespace orvane
