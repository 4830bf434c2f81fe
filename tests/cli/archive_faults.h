#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/cli/archive_checks.h"
#include "tests/support/watched_process.h"

// What the tests that trouble a save of an archive share: an archive of some pieces, and every
// command that saves it.

namespace orvane::test {

// A sheet whose text tells whose it is in every line, so that a piece of another one shows.
struct MarkedSheet {
    std::string name;
    std::string text;
};
MarkedSheet SheetOfLength(const std::string& name, std::size_t length);

// Several pieces of the 1024 bytes in which an archive is written.
std::vector<MarkedSheet> FiveSheets();
std::string BytesOfSheets(const std::vector<MarkedSheet>& sheets);

// One command that saves. The words stand behind the archive; "DIR" is a folder to import.
struct Saving {
    std::string_view what;
    std::vector<std::string> command;
    std::string input;
    std::vector<std::string> changed;  // the sheets that it is about

    friend void PrintTo(const Saving& saving, std::ostream* stream) { *stream << saving.what; }
};
const std::vector<Saving>& AllSavings();

// A folder with the archive of the five sheets. What it imports lies elsewhere, so that faults in
// the folder befall the archive alone.
class SavedArchive {
public:
    SavedArchive();

    const std::string& Path() const { return folder.Path(); }
    std::string Archive() const { return folder.Archive(); }
    std::string Bytes() const { return ReadBytes(Archive()); }
    const std::string& Old() const { return old; }
    void Put(std::string_view bytes) const { folder.Write("user.file", bytes); }

    // The command with its words and its input.
    ToolRun RunOf(const Saving& saving) const;
    ToolResult Save(const Saving& saving, const std::optional<Fault>& fault = {}) const;
    // What the archive holds behind an undisturbed save; it is put back as it was.
    std::string FreshBytes(const Saving& saving) const;
    // The fault, told of this folder.
    Fault Here(Fault fault) const;

private:
    ArchiveFolder folder;
    TemporaryFolder imported;
    std::string old;
};

// The head of the new content over the old tail, as a write in place leaves it when it ends there.
std::string HeadOverTail(std::string_view fresh, std::string_view old, std::size_t written);

// Where the pieces end in which an archive is written.
std::size_t PieceEnd(std::size_t length, int pieces);
int PiecesOf(std::size_t length);

// Tests that watch processes. Where the system does not let them they are skipped, and say so.
class WatchedSaving : public testing::TestWithParam<Saving> {
protected:
    void SetUp() override {
        if (!CanWatch()) GTEST_SKIP() << "this system lets no program watch another one's calls";
    }
};
std::string NameOfSaving(const testing::TestParamInfo<Saving>& info);

}  // namespace orvane::test
