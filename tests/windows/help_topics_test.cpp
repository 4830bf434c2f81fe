#include "windows/help_topics.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {
namespace {

TEST(Topics, NamesThePagesOfTheDialogs) {
    EXPECT_EQ(topics::contents, "about/about.htm");
    EXPECT_EQ(topics::textColours, "options/textcolor.htm");
    EXPECT_EQ(topics::generalOptions, "options/genoption.htm");
    EXPECT_EQ(topics::allKeywords, "tools/allkeywords.htm");
    EXPECT_EQ(topics::locus, "function/variable/locus.htm");
    EXPECT_EQ(topics::fastHelp, "tools/fasthelp.htm");
}

TEST(Topics, OpensSixPagesFirst) {
    const std::vector<std::string_view> pages(openingTopics.begin(), openingTopics.end());
    EXPECT_EQ(pages, (std::vector<std::string_view>{
                         "sentence/formula/outputkey.htm", "function/bits.htm",
                         "function/variable/locus.htm", "tools/fasthelp.htm",
                         "function/variable/Integral/curve.htm", "options/textcolor.htm"}));
}

TEST(TopicForCommand, KnowsEveryHelpCommandAndNoOther) {
    const std::map<int, std::string_view> pages = {
        {32824, "function/function.htm"},
        {32825, "function/string.htm"},
        {32826, "function/bits.htm"},
        {32827, "function/logic.htm"},
        {32828, "function/condition.htm"},
        {32829, "function/normal.htm"},
        {32830, "function/statistics.htm"},
        {32831, "function/point.htm"},
        {32832, "function/vectormatrix.htm"},
        {32833, "function/variable/integral.htm"},
        {32834, "function/variable/series.htm"},
        {32835, "function/variable/product.htm"},
        {32836, "function/variable/equation.htm"},
        {32837, "function/variable/locus.htm"},
        {32838, "function/complex.htm"},
        {32839, "function/operator.htm"},
        {32850, "sentence/number.htm"},
        {32851, "sentence/operator.htm"},
        {32852, "sentence/formula/outputkey.htm"},
    };
    for (int command = 32768; command <= 33000; ++command) {
        SCOPED_TRACE(command);
        const auto page = pages.find(command);
        EXPECT_EQ(TopicForCommand(command),
                  page != pages.end() ? std::optional(page->second) : std::nullopt);
    }
    EXPECT_FALSE(TopicForCommand(0));
    EXPECT_FALSE(TopicForCommand(-1));
}

struct KindRow {
    int kind;
    const char* page;
    const char* keyword;  // one that has it
};

constexpr KindRow kindRows[] = {
    {0, "sentence/number.htm", "pi"},
    {1, "sentence/formula/outputkey.htm", "hex"},
    {2, "sentence/text.htm", "text"},
    {3, "sentence/define.htm", "define"},
    {4, "function/bits.htm", "left_shift"},
    {5, "function/condition.htm", "if"},
    {6, "function/logic.htm", "great_than"},
    {7, "function/normal.htm", "sin"},
    {8, "function/point.htm", "distance_to_line"},
    {9, "function/statistics.htm", "median"},
    {10, "function/string.htm", "strsum"},
    {11, "function/vectormatrix.htm", "matrix_minor"},
    {12, "function/complex.htm", "complex"},
    {13, "function/operator.htm", "plus"},
    {14, "function/variable/series.htm", "series"},
    {15, "function/variable/product.htm", "product"},
    {16, "function/variable/locus.htm", "locus_polar"},
    {17, "function/variable/equation.htm", "equation_root"},
    {18, "function/variable/Integral/area.htm", "integral_area_xy"},
    {19, "function/variable/Integral/curve.htm", "integral_curve_polar"},
};

TEST(TopicForKeyword, GivesEveryHelpKindItsPage) {
    for (const auto& [kind, page, keyword] : kindRows) {
        SCOPED_TRACE(keyword);
        const KeywordEntry* entry = keywordTable.Find(keyword);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(static_cast<int>(entry->helpKind), kind);
        EXPECT_EQ(TopicForKeyword(*entry), page);
    }
}

TEST(TopicForKeyword, GivesAnUnknownKindAPathWithoutAName) {
    for (const int kind : {20, 21, 1000, -1}) {
        SCOPED_TRACE(kind);
        KeywordEntry entry = keywordRows[0];
        entry.helpKind = static_cast<HelpKind>(kind);
        EXPECT_EQ(TopicForKeyword(entry), "function/.htm");
    }
}

TEST(TopicForFastHelp, GoesToTheNameOnThePageOfItsKind) {
    for (const KeywordEntry& row : keywordRows) {
        SCOPED_TRACE(row.name);
        const auto kind = static_cast<std::size_t>(row.helpKind);
        ASSERT_LT(kind, std::size(kindRows));
        EXPECT_EQ(TopicForFastHelp(row.name), std::string(kindRows[kind].page) + "#" + row.name);
    }
}

TEST(TopicForFastHelp, ShowsExamplesInFull) {
    EXPECT_EQ(TopicForFastHelp("sin"), "function/normal.htm#sin");
    EXPECT_EQ(TopicForFastHelp("integral_curve_xy"),
              "function/variable/Integral/curve.htm#integral_curve_xy");
}

TEST(TopicForFastHelp, TellsOfTheHelpKeyWhereTheWordIsNoKeyword) {
    for (const char* word : {"", "Sin", "SIN", "si", "sinn", " sin", "sin ", "1.5", "price"}) {
        SCOPED_TRACE(word);
        EXPECT_EQ(TopicForFastHelp(word), "tools/fasthelp.htm");
    }
}

}  // namespace
}  // namespace orvane
