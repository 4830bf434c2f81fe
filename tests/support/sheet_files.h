#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Folders of sheets and of their expected reports, for the tests that run whole sheets.

namespace orvane::test {

// All bytes of a file. Where it cannot be opened the running test fails, and the text is empty.
std::string ReadAll(const std::filesystem::path& path);

// The names of the files in a folder with this extension, such as ".sheet", without it, in order.
std::vector<std::string> NamesWith(const std::filesystem::path& folder, std::string_view extension);

}  // namespace orvane::test
