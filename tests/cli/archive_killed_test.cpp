#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>

#include "storage/archive.h"
#include "storage/archive_file.h"
#include "tests/cli/archive_faults.h"

// A command that is killed while it saves an archive: in front of each of its calls that change the
// disk, and in the middle of each. The archive then is the head of the new one over the tail of the
// old one. All sheets that stand whole on one side of the seam can be read, and going on works.

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

struct Place {
    std::size_t from = 0;
    std::size_t to = 0;
};

// Where each sheet stands, of an archive that is known to be whole.
std::map<std::string, Place> PlacesIn(std::string_view bytes) {
    std::map<std::string, Place> places;
    std::size_t from = bytes.find(nameMark);
    while (from < bytes.size()) {
        const std::size_t name = from + 1;
        const std::size_t mark = bytes.find(textMark, name);
        const std::size_t to = std::min(bytes.find(nameMark, mark), bytes.size());
        places[std::string(bytes.substr(name, mark - name))] = {from, to};
        from = to;
    }
    return places;
}

// Whether the sheet is as it was where only the first `seam` bytes got there.
bool MustBeReadable(const Place& fresh, const Place& old, std::size_t seam,
                    std::string_view bytes) {
    if (fresh.from == old.from && fresh.to == old.to) return true;
    if (fresh.to < seam) return true;
    if (fresh.to == seam && (seam == bytes.size() || bytes[seam] == nameMark)) return true;
    // Where its name got there too, that one is found first.
    return old.from >= seam && fresh.from >= seam;
}

// Whether the head ends in a name: the sheet behind the seam is then not listed by its own name.
bool EndsInName(std::string_view head) {
    const std::size_t name = head.rfind(nameMark);
    return name != head.npos && head.find(textMark, name) == head.npos;
}

// One save, killed wherever it can be.
class KilledSave {
public:
    explicit KilledSave(const Saving& what) : saving(what), fresh(archive.FreshBytes(what)) {}

    void KillEverywhere(Fault::Kind kind) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(at);
            archive.Put(archive.Old());
            const ToolResult result = archive.Save(saving, Fault{.kind = kind, .at = at});
            if (!result.watched.isReached) {
                EXPECT_EQ(result.status, 0);
                EXPECT_EQ(archive.Bytes(), fresh);
                // All pieces, the end of the file, and what closing does.
                EXPECT_GT(at, PiecesOf(fresh.size()) + 1);
                return;
            }
            EXPECT_EQ(result.status, -1);
            EXPECT_EQ(result.output, "");
            const std::size_t seam = Written(at, kind == Fault::Kind::killHalfway);
            const bool hasEnd = HasEnd(at, kind == Fault::Kind::killHalfway);
            const std::string left = hasEnd ? fresh : HeadOverTail(fresh, archive.Old(), seam);
            ASSERT_TRUE(archive.Bytes() == left) << seam;
            ExpectReadable(left, hasEnd ? fresh.size() : seam);
            ExpectGoesOn(left);
            if (testing::Test::HasFailure()) return;
        }
    }

private:
    std::size_t Written(int at, bool isHalf) const {
        const std::size_t done = PieceEnd(fresh.size(), at - 1);
        return isHalf ? done + (PieceEnd(fresh.size(), at) - done) / 2 : done;
    }
    bool HasEnd(int at, bool isHalf) const {
        return (isHalf ? at : at - 1) > PiecesOf(fresh.size());
    }

    void ExpectReadable(const std::string& left, std::size_t seam) const {
        const auto freshPlaces = PlacesIn(fresh);
        const auto oldPlaces = PlacesIn(archive.Old());
        TextBuffer buffer;
        buffer.Assign(left);
        const Names listed = ListNames(buffer);
        for (const MarkedSheet& sheet : FiveSheets()) {
            const Names& changed = saving.changed;
            if (std::find(changed.begin(), changed.end(), sheet.name) != changed.end()) continue;
            if (!MustBeReadable(freshPlaces.at(sheet.name), oldPlaces.at(sheet.name), seam, left)) {
                continue;
            }
            EXPECT_EQ(ReadSheetText(buffer, sheet.name), sheet.text) << sheet.name;
            if (EndsInName(std::string_view(left).substr(0, seam))) continue;
            EXPECT_NE(std::find(listed.begin(), listed.end(), sheet.name), listed.end());
        }
    }

    // The commands and the desktop program take what is left for an archive like any other.
    void ExpectGoesOn(const std::string& left) const {
        TextBuffer buffer;
        buffer.Assign(left);
        std::string names;
        for (const std::string& name : ListNames(buffer)) names += name + "\n";
        EXPECT_EQ(OutputOf({"archive", "list", archive.Archive(), "--raw"}, ""), names);
        PrepareArchive(archive.Archive());
        EXPECT_TRUE(archive.Bytes() == left);
        OutputOf({"archive", "add", archive.Archive(), "afterwards"}, "text:still here;");
        EXPECT_EQ(OutputOf({"archive", "show", archive.Archive(), "afterwards"}, ""),
                  "text:still here;");
        buffer.Assign(archive.Bytes());
        TextBuffer before;
        before.Assign(left);
        for (const std::string& name : ListNames(before)) {
            EXPECT_EQ(ReadSheetText(buffer, name), ReadSheetText(before, name)) << name;
        }
    }

    const Saving& saving;
    SavedArchive archive;
    const std::string fresh;
};

class ArchiveKilled : public WatchedSaving {};

TEST_P(ArchiveKilled, InFrontOfAWriteHoldsTheNewHeadOverTheOldTail) {
    KilledSave(GetParam()).KillEverywhere(Fault::Kind::killBefore);
}

TEST_P(ArchiveKilled, InTheMiddleOfAWriteHoldsTheNewHeadOverTheOldTail) {
    KilledSave(GetParam()).KillEverywhere(Fault::Kind::killHalfway);
}

INSTANTIATE_TEST_SUITE_P(Savings, ArchiveKilled, testing::ValuesIn(AllSavings()), NameOfSaving);

// A folder with these sheets in it, as an export writes it.
void ExportSheets(const SavedArchive& archive, const std::string& folder) {
    OutputOf({"archive", "export", archive.Archive(), folder}, "");
}

// The archive was not there: what a killed import leaves of it another one completes.
TEST(ArchiveKilledImport, IsCompletedByTheNextOne) {
    if (!CanWatch()) GTEST_SKIP() << "this system lets no program watch another one's calls";
    const SavedArchive archive;
    ExportSheets(archive, archive.Path() + "/out");
    const std::string made = archive.Path() + "/made";
    const std::vector<std::string> words = {"archive", "import", made, archive.Path() + "/out"};
    for (const auto kind : {Fault::Kind::killBefore, Fault::Kind::killHalfway}) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(at);
            fs::remove(made);
            const ToolResult killed =
                RunTool({.arguments = words, .fault = archive.Here({.kind = kind, .at = at})});
            if (!killed.watched.isReached) {
                EXPECT_EQ(killed.status, 0);
                EXPECT_EQ(ReadBytes(made), archive.Old());
                break;
            }
            if (fs::exists(made)) {
                EXPECT_TRUE(archive.Old().starts_with(ReadBytes(made)));
                OutputOf({"archive", "list", made}, "");
            }
            OutputOf(words, "");
            for (const MarkedSheet& sheet : FiveSheets()) {
                EXPECT_EQ(OutputOf({"archive", "show", made, sheet.name}, ""), sheet.text);
            }
            ASSERT_FALSE(HasFailure());
        }
    }
}

// There is no index or a whole one at any time, and the archive never changes.
TEST(ArchiveKilledExport, CanBeDoneAgain) {
    if (!CanWatch()) GTEST_SKIP() << "this system lets no program watch another one's calls";
    const SavedArchive archive;
    const std::string out = archive.Path() + "/out";
    for (const auto kind : {Fault::Kind::killBefore, Fault::Kind::killHalfway}) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(at);
            fs::remove_all(out);
            archive.Put(BytesOfSheets({SheetOfLength("first", 3000), SheetOfLength("other", 10)}));
            if (at % 2 == 0) ExportSheets(archive, out);
            archive.Put(archive.Old());
            const ToolResult killed =
                RunTool({.arguments = {"archive", "export", archive.Archive(), out},
                         .fault = archive.Here({.kind = kind, .at = at})});
            EXPECT_EQ(archive.Bytes(), archive.Old());
            ExportSheets(archive, out);
            const std::string made = archive.Path() + "/made";
            OutputOf({"archive", "import", made, out}, "");
            EXPECT_EQ(ReadBytes(made), archive.Old());
            fs::remove(made);
            ASSERT_FALSE(HasFailure());
            if (killed.watched.isReached) continue;
            EXPECT_EQ(killed.status, 0);
            EXPECT_GT(at, 12);
            break;
        }
    }
}

}  // namespace
}  // namespace orvane::test
