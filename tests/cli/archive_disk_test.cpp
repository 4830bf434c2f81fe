#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "tests/cli/archive_faults.h"

// A disk that gets full or fails under a command: at each of its calls once, and from each of them
// on. The command ends with status 2 and one message that tells what became of the archive, and
// that is true.

namespace orvane::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* cantWatch = "this system lets no program watch another one's calls";

// What the message says of the archive.
bool SaysAsItWas(const ToolResult& result) {
    return result.error.find("can't be written; it is as it was\n") != std::string::npos;
}
bool SaysPartlyNew(const ToolResult& result) {
    return result.error.find(
               "can't be written; what is in it now may be partly new and partly "
               "old\n") != std::string::npos;
}
// Nor was it touched then.
bool SaysNotOpened(const ToolResult& result) {
    return result.error.find("can't be opened\n") != std::string::npos;
}

class ArchiveDisk : public WatchedSaving {
protected:
    // Runs the command once for each of its calls until there is none left, and gives how many
    // there were. `expect` looks at the result and at the archive's bytes.
    template <typename Expect>
    int FailEverywhere(const Fault& fault, const Expect& expect) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(at);
            archive.Put(archive.Old());
            Fault here = fault;
            here.at = at;
            const ToolResult result = archive.Save(GetParam(), here);
            if (!result.watched.isReached) {
                EXPECT_EQ(result.status, 0);
                EXPECT_TRUE(archive.Bytes() == fresh);
                return at - 1;
            }
            if (result.status != 0) ExpectRefused(result, {archive.Archive()});
            expect(at, result, archive.Bytes());
            if (HasFailure()) return at;
        }
    }

    std::size_t Written(int pieces) const { return PieceEnd(fresh.size(), pieces); }
    std::string Left(std::size_t written) const {
        return HeadOverTail(fresh, archive.Old(), written);
    }

    SavedArchive archive;
    const std::string fresh = archive.FreshBytes(GetParam());
    const int pieces = PiecesOf(fresh.size());
};

TEST_P(ArchiveDisk, IsAsItWasWhereOneCallFails) {
    for (const int error : {ENOSPC, EIO, EDQUOT}) {
        for (const bool isShort : {false, true}) {
            SCOPED_TRACE(error);
            const Fault fault{.kind = Fault::Kind::fail,
                              .calls = Fault::Calls::takingRoom,
                              .error = error,
                              .isShort = isShort};
            const int calls =
                FailEverywhere(fault, [&](int, const ToolResult& result, const std::string& left) {
                    // The rest of a piece that was cut short is written at the second try.
                    EXPECT_EQ(result.status, isShort ? 0 : 2);
                    EXPECT_EQ(SaysAsItWas(result), !isShort);
                    EXPECT_TRUE(left == (isShort ? fresh : archive.Old()));
                });
            EXPECT_EQ(calls, pieces);
        }
    }
}

// Not even what was there can be written once more: the new head stays over the old tail.
TEST_P(ArchiveDisk, TellsWhereItCanNotBeTakenBack) {
    for (const bool isShort : {false, true}) {
        SCOPED_TRACE(isShort);
        const Fault fault{.kind = Fault::Kind::fail,
                          .calls = Fault::Calls::takingRoom,
                          .error = ENOSPC,
                          .goesOn = true,
                          .isShort = isShort};
        FailEverywhere(fault, [&](int at, const ToolResult& result, const std::string& left) {
            EXPECT_EQ(result.status, 2);
            std::size_t written = Written(at - 1);
            if (isShort) written += (Written(at) - written) / 2;
            EXPECT_TRUE(left == Left(written));
            EXPECT_EQ(SaysAsItWas(result), left == archive.Old());
            EXPECT_EQ(SaysPartlyNew(result), left != archive.Old());
        });
    }
}

TEST_P(ArchiveDisk, TellsWhateverFailsFromACallOn) {
    const Fault fault{.kind = Fault::Kind::fail, .error = EIO, .goesOn = true};
    const int calls =
        FailEverywhere(fault, [&](int at, const ToolResult& result, const std::string& left) {
            EXPECT_TRUE(left == (at <= pieces + 1 ? Left(Written(at - 1)) : fresh));
            // The turn at the file is given up last, when all is written.
            EXPECT_EQ(result.status, SaysAsItWas(result) || SaysPartlyNew(result) ? 2 : 0);
            EXPECT_EQ(SaysAsItWas(result), left == archive.Old());
        });
    EXPECT_GT(calls, pieces + 1);
}

// A disk that is far away may tell only here that what it took is lost.
TEST_P(ArchiveDisk, TellsWhatClosingFails) {
    const Fault fault{.kind = Fault::Kind::fail, .calls = Fault::Calls::closing, .error = EIO};
    const int calls =
        FailEverywhere(fault, [&](int at, const ToolResult& result, const std::string& left) {
            EXPECT_TRUE(left == fresh);
            // Nothing was written by what is closed last, the turn at the file.
            EXPECT_EQ(result.status, at == 1 ? 2 : 0);
            EXPECT_EQ(SaysPartlyNew(result), at == 1);
        });
    EXPECT_EQ(calls, 2);
}

TEST_P(ArchiveDisk, DoesNotMindASignalInBetween) {
    for (const bool isShort : {false, true}) {
        const Fault fault{.kind = Fault::Kind::fail,
                          .calls = Fault::Calls::takingRoom,
                          .error = EINTR,
                          .isShort = isShort};
        FailEverywhere(fault, [&](int, const ToolResult& result, const std::string& left) {
            EXPECT_EQ(result.status, 0) << result.error;
            EXPECT_TRUE(left == fresh);
        });
    }
    // The end of the file, the turn at it and what only looks, too: it is saved or as it was.
    const Fault any{.kind = Fault::Kind::fail, .calls = Fault::Calls::touching, .error = EINTR};
    FailEverywhere(any, [&](int, const ToolResult& result, const std::string& left) {
        if (result.status == 0) {
            EXPECT_TRUE(left == fresh);
        } else if (!SaysPartlyNew(result)) {
            EXPECT_TRUE(left == archive.Old());
        }
    });
}

// Reading, looking and opening fail as well: whatever is told of the archive is true.
TEST_P(ArchiveDisk, TellsTheTruthWhateverFails) {
    for (const bool goesOn : {false, true}) {
        const Fault fault{.kind = Fault::Kind::fail,
                          .calls = Fault::Calls::touching,
                          .error = EIO,
                          .goesOn = goesOn};
        FailEverywhere(fault, [&](int, const ToolResult& result, const std::string& left) {
            if (result.status == 0) {
                EXPECT_TRUE(left == fresh);
            } else if (!SaysPartlyNew(result)) {
                EXPECT_TRUE(left == archive.Old());
                EXPECT_TRUE(SaysAsItWas(result) || SaysNotOpened(result) ||
                            result.error.find("can't be read") != std::string::npos)
                    << result.error;
            }
        });
    }
}

INSTANTIATE_TEST_SUITE_P(Savings, ArchiveDisk, testing::ValuesIn(AllSavings()), NameOfSaving);

// A command that makes files of its own in a folder, troubled at each of its calls.
void FailMaking(const ArchiveFolder& folder, const std::vector<std::string>& words,
                std::string_view input, const std::string& made) {
    for (const bool goesOn : {false, true}) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(at);
            fs::remove_all(made);
            const Fault fault{.kind = Fault::Kind::fail,
                              .calls = Fault::Calls::takingRoom,
                              .at = at,
                              .error = ENOSPC,
                              .goesOn = goesOn,
                              .isShort = goesOn,
                              .folder = folder.Path()};
            const ToolResult result = RunTool({.arguments = words, .input = input, .fault = fault});
            if (!result.watched.isReached) {
                EXPECT_EQ(result.status, 0);
                break;
            }
            ExpectRefused(result, {folder.Path()});
            OutputOf(words, input);
            ASSERT_FALSE(testing::Test::HasFailure());
        }
    }
}

TEST(FullDisk, FailsAnExportThatCanBeDoneAgain) {
    if (!CanWatch()) GTEST_SKIP() << cantWatch;
    const ArchiveFolder folder("p<a>" + std::string(9000, '1') + "<b><c>3");
    const std::string out = folder.Path() + "/deep/out";
    FailMaking(folder, {"archive", "export", folder.Archive(), out}, "", folder.Path() + "/deep");
    const std::string again = folder.Path() + "/again";
    OutputOf({"archive", "import", again, out}, "");
    EXPECT_EQ(ReadBytes(again), ReadBytes(folder.Archive()));
}

TEST(FullDisk, FailsTheWritingOfCurves) {
    if (!CanWatch()) GTEST_SKIP() << cantWatch;
    const ArchiveFolder folder;
    const std::string out = folder.Path() + "/curves";
    const std::string_view sheet =
        "locus_xy(x,0,1,900,sin(x));locus_polar(t,0,1,3,t);locus_xy(x,0,1,1,x)";
    FailMaking(folder, {"curves", "--csv", out}, sheet, out);
    EXPECT_EQ(ReadBytes(out + "/3_xy.csv"), "x,y,pen_up\n0,0,1\n1,1,0\n");
}

// What was made of an archive that can't be written whole goes again.
TEST(FullDisk, LeavesNoHalfArchiveBehindAnImport) {
    if (!CanWatch()) GTEST_SKIP() << cantWatch;
    const SavedArchive archive;
    const std::string out = archive.Path() + "/out";
    OutputOf({"archive", "export", archive.Archive(), out}, "");
    const std::string made = archive.Path() + "/made";
    for (const bool goesOn : {false, true}) {
        for (int at = 1;; ++at) {
            SCOPED_TRACE(at);
            fs::remove(made);
            const Fault fault{.kind = Fault::Kind::fail,
                              .calls = Fault::Calls::takingRoom,
                              .at = at,
                              .error = ENOSPC,
                              .goesOn = goesOn};
            const ToolResult result = RunTool(
                {.arguments = {"archive", "import", made, out}, .fault = archive.Here(fault)});
            if (result.status != 0) {
                ExpectRefused(result, {made});
                EXPECT_TRUE(!fs::exists(made) || fs::is_empty(made));
            } else {
                EXPECT_EQ(ReadBytes(made), archive.Old());
            }
            ASSERT_FALSE(HasFailure());
            if (!result.watched.isReached) break;
        }
    }
}

// More than any buffer holds.
TEST(FullDisk, IsToldByEveryCommandThatPrints) {
    const ArchiveFolder folder("<a>" + std::string(300'000, '1') + "<b>2");
    const std::string_view sheet = "locus_xy(x,0,1,9000,sin(x))";
    const std::vector<std::vector<std::string>> printers = {
        {"calc", "--json"},
        {"calc", "--json", "--precision", "32"},
        {"trace", "--json"},
        {"curves", "--csv", folder.Path() + "/curves"},
        {"help", "pow"},
        {"archive", "show", folder.Archive(), "a"},
        {"archive", "export", folder.Archive(), folder.Path() + "/out"},
        {"archive", "import", folder.Path() + "/made", folder.Path() + "/out"},
    };
    for (const auto& arguments : printers) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        for (const auto output : {ToolRun::Output::fullDevice, ToolRun::Output::closed}) {
            ExpectRefused(RunTool({.arguments = arguments, .input = sheet, .output = output}),
                          {"the output can't be written"});
        }
    }
    // What was to be written was written all the same.
    EXPECT_EQ(ReadBytes(folder.Path() + "/made"), ReadBytes(folder.Archive()));
}

// Saving needs no room for a second file, so the folder's rights do not count.
TEST(ReadOnlyFolder, LetsAnArchiveBeSavedThatMayBeWritten) {
    for (const Saving& saving : AllSavings()) {
        SCOPED_TRACE(saving.what);
        const SavedArchive archive;
        const std::string fresh = archive.FreshBytes(saving);
        ASSERT_EQ(chmod(archive.Archive().c_str(), 0666), 0);
        ASSERT_EQ(chmod(archive.Path().c_str(), 0555), 0);
        ToolRun run = archive.RunOf(saving);
        run.withoutRights = true;
        const ToolResult result = RunTool(run);
        EXPECT_EQ(result.status, 0) << result.error;
        EXPECT_TRUE(archive.Bytes() == fresh);
        ASSERT_EQ(chmod(archive.Path().c_str(), 0755), 0);
    }
}

TEST(ReadOnlyFolder, GetsNoFiles) {
    const ArchiveFolder folder;
    ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
    const std::vector<std::vector<std::string>> makers = {
        {"curves", "--csv", folder.Path()},
        {"curves", "--csv", folder.Path() + "/deeper"},
        {"archive", "export", folder.Archive(), folder.Path()},
        {"archive", "export", folder.Archive(), folder.Path() + "/deeper"},
    };
    for (const auto& arguments : makers) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        ExpectRefused(
            RunTool(
                {.arguments = arguments, .input = "locus_xy(x,0,1,4,x)", .withoutRights = true}),
            {folder.Path(), "ermission denied"});
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 1);
    ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
}

}  // namespace
}  // namespace orvane::test
