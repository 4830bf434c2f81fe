#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/fuzzed_bytes.h"
#include "storage/file_bytes.h"

// Feeds a target with files and with all files of folders, in the order of their names. No fuzzer
// is needed for it, so every compiler builds it and every test run does it.

namespace orvane::fuzz {

namespace {

std::vector<std::string> FilesOf(const char* path) {
    if (!std::filesystem::is_directory(path)) return {path};
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) files.push_back(entry.path().string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// The bytes stand in room of exactly their size, so that a sanitizer sees a step beyond them.
bool Replay(const std::string& path) {
    std::string reason;
    const std::optional<std::string> bytes = ReadFile(path, reason);
    if (!bytes) {
        std::fprintf(stderr, "%s: %s\n", path.c_str(), reason.c_str());
        return false;
    }
    std::fprintf(stderr, "%s\n", path.c_str());
    const std::vector<std::uint8_t> exact(bytes->begin(), bytes->end());
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
    return true;
}

int Run(int count, char** words) {
    std::size_t replayed = 0;
    for (int at = 1; at < count; ++at) {
        for (const std::string& path : FilesOf(words[at])) {
            if (!Replay(path)) return 1;
            ++replayed;
        }
    }
    std::fprintf(stderr, "%zu files\n", replayed);
    return replayed == 0 ? 1 : 0;  // a corpus that went away is no corpus without a fault
}

}  // namespace

}  // namespace orvane::fuzz

int main(int count, char** words) { return orvane::fuzz::Run(count, words); }
