#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "functions/keyword_table.h"
#include "tests/cli/tool_checks.h"

namespace orvane {
namespace {

using namespace orvane::test;

Json TextOrNull(const char* text) { return text != nullptr ? Json(text) : Json(nullptr); }

std::vector<std::string> NamesOf(const Json& keywords) {
    std::vector<std::string> names;
    for (const Json& keyword : keywords.at("keywords")) names.push_back(keyword.at("name"));
    return names;
}

TEST(KeywordsJson, ListsTheWholeTableInTheOrderOfTheNames) {
    const Json json = JsonOf({"keywords", "--json"}, "");
    EXPECT_EQ(KeysOf(json), std::vector<std::string>{"keywords"});
    const std::vector<std::string> names = NamesOf(json);
    EXPECT_EQ(names.size(), 151u);
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(std::set(names.begin(), names.end()).size(), names.size());
    for (const KeywordEntry& entry : keywordRows) {
        EXPECT_TRUE(std::binary_search(names.begin(), names.end(), entry.name)) << entry.name;
    }
}

TEST(KeywordsJson, GivesTheFieldsOfEveryRow) {
    const Json json = JsonOf({"keywords", "--json"}, "");
    for (const Json& keyword : json.at("keywords")) {
        const std::string name = keyword.at("name");
        SCOPED_TRACE(name);
        const KeywordEntry* const entry = keywordTable.Find(name);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(KeysOf(keyword),
                  (std::vector<std::string>{"name", "group", "returns", "minParams", "maxParams",
                                            "mainParams", "optionalParams"}));
        EXPECT_EQ(keyword["group"], KeywordTable::GroupWord(*entry));
        EXPECT_EQ(keyword["returns"], TextOrNull(entry->returnText));
        EXPECT_EQ(keyword["minParams"], entry->minParams);
        EXPECT_EQ(keyword["maxParams"], entry->maxParams);
        EXPECT_EQ(keyword["mainParams"], TextOrNull(entry->mainParams));
        EXPECT_EQ(keyword["optionalParams"], TextOrNull(entry->optionalParams));
    }
}

TEST(KeywordsJson, ListsThoseThatBeginWithThePrefix) {
    EXPECT_EQ(NamesOf(JsonOf({"keywords", "locus_", "--json"}, "")),
              (std::vector<std::string>{"locus_parametric", "locus_polar", "locus_xy"}));
    EXPECT_EQ(NamesOf(JsonOf({"keywords", "--json", "sqrt"}, "")),
              std::vector<std::string>{"sqrt"});
    EXPECT_EQ(NamesOf(JsonOf({"keywords", "pi", "--json"}, "")), std::vector<std::string>{"pi"});
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

// Whether the word stands in the line with no word character beside it.
bool HoldsWord(const std::string& line, const std::string& word) {
    const auto isWordChar = [&line](std::size_t at) {
        return at < line.size() &&
               (std::isalnum(static_cast<unsigned char>(line[at])) != 0 || line[at] == '_');
    };
    for (std::size_t at = line.find(word); at != std::string::npos; at = line.find(word, at + 1)) {
        if (!isWordChar(at - 1) && !isWordChar(at + word.size())) return true;
    }
    return false;
}

TEST(Keywords, HaveALineEachWithWhatTheyGiveAndTake) {
    const std::vector<std::string> lines = LinesOf(OutputOf({"keywords"}, ""));
    EXPECT_GE(lines.size(), 151u);
    for (const KeywordEntry& entry : keywordRows) {
        const std::string name = entry.name;
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return HoldsWord(line, name);
        })) << name;
    }
    const std::string sine = OutputOf({"keywords", "sin"}, "");
    EXPECT_NE(sine.find("sin(float radian)\n"), std::string::npos) << sine;
    EXPECT_NE(sine.find("sinh(float)\n"), std::string::npos) << sine;
    EXPECT_TRUE(sine.starts_with("float ")) << sine;
}

TEST(Keywords, HaveALineForEachWayToCallThem) {
    const std::vector<std::string> lines = LinesOf(OutputOf({"keywords", "matrix_det"}, ""));
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(lines[0].ends_with(" matrix_det(point, point, point, ...)")) << lines[0];
    EXPECT_TRUE(lines[1].ends_with(" matrix_det(matrix)")) << lines[1];
    EXPECT_TRUE(lines[2].ends_with(" matrix_determinant(point, point, point, ...)")) << lines[2];
    EXPECT_TRUE(lines[3].ends_with(" matrix_determinant(matrix)")) << lines[3];
}

TEST(Keywords, TellConstantsAndHeadersFromFunctions) {
    EXPECT_NE(OutputOf({"keywords", "pi"}, "").find("pi = 3.14159265358979"), std::string::npos);
    const std::string hexadecimal = OutputOf({"keywords", "hexa"}, "");
    EXPECT_NE(hexadecimal.find("header"), std::string::npos) << hexadecimal;
    EXPECT_EQ(hexadecimal.find('('), std::string::npos) << hexadecimal;
}

TEST(Keywords, MayBeListedByAnEmptyPrefix) {
    EXPECT_EQ(OutputOf({"keywords", ""}, ""), OutputOf({"keywords"}, ""));
}

TEST(Keywords, NameAPrefixThatLeadsNowhere) {
    for (const std::string prefix : {"zzz", "SIN", "sin("}) {
        SCOPED_TRACE(prefix);
        ExpectRefused(RunTool({"keywords", prefix}), {prefix});
        ExpectRefused(RunTool({"keywords", prefix, "--json"}), {prefix});
    }
    ExpectRefused(RunTool({"keywords", "--", "-x"}), {"-x"});
}

}  // namespace
}  // namespace orvane
