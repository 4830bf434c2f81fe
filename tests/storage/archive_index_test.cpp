#include "storage/archive_index.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace orvane {
namespace {

using namespace std::string_view_literals;

// An index as people see it, one line for each sheet.
constexpr std::string_view indexText = R"({
    "orvane_archive": 1,
    "texts": "utf-8",
    "preamble": "do not\r\n",
    "sheets": [
        {"file": "Mean.txt", "name": "Mean \"and\" ä"},
        {"file": "b/c.sheet", "name": "", "unusual": true}
    ],
    "rest": "\u0000x"
}
)";

ArchiveIndex ExpectedIndex() {
    ArchiveIndex index;
    index.preamble = "do not\r\n";
    index.sheets = {{"Mean.txt", "Mean \"and\" \xC3\xA4", false}, {"b/c.sheet", "", true}};
    index.rest = "\0x"sv;
    return index;
}

TEST(IndexText, IsOneLineForEachSheet) { EXPECT_EQ(IndexText(ExpectedIndex()), indexText); }

TEST(IndexText, TellsRawTextsAndMayHoldNoSheet) {
    ArchiveIndex index;
    index.isRaw = true;
    EXPECT_EQ(IndexText(index),
              "{\n    \"orvane_archive\": 1,\n    \"texts\": \"raw\",\n    \"preamble\": \"\",\n"
              "    \"sheets\": [],\n    \"rest\": \"\"\n}\n");
}

TEST(ReadIndex, ReadsWhatIsWritten) {
    std::string reason;
    const std::optional<ArchiveIndex> index = ReadIndex(indexText, reason);
    ASSERT_TRUE(index) << reason;
    EXPECT_EQ(IndexText(*index), indexText);
    EXPECT_EQ(index->rest, "\0x"sv);
    EXPECT_FALSE(index->isRaw);
    ASSERT_EQ(index->sheets.size(), 2U);
    EXPECT_EQ(index->sheets[0].file, "Mean.txt");
    EXPECT_FALSE(index->sheets[0].isUnusual);
    EXPECT_TRUE(index->sheets[1].isUnusual);
}

// An index with one thing in it replaced.
std::string With(std::string_view what, std::string_view replacement) {
    std::string text(indexText);
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return text.replace(at, what.size(), replacement);
}

struct DamageRow {
    std::string_view what;
    std::string_view replacement;
    std::string_view reason;
};
const DamageRow damageRows[] = {
    {"{\n", "", "is damaged: it is no JSON"},
    {"}\n", "", "is damaged: it is no JSON"},
    {"Mean \\\"", "Mean \xE4\\\"", "is damaged: it is no JSON"},
    {"orvane_archive", "name", "is no index of an archive"},
    {": 1,", ": 2,", "is the index of another version's archive"},
    {": 1,", ": \"1\",", "is the index of another version's archive"},
    {"\"texts\"", "\"text\"", "has no text \"texts\" where one is needed"},
    {"utf-8", "utf-16", "has texts in a form that is unknown, 'utf-16'"},
    {"\"do not\\r\\n\"", "null", "has no text \"preamble\" where one is needed"},
    {"\"rest\"", "\"test\"", "has no text \"rest\" where one is needed"},
    {"\"\\u0000x\"", "7", "has no text \"rest\" where one is needed"},
    {"\"sheets\"", "\"sheet\"", "has no list \"sheets\""},
    {"\"Mean.txt\"", "[]", "has no text \"file\" where one is needed"},
    {"\"name\"", "\"mame\"", "has no text \"name\" where one is needed"},
    {"\"name\": \"\"", "\"name\": {}", "has no text \"name\" where one is needed"},
    {"true", "1", "has an \"unusual\" that is neither true nor false"},
    {"\"sheets\": [", "\"sheets\": [\"a\",", "has something else than an object among its sheets"},
    {"\"sheets\": [", "\"sheets\": 1, \"more\": [", "has no list \"sheets\""},
};

TEST(ReadIndex, TellsWhatIsWrongWithIt) {
    for (const auto& [what, replacement, expected] : damageRows) {
        SCOPED_TRACE(std::string(what) + " -> " + std::string(replacement));
        std::string reason;
        EXPECT_FALSE(ReadIndex(With(what, replacement), reason));
        EXPECT_EQ(reason, expected);
    }
}

TEST(ReadIndex, RefusesWhatIsNoObject) {
    for (const std::string_view text : {"[]", "1", "\"orvane_archive\"", "null", "{}"}) {
        SCOPED_TRACE(text);
        std::string reason;
        EXPECT_FALSE(ReadIndex(text, reason));
        EXPECT_EQ(reason, "is no index of an archive");
    }
    std::string reason;
    EXPECT_FALSE(ReadIndex("", reason));
    EXPECT_FALSE(ReadIndex(std::string(1'000'000, '['), reason));
    EXPECT_EQ(reason, "is damaged: it is no JSON");
}

TEST(ReadIndex, RefusesFilesThatAreNotInTheFolder) {
    const std::string_view outside[] = {"",       "../x", "..",   "a/../../x", "a/..", "/x",
                                        "/",      "a//b", "a/",   ".",         "./a",  "..\\\\x",
                                        "a\\\\b", "C:x",  "C:/x", "a\\u0000b"};
    for (const std::string_view file : outside) {
        SCOPED_TRACE(file);
        std::string reason;
        EXPECT_FALSE(ReadIndex(With("Mean.txt", file), reason));
        EXPECT_TRUE(reason.ends_with("which is not in the folder")) << reason;
    }
}

TEST(ReadIndex, TakesFilesWithAnyEndingAndBelowTheFolder) {
    for (const std::string_view file : {"a", "a.sheet", "a/b/c.txt", "..a", "a..", "...", "-x"}) {
        SCOPED_TRACE(file);
        std::string reason;
        const std::optional<ArchiveIndex> index = ReadIndex(With("Mean.txt", file), reason);
        ASSERT_TRUE(index) << reason;
        EXPECT_EQ(index->sheets[0].file, file);
    }
}

}  // namespace
}  // namespace orvane
