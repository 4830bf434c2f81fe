#include "tests/support/sheet_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace orvane::test {

namespace fs = std::filesystem;

std::string ReadAll(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<std::string> NamesWith(const fs::path& folder, std::string_view extension) {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == extension) names.push_back(entry.path().stem().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace orvane::test
