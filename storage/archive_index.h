#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The index of a folder that holds an archive: JSON for people and for version control, with one
// line for each sheet.

namespace orvane {

inline constexpr std::string_view archiveIndexFile = "index.json";

// All texts are UTF-8, whatever form the sheets have.
struct ArchiveIndex {
    struct Entry {
        std::string file;  // relative to the folder, parts set apart by slashes
        std::string name;
        // The sheet was in an archive with bytes that a new one may not hold.
        bool isUnusual = false;
    };
    bool isRaw = false;  // the sheets' files hold the stored bytes
    std::string preamble;
    std::vector<Entry> sheets;
    std::string rest;
};

std::string IndexText(const ArchiveIndex& index);

// Nothing, with the reason, where the text is damaged, is something else's, or names a file that
// is not in the folder or below it. The reason goes on where the file's name stands.
std::optional<ArchiveIndex> ReadIndex(std::string_view json, std::string& reason);

}  // namespace orvane
