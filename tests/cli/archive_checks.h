#pragma once

#include <sys/resource.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/cli/tool_checks.h"

// What the tests of the commands for archives share.

namespace orvane::test {

// '<' for a name mark, '>' for a text mark and '#' for a NUL, so that archives can be written down.
std::string ArchiveBytes(std::string_view shown);
std::string ShownArchive(std::string_view bytes);

std::string ReadBytes(const std::string& path);

// While it lives, no file that a tool writes gets longer than this, as on a disk that is full.
class ShortFiles {
public:
    explicit ShortFiles(rlim_t size);
    ShortFiles(const ShortFiles&) = delete;
    ShortFiles& operator=(const ShortFiles&) = delete;
    ~ShortFiles();

private:
    rlimit before = {};
    void (*signalBefore)(int) = nullptr;
};

// A folder with an archive in it.
class ArchiveFolder {
public:
    explicit ArchiveFolder(std::string_view shown = "p<a>1;<b>2;<c>");

    std::string Archive() const { return folder.Path() + "/user.file"; }
    std::string Shown() const { return ShownArchive(ReadBytes(Archive())); }
    const std::string& Path() const { return folder.Path(); }
    std::string Write(std::string_view name, std::string_view bytes) const {
        return folder.Write(name, bytes);
    }

    // archive COMMAND with this archive in front of the words.
    ToolResult Run(const std::string& command, std::vector<std::string> words = {},
                   std::string_view input = {}) const;
    // The same, and nothing is said; gives the standard output.
    std::string Done(const std::string& command, std::vector<std::string> words = {},
                     std::string_view input = {}) const;
    // The same, and it is refused with this status and one line that holds all of the words; the
    // archive stays as it is and is not even written.
    void ExpectRefused(int status, const std::vector<std::string>& said, const std::string& command,
                       std::vector<std::string> words = {}, std::string_view input = {}) const;

private:
    TemporaryFolder folder;
};

}  // namespace orvane::test
