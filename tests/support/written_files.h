#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

// What a program has left on disk.

namespace orvane::test {

// A file that is not there fails the test.
inline std::string BytesOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

// The names in a folder.
inline std::set<std::string> FilesOf(const std::string& folder) {
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files.insert(entry.path().filename().string());
    }
    return files;
}

}  // namespace orvane::test
