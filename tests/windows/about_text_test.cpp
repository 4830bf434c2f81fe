#include "windows/about_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "windows/program_facts.h"
#include "windows/rich_text_parser.h"

namespace orvane {
namespace {

constexpr LabelColour gold = 255 | 204 << 8 | 51 << 16;
constexpr LabelColour dark = 51 | 51 << 8 | 51 << 16;

class AboutTextTest : public testing::Test {
protected:
    std::vector<LabelItem> Runs() const {
        std::vector<LabelItem> runs;
        for (const LabelItem& item : document.items) {
            if (item.kind == LabelItemKind::run) runs.push_back(item);
        }
        return runs;
    }
    const LabelFont& FontOf(const LabelItem& item) const { return document.fonts[item.font]; }

    LabelDocument document = ParseRichText(AboutText("7.8.9", "https://x.org/"));
};

TEST_F(AboutTextTest, StartsWithTheNameInGoldAndTheVersion) {
    const std::vector<LabelItem> runs = Runs();
    EXPECT_EQ(runs[0].text, "Orvane");
    const LabelFont& name = FontOf(runs[0]);
    EXPECT_EQ(name.colour, gold);
    EXPECT_EQ(name.size, 26);
    EXPECT_TRUE(name.bold);
    EXPECT_NE(name.face, "Arial");
    EXPECT_EQ(runs[1].text, "version 7.8.9");
    EXPECT_EQ(runs[2].text.substr(0, 9), "Copyright");
}

TEST_F(AboutTextTest, IsWhiteCentredArialAroundAllThat) {
    for (std::size_t at = 1; at < Runs().size(); ++at) {
        const LabelItem item = Runs()[at];
        SCOPED_TRACE(item.text);
        EXPECT_EQ(FontOf(item).face, "Arial");
        EXPECT_EQ(FontOf(item).size, 12);
        EXPECT_EQ(item.align, LabelAlign{});
        const bool isColoured = item.text == "_" || item.link != noLink;
        EXPECT_TRUE(isColoured || FontOf(item).colour == 0xFFFFFF);
    }
}

TEST_F(AboutTextTest, LinksToTheWebSiteInUnderlinedGreen) {
    EXPECT_EQ(document.targets, std::vector<std::string>{"https://x.org/"});
    int links = 0;
    for (const LabelItem& item : Runs()) {
        if (item.link == noLink) continue;
        ++links;
        EXPECT_EQ(item.text, "https://x.org/");
        const LabelFont& font = FontOf(item);
        EXPECT_TRUE(font.underline);
        EXPECT_GT(font.colour >> 8 & 0xFF, (font.colour & 0xFF) + 100);
        EXPECT_GT(font.colour >> 8 & 0xFF, (font.colour >> 16 & 0xFF) + 100);
        EXPECT_NE(document.fonts[item.hotFont].colour, font.colour);
    }
    EXPECT_EQ(links, 1);
}

TEST_F(AboutTextTest, EndsWithABarFromDarkToGoldAndBackAndSixEmptyLines) {
    std::vector<LabelColour> bar;
    for (const LabelItem& item : Runs()) {
        if (item.text == "_") bar.push_back(FontOf(item).colour);
    }
    ASSERT_EQ(bar.size() % 2, 1U);
    EXPECT_EQ(bar.front(), dark);
    EXPECT_EQ(bar[bar.size() / 2], gold);
    EXPECT_EQ(bar.back(), dark);
    for (std::size_t at = 0; at < bar.size(); ++at) EXPECT_EQ(bar[at], bar[bar.size() - 1 - at]);
    for (std::size_t at = 1; at <= bar.size() / 2; ++at) {
        EXPECT_GT(bar[at] & 0xFF, bar[at - 1] & 0xFF);
    }
    // The end of the bar's line, and the empty ones.
    std::size_t ends = 0;
    while (document.items[document.items.size() - 1 - ends].kind == LabelItemKind::lineEnd) ++ends;
    EXPECT_EQ(ends, 7U);
}

TEST(ProgramFacts, HaveAVersionAndAnAddress) {
    EXPECT_FALSE(ProgramVersion().empty());
    EXPECT_TRUE(WebSite().starts_with("http"));
    EXPECT_TRUE(WebSite().ends_with("/"));
    EXPECT_FALSE(WebSite().ends_with("//"));
}

}  // namespace
}  // namespace orvane
