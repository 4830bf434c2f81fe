#include "tests/cli/archive_checks.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <iterator>
#include <utility>

namespace orvane::test {

namespace {

// When the file was written last, and which file it is.
std::vector<long> StampOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return {};
    return {static_cast<long>(status.st_ino), static_cast<long>(status.st_mtim.tv_sec),
            static_cast<long>(status.st_mtim.tv_nsec)};
}

std::string Replaced(std::string_view from, std::string_view to, std::string_view text) {
    std::string result(text);
    for (std::size_t at = 0; at < from.size(); ++at) {
        std::replace(result.begin(), result.end(), from[at], to[at]);
    }
    return result;
}

constexpr std::string_view shownMarks = "<>#";
constexpr std::string_view storedMarks("\xB6\xE6\0", 3);

}  // namespace

std::string ArchiveBytes(std::string_view shown) {
    return Replaced(shownMarks, storedMarks, shown);
}

std::string ShownArchive(std::string_view bytes) {
    return Replaced(storedMarks, shownMarks, bytes);
}

std::string ReadBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

ShortFiles::ShortFiles(rlim_t size) {
    EXPECT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    // Without the signal, writing fails as it does on a full disk.
    signalBefore = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit = {size, before.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

ShortFiles::~ShortFiles() {
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, signalBefore);
}

ArchiveFolder::ArchiveFolder(std::string_view shown) {
    folder.Write("user.file", ArchiveBytes(shown));
}

ToolResult ArchiveFolder::Run(const std::string& command, std::vector<std::string> words,
                              std::string_view input) const {
    // Options may stand anywhere; behind "--" every word is the archive or a name.
    std::vector<std::string> arguments = {"archive", command};
    const auto end = std::find(words.begin(), words.end(), "--");
    const auto place = end == words.end() ? words.begin() : end + 1;
    words.insert(place, Archive());
    arguments.insert(arguments.end(), words.begin(), words.end());
    return RunTool(std::move(arguments), input);
}

std::string ArchiveFolder::Done(const std::string& command, std::vector<std::string> words,
                                std::string_view input) const {
    const ToolResult result = Run(command, std::move(words), input);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.error, "");
    return result.output;
}

void ArchiveFolder::ExpectRefused(int status, const std::vector<std::string>& said,
                                  const std::string& command, std::vector<std::string> words,
                                  std::string_view input) const {
    const std::string before = ReadBytes(Archive());
    const std::vector<long> stamp = StampOf(Archive());
    const ToolResult result = Run(command, std::move(words), input);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.error.starts_with("orvane-cli: ")) << result.error;
    EXPECT_TRUE(result.error.ends_with("\n")) << result.error;
    if (status == 1) {
        EXPECT_EQ(std::count(result.error.begin(), result.error.end(), '\n'), 1) << result.error;
    }
    for (const std::string& words : said) {
        EXPECT_NE(result.error.find(words), std::string::npos)
            << "'" << words << "' is not in: " << result.error;
    }
    EXPECT_EQ(ReadBytes(Archive()), before);
    EXPECT_EQ(StampOf(Archive()), stamp);
}

}  // namespace orvane::test
