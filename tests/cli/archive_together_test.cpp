#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

#include "storage/archive_parts.h"
#include "tests/cli/archive_faults.h"

// Archives that somebody else changes, moves or removes while a command works on them, and several
// commands on one archive at once.

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

// What a program that asks for no turn does to the archive.
struct Intruder {
    std::string_view what;
    std::function<void(const SavedArchive&)> act;
    bool isGone = false;  // there is no archive afterwards
};

std::string OtherBytes(std::size_t length) {
    return BytesOfSheets({SheetOfLength("first", 300), SheetOfLength("second", length),
                          SheetOfLength("fourth", 20), SheetOfLength("third", 20),
                          SheetOfLength("fifth", 20)});
}

void ReplaceByFolder(const SavedArchive& archive) {
    fs::remove(archive.Archive());
    fs::create_directory(archive.Archive());
}

void ReplaceByOther(const SavedArchive& archive) {
    const std::string other = archive.Path() + "/other";
    fs::copy_file(archive.Path() + "/other.file", other, fs::copy_options::overwrite_existing);
    fs::rename(other, archive.Archive());
}

const Intruder intruders[] = {
    {"removes it", [](const SavedArchive& archive) { fs::remove(archive.Archive()); }, true},
    {"puts a folder there", ReplaceByFolder, true},
    {"puts another archive there", ReplaceByOther},
    {"writes a shorter one", [](const SavedArchive& archive) { archive.Put(OtherBytes(50)); }},
    {"writes a longer one", [](const SavedArchive& archive) { archive.Put(OtherBytes(9000)); }},
    {"empties it", [](const SavedArchive& archive) { archive.Put(""); }},
};

class ArchiveIntruder : public WatchedSaving {
protected:
    void PutBack() const {
        fs::remove_all(archive.Archive());
        archive.Put(archive.Old());
        fs::copy_file(archive.Archive(), archive.Path() + "/other.file",
                      fs::copy_options::overwrite_existing);
    }
    ToolResult SaveWith(const Intruder& intruder, Fault fault) const {
        PutBack();
        fault.kind = Fault::Kind::meddle;
        fault.meanwhile = [&] { intruder.act(archive); };
        return archive.Save(GetParam(), fault);
    }

    SavedArchive archive;
    const std::string fresh = archive.FreshBytes(GetParam());
};

// Between reading and writing: the last one who writes wins, and wins whole.
TEST_P(ArchiveIntruder, LosesToTheLastWriter) {
    for (const Intruder& intruder : intruders) {
        SCOPED_TRACE(intruder.what);
        const ToolResult result = SaveWith(intruder, {.calls = Fault::Calls::changing, .at = 1});
        EXPECT_TRUE(result.watched.isReached);
        EXPECT_EQ(result.status, 0) << result.error;
        if (intruder.isGone) {
            EXPECT_FALSE(fs::is_regular_file(archive.Archive()));
        } else if (intruder.what == "puts another archive there") {
            // It is the other file that has this name now.
            EXPECT_TRUE(archive.Bytes() == archive.Old());
        } else {
            EXPECT_TRUE(archive.Bytes() == fresh);
        }
    }
}

// In front of every call that has to do with the archive.
TEST_P(ArchiveIntruder, NeverBringsTheCommandDown) {
    for (const Intruder& intruder : intruders) {
        SCOPED_TRACE(intruder.what);
        for (int at = 1;; ++at) {
            SCOPED_TRACE(at);
            const ToolResult result =
                SaveWith(intruder, {.calls = Fault::Calls::touching, .at = at});
            EXPECT_GE(result.status, 0) << result.error;
            EXPECT_LE(result.status, 2);
            EXPECT_EQ(result.error.empty(), result.status == 0) << result.error;
            if (result.status != 0) {
                EXPECT_EQ(result.output, "");
            }
            if (!result.watched.isReached) {
                EXPECT_TRUE(archive.Bytes() == fresh);
                break;
            }
            const bool isThere = fs::is_regular_file(archive.Archive());
            if (intruder.isGone && isThere) {
                // Only an import makes one, where it found none from the start.
                EXPECT_EQ(GetParam().what, "import");
                EXPECT_EQ(CutArchive(archive.Bytes()).sheets.size(), 2U);
            } else if (isThere && !result.watched.hadChanged && result.status == 0) {
                // Whichever of the two it read, what it wrote is whole.
                const std::string left = archive.Bytes();
                EXPECT_EQ(JoinArchive(CutArchive(left)), left);
                EXPECT_EQ(CutArchive(left).rest, "");
            }
            ASSERT_FALSE(HasFailure());
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Savings, ArchiveIntruder, testing::ValuesIn(AllSavings()), NameOfSaving);

// Until the process has ended, which it should not, or somebody waits for a turn at the file.
bool ComesToWait(pid_t process, const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return false;
    std::string inode = ":";
    inode.append(std::to_string(status.st_ino)).append(" ");
    while (waitpid(process, nullptr, WNOHANG) == 0) {
        std::ifstream locks("/proc/locks");
        for (std::string line; std::getline(locks, line);) {
            const bool waits = line.find("-> FLOCK") != line.npos;
            if (waits && line.find(inode) != line.npos) return true;
        }
    }
    return false;
}

bool EndsWell(pid_t process) {
    int status = -1;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// While the first command is held up in front of its call `at` that changes a disk, the second one
// is started. It comes to wait, and ends well when the first one has ended.
void ExpectWaits(const SavedArchive& archive, const std::string& path,
                 const std::vector<std::string>& first, int at, const ToolRun& second,
                 const std::string& output) {
    pid_t process = -1;
    const auto startSecond = [&] {
        process = fork();
        if (process == 0) {
            const ToolResult result = RunTool(second);
            _exit(result.status == 0 && result.output == output ? 0 : 1);
        }
        EXPECT_TRUE(ComesToWait(process, path));
    };
    Fault fault{.kind = Fault::Kind::meddle, .at = at, .meanwhile = startSecond};
    const ToolResult result =
        RunTool({.arguments = first, .input = "1;", .fault = archive.Here(fault)});
    EXPECT_TRUE(result.watched.isReached);
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_TRUE(EndsWell(process));
}

class ArchiveTurn : public testing::Test {
protected:
    void SetUp() override {
        if (!CanWatch()) GTEST_SKIP() << "this system lets no program watch another one's calls";
    }
};

TEST_F(ArchiveTurn, ComesBehindTheCommandThatIsWriting) {
    const SavedArchive archive;
    const std::string path = archive.Archive();
    const std::string out = archive.Path() + "/out";
    struct Row {
        std::vector<std::string> arguments;
        std::string output;
    };
    const Row rows[] = {
        {{"archive", "list", path}, "first\nsecond\nthird\nfourth\nfifth\nnew\n"},
        {{"archive", "show", path, "new"}, "1;"},
        {{"calc", "--archive", path, "new"}, "+1 \t\n"},
        {{"archive", "export", path, out}, out + ": 6 sheets\n"},
        {{"archive", "add", path, "other"}, ""},
        {{"archive", "delete", path, "new"}, ""},
        {{"archive", "move-up", path, "new"}, ""},
    };
    for (const auto& [arguments, output] : rows) {
        for (const int at : {1, 3}) {
            SCOPED_TRACE(testing::PrintToString(arguments));
            archive.Put(archive.Old());
            std::filesystem::remove_all(out);
            ExpectWaits(archive, path, {"archive", "add", path, "new"}, at,
                        {.arguments = arguments, .input = "2;"}, output);
        }
    }
    EXPECT_EQ(OutputOf({"archive", "list", path}, ""),
              "first\nsecond\nthird\nfourth\nnew\nfifth\n");
}

TEST_F(ArchiveTurn, ComesBehindTheCommandThatIsMakingTheArchive) {
    const SavedArchive archive;
    const std::string out = archive.Path() + "/out";
    OutputOf({"archive", "export", archive.Archive(), out}, "");
    const std::string made = archive.Path() + "/made";
    // Its turn at the file begins with the first call, which makes it.
    for (const int at : {2, 3, 5}) {
        SCOPED_TRACE(at);
        fs::remove(made);
        const std::vector<std::string> words = {"archive", "import", made, out};
        ExpectWaits(archive, made, words, at, {.arguments = words},
                    made + ": 0 sheets added, 5 replaced\n");
        EXPECT_EQ(ReadBytes(made), archive.Old());
    }
}

// Does each piece of work in a process of its own, all at once; whether all of them were well.
bool RunTogether(const std::vector<std::function<bool()>>& works) {
    std::vector<pid_t> processes;
    for (const auto& work : works) {
        const pid_t process = fork();
        if (process == 0) _exit(work() && !testing::Test::HasFailure() ? 0 : 1);
        processes.push_back(process);
    }
    bool areWell = true;
    for (const pid_t process : processes) areWell = EndsWell(process) && areWell;
    return areWell;
}

// A sheet that tells by its name alone how its text goes.
MarkedSheet NumberedSheet(int worker, int round) {
    const auto length = static_cast<std::size_t>((worker * 37 + round * 101) % 23 * 97);
    std::string name = "w";
    name.append(std::to_string(worker)).append("r").append(std::to_string(round));
    return SheetOfLength(name, length);
}

constexpr int rounds = 15;

// Adds a sheet in each round, and deletes, renames or moves one that it added before.
bool WriteOften(const ArchiveFolder& folder, int worker) {
    for (int round = 0; round < rounds; ++round) {
        const MarkedSheet sheet = NumberedSheet(worker, round);
        folder.Done("add", {sheet.name}, sheet.text + "-");
        folder.Done("replace", {sheet.name}, sheet.text);
        if (round % 3 == 1) folder.Done("delete", {NumberedSheet(worker, round - 1).name});
        if (round % 3 == 2) folder.Done("move-up", {sheet.name});
    }
    return true;
}

bool IsSound(const ArchiveParts& parts) {
    if (!parts.rest.empty()) return false;
    std::set<std::string> names;
    for (const ArchiveParts::Sheet& sheet : parts.sheets) {
        const int worker = sheet.name[1] - '0';
        const int round = std::stoi(sheet.name.substr(3));
        const std::string whole = NumberedSheet(worker, round).text;
        if (sheet.text != whole && sheet.text != whole + "-") return false;
        if (!names.insert(sheet.name).second) return false;
    }
    return true;
}

// Every look at the archive shows one of its states, none halfway.
bool ReadOften(const ArchiveFolder& folder) {
    for (int round = 0; round < rounds; ++round) {
        const std::string number = std::to_string(round);
        const std::string out = folder.Path() + "/out" + number;
        const std::string copy = folder.Path() + "/copy" + number;
        folder.Done("export", {out});
        OutputOf({"archive", "import", copy, out}, "");
        const ArchiveParts parts = CutArchive(ReadBytes(copy));
        EXPECT_TRUE(parts.preamble == "p" && IsSound(parts)) << ShownArchive(ReadBytes(copy));
    }
    return true;
}

TEST(ArchiveTogether, KeepsWhatEachOfManyCommandsDid) {
    const ArchiveFolder folder("p");
    std::vector<std::function<bool()>> works = {[&] { return ReadOften(folder); }};
    for (int worker = 0; worker < 3; ++worker) {
        works.push_back([&folder, worker] { return WriteOften(folder, worker); });
    }
    EXPECT_TRUE(RunTogether(works));
    std::set<std::string> wanted;
    for (int worker = 0; worker < 3; ++worker) {
        for (int round = 0; round < rounds; ++round) {
            const bool isDeleted = round % 3 == 0 && round + 1 < rounds;
            if (!isDeleted) wanted.insert(NumberedSheet(worker, round).name);
        }
    }
    const ArchiveParts parts = CutArchive(ReadBytes(folder.Archive()));
    EXPECT_TRUE(parts.preamble == "p" && IsSound(parts));
    std::set<std::string> found;
    for (const ArchiveParts::Sheet& sheet : parts.sheets) found.insert(sheet.name);
    EXPECT_EQ(found, wanted);
}

// Who comes second finds the archive that the first one made, be it empty still: then the folder's
// preamble is left out, as it is for every archive that is there.
TEST(ArchiveTogether, MakesOneArchiveOfTwoImports) {
    const ArchiveFolder folder;
    std::vector<std::string> folders;
    for (const int worker : {0, 1}) {
        const MarkedSheet sheet = NumberedSheet(worker, 9);
        const std::string name = worker == 0 ? "in0" : "in1";
        fs::create_directory(folder.Path() + "/" + name);
        folder.Write(name + "/index.json",
                     R"({"orvane_archive": 1, "texts": "utf-8", "preamble": "p", "sheets": )"
                     R"([{"file": "s", "name": ")" +
                         sheet.name + R"("}], "rest": ""})");
        folder.Write(name + "/s", sheet.text);
        folders.push_back(folder.Path() + "/" + name);
    }
    const std::string made = folder.Path() + "/made";
    for (int round = 0; round < 2 * rounds; ++round) {
        SCOPED_TRACE(round);
        fs::remove(made);
        std::vector<std::function<bool()>> works;
        for (const std::string& in : folders) {
            works.push_back([&] { return RunTool({"archive", "import", made, in}).status == 0; });
        }
        EXPECT_TRUE(RunTogether(works));
        const ArchiveParts parts = CutArchive(ReadBytes(made));
        EXPECT_TRUE(IsSound(parts));
        EXPECT_EQ(parts.sheets.size(), 2U);
        ASSERT_FALSE(HasFailure());
    }
}

}  // namespace
}  // namespace orvane::test
